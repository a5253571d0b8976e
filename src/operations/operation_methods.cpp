#include "operations/operation_methods.h"

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/told.h"
#include "operations/autonumber.h"
#include "operations/comment_list.h"
#include "operations/document_form.h"
#include "operations/entries.h"
#include "operations/entry_tests.h"
#include "operations/protocol.h"
#include "operations/show_entry.h"

namespace tolvex {

namespace {

using Row = MethodTable<UIO0201500>::Row;

constexpr const char* kNoRates = "Valiutų kursai neperskaityti!";

std::string text(Arguments par, std::size_t index) { return NullToText(argument(par, index)); }

MethodResult getAutoNumber(UIO0201500& operation, Arguments par) {
  const Variant& date = argument(par, 0);
  return GetAutoNumber(operation, date.IsDate() ? date.AsDate().Text() : NullToText(date),
                       static_cast<int>(NullToDouble(argument(par, 1))));
}

MethodResult testAccount(UIO0201500& operation, Arguments par) {
  if (par.empty()) return refused("Not set parameter for TestAccount method !", false);
  return TestAccount(operation, text(par, 0));
}

MethodResult testOper(UIO0201500& operation, Arguments par) {
  return TestOper(operation, text(par, 0), NullToBool(argument(par, 1)) ? Strict::Yes : Strict::No);
}

MethodResult deleteBR(UIO0201500& operation, Arguments par) {
  constexpr int kByGuid = 9;
  const int sign = par.size() < 2 ? kByGuid : static_cast<int>(NullToDouble(par[1]));
  return DeleteBR(operation, text(par, 0), sign, text(par, 2));
}

MethodResult showOperation(UIO0201500& operation, Arguments) {
  const std::shared_ptr<ui::Form> form =
      makeScreen(operation.tables().forms, "frmBROper",
                 {hostContext(), operation.shared_from_this(), "", true});
  if (form) hostContext().screens().runModal(*form);
  return done(true);
}

std::string dateText(const Variant& value) {
  return value.IsDate() ? value.AsDate().Text() : NullToText(value);
}

// With two arguments the date stands first; the other order is understood as well.
MethodResult currencyRates(UIO0201500& operation, Arguments par) {
  std::string parameters = quoted(text(par, 0));
  if (par.size() == 2) {
    const bool swapped = par[1].IsDate() || DateTime::Parse(dateText(par[1])).has_value();
    parameters =
        quoted(dateText(par[swapped ? 1 : 0])) + "," + quoted(NullToText(par[swapped ? 0 : 1]));
  }
  HostResult result;
  operation.BO()->CallBO("DO0002200_GetCurrencyRates", parameters, nullptr, result);
  return passOn(result);
}

}  // namespace

MethodResult GetCurrencyList(VXObjectUIO& operation, Arguments par) {
  MethodResult read =
      operation.Properties("CurrencyList", par.empty() ? "1991.01.01" : dateText(par[0]));
  if (read.Code != kDone) return read;
  auto rates = std::make_shared<ParamDictionary>();
  const RowSetPtr rows = read.Value.AsRows();
  Field Code = (*rows)["Code"], Rate = (*rows)["Rate"], Base = (*rows)["BaseCurrency"];
  ForEachRow(*rows, [&](RowSet&) {
    if (Base.Number() == 0 && !rates->Exists(Code.Text())) {
      rates->Add(std::string(Code.Text()), Rate.Number());
    }
  });
  return done(rates);
}

DictionaryPtr GetCurrencyDictionary(VXObjectUIO& object, DateTime date) {
  std::shared_ptr<VXObjectUIO> operation;
  if (object.OType() != kOperationKind) {
    operation = hostContext().objects().create(kOperationKind);
    if (!operation) return nullptr;
  }
  VXObjectUIO& asked = operation ? *operation : object;
  const MethodResult read = asked.Methods("GetCurrencyList", {Variant(date.Text())});
  if (read.Code == kRefused) return nullptr;  // books without a currency need no rates
  return toldDictionary(read, kNoRates);
}

RowSetPtr GetRelatedBR(VXObjectUIO& object, std::string_view reference) {
  return toldRows(object.Properties("RelatedBR", quoted(reference) + "," + quoted(object.OID())));
}

void addOperationMethods(MethodTable<UIO0201500>& methods) {
  const std::vector<Row> rows = {
      {"AddBR",
       {3, 6, 9, 10, 11, 12, 13, 14, 15, 16},
       "Method AddBR_0:",
       [](UIO0201500& o, Arguments par) { return AddBR(o, NewEntry::from(par)); }},
      {"AddTemplate",
       {2, 5, 8, 9, 10, 11},
       "Method AddTemplate_0:",
       [](UIO0201500& o, Arguments par) { return AddTemplate(o, TemplateEntries::from(par)); }},
      {"CreateBR", {}, "", [](UIO0201500& o, Arguments par) { return CreateBR(o, par); }},
      {"TestAccount", {}, "", testAccount},
      {"TestOper", {}, "", testOper},
      {"ShowBR", {}, "", ShowBR},
      // The refusal names another method; callers and users know it so.
      {"DeleteBR", {0, 1, 2}, "Method CurrencyRates_0:", deleteBR},
      {"GetAutoNumber", {-1, 1}, "Method GetAutoNumber:", getAutoNumber},
      {"SaveAutoNumber",
       {1},
       "Method SaveAutoNumber:",
       [](UIO0201500& o, Arguments par) { return SaveAutoNumber(o, text(par, 0), text(par, 1)); }},
      {"CheckAutoNumber", {}, "", [](UIO0201500& o, Arguments) { return CheckAutoNumber(o); }},
      {"CreateProtocol", {}, "", [](UIO0201500& o, Arguments) { return CreateProtocol(o); }},
      {"ShowProtocol", {}, "", [](UIO0201500& o, Arguments) { return ShowProtocol(o); }},
      {"ShowBROper", {}, "", showOperation},
      {"GetCurrencyList", {}, "", GetCurrencyList},
      {"CurrencyRates", {0, 1}, "Method CurrencyRates_0:", currencyRates},
      {"GetCommentList", {}, "", GetCommentList}};
  for (const Row& row : rows) methods.add(row);
}

}  // namespace tolvex
