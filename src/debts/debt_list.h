// A list of debts with ticks: rows of debts as the user sees and covers them, in litas or in a
// currency that he has chosen.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "debts/debt_rows.h"
#include "platform/controls.h"
#include "platform/numbers.h"

namespace tolvex {

// The message of a currency that has no rate to cover at.
std::string noRate(std::string_view code);

// What litas leave of a row's currency: as its line tells it, and as the screen does, which names
// the command that covers it.
std::string leftOverHint(const DebtRow& row, const NumberFormat& format);
std::string leftOverText(const DebtRow& row, const std::string& command,
                         const NumberFormat& format);

class DebtList {
 public:
  // How a row is shown where its columns are not those of columns().
  using Line = std::function<ui::Row(const DebtRow&)>;
  DebtList(ui::ListView& view, NumberFormat format, Line line = {});

  // What ticks pay in from now on; in a currency a column of its sums stands at the end. Rows that
  // are ticked stay as they are: the caller shows others.
  void payIn(CoverMoney money);
  const CoverMoney& money() const { return money_; }
  static std::vector<ui::Column> columns(const CoverMoney& money = {});

  void show(std::vector<DebtRow> rows);
  const std::vector<DebtRow>& rows() const { return rows_; }
  // For a change of many rows; redraw() follows it.
  std::vector<DebtRow>& edit() { return rows_; }
  void redraw();                   // the current row stays
  const DebtRow* current() const;  // null when none
  double tickedLt() const { return tickedLt_; }
  double ticked() const { return ticked_; }  // in the money that is paid in

  // The sum that ticks may spend, in that money; 0 lets them take all.
  void limit(double sum) { limit_ = sum; }

  // Follows the user's tick on the current row, or takes it back; why, or "".
  std::string takeTick();
  // Ticks all rows in their order, telling each missing rate once; the messages.
  std::vector<std::string> tickAll();
  void releaseAll();
  // Why the current row could not be covered, or "".
  std::string currentRefused() const;
  // Covers the current row by given sums. In litas a currency sum of 0 follows from the litas; a
  // cover in a currency takes `curr` alone.
  std::string coverCurrent(double lt, double curr);
  void coverCurrentExactly();
  // The first row whose litas are covered while its currency is not, or null.
  const DebtRow* leftOver() const;

 private:
  // "" with a rate that was told already, too: nothing then is taken.
  bool mayCover(const DebtRow& row, std::set<std::string>& toldCodes, std::string& why) const;
  std::string tick(DebtRow& row, std::set<std::string>& toldCodes);
  void count(const DebtRow& row);
  void recount();
  void redraw(int index);
  ui::Row shown(const DebtRow& row) const;

  ui::ListView& view_;
  NumberFormat format_;
  const Line line_;
  std::vector<DebtRow> rows_;
  CoverMoney money_;
  double limit_ = 0;
  double ticked_ = 0, tickedLt_ = 0;
};

}  // namespace tolvex
