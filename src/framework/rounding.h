// The one rounding of the program: half to even on the scaled double.
//
// It is the arithmetic rounding of a double, not of its exact binary value and not of its decimal
// text: 2.675 rounds to 2.68, 50.005 to 50.00. Each subject adds its own small bias before it
// rounds (or none); biases are never shared. Needs strict IEEE doubles: no contraction of a
// product and a sum, no extended precision.
#pragma once

namespace tolvex {

// x rounded to n decimals, 0 <= n <= 9. The result is the double nearest to that decimal, so two
// equal sums compare equal. Never gives a negative zero; infinities and NaN come back as they are.
double roundHalfEven(double x, int n);

// Litas value of a currency sum or template share: x + 0.00001 to two decimals. The bias lifts
// exact halves that a double holds just below; it is not mirrored for negative numbers.
double roundLt(double x);

}  // namespace tolvex
