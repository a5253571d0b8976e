// Settings of a screen that a user keeps by name: short texts in the user's settings, joined by
// "#". A text with a "#" of its own cannot be kept.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"

namespace tolvex {

class SavedVariants {
 public:
  SavedVariants(HostContext& host, std::string_view section, std::string_view key);
  const std::vector<std::string>& texts() const { return texts_; }
  bool add(std::string_view text);  // false when it is there already
  void remove(std::string_view text);

 private:
  void store();
  HostContext& host_;
  std::string section_, key_;
  std::vector<std::string> texts_;
};

}  // namespace tolvex
