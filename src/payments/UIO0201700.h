// UIO0201700: one payment template, or a group of them.
#pragma once

#include <string>

#include "framework/object_contract.h"

namespace tolvex {

inline constexpr const char* kPaymentTemplates = "O0201700";      // the kind
inline constexpr const char* kPaymentTemplate = "O0201701";       // a template
inline constexpr const char* kPaymentTemplateGroup = "O0001600";  // a group of them

class UIO0201700 final : public ForwardingUIO {
 public:
  UIO0201700() : ForwardingUIO(kPaymentTemplates) {}

  // "ItemsList": the instalments of this template. "Parent": the group above, by the record's own
  // ParentID. Any other key is read with the caller's parameters. A failure is shown.
  MethodResult Properties(std::string key, std::string parameters) override;
  // Every name is an action of the store with its first argument as given.
  MethodResult Methods(std::string key, std::span<const Variant> par) override;
  using ForwardingUIO::Methods;
};

}  // namespace tolvex
