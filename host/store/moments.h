// Moments: the clock of the machine, and how the store keeps a moment.
#pragma once

#include <string>

#include "framework/date_time.h"

namespace tolvex::store {

// Now, in local civil time.
DateTime localNow();

// "yyyy-mm-dd hh:mm:ss"; texts of this form stand in the order of time.
std::string storedMoment(DateTime at);
// The same as people read it, "yyyy.mm.dd hh:mm:ss"; anything else is left as it is.
std::string shownMoment(std::string stored);

}  // namespace tolvex::store
