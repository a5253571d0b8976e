#include "operations/copy_operation.h"

#include <array>
#include <map>
#include <string>

#include "framework/references.h"
#include "operations/UIO0201500.h"
#include "operations/entries.h"

namespace tolvex {
namespace {

// The eight characters "O020150n" of an operation, whatever its document kind.
bool namesOperation(std::string_view reference) {
  return kindOf(reference).starts_with(std::string_view(kOperationKind).substr(0, 7));
}

void copyRows(RowSet& from, RowSet& to, const std::string& guid,
              std::initializer_list<const char*> fields) {
  ForEachRow(from, [&](RowSet& row) {
    if (row.Fields().contains("FOIDR") && namesOperation(row["FOIDR"].Text())) return;
    to.AddNew();
    to["BRGUID"] = guid;
    for (const char* field : fields) to[field] = row[field].Value();
    to.Update();
  });
}

void copyRequired(RowSet& from, RowSet& to, const std::string& guid) {
  ForEachRow(from, [&](RowSet& row) {
    to.AddNew();
    to["GUID"] = guid;
    to["FOID"] = row["FOID"].Value();
    to["Sign"] = row["Sign"].Value();
    to.Update();
  });
}

// The entry at the cursor of `from`, under the new key and date.
void copyEntry(RowSet& from, RowSet& to, const std::string& guid, DateTime date) {
  to.AddNew();
  to["GUID"] = guid;
  to["DateD"] = Variant(date);
  for (const char* field :
       {"SumA", "AccountD", "AccountC", "Info", "Tag", "TradeOperationType", "RestoringSign",
        "VATIndication", "VATFlag", "VATTariff", "BRTemplateAccID"}) {
    if (!from[field].IsAbsent()) to[field] = from[field].Value();
  }
  to.Update();
  copyRows(*from["BRCurrency"].Rows(), *to["BRCurrency"].Rows(), guid,
           {"Sign", "RateCurr", "SumCurr", "FCurrencyCode"});
  copyRows(*from["BRProperties"].Rows(), *to["BRProperties"].Rows(), guid,
           {"Sign", "FOIDR", "ShowString"});
  copyRequired(*from["RequiredAddr"].Rows(), *to["RequiredAddr"].Rows(), guid);
}

}  // namespace

std::shared_ptr<VXObjectUIO> copyOperation(HostContext& host, VXObjectUIO& from) {
  const std::string kind = from.OType().empty() ? std::string(kOperationKind) : from.OType();
  std::shared_ptr<VXObjectUIO> copy = host.objects().create(kind);
  if (!copy) return nullptr;
  const DateTime today = host.clock().today();
  RowSet& header = *copy->RsFields();
  for (const char* field : {"BROperGroupID", "Comment", "Parameters", "VATRegisterIndication"}) {
    header[field] = from.Fields()[field].Value();
  }
  header["DateD"] = Variant(today);

  // Entries that follow another one of the operation follow its copy.
  std::map<std::string, std::string, std::less<>> keys;
  const RowSetPtr entries = entriesOf(from)->Clone(), copies = entriesOf(*copy);
  entries->SetFilter("");
  ForEachRow(*entries, [&](RowSet& entry) {
    const std::string guid = copy->GetGUID();
    keys[std::string(entry["GUID"].Text())] = guid;
    copyEntry(entry, *copies, guid, today);
  });
  ForEachRow(*entries, [&](RowSet& entry) {
    const auto main = keys.find(entry["FGUID"].Text());
    if (main == keys.end()) return;
    (*entryOf(*copy, keys[std::string(entry["GUID"].Text())]))["FGUID"] = main->second;
  });
  return copy;
}

}  // namespace tolvex
