// The digit that ends the codes of companies, taxpayers and residents.
#pragma once

#include <cstddef>
#include <string_view>

namespace tolvex {

// Of the digits before it: weights 1, 2, … 9, 1, …; when the remainder by 11 has two digits,
// weights that begin with 3; then 0.
inline int controlDigit(std::string_view digits) {
  for (const std::size_t first : {0, 2}) {
    std::size_t sum = 0;
    for (std::size_t i = 0; i < digits.size(); ++i)
      sum += (1 + (i + first) % 9) * static_cast<std::size_t>(digits[i] - '0');
    if (sum % 11 != 10) return static_cast<int>(sum % 11);
  }
  return 0;
}

}  // namespace tolvex
