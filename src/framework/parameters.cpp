#include "framework/parameters.h"

#include "framework/text.h"

namespace tolvex {

std::string quoted(std::string_view value) {
  std::string out;
  out.reserve(value.size() + 2);
  out += '\'';
  out += value;
  out += '\'';
  return out;
}

void Parameters::comma() {
  if (!out_.empty()) out_ += ',';
}

Parameters& Parameters::text(std::string_view value) { return bare(quoted(value)); }

Parameters& Parameters::number(double value) { return bare(plainNumber(value)); }

Parameters& Parameters::date(DateTime value) { return text(value.Text()); }

Parameters& Parameters::bare(std::string_view value) {
  comma();
  out_ += value;
  return *this;
}

}  // namespace tolvex
