// Rates of currencies as other programs write them: a line a rate, day, code and rate parted by
// tabulators, semicolons, blanks or commas ("2004.03.31;USD;2,7654"). A number of units may stand
// before the rate ("2004-03-31 JPY 100 2,6210"). Decimal mark: comma or point.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/date_time.h"

namespace tolvex {

struct RateLine {
  int number = 0;  // of the line in the text, from 1
  std::string text;
  DateTime day;
  std::string code;
  double rate = 0;    // litas for one unit
  std::string fault;  // why the line is no rate, for the user; "" when it is one
};

struct RateTextRules {
  std::vector<std::string> codes;  // of the currencies that have rates
  std::string code;                // of a line that names none, or ""
  std::optional<DateTime> day;     // likewise
};

// A line for every line that is neither blank nor the heading. A currency may have one rate a day.
std::vector<RateLine> readRateText(std::string_view text, const RateTextRules& rules);

}  // namespace tolvex
