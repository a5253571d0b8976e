#include "debts/frmBROperSelect_Find.h"

#include "framework/conversions.h"

namespace tolvex {

frmBROperSelect_Find::frmBROperSelect_Find(HostContext& host, RowSetPtr found)
    : Form(host, "frmBROperSelect_Find"), found_(std::move(found)) {
  setTitle("Pasirinkite įmonę");
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  lvwFound.onActivate = cmdOK.onClick = [this] { choose(); };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmBROperSelect_Find::picture() const {
  return R"(
lvwFound>
>> | cmdCancel | cmdOK
)";
}

void frmBROperSelect_Find::opened() {
  std::vector<ui::Row> rows;
  ForEachRow(*found_, [&](RowSet& row) {
    ui::Row& line = rows.emplace_back();
    line.key = std::to_string(rows.size());
    line.tag = row["FOIDR"].Text();
    line.cells = {std::string(row["ClientName"].Text()), row["DateD"].Value().Show(),
                  std::string(row["Number"].Text()),
                  FormatSum(row["SumA"].Number(), host().numbers())};
  });
  lvwFound.setRows(std::move(rows));
  lvwFound.current = 0;
  setFocus(lvwFound);
}

void frmBROperSelect_Find::choose() {
  const ui::Row* row = lvwFound.currentRow();
  if (!row) return;
  chosen_ = FoundParty{row->tag, row->cells[0].text};
  close();
}

}  // namespace tolvex
