#include "payments/UIO0201700.h"

#include "framework/conversions.h"
#include "framework/parameters.h"

namespace tolvex {

MethodResult UIO0201700::Properties(std::string key, std::string parameters) {
  return guarded([&] {
    if (key == "Parent") parameters = parentParameters();
    if (key == "ItemsList") return read("DO0201701_GetItemsList", quoted(OIDR()));
    return read("Get" + key, parameters);
  });
}

MethodResult UIO0201700::Methods(std::string key, std::span<const Variant> par) {
  return guarded([&] { return passOn(call(key, par.empty() ? "" : NullToText(par[0]))); });
}

}  // namespace tolvex
