#include "debts/debt_rows.h"

#include <algorithm>

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/rounding.h"

namespace tolvex {
namespace {

constexpr double kCent = 0.01;

double round2(double x) { return roundHalfEven(x, 2); }

void clearCover(DebtRow& row) {
  row.PaymentLt = row.PaymentSumCurr = row.CoverSumCurr = row.InfluenceSum = 0;
}

double smaller(double offered, double rest) { return offered < rest ? offered : rest; }

double restLt(const DebtRow& row) {
  return row.inCurrency() ? roundLt(row.PaymentCurrRate * row.LikutisCurr) : row.LikutisLt;
}

// A cover in litas; `rest` is the row's worth at its rate.
double coverInLt(DebtRow& row, double rest, double offered, double offeredCurr) {
  if (offered == 0) offered = rest;
  if (offered <= 0 || rest <= 0) return 0;
  row.PaymentLt = smaller(offered, rest);
  if (!row.inCurrency()) return row.PaymentLt;
  const bool said = offeredCurr != 0 && roundLt(row.PaymentCurrRate * offeredCurr) == row.PaymentLt;
  row.PaymentSumCurr = said ? offeredCurr : round2(row.PaymentLt / row.PaymentCurrRate);
  row.CoverSumCurr = row.PaymentSumCurr;
  row.PaymentLt = roundLt(row.PaymentSumCurr * row.PaymentCurrRate);
  return row.PaymentLt;
}

// A cover in a currency; `rest` is what the whole row comes to in it.
double coverInCurrency(DebtRow& row, double rest, double offered, const CoverMoney& money) {
  if (offered == 0) offered = rest;
  if (offered <= 0 || rest <= 0) return 0;
  const bool closes = offered >= rest;
  row.CoverSumCurr = closes ? rest : offered;
  if (closes) {
    row.PaymentSumCurr = row.LikutisCurr;
  } else if (money.code == row.LikutisCurrCode) {
    row.PaymentSumCurr = offered;
  } else if (row.PaymentCurrRate > 0) {
    row.PaymentSumCurr = round2(offered * money.rate / row.PaymentCurrRate);
  }
  row.PaymentLt = row.PaymentSumCurr > 0 ? roundLt(row.PaymentCurrRate * row.PaymentSumCurr)
                                         : roundLt(money.rate * row.CoverSumCurr);
  if (row.inCurrency()) return row.CoverSumCurr;
  if (row.LikutisLt < row.PaymentLt) {
    row.CoverSumCurr = round2(row.CoverSumCurr - kCent);
    row.PaymentLt = roundLt(row.CoverSumCurr * money.rate);
  }
  if (closes) row.InfluenceSum = round2(row.LikutisLt - row.PaymentLt);
  return row.CoverSumCurr;
}

// Text as the columns of the store may lack it.
std::string textIn(RowSet& rows, std::string_view column) {
  return rows.Fields().contains(column) ? std::string(rows[column].Text()) : std::string();
}

double numberIn(RowSet& rows, std::string_view column) {
  return rows.Fields().contains(column) ? rows[column].Number() : 0;
}

Debt debtOf(RowSet& row) {
  Debt debt;
  debt.OIDR = textIn(row, "OIDR");
  debt.FOIDR = textIn(row, "FOIDR");
  const Variant date = row["DateD"].Value();
  if (date.IsDate()) debt.DateD = date.AsDate();
  debt.Number = textIn(row, "Number");
  debt.Comment = textIn(row, "Comment");
  debt.Info = textIn(row, "Info");
  debt.AccountD = textIn(row, "AccountD");
  debt.AccountC = textIn(row, "AccountC");
  debt.InfluenceSign = static_cast<int>(numberIn(row, "InfluenceSign"));
  debt.SumA = numberIn(row, "SumA");
  debt.SumCurr = numberIn(row, "SumCurr");
  debt.LikutisLt = numberIn(row, "LikutisLt");
  debt.LikutisCurr = numberIn(row, "LikutisCurr");
  if (const std::string code = textIn(row, "FCurrencyCode"); isCurrency(code)) {
    debt.FCurrencyCode = code;
  }
  debt.RateCurr = numberIn(row, "RateCurr");
  debt.AddrOIDR = textIn(row, "AddrOIDR");
  debt.AddrName = textIn(row, "AddrName");
  return debt;
}

bool isPostedInfluence(const Debt& debt, const InfluenceAccounts& accounts) {
  if (debt.InfluenceSign == 1) return !accounts.loss.empty() && debt.AccountD == accounts.loss;
  return !accounts.gain.empty() && debt.AccountC == accounts.gain;
}

}  // namespace

std::vector<Debt> readDebts(RowSet& rows) {
  std::vector<Debt> debts;
  debts.reserve(rows.RecordCount());
  ForEachRow(rows, [&](RowSet& row) { debts.push_back(debtOf(row)); });
  return debts;
}

std::string DebtsMethodName(std::string_view addressee, int sign) {
  if (addressee.size() < kKindLength) return "Debts3";
  if (sign == 1) return "DebtsByDebit";
  if (sign == -1) return "DebtsByCredit";
  return isRef(addressee) ? "Debts1" : "Debts2";
}

std::string debtsParameters(std::string_view account, DateTime date, std::string_view addressee,
                            int direction, std::string_view group) {
  return Parameters().text(group).text(account).date(date).text(addressee).number(direction).str();
}

void ComputeInfluence(std::vector<Debt>& debts, const RateOf& rateOf) {
  for (Debt& debt : debts) {
    debt.CurrentRate = debt.CurrInfluence = 0;
    if (debt.LikutisCurr == 0) continue;
    debt.CurrentRate = rateOf(debt.FCurrencyCode);
    if (debt.CurrentRate <= 0) continue;
    debt.CurrInfluence = round2(debt.InfluenceSign *
                                (debt.LikutisLt - roundLt(debt.CurrentRate * debt.LikutisCurr)));
  }
}

double DebtRow::influence() const {
  return round2(debt.InfluenceSign * InfluenceSum + debt.CurrInfluence);
}

double restIn(const DebtRow& row, const CoverMoney& money) {
  if (!isCurrency(money.code)) return restLt(row);
  if (row.inCurrency() && money.code == row.LikutisCurrCode) return row.LikutisCurr;
  return money.rate > 0 ? round2(restLt(row) / money.rate) : 0;
}

Covered CoverRow(DebtRow& row, const CoverMoney& money, double offered, double offeredCurr) {
  clearCover(row);
  row.PaymentCurrCode = money.code;
  row.CoverRate = money.rate;
  if (row.inCurrency() && row.PaymentCurrRate == 0) {
    Covered none;
    if (offered == 0) none.message = "Nenurodytas " + row.LikutisCurrCode + " kursas !";
    return none;
  }
  const double rest = restIn(row, money);
  const double taken = isCurrency(money.code) ? coverInCurrency(row, rest, offered, money)
                                              : coverInLt(row, rest, offered, offeredCurr);
  if (taken <= 0) {
    clearCover(row);
    return {};
  }
  if (row.inCurrency()) row.LikutisCurr = round2(row.LikutisCurr - row.PaymentSumCurr);
  row.LikutisLt = round2(row.LikutisLt - (row.InfluenceSum + row.PaymentLt));
  return {taken, {}};
}

std::vector<DebtRow> FillDebtList(const std::vector<Debt>& debts, const InfluenceAccounts& accounts,
                                  const CoverMoney& money, double sum) {
  std::vector<DebtRow> rows;
  rows.reserve(debts.size());
  for (const Debt& debt : debts) {
    if (isPostedInfluence(debt, accounts)) continue;
    DebtRow& row = rows.emplace_back();
    row.debt = debt;
    row.LikutisLt = round2(debt.LikutisLt - debt.InfluenceSign * debt.CurrInfluence);
    row.LikutisCurr = debt.LikutisCurr;
    row.LikutisCurrCode = debt.FCurrencyCode;
    row.PaymentCurrRate = debt.CurrentRate;
    if (sum > 0) sum = round2(sum - CoverRow(row, money, sum, 0).taken);
    row.ticked = row.covered();
  }
  return rows;
}

DebtCheck CheckDebtRow(const DebtRow& row, std::set<std::string>& toldCodes) {
  if (row.LikutisLt < 0 || row.LikutisCurr < 0) {
    return {DebtCheck::BadRest, row.debt.DateD.Text() + " " + row.debt.Number +
                                    std::string(kLineBreak) + "Klaidingas likutis !"};
  }
  const bool counts = row.LikutisCurr != 0 || row.ticked;
  if (isCurrency(row.LikutisCurrCode) && counts && row.PaymentCurrRate == 0) {
    const bool first = toldCodes.insert(row.LikutisCurrCode).second;
    return {DebtCheck::NoRate,
            first ? "Nenurodytas " + row.LikutisCurrCode + " kursas!" : std::string()};
  }
  return {};
}

Covered ApplyCover(DebtRow& row, const CoverMoney& money, double sum, double sumCurr) {
  const double before = row.PaymentSumCurr;
  const bool released = row.released;
  ReleaseCover(row);
  row.released = released;
  if (row.LikutisLt < kCent) return {};
  if (!isCurrency(money.code) && sum >= row.LikutisLt) sum = 0;
  const Covered covered = CoverRow(row, money, sum, sumCurr != 0 ? sumCurr : before);
  row.ticked = covered.taken > 0;
  if (row.ticked) row.released = false;
  return covered;
}

void ReleaseCover(DebtRow& row) {
  row.LikutisLt = round2(row.LikutisLt + row.InfluenceSum + row.PaymentLt);
  if (isCurrency(row.LikutisCurrCode))
    row.LikutisCurr = round2(row.LikutisCurr + row.PaymentSumCurr);
  clearCover(row);
  row.ticked = false;
  row.released = true;
}

void partPosted(DebtRow& row, double lt, double curr) {
  const double share = row.PaymentLt == 0 ? 0 : lt / row.PaymentLt;
  row.PaymentLt = round2(row.PaymentLt - lt);
  row.PaymentSumCurr = round2(row.PaymentSumCurr - curr);
  row.debt.LikutisLt = round2(row.debt.LikutisLt - lt);
  row.debt.LikutisCurr = round2(row.debt.LikutisCurr - curr);
  const bool currencyPosted = curr != 0 && row.PaymentSumCurr == 0;
  row.CoverSumCurr = currencyPosted ? 0 : round2(row.CoverSumCurr * (1 - share));
  if (row.PaymentLt == 0) {
    clearCover(row);
    row.ticked = false;
  }
}

void differencePosted(DebtRow& row) {
  row.debt.LikutisLt = round2(row.debt.LikutisLt - row.debt.InfluenceSign * row.influence());
  row.debt.CurrInfluence = row.InfluenceSum = 0;
}

bool leavesLitas(const DebtRow& row) {
  return row.ticked && isCurrency(row.LikutisCurrCode) && row.PaymentLt > 0 &&
         row.PaymentSumCurr == 0 && row.CoverSumCurr == 0;
}

bool leavesCurrency(const DebtRow& row) {
  return row.ticked && !isCurrency(row.PaymentCurrCode) && row.LikutisCurr != 0 &&
         row.LikutisLt < kCent;
}

Covered coverExactly(DebtRow& row, const CoverMoney& money) {
  ReleaseCover(row);
  return ApplyCover(row, money, 0, row.LikutisCurr);
}

}  // namespace tolvex
