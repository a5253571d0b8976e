#include "host/cards/code_checks.h"

#include <algorithm>

#include "framework/date_time.h"
#include "framework/text.h"
#include "host/store/control_digit.h"

namespace tolvex {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool allDigits(std::string_view text) { return std::all_of(text.begin(), text.end(), isDigit); }
int valueOf(char digit) { return digit - '0'; }

bool lastDigitControls(std::string_view digits) {
  return controlDigit(digits.substr(0, digits.size() - 1)) == valueOf(digits.back());
}

int number(std::string_view digits) {
  int result = 0;
  for (const char digit : digits) result = result * 10 + valueOf(digit);
  return result;
}

// The first digit tells the sex and the century, six more the day of birth; zeros stand for what
// is not known.
bool beginsWithBirth(std::string_view code) {
  const int sex = valueOf(code[0]);
  if (sex == 0 || sex > 6) return sex == 9;  // 9: given without these data
  const int year = 1800 + (sex - 1) / 2 * 100 + number(code.substr(1, 2));
  const int month = number(code.substr(3, 2)), day = number(code.substr(5, 2));
  if (month == 0 || day == 0) return month <= 12 && day <= 31;
  const std::string_view text = code.substr(1, 6);
  return DateTime::Parse(std::to_string(year) + "." + std::string(text.substr(2, 2)) + "." +
                         std::string(text.substr(4, 2)))
      .has_value();
}

// The rest of the number after its letters became 10 … 35, its first four marks put last.
int ibanRemainder(std::string_view iban) {
  int rest = 0;
  for (std::size_t i = 0; i < iban.size(); ++i) {
    const char mark = iban[(i + 4) % iban.size()];
    const int value = isDigit(mark) ? valueOf(mark) : mark - 'A' + 10;
    rest = (value < 10 ? rest * 10 + value : rest * 100 + value) % 97;
  }
  return rest;
}

}  // namespace

std::string companyCodeRemark(std::string_view code) {
  if (!allDigits(code) || (code.size() != 7 && code.size() != 9))
    return "įmonės kodas paprastai yra iš 7 arba 9 skaitmenų";
  return lastDigitControls(code) ? "" : "neteisingas įmonės kodo kontrolinis skaitmuo";
}

std::string vatCodeRemark(std::string_view code) {
  if (!code.starts_with("LT")) {
    const bool foreign = code.size() > 4 && isLetter(code[0]) && isLetter(code[1]);
    return foreign ? "" : "PVM kodas prasideda šalies raidėmis (LT)";
  }
  const std::string_view digits = code.substr(2);
  if (!allDigits(digits) || (digits.size() != 9 && digits.size() != 12))
    return "Lietuvos PVM kodas yra LT ir 9 arba 12 skaitmenų";
  return lastDigitControls(digits) ? "" : "neteisingas PVM kodo kontrolinis skaitmuo";
}

std::string personCodeRemark(std::string_view code) {
  if (!allDigits(code) || code.size() != 11) return "asmens kodas yra iš 11 skaitmenų";
  if (!beginsWithBirth(code)) return "asmens kode neteisinga gimimo data";
  return lastDigitControls(code) ? "" : "neteisingas asmens kodo kontrolinis skaitmuo";
}

std::string accountNumberRemark(std::string_view number) {
  const std::string iban = upper(replaceAll(std::string(number), " ", ""));
  constexpr std::size_t kShortest = 15, kLongest = 34, kLithuanian = 20;
  const bool written =
      iban.size() >= kShortest && iban.size() <= kLongest && isLetter(iban[0]) &&
      isLetter(iban[1]) &&
      std::all_of(iban.begin(), iban.end(), [](char c) { return isDigit(c) || isLetter(c); });
  if (!written) return "sąskaitos numeris ne IBAN formato";
  if (iban.starts_with("LT") && iban.size() != kLithuanian)
    return "Lietuvos banko sąskaitos numeris yra iš 20 ženklų";
  return ibanRemainder(iban) == 1 ? "" : "neteisingi IBAN kontroliniai skaitmenys";
}

}  // namespace tolvex
