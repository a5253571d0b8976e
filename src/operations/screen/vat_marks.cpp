#include "operations/screen/vat_marks.h"

#include <cstddef>

namespace tolvex {
namespace {

struct TradeRow {
  const char* text;
  TradeMarks marks;
};
constexpr TradeRow kTradeRows[] = {
    {"Kitos operacijos", {0, 1}},
    {"Prekių (paslaugų) pirkimas", {1, 1}},
    {"Prekių grąžinimas tiekėjams", {1, -1}},
    {"Prekių (paslaugų) pardavimas", {2, 1}},
    {"Prekių grąžinimas iš pirkėjų", {2, -1}},
};

}  // namespace

const std::vector<std::string>& tradeOperationTexts() {
  static const std::vector<std::string> texts = [] {
    std::vector<std::string> all;
    for (const TradeRow& row : kTradeRows) all.emplace_back(row.text);
    return all;
  }();
  return texts;
}

const std::vector<std::string>& vatMeaningTexts() {
  static const std::vector<std::string> texts = {"", "Prekių (paslaugų) vertė", "PVM suma"};
  return texts;
}

TradeMarks tradeMarks(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= std::size(kTradeRows)) return {};
  return kTradeRows[index].marks;
}

int tradeIndex(TradeMarks marks) {
  if (marks.type != 1 && marks.type != 2) return 0;
  const int first = marks.type == 1 ? 1 : 3;
  return marks.restoringSign == 1 ? first : first + 1;
}

TradeMarks tradeMarksOf(RowSet& BR) {
  const Variant type = BR["TradeOperationType"].Value();
  const Variant sign = BR["RestoringSign"].Value();
  return {type.IsAbsent() ? 0 : type.AsInt(), sign.IsAbsent() ? 1 : sign.AsInt()};
}

}  // namespace tolvex
