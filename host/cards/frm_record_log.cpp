#include "host/cards/frm_record_log.h"

#include <algorithm>

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"

namespace tolvex {
namespace {

struct Change {
  std::string column, before, after;
};

// From a line "column: before -> after"; a line of another shape is told as it stands.
Change changeIn(const std::string& line) {
  const std::size_t name = line.find(": "), arrow = line.find(" -> ");
  if (name == std::string::npos) return {"", "", line};
  const std::string column = line.substr(0, name), rest = line.substr(name + 2);
  if (arrow == std::string::npos || arrow < name) return {column, "", rest};
  return {column, line.substr(name + 2, arrow - name - 2), line.substr(arrow + 4)};
}

const char* actText(std::string_view letter) {
  if (letter == "C") return "Sukurta";
  return letter == "D" ? "Panaikinta" : "Pakeista";
}

}  // namespace

frmRecordLog::frmRecordLog(HostContext& host, std::string reference,
                           std::span<const CardField> fields)
    : Form(host, "frmRecordLog"), reference_(std::move(reference)), fields_(fields) {
  setTitle("Pakeitimų protokolas");
  cmdClose.isDefault = true;
  cmdClose.isCancel = true;
  cmdClose.onClick = [this] { close(); };
}

const char* frmRecordLog::picture() const {
  return R"(
lvwLog>
>> | cmdClose
)";
}

void frmRecordLog::opened() {
  setFocus(lvwLog);
  HostResult result;
  host()
      .objects()
      .innerUIO(kindOf(reference_))
      ->BO()
      ->CallBO("GetRecordLog", quoted(reference_), nullptr, result);
  if (result.Code != kDone) return warn(host(), result.Text);
  if (!result.Data.IsRows()) return warn(host(), "Pakeitimų protokolas neperskaitytas!");
  std::vector<ui::Row> rows;
  ForEachRow(*result.Data.AsRows(), [&](RowSet& entry) {
    std::vector<std::string> lines = split(entry["Detail"].Text(), '\n');
    if (lines.empty()) lines.emplace_back();
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const Change change = changeIn(lines[i]);
      ui::Row& row = rows.emplace_back();
      if (i == 0)
        row.cells = {std::string(entry["At"].Text()), std::string(entry["User"].Text()),
                     actText(entry["Act"].Text())};
      row.cells.resize(3);
      for (const std::string& text : {captionOf(change.column), change.before, change.after})
        row.cells.emplace_back(text);
    }
  });
  lvwLog.setRows(std::move(rows));
  lvwLog.current = lvwLog.rows().empty() ? -1 : 0;
}

std::string frmRecordLog::captionOf(std::string_view column) const {
  const auto known = std::find_if(fields_.begin(), fields_.end(),
                                  [&](const CardField& field) { return field.column == column; });
  return known == fields_.end() ? std::string(column) : known->caption;
}

}  // namespace tolvex
