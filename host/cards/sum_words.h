// A sum of money in Lithuanian words, as it stands on orders and receipts.
//
// "Vienas tūkstantis du šimtai litų 05 centai": the whole units in words, the small ones in two
// figures, or in words too. A hundred and a thousand carry their number ("vienas šimtas"), so that
// nobody can write another one in front.
#pragma once

#include <optional>
#include <string>

namespace tolvex {

// How one, two to nine, and ten of a thing are called: "litas", "litai", "litų". What is counted is
// feminine when the noun ends so ("krona"); a genitive behind or before it says nothing ("svaras
// sterlingų"). Empty names are left out.
struct UnitNames {
  std::string one, two, many;
};
struct MoneyNames {
  UnitNames unit, small;
};

enum class SmallUnits { InFigures, InWords };

inline constexpr double kGreatestInWords = 999'999'999'999.99;

// The sum, rounded to hundredths. Nothing for one beyond the greatest on either side of zero, and
// for what is no number. Small units without a name stand as a fraction: "05/100".
std::optional<std::string> sumByWords(double sum, const MoneyNames& names,
                                      SmallUnits small = SmallUnits::InFigures);

}  // namespace tolvex
