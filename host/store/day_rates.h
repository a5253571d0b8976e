// Rates of currencies by day: litas for one unit, at most one a currency and day.
//
// Documents carry the rates that they were written with, so no change here moves an entry.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/store/session.h"

namespace tolvex::store {

struct DayRateChange {
  std::string code;  // as the user wrote it, in any case
  int day = 0;       // yyyymmdd
  double rate = 0;
  bool remove = false;  // the day is to have none; `rate` is not looked at
};

// Stores, replaces and takes away. The first rate of a day may be stored by whoever writes
// operations, since it comes with the first document of the day; what stands is changed and removed
// by the rights of the currencies. Throws Refusal: 547 for an unknown currency, 1204 for the base
// currency, a rate that is not above 0 or a missing day, 1203 without the right.
void writeDayRate(Session& session, const DayRateChange& change);

// "2004.03.31;USD;2.7654#2004.03.31;GBP;": rows of day, code and rate, an empty rate takes away.
// Throws Refusal 1207 for a text that does not read so.
std::vector<DayRateChange> readDayRates(std::string_view text);

// Days that have rates, as objects of a kind of their own with the day as their id.
inline constexpr const char* kRateDayKind = "O0002201";

}  // namespace tolvex::store
