#include "operations/screen/saved_variants.h"

#include <algorithm>

#include "framework/text.h"

namespace tolvex {

SavedVariants::SavedVariants(HostContext& host, std::string_view section, std::string_view key)
    : host_(host), section_(section), key_(key) {
  texts_ = split(host.settings().get(section_, key_, ""), '#');
  std::erase(texts_, "");
}

bool SavedVariants::add(std::string_view text) {
  if (std::ranges::find(texts_, text) != texts_.end()) return false;
  texts_.emplace_back(text);
  store();
  return true;
}

void SavedVariants::remove(std::string_view text) {
  std::erase(texts_, text);
  store();
}

void SavedVariants::store() { host_.settings().set(section_, key_, join(texts_, "#")); }

}  // namespace tolvex
