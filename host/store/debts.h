// Selection of open items: what stands open on an account at the end of any day.
//
// An item is an operation's claim or duty on an account, in one currency and for one set of
// addressees (items.h). What is open today and was not touched after the day is taken as stored;
// an item with later postings is computed anew from its postings up to the day.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/store/balances.h"
#include "host/store/dimset.h"
#include "host/store/items.h"
#include "host/store/lookups.h"

namespace tolvex::store {

struct DebtQuery {
  std::optional<int> account;  // none: every account whose items are kept; needs one addressee
  bool tracked = true;         // of the account; without kept items its postings are read through
  int day = kNoLimit;
  int side = 0;  // 1 items on the debit, -1 on the credit, 0 both
  AddresseeFilter addressee;
};

struct Debt {
  int accountId = 0;
  int itemId = 0;  // the operation
  ItemRow row;
  // Positive on the item's own side.
  std::int64_t restLt() const { return row.side() * row.restLt; }
  std::int64_t restCur() const { return row.side() * row.restCur; }
};

// In order of account, item, currency and set.
std::vector<Debt> openItems(Database& db, const DebtQuery& query, DimsetRefs& sets);

// Reads the addressees of all the debts at once, for those who are going to look at each.
void readSets(const std::vector<Debt>& debts, DimsetRefs& sets);

// What stands open of one operation today, on every account whose items are kept.
std::vector<Debt> openItemsOf(Database& db, int operId);

// The items of one operation on one account, closed ones too, after all postings.
std::vector<Debt> itemsOf(Database& db, const AccountRow& account, int operId);

// Whom the debt is with: the reference that the filter asks for, else the first firm, person or
// employee of the set, else any; "" for the empty set.
std::string debtorOf(const std::vector<std::string>& references, const AddresseeFilter& filter);

}  // namespace tolvex::store
