#include "debts/frmBROperSelect_Find.h"

#include "framework/conversions.h"

namespace tolvex {

FoundDocument foundDocument(RowSet& found) {
  const auto text = [&](const char* column) { return std::string(found[column].Text()); };
  return {text("OIDR"), text("FOIDR"), text("ClientName")};
}

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
  documents_.clear();
  ForEachRow(*found_, [&](RowSet& row) {
    documents_.push_back(foundDocument(row));
    ui::Row& line = rows.emplace_back();
    line.key = std::to_string(rows.size());
    line.cells = {documents_.back().name, row["DateD"].Value().Show(),
                  std::string(row["Number"].Text()),
                  FormatSum(row["SumA"].Number(), host().numbers())};
  });
  lvwFound.setRows(std::move(rows));
  lvwFound.current = 0;
  setFocus(lvwFound);
}

void frmBROperSelect_Find::choose() {
  const int row = lvwFound.current;
  if (row < 0) return;
  chosen_ = documents_[static_cast<std::size_t>(row)];
  close();
}

}  // namespace tolvex
