#include "framework/form_registry.h"

namespace tolvex {

std::vector<std::string> FormRegistry::names() const {
  std::vector<std::string> names;
  for (const auto& [name, maker] : makers_) names.push_back(name);
  return names;
}

}  // namespace tolvex
