#include "operations/screen/addressee_pick.h"

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/told.h"
#include "operations/screen/operation_rows.h"

namespace tolvex {
namespace {

constexpr std::string_view kBankAccount = "O0000500";

// Date, number and comment of an operation, as far as it has them.
std::string operationText(VXObjectUIO& operation) {
  FieldList& fields = operation.Fields();
  const Variant date = fields["DateD"].Value();
  std::string text = date.IsDate() ? date.AsDate().Text() : std::string();
  for (const char* column : {"Number", "Comment"}) {
    const std::string_view part = fields[column].Text();
    if (part.empty()) continue;
    if (!text.empty()) text += ' ';
    text.append(part);
  }
  return text;
}

void takeBank(VXObjectUIO& operation, PickedAddressee& addressee) {
  const RowSetPtr banks =
      toldRows(operation.Properties("BankByAccount", Parameters().text(addressee.reference).str()));
  if (!banks) return;
  RowSet& bank = *banks;
  bank.MoveFirst();
  if (bank.Eof()) return;
  addressee.showString = bank["AccountNumber"].Text();
  addressee.bankReference = bank["OIDR"].Text();
  if (bank.Fields().contains("Name")) addressee.bankName = bank["Name"].Text();
}

}  // namespace

std::optional<PickedAddressee> pickAddressee(HostContext& host, VXObjectUIO& operation,
                                             std::vector<std::string> kinds,
                                             const std::string& current) {
  PickRequest request;
  request.kinds = std::move(kinds);
  request.prompt = "Pažymėkite norimą adresatą";
  request.current = current;
  const std::optional<Picked> picked = host.pickers().pick(request);
  if (!picked) return std::nullopt;
  if (picked->group) {
    warn(host, "Grupės pasirinkti negalima. Pasirinkite adresato reikšmę.");
    return std::nullopt;
  }
  PickedAddressee addressee;
  if (!isRef(picked->reference)) return addressee;
  if (pointsAtOperation(picked->reference) && picked->reference == operation.OIDR()) {
    warn(host, "Esama operacija negali būti adresatu!");
    return std::nullopt;
  }
  addressee.reference = picked->reference;
  addressee.showString = picked->text;
  if (pointsAtOperation(addressee.reference)) {
    if (const auto pointed = ObjectOf(host, addressee.reference)) {
      addressee.showString = operationText(*pointed);
    }
  } else if (kindOf(addressee.reference) == kBankAccount) {
    takeBank(operation, addressee);
  }
  return addressee;
}

}  // namespace tolvex
