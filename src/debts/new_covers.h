// Open debts less what the open operation closes of them already.
//
// The store knows an operation as it was saved. Entries added since then close debts as well, and a
// cover that did not see them would offer the same debts once more.
#pragma once

#include <string_view>
#include <vector>

#include "debts/debt_rows.h"

namespace tolvex {

// Takes off the debts of `account` what the entries of BR that are not stored yet post to them;
// debts of which nothing is left go. Cursor and filter of BR stay.
void takeOffNewCovers(std::vector<Debt>& debts, std::string_view account, RowSet& BR);

}  // namespace tolvex
