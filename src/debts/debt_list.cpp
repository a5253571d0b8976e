#include "debts/debt_list.h"

#include <algorithm>

#include "framework/conversions.h"
#include "framework/rounding.h"

namespace tolvex {
namespace {

constexpr const char* kBlank = " ";

std::string rateText(double rate, const NumberFormat& format) {
  return rate > 0 ? shortNumber(rate, format) : kBlank;
}

}  // namespace

std::string noRate(std::string_view code) {
  return "Nenurodytas " + std::string(code) + " kursas !";
}

std::string leftOverHint(const DebtRow& row, const NumberFormat& format) {
  return "Litais visa valiutos suma nepadengiama: lieka " + FormatSum(row.LikutisCurr, format) +
         " " + row.LikutisCurrCode;
}

std::string leftOverText(const DebtRow& row, const std::string& command,
                         const NumberFormat& format) {
  return "Litais nepadengta " + FormatSum(row.LikutisCurr, format) + " " + row.LikutisCurrCode +
         " (" + row.debt.Number + "): eilutės meniu „" + command + "“";
}

DebtList::DebtList(ui::ListView& view, NumberFormat format, Line line)
    : view_(view), format_(std::move(format)), line_(std::move(line)) {
  view_.checkBoxes = true;
}

void DebtList::payIn(CoverMoney money) {
  money_ = std::move(money);
  if (line_) return;
  view_.columns = columns(money_);
  view_.touch();
}

std::vector<ui::Column> DebtList::columns(const CoverMoney& money) {
  using ui::Align;
  std::vector<ui::Column> columns = {{"Data", 10, Align::Left, false, "Data"},
                                     {"Nr", 16, Align::Left, true, "Nr"},
                                     {"Likutis, Lt", 12, Align::Right, false, "LikutisLt"},
                                     {"Likutis valiuta", 12, Align::Right, false, "LikutisCurr"},
                                     {"Valiuta", 6, Align::Left, false, "LikutisCurrCode"},
                                     {"Apm., Lt", 12, Align::Right, false, "PaymentLt"},
                                     {"Apm. valiuta", 11, Align::Right, false, "PaymentSumCurr"},
                                     {"Valiuta", 6, Align::Left, false, "PaymentCurrCode"},
                                     {"Kursas", 8, Align::Right, false, "PaymentCurrRate"},
                                     {"Kurso įtaka", 9, Align::Right, false, "InfluenceSum"}};
  if (isCurrency(money.code))
    columns.push_back({money.code, 11, Align::Right, false, "CoverSumCurr"});
  return columns;
}

ui::Row DebtList::shown(const DebtRow& row) const {
  if (line_) return line_(row);
  const auto sum = [&](double value) { return ui::Cell(FormatSum(value, format_)); };
  const auto tagged = [](std::string text, std::string tag) {
    ui::Cell cell(std::move(text));
    cell.tag = std::move(tag);
    return cell;
  };
  ui::Row out;
  out.tag = row.debt.OIDR;
  out.checked = row.ticked;
  out.hint = row.debt.AddrName;
  if (leavesCurrency(row)) {
    out.mark = ui::Mark::Bad;
    out.hint = leftOverHint(row, format_);
  }
  out.cells = {tagged(row.debt.DateD.Text(), row.debt.OIDR),
               tagged(row.debt.Number + " " + row.debt.Comment, row.debt.Number),
               sum(row.LikutisLt),
               sum(row.LikutisCurr),
               tagged(row.LikutisCurr != 0 ? row.LikutisCurrCode : kBlank, row.LikutisCurrCode),
               sum(row.PaymentLt),
               sum(row.PaymentSumCurr),
               row.PaymentSumCurr > 0 ? row.LikutisCurrCode : kBlank,
               rateText(row.released ? 0 : row.PaymentCurrRate, format_),
               tagged(FormatSum(row.influence(), format_), FormatSum(row.InfluenceSum, format_))};
  if (isCurrency(money_.code)) out.cells.push_back(sum(row.CoverSumCurr));
  return out;
}

void DebtList::show(std::vector<DebtRow> rows) {
  rows_ = std::move(rows);
  recount();
  std::vector<ui::Row> lines;
  lines.reserve(rows_.size());
  for (const DebtRow& row : rows_) lines.push_back(shown(row));
  view_.setRows(std::move(lines));
  view_.current = rows_.empty() ? -1 : 0;
}

const DebtRow* DebtList::current() const {
  const int index = view_.current;
  return index >= 0 && index < static_cast<int>(rows_.size())
             ? &rows_[static_cast<std::size_t>(index)]
             : nullptr;
}

void DebtList::count(const DebtRow& row) {
  if (!row.ticked) return;
  ticked_ = roundHalfEven(ticked_ + row.taken(), 2);
  tickedLt_ = roundHalfEven(tickedLt_ + row.PaymentLt, 2);
}

void DebtList::recount() {
  ticked_ = tickedLt_ = 0;
  for (const DebtRow& row : rows_) count(row);
}

void DebtList::redraw() {
  const int place = view_.current;
  show(std::move(rows_));
  view_.current = place;
}

void DebtList::redraw(int index) {
  const auto at = static_cast<std::size_t>(index);
  view_.edit()[at] = shown(rows_[at]);
}

bool DebtList::mayCover(const DebtRow& row, std::set<std::string>& toldCodes,
                        std::string& why) const {
  const DebtCheck check = CheckDebtRow(row, toldCodes);
  why = check.message;
  if (check.code != DebtCheck::Good) return false;
  if (!isCurrency(money_.code) || money_.rate > 0) return true;
  if (toldCodes.insert(money_.code).second) why = noRate(money_.code);
  return false;
}

std::string DebtList::tick(DebtRow& row, std::set<std::string>& toldCodes) {
  if (std::string why; !mayCover(row, toldCodes, why)) return why;
  double left = 0;
  if (limit_ > 0) {
    left = roundHalfEven(limit_ - ticked_, 2);
    if (left <= 0) return {};  // a spent sum is not "all"
  }
  const Covered covered = ApplyCover(row, money_, left);
  count(row);
  return covered.message;
}

std::string DebtList::takeTick() {
  if (!current()) return {};
  const int index = view_.current;
  DebtRow& row = rows_[static_cast<std::size_t>(index)];
  const bool wanted = view_.currentRow()->checked;
  std::string message;
  if (wanted && !row.ticked) {
    std::set<std::string> toldCodes;
    message = tick(row, toldCodes);
  } else if (!wanted && row.ticked) {
    ReleaseCover(row);
    recount();
  }
  redraw(index);
  return message;
}

std::vector<std::string> DebtList::tickAll() {
  std::vector<std::string> messages;
  std::set<std::string> toldCodes;
  for (DebtRow& row : rows_) {
    if (row.ticked) continue;
    if (std::string message = tick(row, toldCodes); !message.empty()) {
      messages.push_back(std::move(message));
    }
  }
  redraw();
  return messages;
}

void DebtList::releaseAll() {
  for (DebtRow& row : rows_)
    if (row.ticked) ReleaseCover(row);
  redraw();
}

std::string DebtList::currentRefused() const {
  std::string why;
  if (!current()) return why;
  DebtRow whole = *current();  // a cover that left some currency over is no bad rest
  ReleaseCover(whole);
  std::set<std::string> toldCodes;
  (void)mayCover(whole, toldCodes, why);
  return why;
}

std::string DebtList::coverCurrent(double lt, double curr) {
  if (!current()) return {};
  const int index = view_.current;
  if (std::string why = currentRefused(); !why.empty()) return why;
  DebtRow& row = rows_[static_cast<std::size_t>(index)];
  ReleaseCover(row);
  const Covered covered =
      isCurrency(money_.code) ? ApplyCover(row, money_, curr) : ApplyCover(row, money_, lt, curr);
  recount();
  redraw(index);
  return covered.message;
}

void DebtList::coverCurrentExactly() {
  if (!current()) return;
  const int index = view_.current;
  (void)coverExactly(rows_[static_cast<std::size_t>(index)], money_);
  recount();
  redraw(index);
}

const DebtRow* DebtList::leftOver() const {
  const auto found = std::ranges::find_if(rows_, leavesCurrency);
  return found == rows_.end() ? nullptr : &*found;
}

}  // namespace tolvex
