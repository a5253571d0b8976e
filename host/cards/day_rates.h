// Rates of currencies by day, read from the books and written to them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"

namespace tolvex {

inline constexpr const char* kCurrencyKind = "O0002200";
inline constexpr const char* kRateDayKind = "O0002201";
inline constexpr const char* kCurrencyRights = "CCurrency";

struct DayRate {
  DateTime day;
  std::string code;
  std::optional<double> rate;  // litas for one unit; nothing: the day has none
};
struct RatedCurrency {
  std::string code, name;
  double fixedRate = 0;
};

// A failed read has been shown and gives nothing.
std::optional<std::vector<DayRate>> readDayRates(HostContext& host, DateTime from, DateTime to,
                                                 const std::string& code);
std::optional<std::vector<RatedCurrency>> ratedCurrencies(HostContext& host);  // all but the base

// All or none; a failure has been shown. Lists and screens that show rates are read again.
bool writeDayRates(HostContext& host, const std::vector<DayRate>& rates);

}  // namespace tolvex
