#include "operations/number_text.h"

#include <algorithm>

#include "framework/text.h"

namespace tolvex {
namespace {

std::string twoDigits(unsigned value) {
  return {static_cast<char>('0' + value / 10 % 10), static_cast<char>('0' + value % 10)};
}

std::string sixDigits(DateTime date) {
  return twoDigits(static_cast<unsigned>(date.Year() % 100)) + twoDigits(date.Month()) +
         twoDigits(date.Day());
}

const NumberPart* partOf(std::string_view keyword) {
  const auto* found = std::ranges::find(kNumberParts, keyword, &NumberPart::keyword);
  return found == kNumberParts.end() ? nullptr : found;
}

}  // namespace

std::string paddedCounter(int counter, std::size_t width) {
  const std::string number = std::to_string(counter);
  return std::string(width > number.size() ? width - number.size() : 0, '0') + number;
}

std::string NumberText::compose(DateTime today) const {
  std::vector<std::string> parts;
  for (const std::string& keyword : split(mask, '_')) {
    if (keyword == "Date") {
      parts.push_back(sixDigits(today));
    } else if (keyword == "UserPrefix") {
      parts.push_back(userPrefix);
    } else if (keyword == "AutoNumber") {
      parts.push_back(paddedCounter(counter, length(digits)));
    } else if (keyword == "Prefix") {
      parts.push_back(prefix);
    }
  }
  return join(parts, "-");
}

std::vector<MaskPart> partsOf(std::string_view mask) {
  std::vector<MaskPart> parts;
  const auto listed = [&](std::string_view keyword) {
    return std::ranges::any_of(
        parts, [&](const MaskPart& known) { return known.part.keyword == keyword; });
  };
  for (const std::string& keyword : split(mask, '_')) {
    const NumberPart* part = partOf(keyword);
    if (part && !listed(keyword)) parts.push_back({*part, true});
  }
  for (const NumberPart& part : kNumberParts)
    if (!listed(part.keyword)) parts.push_back({part, false});
  return parts;
}

}  // namespace tolvex
