#include "framework/rounding.h"

#include <cmath>

#include "framework/results.h"

namespace tolvex {

double roundHalfEven(double x, int n) {
  static constexpr double kPow10[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
  expect(n >= 0 && n <= 9, "roundHalfEven: decimals are 0 to 9");
  if (!std::isfinite(x)) return x;
  const double scaled = x * kPow10[n];
  constexpr double kNoFraction = 4503599627370496.0;  // 2^52
  if (std::fabs(scaled) >= kNoFraction) return x;
  double whole = std::trunc(scaled);
  const double fraction = std::fabs(scaled - whole);
  if (fraction > 0.5 || (fraction == 0.5 && std::fmod(whole, 2.0) != 0.0)) {
    whole += std::signbit(scaled) ? -1.0 : 1.0;
  }
  // Divided, not multiplied by 0.01: only the quotient is the double that the decimal text gives.
  const double rounded = whole / kPow10[n];
  return rounded == 0.0 ? 0.0 : rounded;
}

double roundLt(double x) { return roundHalfEven(x + 0.00001, 2); }

}  // namespace tolvex
