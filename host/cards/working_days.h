// The working days of Lithuania: those on which rates of currencies are announced.
#pragma once

#include <vector>

#include "framework/date_time.h"

namespace tolvex {

// Neither Saturday nor Sunday nor a public holiday, as the holidays were in that year.
bool isWorkingDay(DateTime day);

std::vector<DateTime> workingDays(DateTime from, DateTime to);  // both ends included

}  // namespace tolvex
