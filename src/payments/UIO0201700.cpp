#include "payments/UIO0201700.h"

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/tree_kind.h"

namespace tolvex {

MethodResult UIO0201700::Properties(std::string key, std::string parameters) {
  return guarded([&] {
    std::string method = "Get" + key;
    if (key == "Parent") parameters = parentParameters(*this);
    if (key == "ItemsList") {
      method = "DO0201701_GetItemsList";
      parameters = quoted(OIDR());
    }
    const HostResult result = call(method, parameters);
    if (result.Code == kDone) return done(result.Data);
    warn(hostContext(), result.Text);
    return MethodResult{result.Code, result.Text, {}};
  });
}

MethodResult UIO0201700::Methods(std::string key, std::span<const Variant> par) {
  return guarded([&] { return passOn(call(key, par.empty() ? "" : NullToText(par[0]))); });
}

}  // namespace tolvex
