#include "operations/UIO0201500.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"
#include "operations/document_form.h"
#include "operations/entries.h"

namespace tolvex {

namespace {

constexpr std::array<std::string_view, 4> kReadsWithoutParameters = {
    "MyFirmAccounts", "SelectParameters", "TelebankList", "FirmsAndUsers"};

constexpr std::array<std::string_view, 35> kReadsWithParameters = {"Parent",
                                                                   "BRRequiredAddr",
                                                                   "BROperSelect",
                                                                   "RelatedBR",
                                                                   "ClientAccounts",
                                                                   "TemplateList",
                                                                   "TemplateAccAndAddr",
                                                                   "Number",
                                                                   "CurrencyByCode",
                                                                   "Debts1",
                                                                   "Debts2",
                                                                   "Debts3",
                                                                   "ClientLastAccount",
                                                                   "PaymentPreview",
                                                                   "Account",
                                                                   "AccountsTotal",
                                                                   "AccountTotal",
                                                                   "CoverFirms",
                                                                   "BankByAccount",
                                                                   "BRPropertiesByAcc",
                                                                   "BROperMaxNumber",
                                                                   "CheckInfluenceType",
                                                                   "Order_BROpers",
                                                                   "Offer_BROpers",
                                                                   "BROperAddressees",
                                                                   "Transfers",
                                                                   "TelebankExport",
                                                                   "CommentList",
                                                                   "LastPaymentOrder",
                                                                   "AutoNumber",
                                                                   "CoversInFuture",
                                                                   "SalaryConstants",
                                                                   "AdvanceOverExpenses",
                                                                   "DebtsByDebit",
                                                                   "DebtsByCredit"};

bool isIn(const auto& keys, std::string_view key) {
  return std::ranges::find(keys, key) != keys.end();
}

}  // namespace

UIO0201500::UIO0201500(OperationTablesPtr tables)
    : ForwardingUIO(kOperationKind), tables_(std::move(tables)) {}

// --- keyed reads ------------------------------------------------------------------------------

MethodResult UIO0201500::Properties(std::string key, std::string parameters) {
  return guarded([&] { return property(key, parameters); });
}

MethodResult UIO0201500::property(const std::string& key, const std::string& parameters) {
  if (isIn(kReadsWithoutParameters, key)) return read("Get" + key, kNoParameters);
  if (isIn(kReadsWithParameters, key)) return read("Get" + key, parameters);
  if (key == "CurrencyList") return currencyList(parameters);
  if (key == "AddresseeList") return addresseeList();
  if (key == "AccountList") return accountList();
  if (key == "GetObjectForm") return objectForm(parameters);
  return read(key, parameters);
}

MethodResult UIO0201500::currencyList(const std::string& date) {
  currencies_ = nullptr;
  MethodResult list = read("GetCurrencyList", quoted(date.empty() ? "1990.01.01" : date));
  if (list.Code != kDone) return list;
  const RowSetPtr rows = list.Value.AsRows();
  if (rows->RecordCount() == 0) return refused("No any currency in DB...");
  currencies_ = rows;
  return done(currencies_);
}

MethodResult UIO0201500::addresseeList() {
  if (!addressees_) {
    MethodResult list = read("GetAddresseeList", kNoParameters);
    if (list.Code != kDone) return list;
    addressees_ = list.Value.AsRows();
  }
  return done(addressees_);
}

MethodResult UIO0201500::accountList() {
  if (!accounts_) {
    accounts_ = std::make_shared<ParamDictionary>();
    MethodResult list = read("GetAccountList", kNoParameters);
    if (list.Code != kDone) return list;
    setItems(*accounts_, *list.Value.AsRows(), "Account", "Name");
  }
  return done(accounts_);
}

// The parameter is the group's id and, behind a ";", what the form is told; "@|@" stands for ";".
MethodResult UIO0201500::objectForm(const std::string& parameters) {
  if (!isNew(OID())) return done(formValue(openDocument(tables_, OID()).form));
  const std::vector<std::string> pieces = split(parameters, ';');
  if (!pieces[0].empty()) Fields()["BROperGroupID"] = TextToDouble(pieces[0]);
  const std::string clicked = pieces.size() > 1 ? replaceAll(pieces[1], "@|@", ";") : "";
  return done(
      formValue(makeEditor(tables_->forms, OType(), {hostContext(), shared_from_this(), clicked})));
}

// --- keyed actions ----------------------------------------------------------------------------

MethodResult UIO0201500::Methods(std::string key, std::span<const Variant> par) {
  return tables_->methods.call(*this, key, par);
}

// --- saving -----------------------------------------------------------------------------------

SaveResult UIO0201500::Save(RowSetPtr second, RowSetPtr third) {
  const RowSetPtr BR = entriesOf(*this);
  if (BR->HasCurrent()) (*BR)["RequiredAddr"].Rows()->CancelBatch();  // never goes to the store
  const RowSetPtr typed = RsFields();
  SaveResult result = inner().Save(std::move(second), std::move(third));
  if (result.Code != kDone && isNew(OID())) rescue(typed);
  return result;
}

void UIO0201500::rescue(const RowSetPtr& typed) {
  const SaveResult read = inner().Read();
  if (read.Code != kDone) {
    (void)inner().Methods("SetRsFields", {Variant(typed)});
    return;
  }
  const RowSetPtr fresh = RsFields();
  fresh->MoveFirst();
  if (!fresh->Eof()) fresh->Delete(1);
  copyAsNew(*typed, *fresh);
}

void copyAsNew(RowSet& from, RowSet& to) {
  from.SetFilter("");
  ForEachRow(from, [&](RowSet&) {
    to.AddNew();
    for (std::size_t i = 0; i < from.Fields().size(); ++i) {
      Field source = from.Fields()[i];
      if (source.Type() == FieldType::Nested) {
        copyAsNew(*source.Rows(), *to[source.Name()].Rows());
      } else if (!source.IsAbsent() && upper(source.Name()) != "ID") {
        to[source.Name()] = source.Value();
      }
    }
    to.Update();
  });
}

}  // namespace tolvex
