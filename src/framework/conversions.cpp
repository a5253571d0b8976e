#include "framework/conversions.h"

#include "framework/references.h"
#include "framework/text.h"

namespace tolvex {

bool IsBelowOrEqual(double a, double b) { return a <= b; }

std::string CutTrailing(std::string_view text) {
  const std::string trimmed = trim(text);
  return trimmed.empty() ? trimmed : left(trimmed, length(trimmed) - 1);
}

// --- numbers -----------------------------------------------------------------------------------

std::string FormatSum(double value, const NumberFormat& format) {
  if (value > -0.01 && value < 0.01) return " ";
  // Lifts what a double holds just below a half; not mirrored for negative sums.
  return formatNumber(value + 0.00001, 2, format);
}

char32_t FilterNumberKey(char32_t key, std::string_view text) {
  if (key == '.') key = ',';
  if (key == ',') return text.find(',') == std::string_view::npos ? key : 0;
  return FilterDigitKey(key);
}

char32_t FilterDigitKey(char32_t key, std::string_view) {
  constexpr char32_t kBackspace = 8;
  return (key >= '0' && key <= '9') || key == kBackspace ? key : 0;
}

std::string NormalizeNumberText(std::string_view text, int decimals, bool zeroIfBad,
                                const NumberFormat& format) {
  const bool endsWell =
      !text.empty() && (text.back() == ',' || (text.back() >= '0' && text.back() <= '9'));
  const std::string_view number = text.substr(0, text.size() - (text.ends_with(',') ? 1 : 0));
  if (length(text) < 15 && endsWell && isNumeric(number)) {
    return formatNumber(TextToDouble(number), decimals, format, false);
  }
  return zeroIfBad ? formatNumber(0, decimals, format, false) : std::string();
}

// --- values that may be absent -------------------------------------------------------------------

double NullToDouble(const Variant& value) {
  if (value.IsAbsent()) return 0;
  return value.IsText() ? TextToDouble(value.AsText()) : value.AsDouble();
}

std::string NullToText(const Variant& value) {
  if (value.IsNumber()) return shortNumber(value.AsDouble());
  return value.Show();
}

DateTime NullToDate(const Variant& value, DateTime fallback) {
  if (value.IsDate()) return value.AsDate();
  return value.IsText() ? DateTime::Parse(value.AsText()).value_or(fallback) : fallback;
}

bool NullToBool(const Variant& value) {
  if (value.IsAbsent()) return false;
  if (value.IsText()) return equalNoCase(value.AsText(), "True") || value.AsText() == "1";
  return value.AsBool();
}

bool ExistsUnlessAll(const ParamDictionary& dictionary, std::string_view key) {
  return key != "*" && dictionary.Exists(key);
}

// --- dates -------------------------------------------------------------------------------------

DateTime FirstDayOfMonth(DateTime date) { return DateTime::Of(date.Year(), date.Month(), 1); }

DateTime LastDayOfMonth(DateTime date) {
  DateTime day = date.Date();
  while (day.AddDays(1).Month() == date.Month()) day = day.AddDays(1);
  return day;
}

std::string DateInWords(DateTime date, std::string_view part) {
  static constexpr const char* kMonths[] = {"sausio",  "vasario",  "kovo",      "balandžio",
                                            "gegužės", "birželio", "liepos",    "rugpjūčio",
                                            "rugsėjo", "spalio",   "lapkričio", "gruodžio"};
  const std::string year = std::to_string(date.Year()), month = kMonths[date.Month() - 1];
  const std::string day = std::to_string(date.Day());
  if (part == "d") return day;
  if (part == "yyyy") return year;
  if (part == "m") return month;
  return part.empty() ? year + " m. " + month + " " + day + " d." : std::string();
}

// --- accounts and objects ---------------------------------------------------------------------

std::string AccountCodeOf(std::string_view boxText) {
  return std::string(boxText.substr(0, boxText.find(' ')));
}

AccountBoxCheck checkAccountText(std::string_view text, const ParamDictionary& accounts,
                                 bool mustExist, bool skipZero) {
  const std::string code = AccountCodeOf(trimLeft(text));
  if (const Variant* name = accounts.Find(code)) {
    const bool withName = code != "0" || !skipZero;
    return {withName ? code + " " + NullToText(*name) : code, {}};
  }
  if (!mustExist) return {code, {}};
  return {code, code.empty() ? "Nenurodyta  balansinė sąskaita !"
                             : "Klaidinga  balansinės sąskaitos reikšmė !"};
}

namespace {

bool accept(ui::Control& box, const AccountBoxCheck& check) {
  if (check.message.empty()) return true;
  warn(box.form.host(), check.message);
  box.form.setFocus(box);
  return false;
}

}  // namespace

bool CheckAccountBox(ui::TextBox& box, const ParamDictionary& accounts, bool mustExist,
                     bool skipZero) {
  const AccountBoxCheck check = checkAccountText(box.text(), accounts, mustExist, skipZero);
  box.text = check.text;
  return accept(box, check);
}

bool CheckAccountBox(ui::ComboBox& box, const ParamDictionary& accounts, bool mustExist,
                     bool skipZero) {
  const AccountBoxCheck check = checkAccountText(box.text(), accounts, mustExist, skipZero);
  box.setText(check.text);
  return accept(box, check);
}

std::string DocumentName(std::string_view kind) {
  if (kind == "O0201501") return "Mokėjimo nurodymas";
  if (kind == "O0201502") return "Pinigų gavimas";
  if (kind == "O0201503") return "Kasos išlaidų orderis";
  if (kind == "O0201504") return "Kasos pajamų orderis";
  return {};
}

std::shared_ptr<VXObjectUIO> ObjectOf(HostContext& host, std::string_view reference) {
  return isRef(reference) ? host.objects().open(reference) : nullptr;
}

}  // namespace tolvex
