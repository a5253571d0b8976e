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
    if (key == "Parent") parameters = parentParameters();
    if (key == "EnabledAddressee") parameters = kNoParameters;
    return read("DO0201300_Get" + key, parameters);
  });
}

MethodResult UIO0201300::accountList() {
  if (accounts_) return done(accounts_);
  const MethodResult list = read("GetAccountList", kNoParameters);
  if (list.Code != kDone) return list;
  auto accounts = std::make_shared<ParamDictionary>();
  accounts->SetItem("0", "Likutis");
  setItems(*accounts, *list.Value.AsRows(), "Account", "Name");
  accounts_ = std::move(accounts);
  return done(accounts_);
}

MethodResult UIO0201300::Methods(std::string key, std::span<const Variant> par) {
  return guarded([&] { return passOn(call(key, par.empty() ? "" : NullToText(par[0]))); });
}

}  // namespace tolvex
