// Full sums of debts: which accounts are matched document by document because a group asks for it.
//
// Receivables, payables and advances are matched in any books. An account bears a mark besides, and
// a group may ask for the open items of all accounts with one mark; these are matched as long as
// some group asks.
#pragma once

#include <string_view>

#include "host/store/database.h"

namespace tolvex::store {

// Makes the open items of every account with the mark anew, from its postings, and matches it from
// now on. Throws Refusal when there is no such mark.
void createFullSums(Database& db, std::string_view markCode);

// Ends the matching of accounts that only groups asked for and none asks for any more.
void dropUnaskedSums(Database& db);

}  // namespace tolvex::store
