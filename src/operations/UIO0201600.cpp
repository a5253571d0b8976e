#include "operations/UIO0201600.h"

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"
#include "operations/template_forms.h"

namespace tolvex {

std::string templateSetParameters(std::string_view newMode, std::string_view reference) {
  const std::vector<std::string> parts = split(newMode, '|');
  if (parts.size() < 2 || parts[0].empty()) return {};
  return Parameters().text(parts[0]).text(parts[1]).number(idOf(reference)).str();
}

MethodResult UIO0201600::Properties(std::string key, std::string parameters) {
  return guarded([&] {
    if (key == "AccountList") return readAccounts(accounts_);
    if (key == "GetObjectForm") return objectForm();
    if (key == "Parent") parameters = parentParameters();
    if (key == "EnabledAddressee") return passOn(call("GetEnabledAddressee", kNoParameters));
    return read("Get" + key, parameters);
  });
}

MethodResult UIO0201600::objectForm() {
  std::shared_ptr<VXObjectUIO> self = shared_from_this();
  return done(Variant(ObjectPtr(
      forms_->make(kTemplateScreen, ObjectFormRequest{hostContext(), std::move(self), newMode_}))));
}

MethodResult UIO0201600::Methods(std::string key, std::span<const Variant> par) {
  return guarded([&] {
    const std::string argument = par.empty() ? std::string() : NullToText(par[0]);
    if (key == "NewMode") {
      newMode_ = argument;
      return done();
    }
    return passOn(call(key, argument));
  });
}

SaveResult UIO0201600::Save(RowSetPtr second, RowSetPtr third) {
  const bool created = isNew(OID());
  SaveResult saved = inner().Save(std::move(second), std::move(third));
  if (saved.Code != kDone || !created) return saved;
  const std::string parameters = templateSetParameters(newMode_, OIDR());
  if (parameters.empty()) return saved;
  const HostResult joined = call("AddBRTemplateSet", parameters);
  if (joined.Code != kDone) warn(hostContext(), joined.Text);
  return saved;
}

}  // namespace tolvex
