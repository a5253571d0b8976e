// Saving and deleting a financial operation: rights, version, lock dates, number, rules, rows,
// roll-ups, open items and protocol, all in the caller's one transaction.
#pragma once

#include <functional>
#include <set>
#include <string_view>
#include <utility>

#include "host/store/dimset.h"
#include "host/store/oper_change.h"
#include "host/store/session.h"

namespace tolvex::store {

// Stores what the record changed and writes ids, version and number into it. Throws Refusal before
// anything is written or rolls everything back with its transaction. Returns the operation's id.
int saveOperation(Session& session, std::string_view kind, std::string_view otype, RowSet& changes);

void eraseOperation(Session& session, int id);

// Fills the sides' sets of addressees and items; account ids and `tracked` must be set.
void derive(EntryRow& entry, int operId, Dimsets& dimsets);

}  // namespace tolvex::store
