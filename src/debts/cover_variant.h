// A way of covering that the user keeps by name: two accounts and the sides that their debts lie
// on, "450 K - 240 D".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tolvex {

struct CoverVariant {
  std::string primary, secondary;  // accounts
  bool primaryOnCredit = true;     // the debts of the other account lie on the other side

  std::string text() const;
};
std::optional<CoverVariant> readCoverVariant(std::string_view text);

}  // namespace tolvex
