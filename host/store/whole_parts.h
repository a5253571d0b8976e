// Sums on their way into the store.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

#include "framework/rounding.h"

namespace tolvex::store {

// A sum in whole parts of the given size (100: cents). Nothing when it has finer parts, since what
// the column cannot hold is refused and never rounded, or when it is beyond all money.
inline std::optional<std::int64_t> wholeParts(double value, double partsInOne) {
  constexpr double kLargest = 9e15;
  const double product = value * partsInOne;
  const double whole = roundHalfEven(product, 0);
  if (!(std::fabs(product - whole) <= 0.01) || !(std::fabs(whole) <= kLargest)) return std::nullopt;
  return static_cast<std::int64_t>(whole);
}

}  // namespace tolvex::store
