#include "accounts/UIO0201300.h"

#include "framework/conversions.h"
#include "framework/parameters.h"

namespace tolvex {

MethodResult UIO0201300::Properties(std::string key, std::string parameters) {
  return guarded([&] {
    if (key == "AccountList") return readAccounts(accounts_);
    if (key == "GetObjectForm") {
      return done(Variant(ObjectPtr(makeLockScreen(*forms_, hostContext(), OID()))));
    }
    if (key == "Parent") parameters = parentParameters();
    if (key == "EnabledAddressee") parameters = kNoParameters;
    return read("DO0201300_Get" + key, parameters);
  });
}

MethodResult UIO0201300::Methods(std::string key, std::span<const Variant> par) {
  return guarded([&] { return passOn(call(key, par.empty() ? "" : NullToText(par[0]))); });
}

}  // namespace tolvex
