// Accounts become one: what was entered on them stands on one of them.
#pragma once

#include <vector>

#include "host/store/session.h"

namespace tolvex::store {

struct Merge {
  int from = 0, to = 0;
};
// Moves postings, template lines and turnovers. Open items are left to rebuildItems. Takes the
// months of an account one by one; throws Stopped.
void mergeAccounts(Database& db, const std::vector<Merge>& merges, const Progress& progress);

// Makes the open items of an account anew from its postings, those of accounts that were merged
// into it too; a posting that belongs to none yet gets its item.
void rebuildItems(Database& db, int accountId, const std::vector<Merge>& merges);

}  // namespace tolvex::store
