// UIO0201400: one group of operations: its document kind, numbering and settings.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "framework/object_contract.h"

namespace tolvex {

inline constexpr const char* kGroupKind = "O0201400";

// The rights component of a group's card, by its reference; of new groups for "".
std::string groupRights(std::string_view reference);

class UIO0201400;
// The group behind a reference, a new one for ""; null after the user was told that it is gone or
// cannot be read.
std::shared_ptr<UIO0201400> toldGroup(std::string reference);

class UIO0201400 final : public ForwardingUIO {
 public:
  UIO0201400() : ForwardingUIO(kGroupKind) {}

  // "FormTypes" and "MyFirmAccounts" take no parameters, "Parent" reads the group above; any other
  // key goes to the store with the caller's parameters. A failure of the store is shown.
  MethodResult Properties(std::string key, std::string parameters) override;
  // "FillTemplatesTrw", with the id of a template group: the rows of "TemplateList" for the tree of
  // a group's templates. Any other key does nothing and succeeds.
  MethodResult Methods(std::string key, std::span<const Variant> par) override;
  using ForwardingUIO::Methods;

 private:
  MethodResult templates(std::span<const Variant> par);
};

}  // namespace tolvex
