// Small conversions that all screens share: numbers, dates and values that may be absent.
//
// Nothing here fails: bad text gives 0 or the empty text. "," is the decimal mark of the users;
// what is shown follows the host's NumberFormat.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "framework/date_time.h"
#include "framework/param_dictionary.h"
#include "framework/variant.h"
#include "platform/host.h"
#include "platform/numbers.h"

namespace tolvex {

bool IsBelowOrEqual(double a, double b);

// Without the blanks at both ends and without the last character of what is left: takes a joining
// mark off the end of a list.
std::string CutTrailing(std::string_view text);

// --- numbers -----------------------------------------------------------------------------------

// A sum for a list: two decimals with group marks. Zero and the rest of a rounding, strictly
// between -0.01 and 0.01, show as one blank.
std::string FormatSum(double value, const NumberFormat& format = {});

// Keeps a number box numeric: the key to take, or 0 to drop it. Digits and backspace pass, "."
// counts as ",", and one "," is enough.
char32_t FilterNumberKey(char32_t key, std::string_view text);

// The same for a box of digits alone.
char32_t FilterDigitKey(char32_t key, std::string_view text = {});

// A number as typed, rewritten with `decimals`, without group marks. Text that is no number, or is
// 15 characters or longer, becomes zero with those decimals, or "" unless `zeroIfBad`.
std::string NormalizeNumberText(std::string_view text, int decimals, bool zeroIfBad,
                                const NumberFormat& format = {});

// --- values that may be absent -------------------------------------------------------------------

double NullToDouble(const Variant& value);     // a text by TextToDouble
std::string NullToText(const Variant& value);  // numbers with the users' decimal mark
DateTime NullToDate(const Variant& value, DateTime fallback);
// As a flag of a menu or an argument: 0, absent and "" are false; texts "True" and "1" are true.
bool NullToBool(const Variant& value);
// A key of "*" stands for all and is never in the dictionary.
bool ExistsUnlessAll(const ParamDictionary& dictionary, std::string_view key);

// --- dates -------------------------------------------------------------------------------------

DateTime FirstDayOfMonth(DateTime date);
DateTime LastDayOfMonth(DateTime date);
// part "d": the day; "yyyy": the year; "m": the month's name in the genitive; "": the whole date,
// "2003 m. vasario 9 d."; any other: "".
std::string DateInWords(DateTime date, std::string_view part);

// --- accounts and objects ---------------------------------------------------------------------

// A box that shows an account holds its code, a blank and its name.
std::string AccountCodeOf(std::string_view boxText);

struct AccountBoxCheck {
  std::string text;     // what the box is to show
  std::string message;  // why it is refused, or ""
};
// Completes a typed account with its name. With `skipZero` the account "0" stays without its name.
// An account that is not in the dictionary is refused only if it must exist.
AccountBoxCheck checkAccountText(std::string_view text, const ParamDictionary& accounts,
                                 bool mustExist, bool skipZero);
// The same on a box: shows the text; a refusal is told and the focus goes back to the box.
// True when the box may be left.
bool CheckAccountBox(ui::TextBox& box, const ParamDictionary& accounts, bool mustExist,
                     bool skipZero);
bool CheckAccountBox(ui::ComboBox& box, const ParamDictionary& accounts, bool mustExist,
                     bool skipZero);

// The printed name of a money document by its kind; "" for any other kind.
std::string DocumentName(std::string_view kind);

// The object behind a reference, or null.
std::shared_ptr<VXObjectUIO> ObjectOf(HostContext& host, std::string_view reference);

}  // namespace tolvex
