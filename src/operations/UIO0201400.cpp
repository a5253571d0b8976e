#include "operations/UIO0201400.h"

#include "framework/parameters.h"

namespace tolvex {

MethodResult UIO0201400::Properties(std::string key, std::string parameters) {
  return guarded([&] {
    if (key == "FormTypes" || key == "MyFirmAccounts") {
      parameters = kNoParameters;
    } else if (key == "Parent") {
      parameters = Parameters().number(Fields()["ParentID"].Number()).str();
    }
    const HostResult result = call("Get" + key, parameters);
    if (result.Code != kDone) {
      warn(hostContext(), result.Text);
      return MethodResult{result.Code, result.Text, {}};
    }
    return done(result.Data);
  });
}

MethodResult UIO0201400::Methods(std::string key, std::span<const Variant>) {
  if (key == "FillTemplatesTrw") return refused("Šablonų medis dar neįdiegtas, jis bus vėliau.");
  return done();
}

}  // namespace tolvex
