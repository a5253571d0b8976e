// Working days for which a currency has no rate.
#pragma once

#include <string>
#include <vector>

#include "host/cards/day_rates.h"

namespace tolvex {

std::vector<DateTime> daysWithoutRate(const std::vector<DayRate>& rates, const std::string& code,
                                      DateTime from, DateTime to);

// "Trūksta kursų: USD 2004.03.05, 2004.03.08 ir dar 3; …", of many currencies the number of days,
// "" when nothing is missing. Currencies of a fixed rate need none by the day.
std::string missingRatesText(const std::vector<DayRate>& rates,
                             const std::vector<RatedCurrency>& currencies, DateTime from,
                             DateTime to);

}  // namespace tolvex
