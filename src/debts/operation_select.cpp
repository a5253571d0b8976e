#include "debts/operation_select.h"

#include "framework/conversions.h"
#include "framework/rounding.h"
#include "framework/text.h"

namespace tolvex {
namespace {

// Date, number and comment, as pointers at operations read everywhere.
std::string pointerText(const Debt& debt) {
  std::string text = debt.DateD.Text();
  if (!debt.Number.empty()) text += " " + debt.Number;
  if (!debt.Comment.empty()) text += " " + debt.Comment;
  return text;
}

void writeDebt(RowSet& out, const Debt& debt) {
  out["OIDR"] = debt.OIDR;
  out["FOIDR"] = debt.FOIDR;
  out["Comment"] = pointerText(debt);
  out["DateD"] = debt.DateD;
  out["Number"] = debt.Number;
  out["AccountD"] = debt.AccountD;
  out["AccountC"] = debt.AccountC;
  out["FullSum"] = debt.SumA;
  out["FullSumCurr"] = debt.SumCurr;
  out["RestSum"] = debt.LikutisLt;
  out["RestSumCurr"] = debt.LikutisCurr;
  out["DebtCurrRatePrimary"] = debt.RateCurr;
  out["DebtSign"] = debt.InfluenceSign;
  out["AddrOIDR"] = debt.AddrOIDR;
  out["AddrName"] = debt.AddrName;
}

void writeCover(RowSet& out, const DebtRow& row, const CoverMoney& money) {
  const bool paidInCurrency = isCurrency(money.code);
  const bool inCurrency = isCurrency(row.LikutisCurrCode) && row.PaymentSumCurr > 0;
  out["PaymentSum"] = row.PaymentLt;
  out["PaymentSumCurr"] = paidInCurrency ? row.CoverSumCurr : 0.0;
  out["PaymentCurrCode"] = money.code;
  out["PaymentCurrRate"] = paidInCurrency ? money.rate : 0.0;
  out["DebtSumCurr"] = inCurrency ? row.PaymentSumCurr : 0.0;
  out["DebtCurrRate"] = inCurrency ? row.PaymentCurrRate : 0.0;
  out["DebtCurrCode"] = row.LikutisCurrCode;
  out["ExtSum"] = row.influence();
}

}  // namespace

SelectionAsked readSelectParameters(RowSet& parameters, DateTime today) {
  SelectionAsked asked;
  RowSet& row = parameters;
  row.MoveFirst();
  asked.onDebit = trim(row["AccountC"].Text()).empty();
  asked.account = trim(row[asked.onDebit ? "AccountD" : "AccountC"].Text());
  asked.addressee = row["FOIDR"].Text();
  asked.addresseeName = row["Comment"].Text();
  asked.date = NullToDate(row["DateD"].Value(), today);
  asked.rateDate = NullToDate(row["CurrRateDate"].Value(), FirstDayOfMonth(asked.date));
  if (isCurrency(row["PaymentCurrCode"].Text())) {
    asked.money = {std::string(row["PaymentCurrCode"].Text()), row["PaymentCurrRate"].Number()};
    asked.sum = row["PaymentSumCurr"].Number();
  } else {
    asked.sum = row["PaymentSum"].Number();
  }
  return asked;
}

std::vector<Debt> readTradeOperations(RowSet& rows, ListedOperations listed, int sign) {
  std::vector<Debt> debts;
  ForEachRow(rows, [&](RowSet& row) {
    Debt debt;
    debt.OIDR = row["OIDR"].Text();
    const Variant date = row["DateD"].Value();
    if (date.IsDate()) debt.DateD = date.AsDate();
    debt.Number = row["Number"].Text();
    debt.Comment = row["Comment"].Text();
    debt.InfluenceSign = sign;
    debt.SumA = row["SumA"].Number();
    debt.SumCurr = row["SumCurr"].Number();
    debt.LikutisLt = row["SumRest"].Number();
    debt.LikutisCurr = row["SumRestCurr"].Number();
    if (listed == ListedOperations::Offers) {
      debt.LikutisLt = roundHalfEven(debt.SumA - debt.LikutisLt, 2);
      debt.LikutisCurr = roundHalfEven(debt.SumCurr - debt.LikutisCurr, 2);
    }
    if (isCurrency(row["CurrCode"].Text())) debt.SumCurrCode = row["CurrCode"].Text();
    if (isCurrency(row["RestCurrCode"].Text())) debt.FCurrencyCode = row["RestCurrCode"].Text();
    debt.RateCurr = debt.CurrentRate = row["CurrRate"].Number();
    debts.push_back(std::move(debt));
  });
  return debts;
}

RowSetPtr selectedOperations(const std::vector<DebtRow>& rows, const CoverMoney& money,
                             const InfluenceAccounts& accounts) {
  const RowSetPtr selected = RowSet::make(kSelectedOperations);
  for (const DebtRow& row : rows) {
    if (!row.ticked) continue;
    RowSet& out = *selected;
    out.AddNew();
    writeDebt(out, row.debt);
    writeCover(out, row, money);
    out["Acc536"] = accounts.gain;
    out["Acc636"] = accounts.loss;
    out.Update();
  }
  selected->MoveFirst();
  return selected;
}

}  // namespace tolvex
