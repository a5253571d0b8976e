// A list of debts with ticks: rows of debts as the user sees and covers them, in litas.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "debts/debt_rows.h"
#include "platform/controls.h"
#include "platform/numbers.h"

namespace tolvex {

class DebtList {
 public:
  DebtList(ui::ListView& view, NumberFormat format);
  static std::vector<ui::Column> columns();

  void show(std::vector<DebtRow> rows);
  const std::vector<DebtRow>& rows() const { return rows_; }
  // For a change of many rows; redraw() follows it.
  std::vector<DebtRow>& edit() { return rows_; }
  void redraw();                   // the current row stays
  const DebtRow* current() const;  // null when none
  double tickedLt() const;

  // The sum that ticks may spend; 0 lets them take all.
  void limitLt(double sum) { limitLt_ = sum; }

  // Follows the user's tick on the current row, or takes it back; why, or "".
  std::string takeTick();
  // Ticks all rows in their order, telling each missing rate once; the messages.
  std::vector<std::string> tickAll();
  void releaseAll();
  // Covers the current row by given sums; a currency sum of 0 follows from the litas.
  std::string coverCurrent(double lt, double curr);
  void coverCurrentExactly();
  // The first row whose litas are covered while its currency is not, or null.
  const DebtRow* leftOver() const;

 private:
  std::string tick(DebtRow& row, std::set<std::string>& toldCodes);
  void recount();
  void redraw(int index);
  ui::Row shown(const DebtRow& row) const;

  ui::ListView& view_;
  NumberFormat format_;
  std::vector<DebtRow> rows_;
  double limitLt_ = 0;
  double tickedLt_ = 0;
};

}  // namespace tolvex
