#include "currency/exchange_rules.h"

#include <algorithm>

#include "framework/conversions.h"
#include "framework/rounding.h"
#include "operations/entry_rules.h"
#include "operations/screen/pointers.h"

namespace tolvex {
namespace {

// Lifts exact halves a little more than the entries themselves do; it is this subject's own.
constexpr double kBias = 0.0001;
constexpr int kRateDecimals = 9;

double currencySum(const ExchangeSide& side) {
  return isCurrency(side.code) ? roundHalfEven(side.sum, 2) : 0;
}

std::string errorOf(const ExchangeSide& side) {
  if (!isCurrency(side.code)) return {};
  if (side.rateLtPerUnit == 0) return std::string(kNoCurrencyRate);
  return currencySum(side) > 0 ? std::string() : std::string(kBadSum);
}

NewEntry mainEntry(const Exchange& exchange, const ExchangeSide& debit,
                   const ExchangeSide& credit) {
  NewEntry entry;
  entry.AccountD = debit.account;
  entry.AccountC = credit.account;
  entry.addressees = debit.addressees;
  entry.addressees.insert(entry.addressees.end(), credit.addressees.begin(),
                          credit.addressees.end());
  entry.date = exchange.date.Text();
  const bool fromDebit = isCurrency(debit.code);
  const ExchangeSide& first = fromDebit ? debit : credit;
  const ExchangeSide& second = fromDebit ? credit : debit;
  entry.sums.sum = currencySum(first);
  entry.sums.sign = fromDebit ? 1 : -1;
  entry.sums.code = first.code;
  entry.sums.rate = isCurrency(first.code) ? first.rateLtPerUnit : 0;
  entry.sums.sumCurr2 = currencySum(second);
  entry.sums.code2 = second.code;
  entry.sums.rate2 = isCurrency(second.code) ? second.rateLtPerUnit : 0;
  // Litas against litas is a plain entry.
  if (!isCurrency(first.code)) entry.sums.sum = std::min(debit.sum, credit.sum);
  return entry;
}

NewEntry differenceEntry(const Exchange& exchange, double debitLt, double creditLt) {
  const bool loss = debitLt < creditLt;
  const ExchangeSide& side = loss ? exchange.credit : exchange.debit;
  NewEntry entry;
  entry.AccountD = loss ? exchange.lossAccount : side.account;
  entry.AccountC = loss ? side.account : exchange.gainAccount;
  entry.sums.sum = loss ? creditLt - debitLt : debitLt - creditLt;
  entry.sums.sign = loss ? -1 : 1;
  entry.sums.code = side.code;
  entry.addressees = onBothSides(side.addressees);
  entry.date = exchange.date.Text();
  return entry;
}

std::string nameOf(const Exchange& exchange) {
  if (!isCurrency(exchange.credit.code)) return "Valiutos pirkimas";
  if (!isCurrency(exchange.debit.code)) return "Valiutos pardavimas";
  return "Valiutos pirkimas/pardavimas";
}

}  // namespace

double valueLt(const ExchangeSide& side) {
  if (!isCurrency(side.code)) return side.sum;
  return roundHalfEven(side.rateLtPerUnit * currencySum(side) + kBias, 2);
}

ExchangeEntries exchangeEntries(const Exchange& exchange) {
  ExchangeEntries entries;
  entries.name = nameOf(exchange);
  for (const ExchangeSide* side : {&exchange.debit, &exchange.credit}) {
    entries.error = errorOf(*side);
    if (!entries.error.empty()) return entries;
  }
  const double debitLt = valueLt(exchange.debit), creditLt = valueLt(exchange.credit);
  ExchangeSide debit = exchange.debit, credit = exchange.credit;
  if (debitLt <= creditLt) {
    if (isCurrency(credit.code)) {
      credit.rateLtPerUnit = roundHalfEven(debitLt / currencySum(credit), kRateDecimals);
    }
  } else if (isCurrency(debit.code)) {
    debit.rateLtPerUnit = roundHalfEven(creditLt / currencySum(debit), kRateDecimals);
  }
  entries.main = mainEntry(exchange, debit, credit);
  if (debitLt != creditLt) entries.difference = differenceEntry(exchange, debitLt, creditLt);
  return entries;
}

Variant::Array bankAddressees(int sign, RowSet& MyFirmAccounts, std::string_view AccOIDR) {
  Variant::Array triples;
  if (AccOIDR.empty()) return triples;
  ForEachRow(MyFirmAccounts, [&](RowSet& row) {
    if (!triples.empty() || row["AccOIDR"].Text() != AccOIDR) return;
    addAddressee(triples, sign, row["OIDR"].Text(), row["Name"].Text());
    addAddressee(triples, sign, row["AccOIDR"].Text(), row["AccountNumber"].Text());
  });
  return triples;
}

}  // namespace tolvex
