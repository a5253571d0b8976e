#include "operations/screen/related_list.h"

#include <utility>
#include <vector>

#include "framework/conversions.h"
#include "operations/operation_methods.h"
#include "operations/screen/currency_sides.h"
#include "operations/screen/operation_rows.h"

namespace tolvex {
namespace {

CurrencySide sideOf(RowSet& rows, const char* code, const char* sum) {
  return {std::string(rows[code].Text()), 0, rows[sum].Number()};
}

ui::Row line(RowSet& rows, const NumberFormat& numbers) {
  ui::Row row;
  const Variant date = rows["DateD"].Value();
  row.key = rows["GUID"].Text();
  row.tag = rows["OIDR"].Text();
  row.cells = {date.IsDate() ? date.AsDate().Text() : std::string(),
               std::string(rows["AccountD"].Text()),
               std::string(rows["AccountC"].Text()),
               FormatSum(rows["SumA"].Number(), numbers),
               currencyText(sideOf(rows, "CurrCodeD", "SumCurrD"), numbers),
               currencyText(sideOf(rows, "CurrCodeC", "SumCurrC"), numbers),
               std::string(rows["Preview"].Text())};
  return row;
}

}  // namespace

void showRelatedEntries(ui::ListView& list, VXObjectUIO& object) {
  std::vector<ui::Row> lines;
  if (isStored(object)) {
    const std::string reference(object.Fields()["FOIDR"].Text());
    const NumberFormat numbers = list.form.host().numbers();
    if (const RowSetPtr related = GetRelatedBR(object, reference)) {
      ForEachRow(*related, [&](RowSet& rows) { lines.push_back(line(rows, numbers)); });
    }
  }
  list.setRows(std::move(lines));
  list.current = list.rows().empty() ? -1 : 0;
}

void openRelated(ui::ListView& list) {
  const ui::Row* row = list.currentRow();
  if (row && !row->tag.empty()) list.form.host().desktop().show(row->tag);
}

}  // namespace tolvex
