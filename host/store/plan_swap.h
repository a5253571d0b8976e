// The new chart of accounts becomes the working one.
#pragma once

#include <map>

#include "host/store/database.h"

namespace tolvex::store {

// The working plan becomes plan -1, each former one the next older, the new plan the working one;
// counterparts are forgotten. An account's id stands for what was entered on it: by `heirs` (new
// account to old) the new account takes the id of the old one with all its postings, and the old
// one, which is history now, takes the new one's.
void swapPlans(Database& db, const std::map<int, int>& heirs);

}  // namespace tolvex::store
