#include "operations/screen/parameter_text.h"

#include <cmath>
#include <limits>

#include "framework/text.h"

namespace tolvex {

ParameterText::ParameterText(std::string_view text, char mark) : mark_(mark) {
  if (!text.empty()) fields_ = split(text, mark);
}

const std::string& ParameterText::operator[](std::size_t index) const {
  static const std::string kNone;
  return index < fields_.size() ? fields_[index] : kNone;
}

int ParameterText::number(std::size_t index) const {
  double value = 0;
  if (!parsePlainNumber(trim((*this)[index]), value)) return 0;
  const bool whole =
      value == std::trunc(value) && std::abs(value) <= std::numeric_limits<int>::max();
  return whole ? static_cast<int>(value) : 0;
}

void ParameterText::set(std::size_t index, std::string value) {
  reach(index + 1);
  fields_[index] = std::move(value);
}

void ParameterText::reach(std::size_t count) {
  if (fields_.size() < count) fields_.resize(count);
}

std::string ParameterText::str() const { return join(fields_, std::string_view(&mark_, 1)); }

}  // namespace tolvex
