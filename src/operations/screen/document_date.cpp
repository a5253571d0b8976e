#include "operations/screen/document_date.h"

#include <set>
#include <string>

#include "operations/screen/entry_list.h"

namespace tolvex {

bool dateFitsReferences(HostContext& host, RowSet& BR, DateTime date) {
  std::set<std::string> pointedAt;
  const RowSetPtr walk = BR.Clone();
  ForEachRow(*walk, [&](RowSet& entry) {
    const OperationPointer pointer = operationPointer(entry, 0);
    if (!pointer.reference.empty()) pointedAt.insert(pointer.reference);
  });
  for (const std::string& reference : pointedAt) {
    const std::shared_ptr<VXObjectUIO> operation = host.objects().open(reference);
    if (!operation) continue;
    const Variant its = operation->Fields()["DateD"].Value();
    if (its.IsDate() && its.AsDate().Date() > date.Date()) return false;
  }
  return true;
}

void redateEntries(RowSet& BR, DateTime date) {
  const RowSetPtr walk = BR.Clone();
  ForEachRow(*walk, [&](RowSet& entry) {
    entry["DateD"] = date;
    ForEachRow(*entry["BRCurrency"].Rows(),
               [](RowSet& side) { side["SumCurr"] = side["SumCurr"].Value(); });
  });
}

}  // namespace tolvex
