#include "accounts/UIO0201300.h"

#include "framework/conversions.h"
#include "framework/parameters.h"

namespace tolvex {

MethodResult UIO0201300::Properties(std::string key, std::string parameters) {
  return guarded([&] {
    if (key == "AccountList") return accountList();
    if (key == "GetObjectForm") {
      return done(Variant(ObjectPtr(makeLockScreen(*forms_, hostContext(), OID()))));
    }
    if (key == "Parent") parameters = Parameters().number(Fields()["ParentID"].Number()).str();
    if (key == "EnabledAddressee") parameters = kNoParameters;
    return read("DO0201300_Get" + key, parameters);
  });
}

MethodResult UIO0201300::read(const std::string& method, const std::string& parameters) {
  const HostResult result = call(method, parameters);
  if (result.Code != kDone) {
    warn(hostContext(), result.Text);
    return {result.Code, result.Text, {}};
  }
  return done(result.Data);
}

MethodResult UIO0201300::accountList() {
  if (accounts_) return done(accounts_);
  MethodResult list = read("GetAccountList", kNoParameters);
  if (list.Code != kDone) return list;
  auto accounts = std::make_shared<ParamDictionary>();
  accounts->SetItem("0", "Likutis");
  const RowSetPtr rows = list.Value.AsRows();
  Field Account = (*rows)["Account"], Name = (*rows)["Name"];
  ForEachRow(*rows, [&](RowSet&) { accounts->SetItem(Account.Text(), Name.Text()); });
  accounts_ = std::move(accounts);
  return done(accounts_);
}

MethodResult UIO0201300::Methods(std::string key, std::span<const Variant> par) {
  return guarded([&] { return passOn(call(key, par.empty() ? "" : NullToText(par[0]))); });
}

}  // namespace tolvex
