#include "operations/BRLog.h"

#include <utility>
#include <vector>

#include "operations/operation_log.h"
#include "operations/screen/document_save.h"

namespace tolvex {

BRLog::BRLog(const LogRequest& request)
    : Form(request.host, kLogScreen), operation_(request.operation) {
  setTitle("Operacijos pakeitimai: " + documentName(*operation_));
  cmdClose.isCancel = true;
  lvwLog.onChange = [this] { showChanges(); };
  cmdClose.onClick = [this] { close(); };
}

const char* BRLog::picture() const {
  return R"(
lvwLog>
lvwChanges>
cmdClose | >>
)";
}

void BRLog::opened() {
  std::vector<ui::Row> rows;
  for (const LogLine& line : readLog(*operation_)) {
    ui::Row row;
    row.key = line.id;
    row.cells = {line.date, line.user, line.action};
    rows.push_back(std::move(row));
  }
  const bool any = !rows.empty();
  lvwLog.setRows(std::move(rows));
  lvwLog.current = any ? 0 : -1;
  showChanges();
  setFocus(lvwLog);
}

void BRLog::showChanges() {
  std::vector<ui::Row> rows;
  if (const ui::Row* line = lvwLog.currentRow()) {
    for (const LogChange& change : readLogChanges(*operation_, line->key)) {
      ui::Row row;
      row.cells = {change.what, change.before, change.after};
      rows.push_back(std::move(row));
    }
  }
  lvwChanges.setRows(std::move(rows));
}

}  // namespace tolvex
