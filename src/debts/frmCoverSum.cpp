#include "debts/frmCoverSum.h"

#include "framework/conversions.h"
#include "framework/rounding.h"

namespace tolvex {

frmCoverSum::frmCoverSum(HostContext& host, const DebtRow& row, const CoverMoney& money)
    : Form(host, "frmCoverSum"),
      row_(row),
      money_(money),
      currency_(money),
      lt_(txtSumLt, 2, host.numbers(), NumberBox::Input::Arithmetic),
      curr_(txtSumCurr, 2, host.numbers(), NumberBox::Input::Arithmetic) {
  ReleaseCover(row_);
  if (!isCurrency(money.code) && row_.inCurrency()) {
    currency_ = {row_.LikutisCurrCode, row_.PaymentCurrRate};
  }
  wholeCurr_ = restIn(row_, currency_);
  setTitle("Sumos įvedimas");
  txtSumCurr.visible = withCurrency();
  if (withCurrency()) txtSumCurr.caption = "Suma, " + currency_.code;
  lt_.show(row.ticked ? row.PaymentLt : row_.LikutisLt);
  curr_.show(row.ticked ? row.CoverSumCurr : wholeCurr_);
  bySumCurr_ = withCurrency();
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  txtSumLt.onChange = [this] {
    bySumCurr_ = false;
    refresh();
  };
  txtSumCurr.onChange = [this] {
    bySumCurr_ = true;
    refresh();
  };
  txtSumLt.onLeave = [this] { lt_.normalise(); };
  txtSumCurr.onLeave = [this] { curr_.normalise(); };
  cmdAll.onClick = [this] {
    lt_.show(row_.LikutisLt);
    curr_.show(wholeCurr_);
    bySumCurr_ = withCurrency();
    refresh();
  };
  cmdOK.onClick = [this] {
    accepted = true;
    close();
  };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmCoverSum::picture() const {
  return R"(
lblDebt>
txtSumLt | txtSumCurr | cmdAll
>> | cmdCancel | cmdOK
)";
}

void frmCoverSum::opened() {
  const auto sum = [&](double value) { return FormatSum(value, host().numbers()); };
  std::string text =
      row_.debt.DateD.Text() + " " + row_.debt.Number + ":  " + sum(row_.LikutisLt) + " Lt";
  if (row_.inCurrency()) {
    text += "  =  " + sum(row_.LikutisCurr) + " " + row_.LikutisCurrCode + " × " +
            shortNumber(row_.PaymentCurrRate, host().numbers());
  }
  lblDebt.caption = std::move(text);
  refresh();
  setFocus(txtSumLt);
}

double frmCoverSum::curr() const {
  return bySumCurr_ || isCurrency(money_.code) ? curr_.value() : 0;
}

double frmCoverSum::ltOf(double curr) const {
  if (!isCurrency(money_.code)) return roundLt(curr * currency_.rate);
  DebtRow trial = row_;
  (void)CoverRow(trial, money_, curr, 0);
  return curr > 0 ? trial.PaymentLt : 0;
}

// The box that was not typed in follows; a sum of nothing or of more than the debt is no cover.
void frmCoverSum::refresh() {
  if (withCurrency() && bySumCurr_) {
    lt_.show(ltOf(curr_.value()));
  } else if (withCurrency()) {
    const bool whole = lt_.value() == row_.LikutisLt;
    curr_.show(whole ? wholeCurr_ : roundHalfEven(lt_.value() / currency_.rate, 2));
  }
  const bool tooMuch = bySumCurr_ ? curr_.value() > wholeCurr_ : lt_.value() > row_.LikutisLt;
  cmdOK.enabled = lt_.value() > 0 && !tooMuch;
}

}  // namespace tolvex
