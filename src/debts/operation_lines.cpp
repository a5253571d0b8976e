#include "debts/operation_lines.h"

#include "debts/debt_list.h"
#include "framework/conversions.h"
#include "framework/rounding.h"

namespace tolvex {
namespace {

constexpr auto kRight = ui::Align::Right;

std::string information(const Debt& debt) {
  std::string text = debt.Number;
  for (const std::string* part : {&debt.Comment, &debt.AddrName}) {
    if (part->empty()) continue;
    if (!text.empty()) text += ", ";
    text += *part;
  }
  return text;
}

// Cells as the lists of debts write them: an empty one holds a blank.
class Cells {
 public:
  explicit Cells(const NumberFormat& format) : format_(format) {}

  ui::Cell sum(double value) const { return FormatSum(value, format_); }
  ui::Cell rate(double value) const {
    return value > 0 ? formatNumber(value, 4, format_) : std::string(" ");
  }
  static ui::Cell code(const std::string& text) { return isCurrency(text) ? text : " "; }

 private:
  const NumberFormat& format_;
};

std::vector<ui::Cell> debtCells(const DebtRow& row, const Cells& cells) {
  const Debt& debt = row.debt;
  return {debt.DateD.Text(),
          cells.sum(debt.SumA),
          cells.sum(debt.SumCurr),
          cells.sum(row.LikutisLt),
          cells.sum(row.LikutisCurr),
          information(debt),
          cells.sum(row.PaymentLt),
          cells.sum(row.PaymentSumCurr),
          Cells::code(row.LikutisCurrCode),
          cells.rate(row.PaymentCurrRate),
          cells.sum(row.influence())};
}

std::vector<ui::Cell> tradeCells(const DebtRow& row, bool paid, const Cells& cells) {
  const Debt& debt = row.debt;
  return {debt.DateD.Text(),
          debt.Number,
          cells.sum(debt.SumA),
          cells.sum(debt.SumCurr),
          Cells::code(debt.SumCurrCode),
          cells.sum(paid ? debt.SumA - debt.LikutisLt : row.LikutisLt),
          cells.sum(paid ? debt.SumCurr - debt.LikutisCurr : row.LikutisCurr),
          Cells::code(row.LikutisCurrCode),
          debt.Comment,
          cells.rate(debt.RateCurr),
          cells.sum(row.PaymentLt)};
}

}  // namespace

std::vector<ui::Column> operationColumns(ListedOperations listed) {
  if (listed == ListedOperations::Debts) {
    return {{"Data", 10},
            {"Suma, Lt", 11, kRight},
            {"Suma valiuta", 11, kRight},
            {"Balansas, Lt", 11, kRight},
            {"Balansas val.", 11, kRight},
            {"Informacija", 26, ui::Align::Left, true},
            {"Apm., Lt", 11, kRight},
            {"Apm. valiuta", 11, kRight},
            {"Valiuta", 6},
            {"Kursas", 8, kRight},
            {"Kurso įtaka", 10, kRight}};
  }
  const bool paid = listed == ListedOperations::Offers;
  return {{"Data", 10},
          {"Nr", 10},
          {"Suma, Lt", 13, kRight},
          {"Suma valiuta", 13, kRight},
          {"Valiuta", 6},
          {paid ? "Apmokėta, Lt" : "Likutis, Lt", 13, kRight},
          {paid ? "Apmokėta valiuta" : "Likutis valiuta", 13, kRight},
          {"Valiuta", 6},
          {"Informacija", 30, ui::Align::Left, true},
          {"Kursas", 9, kRight},
          {"Apm., Lt", 13, kRight}};
}

ui::Row operationLine(const DebtRow& row, ListedOperations listed, const NumberFormat& format) {
  const Cells cells(format);
  ui::Row line;
  line.tag = row.debt.OIDR;
  line.checked = row.ticked;
  line.hint = row.debt.Info;
  if (leavesCurrency(row)) {
    line.mark = ui::Mark::Bad;
    line.hint = leftOverHint(row, format);
  }
  line.cells = listed == ListedOperations::Debts
                   ? debtCells(row, cells)
                   : tradeCells(row, listed == ListedOperations::Offers, cells);
  return line;
}

}  // namespace tolvex
