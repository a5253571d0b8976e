// Spreading one entry over months: the dates and sums of its parts, on plain values.
//
// Sums are litas unless a name ends in Curr; a rate is litas per unit. The parts of a period add up
// to its sum to the cent, in litas and in each currency.
#pragma once

#include <vector>

#include "framework/date_time.h"

namespace tolvex {

inline constexpr int kMostMonths = 600;

// What the user wants.
struct SpreadTerms {
  double sum = 0;  // of each month, or of the whole period
  bool wholePeriod = false;
  int months = 0;        // 1 … kMostMonths
  int day = 1;           // of each month; in a shorter month its last day
  bool lastDay = false;  // the last day of each month instead
  bool withComment = false;
};

// A side of the entry in a foreign currency; without a rate the side is in litas.
struct SpreadSide {
  double rate = 0, sumCurr = 0;
  bool counts() const { return rate > 0 && sumCurr > 0; }
  bool operator==(const SpreadSide&) const = default;
};

struct SpreadEntry {
  DateTime date;
  double sumLt = 0;
  SpreadSide debit, credit;
};

using SpreadPart = SpreadEntry;

// The parts, the first in the month of the entry. Empty when the terms are no terms (months or day
// out of range) or when a part would not be above zero.
//
// A currency side takes its share at the entry's rate, and the litas follow from it, so a month may
// differ from the even share by a cent. The last part of a period takes what is left of everything;
// where that does not fit the rate, its rate is the one that does, to nine decimals.
std::vector<SpreadPart> spread(const SpreadEntry& entry, const SpreadTerms& terms);

}  // namespace tolvex
