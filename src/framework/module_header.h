// What the module declares to its host at loading: its place in the tree, its classes, icons and
// the rights that an administrator can grant. Pure data; the order of every list is part of it.
#pragma once

#include <string_view>
#include <vector>

#include "platform/registration.h"

namespace tolvex {

inline constexpr const char* kModuleCode = "L02020011";
inline constexpr const char* kLibraryName = "TolvexUI";

class DLLHeader final : public VXHeader {
 public:
  void DllInicialize(ModuleRegistrar& registrar) override;
};

class SecurityHeader final : public VXHeaderSecurity {
 public:
  std::vector<SecurityEntry> GetComponentList() const override;
};

}  // namespace tolvex
