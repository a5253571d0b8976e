// Numbers as users see and type them.
//
// Shown numbers round half away from zero on their decimal digits, never as "-0,00". Reading takes
// both decimal marks and drops the group mark (a blank or a no-break blank).
#pragma once

#include <string>
#include <string_view>

namespace tolvex {

struct NumberFormat {
  char decimal = ',';
  std::string group = "\xC2\xA0";  // between thousands in lists; edit boxes show none
};

// With group marks, for lists and reports; grouped = false for edit boxes.
std::string formatNumber(double value, int decimals, const NumberFormat& format = {},
                         bool grouped = true);
// Without a format: the shortest text of at most 15 significant digits, with the decimal mark.
std::string shortNumber(double value, const NumberFormat& format = {});
bool isNumeric(std::string_view text);
double TextToDouble(std::string_view text);  // 0 when it is no number

// A sum box takes arithmetic: "100*1,21", "(50+25)/3". Plain numbers are read as TextToDouble
// does. False when the text is neither.
bool evaluateSum(std::string_view text, double& value);

}  // namespace tolvex
