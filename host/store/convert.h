// The conversion of the books to the new chart of accounts.
#pragma once

#include <vector>

#include "host/store/account_texts.h"
#include "host/store/session.h"

namespace tolvex::store {

// Moves what was entered, template lines, marks and lock dates to the counterparts; the new plan
// becomes the working one, the working one a former plan. At the end every account must have the
// turnovers of those it stands for, year by year and currency by currency.
// Runs in the caller's transaction, which has the books to itself; raises the epoch. Throws Refusal
// 547, which names the first account without a counterpart, and Stopped.
// Answers the texts that a person must look through.
std::vector<AccountText> convertPlan(Session& session);

}  // namespace tolvex::store
