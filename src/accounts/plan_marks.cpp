#include "accounts/plan_marks.h"

#include <cstdlib>
#include <string>
#include <vector>

#include "framework/parameters.h"
#include "framework/told.h"

namespace tolvex {

bool fillMarks(ui::ListView& list, VXObjectUIO& node) {
  list.setRows({});
  list.current = -1;
  const RowSetPtr marks = toldRows(node.Properties("BRAProperties", kNoParameters));
  if (!marks) return false;
  const RowSetPtr carriers = toldRows(node.Properties("BRASettings", kNoParameters));
  if (!carriers) return false;
  const std::string own(node.Fields()["Account"].Text());
  std::vector<ui::Row> rows;
  ForEachRow(*marks, [&](RowSet& mark) {
    ui::Row row;
    row.key = "X" + std::to_string(static_cast<int>(mark["Id"].Number()));
    row.tag = mark["Code"].Text();
    std::string accounts;
    carriers->SetFilter("Code='" + row.tag + "'");
    ForEachRow(*carriers, [&](RowSet& carrier) {
      accounts.append(carrier["Account"].Text()).append(";");
      row.checked = row.checked || carrier["Account"].Text() == own;
    });
    row.cells = {std::string(mark["Name"].Text()), accounts};
    rows.push_back(std::move(row));
  });
  list.setRows(std::move(rows));
  return true;
}

void keepOneMark(ui::ListView& list) {
  const ui::Row* current = list.currentRow();
  if (!current || !current->checked) return;
  const std::string key = current->key;
  for (ui::Row& row : list.edit()) row.checked = row.key == key;
}

Variant tickedMark(const ui::ListView& list) {
  for (const ui::Row& row : list.rows())
    if (row.checked) return Variant(std::atoi(row.key.c_str() + 1));
  return Null{};
}

}  // namespace tolvex
