#include "debts/frmCoverSum.h"

#include "framework/conversions.h"
#include "framework/rounding.h"

namespace tolvex {

frmCoverSum::frmCoverSum(HostContext& host, const DebtRow& row)
    : Form(host, "frmCoverSum"),
      row_(row),
      lt_(txtSumLt, 2, host.numbers(), NumberBox::Input::Arithmetic),
      curr_(txtSumCurr, 2, host.numbers(), NumberBox::Input::Arithmetic) {
  const double lt = row.PaymentLt, curr = row.PaymentSumCurr;
  ReleaseCover(row_);
  setTitle("Sumos įvedimas");
  const bool inCurrency = row_.inCurrency();
  txtSumCurr.visible = inCurrency;
  if (inCurrency) txtSumCurr.caption = "Suma, " + row_.LikutisCurrCode;
  lt_.show(lt > 0 ? lt : row_.LikutisLt);
  curr_.show(lt > 0 ? curr : row_.LikutisCurr);
  bySumCurr_ = inCurrency;
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
    curr_.show(row_.LikutisCurr);
    bySumCurr_ = row_.inCurrency();
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

double frmCoverSum::curr() const { return bySumCurr_ ? curr_.value() : 0; }

// The box that was not typed in follows; a sum of nothing or of more than the debt is no cover.
void frmCoverSum::refresh() {
  if (row_.inCurrency()) {
    if (bySumCurr_) {
      lt_.show(roundLt(curr_.value() * row_.PaymentCurrRate));
    } else {
      curr_.show(roundHalfEven(lt_.value() / row_.PaymentCurrRate, 2));
    }
  }
  const bool tooMuch =
      lt_.value() > row_.LikutisLt || (bySumCurr_ && curr_.value() > row_.LikutisCurr);
  cmdOK.enabled = lt_.value() > 0 && !tooMuch;
}

}  // namespace tolvex
