#include <algorithm>

#include "framework/results.h"
#include "framework/text.h"
#include "platform/input.h"

namespace tolvex::ui {
namespace {

bool isNumber(std::string_view text) {
  return !text.empty() && text.size() <= 2 &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

unsigned number(std::string_view text) {
  unsigned value = 0;
  for (const char c : text) value = value * 10 + static_cast<unsigned>(c - '0');
  return value;
}

std::optional<DateTime> dayOf(int year, unsigned month, unsigned day) {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12 || day < 1) return std::nullopt;
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  const int last = kDays[month - 1] + (month == 2 && leap ? 1 : 0);
  if (static_cast<int>(day) > last) return std::nullopt;
  return DateTime::Of(year, month, day);
}

}  // namespace

std::optional<DateTime> readTypedDate(std::string_view typed, DateTime base, DateTime today) {
  const std::string text = trim(typed);
  if (text == "t" || text == "T") return today.Date();
  if (text.size() == 8 &&
      std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    return dayOf(static_cast<int>(number(text.substr(0, 4))), number(text.substr(4, 2)),
                 number(text.substr(6)));
  }
  if (const auto whole = DateTime::Parse(text)) return whole->Date();
  std::string parts = text;
  for (char& c : parts) {
    if (c == ' ' || c == ',' || c == '-' || c == '/') c = '.';
  }
  const auto pieces = split(parts, '.');
  if (pieces.size() == 1 && isNumber(pieces[0])) {
    return dayOf(base.Year(), base.Month(), number(pieces[0]));
  }
  if (pieces.size() == 2 && isNumber(pieces[0]) && isNumber(pieces[1])) {
    return dayOf(base.Year(), number(pieces[1]), number(pieces[0]));
  }
  return std::nullopt;
}

}  // namespace tolvex::ui
