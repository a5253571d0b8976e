// Saving and deleting a financial operation: rights, version, lock dates, number, rules, rows,
// roll-ups, open items and protocol, all in the caller's one transaction.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "host/store/dimset.h"
#include "host/store/numbering.h"
#include "host/store/oper_change.h"
#include "host/store/session.h"

namespace tolvex::store {

// Stores what the record changed and writes ids, version and number into it. Throws Refusal before
// anything is written or rolls everything back with its transaction. Returns the operation's id.
int saveOperation(Session& session, std::string_view kind, std::string_view otype, RowSet& changes);

// Why rows are stored: a user's save or delete, or one that takes back a row of the protocol.
struct SaveReason {
  int undone = 0;  // that row; 0: none
};
void eraseOperation(Session& session, int id, SaveReason reason = {});

// The operation as it is stored now, held until the end together with those that it points or
// pointed at and with `pointers`; nothing when it does not exist.
std::optional<HeaderRow> holdOperation(Session& session, int id, std::vector<int> pointers);

// The group of the operation as it shall be; refused without the right to save there (1203) or
// when it is gone (547).
NumberRules groupFor(Session& session, const OperChange& change);

// The steps from pointers to protocol for a change that stands ready. A save settles its number; an
// undo gets its own back, or the next one where that is taken.
void storeChange(Session& session, OperChange& change, const NumberRules& group, SaveReason reason);

// Fills the sides' sets of addressees and items; account ids and `tracked` must be set.
void derive(EntryRow& entry, int operId, Dimsets& dimsets);

}  // namespace tolvex::store
