// frmCoverSum: how much of one debt is covered, in litas or in a currency: that of the cover, or in
// a cover in litas the debt's own.
//
// The sum of one follows from the other; a currency sum that was typed is covered exactly.
#pragma once

#include "debts/debt_rows.h"
#include "operations/screen/number_box.h"
#include "platform/form.h"

namespace tolvex {

class frmCoverSum final : public ui::Form {
 public:
  frmCoverSum(HostContext& host, const DebtRow& row, const CoverMoney& money);
  const char* picture() const override;
  void opened() override;

  bool accepted = false;
  double lt() const { return lt_.value(); }
  // In a cover in litas 0 when it only follows from them.
  double curr() const;

  ui::Label lblDebt{this, "lblDebt"};
  ui::TextBox txtSumLt{this, "txtSumLt", "Suma, Lt", 13};
  ui::TextBox txtSumCurr{this, "txtSumCurr", "Suma valiuta", 13};
  ui::Button cmdAll{this, "cmdAll", "Visa skola"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOK{this, "cmdOK", "Gerai", ui::Role::Primary};

 private:
  void refresh();
  double ltOf(double curr) const;
  bool withCurrency() const { return isCurrency(currency_.code); }

  DebtRow row_;  // released: with its full rests
  const CoverMoney money_;
  CoverMoney currency_;   // of the second box; litas: it is not there
  double wholeCurr_ = 0;  // the rest in it
  bool bySumCurr_ = false;
  NumberBox lt_, curr_;
};

}  // namespace tolvex
