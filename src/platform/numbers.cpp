#include "platform/numbers.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace tolvex {
namespace {

constexpr int kSignificant = 15;
constexpr std::string_view kNoBreakBlank = "\xC2\xA0";

// A finite number as at most 15 decimal digits: 0.d1d2d3… times ten to `point`.
struct Digits {
  bool negative = false;
  std::string digits;
  int point = 0;
};

Digits digitsOf(double value) {
  Digits result;
  result.negative = std::signbit(value);
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text - 1, std::fabs(value),
                                 std::chars_format::scientific, kSignificant - 1);
  const std::string_view all(text, static_cast<std::size_t>(end.ptr - text));
  const std::size_t mark = all.find('e');
  result.digits.assign(all.substr(0, 1));
  result.digits.append(all.substr(2, mark - 2));
  *end.ptr = '\0';  // to_chars writes no end
  result.point = std::atoi(text + mark + 1) + 1;
  return result;
}

// Cuts to `keep` digits, half away from zero; keep may be below zero.
void roundDigits(Digits& number, int keep) {
  if (keep >= static_cast<int>(number.digits.size())) return;
  if (keep < 0) {
    number.digits.clear();
    return;
  }
  const bool up = number.digits[static_cast<std::size_t>(keep)] >= '5';
  number.digits.resize(static_cast<std::size_t>(keep));
  if (!up) return;
  for (std::size_t i = number.digits.size(); i > 0; --i) {
    char& digit = number.digits[i - 1];
    if (digit != '9') {
      ++digit;
      return;
    }
    digit = '0';
  }
  number.digits.insert(number.digits.begin(), '1');
  ++number.point;
}

bool isZero(const Digits& number) {
  return number.digits.find_first_not_of('0') == std::string::npos;
}

// The digits before the decimal mark, at least one.
std::string wholePart(const Digits& number) {
  if (number.point <= 0) return "0";
  std::string whole = number.digits.substr(0, static_cast<std::size_t>(number.point));
  whole.resize(static_cast<std::size_t>(number.point), '0');
  return whole;
}

std::string fraction(const Digits& number) {
  if (number.point >= static_cast<int>(number.digits.size())) return {};
  if (number.point >= 0) return number.digits.substr(static_cast<std::size_t>(number.point));
  return std::string(static_cast<std::size_t>(-number.point), '0') + number.digits;
}

std::string grouped(const std::string& whole, const std::string& mark) {
  std::string result;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if (i > 0 && (whole.size() - i) % 3 == 0) result += mark;
    result += whole[i];
  }
  return result;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// The text without blanks of both kinds and with the point as decimal mark.
std::string packed(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ' ') continue;
    if (text.substr(i, kNoBreakBlank.size()) == kNoBreakBlank) {
      ++i;
      continue;
    }
    result += text[i] == ',' ? '.' : text[i];
  }
  return result;
}

// Reads digits with at most one decimal mark and an exponent from the front of a packed text.
bool readUnsigned(std::string_view& text, double& value) {
  if (text.empty() || (!isDigit(text.front()) && text.front() != '.')) return false;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec != std::errc{}) return false;
  text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
  return true;
}

bool readNumber(std::string_view text, double& value) {
  const std::string plain = packed(text);
  std::string_view rest = plain;
  bool negative = false;
  if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
    negative = rest.front() == '-';
    rest.remove_prefix(1);
  }
  double number = 0;
  if (!readUnsigned(rest, number) || !rest.empty()) return false;
  value = negative && number != 0 ? -number : number;
  return true;
}

// sum: product (("+"|"-") product)*, product: factor (("*"|"/") factor)*.
class Arithmetic {
 public:
  explicit Arithmetic(std::string_view text) : rest_(text) {}
  bool read(double& value) { return sum(value) && rest_.empty() && std::isfinite(value); }

 private:
  bool take(char mark) {
    if (rest_.empty() || rest_.front() != mark) return false;
    rest_.remove_prefix(1);
    return true;
  }
  bool sum(double& value) {
    if (!product(value)) return false;
    for (;;) {
      double right = 0;
      if (take('+')) {
        if (!product(right)) return false;
        value += right;
      } else if (take('-')) {
        if (!product(right)) return false;
        value -= right;
      } else {
        return true;
      }
    }
  }
  bool product(double& value) {
    if (!factor(value)) return false;
    for (;;) {
      double right = 0;
      if (take('*')) {
        if (!factor(right)) return false;
        value *= right;
      } else if (take('/')) {
        if (!factor(right) || right == 0) return false;
        value /= right;
      } else {
        return true;
      }
    }
  }
  bool factor(double& value) {
    bool negative = false;
    while (!rest_.empty() && (rest_.front() == '-' || rest_.front() == '+')) {
      negative ^= rest_.front() == '-';
      rest_.remove_prefix(1);
    }
    if (take('(')) {
      if (++depth_ > kDeepest || !sum(value) || !take(')')) return false;
      --depth_;
    } else if (!readUnsigned(rest_, value)) {
      return false;
    }
    if (negative) value = -value;
    return true;
  }

  static constexpr int kDeepest = 50;
  std::string_view rest_;
  int depth_ = 0;
};

}  // namespace

std::string formatNumber(double value, int decimals, const NumberFormat& format, bool grouping) {
  if (!std::isfinite(value)) return {};
  Digits number = digitsOf(value);
  roundDigits(number, number.point + decimals);
  const bool zero = isZero(number);
  const std::string whole = wholePart(number);
  std::string text = number.negative && !zero ? "-" : "";
  text += grouping ? grouped(whole, format.group) : whole;
  if (decimals > 0) {
    std::string part = zero ? "" : fraction(number);
    part.resize(static_cast<std::size_t>(decimals), '0');
    text += format.decimal + part;
  }
  return text;
}

std::string shortNumber(double value, const NumberFormat& format) {
  if (!std::isfinite(value)) return {};
  Digits number = digitsOf(value);
  number.digits.erase(number.digits.find_last_not_of('0') + 1);
  if (number.digits.empty()) return "0";
  std::string text = number.negative ? "-" : "";
  if (number.point > kSignificant) {
    text += number.digits[0];
    if (number.digits.size() > 1) text += format.decimal + number.digits.substr(1);
    return text + "E+" + std::to_string(number.point - 1);
  }
  text += wholePart(number);
  const std::string part = fraction(number);
  if (!part.empty()) text += format.decimal + part;
  return text;
}

bool isNumeric(std::string_view text) {
  double value = 0;
  return readNumber(text, value);
}

double TextToDouble(std::string_view text) {
  double value = 0;
  return readNumber(text, value) ? value : 0;
}

bool evaluateSum(std::string_view text, double& value) {
  double result = 0;
  const std::string plain = packed(text);
  if (!readNumber(plain, result) && !Arithmetic(plain).read(result)) return false;
  value = result == 0 ? 0 : result;
  return true;
}

}  // namespace tolvex
