#include "payments/instalments.h"

#include <algorithm>
#include <string>

#include "framework/rounding.h"
#include "framework/text.h"

namespace tolvex {
namespace {

constexpr ColumnSpec kItems[] = {{"ID", FieldType::Integer},
                                 {"PaymentTemplateID", FieldType::Integer},
                                 {"Days", FieldType::SmallInt},
                                 {"Percent", FieldType::SmallInt}};
constexpr double kLargest = 32767;

}  // namespace

RowSetPtr noInstalments() { return RowSet::make(kItems); }

int restPercent(RowSet& items) {
  int rest = kWholePercent;
  const RowSetPtr all = items.Clone();
  Field Percent = (*all)["Percent"];
  ForEachRow(*all, [&](RowSet&) { rest -= static_cast<int>(Percent.Number()); });
  return rest;
}

int percentLimit(int rest, int own) { return std::max(rest, own); }

int takenPercent(int typed, int limit) { return typed <= 0 || typed > limit ? limit : typed; }

int leadingNumber(std::string_view text) {
  std::string digits;
  bool mark = false;
  for (const char c : text) {
    if (c == ' ') continue;
    if (c == '.' && !mark) {
      mark = true;
    } else if (c < '0' || c > '9') {
      break;
    }
    digits += c;
  }
  double number = 0;
  if (!parsePlainNumber(digits, number)) return 0;
  return static_cast<int>(roundHalfEven(std::min(number, kLargest), 0));
}

}  // namespace tolvex
