#include "operations/spreading.h"

#include <algorithm>

#include "framework/conversions.h"
#include "framework/rounding.h"

namespace tolvex {
namespace {

constexpr int kRateDecimals = 9;
constexpr int kStoredCurrencyDecimals = 4;

// The chosen day of a month, given by its last day.
DateTime dayIn(DateTime lastDay, const SpreadTerms& terms) {
  const auto day = static_cast<unsigned>(terms.day);
  if (terms.lastDay || day >= lastDay.Day()) return lastDay;
  return DateTime::Of(lastDay.Year(), lastDay.Month(), day);
}

// One quantity shared out by months: litas, or a currency.
class Shares {
 public:
  Shares(double whole, bool restInLast) : left_(whole), restInLast_(restInLast) {}
  double take(double share, bool last) {
    const double taken =
        last && restInLast_ ? roundHalfEven(left_, kStoredCurrencyDecimals) : share;
    left_ -= taken;
    return taken;
  }

 private:
  double left_;
  bool restInLast_;
};

double fittingRate(const SpreadSide& side, double sumLt) {
  if (roundLt(side.sumCurr * side.rate) == sumLt) return side.rate;
  return roundHalfEven(sumLt / side.sumCurr, kRateDecimals);
}

// The currency that a sum in litas stands for; the entry's own where it is the entry's own sum.
double currencyOf(double sumLt, const SpreadSide& side, double entryLt) {
  return sumLt == entryLt ? side.sumCurr : roundHalfEven(sumLt / side.rate, 2);
}

bool sensible(const SpreadTerms& terms) {
  const bool day = terms.lastDay || (terms.day >= 1 && terms.day <= 31);
  return terms.months >= 1 && terms.months <= kMostMonths && day && terms.sum > 0;
}

bool aboveZero(const SpreadPart& part, const SpreadEntry& entry) {
  return part.sumLt > 0 && (!entry.debit.counts() || part.debit.sumCurr > 0) &&
         (!entry.credit.counts() || part.credit.sumCurr > 0);
}

}  // namespace

std::vector<SpreadPart> spread(const SpreadEntry& entry, const SpreadTerms& terms) {
  if (!sensible(terms)) return {};
  // The leading currency is shared first; litas and the other currency follow it.
  const bool debitLeads = entry.debit.counts();
  const SpreadSide& lead = debitLeads ? entry.debit : entry.credit;
  const SpreadSide& other = debitLeads ? entry.credit : entry.debit;

  const double monthLt = terms.wholePeriod ? roundLt(terms.sum / terms.months) : terms.sum;
  Shares litas(terms.sum, terms.wholePeriod);
  const auto shares = [&](const SpreadSide& side) {
    return Shares(side.counts() ? currencyOf(terms.sum, side, entry.sumLt) : 0, terms.wholePeriod);
  };
  Shares leadCurr = shares(lead), otherCurr = shares(other);

  std::vector<SpreadPart> parts;
  DateTime month = LastDayOfMonth(entry.date);
  for (int i = 1; i <= terms.months; ++i) {
    const bool last = i == terms.months;
    SpreadPart part = entry;
    SpreadSide& leadPart = debitLeads ? part.debit : part.credit;
    SpreadSide& otherPart = debitLeads ? part.credit : part.debit;
    part.date = dayIn(month, terms);
    double shareLt = monthLt;
    if (lead.counts()) {
      leadPart.sumCurr = leadCurr.take(currencyOf(monthLt, lead, entry.sumLt), last);
      shareLt = roundLt(leadPart.sumCurr * lead.rate);
    }
    part.sumLt = roundHalfEven(litas.take(shareLt, last), 2);
    if (other.counts()) {
      const double share =
          other == lead ? leadPart.sumCurr : currencyOf(part.sumLt, other, entry.sumLt);
      otherPart.sumCurr = otherCurr.take(share, last);
    }
    if (!aboveZero(part, entry)) return {};
    for (SpreadSide* side : {&part.debit, &part.credit}) {
      if (side->counts()) side->rate = fittingRate(*side, part.sumLt);
    }
    parts.push_back(part);
    month = LastDayOfMonth(month.AddDays(1));
  }
  return parts;
}

}  // namespace tolvex
