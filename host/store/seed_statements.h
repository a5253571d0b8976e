// The rows of the balance and of the profit statement that a company begins with.
#pragma once

#include <string_view>

#include "host/store/database.h"

namespace tolvex::store {

// Nothing for a kind that is no statement. `paramList` "0" is the balance, "1" the profit.
void seedStatementRows(Database& db, int journalId, std::string_view kind,
                       std::string_view paramList);

}  // namespace tolvex::store
