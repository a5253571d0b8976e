// Undo of the last save of an operation, as far back as the protocol goes.
//
// Each row of the protocol keeps what its save took away. An undo is a save of its own: it has
// rights, lock dates, rules and a row in the protocol like any other, and names the row that it
// took back; the next undo goes on below that. A save that deleted the operation is undone by
// putting it back under its old id.
#pragma once

#include <string>

#include "host/store/oper_image.h"
#include "host/store/session.h"

namespace tolvex::store {

struct UndoTarget {
  int logId = 0;
  std::string at, userName, action;
  SavedImage image;
};

// The component that guards the operation: that of its group, of a deleted one that of the group it
// stood in.
std::string guardOf(Database& db, int operId);

// The save that an undo would take back. Throws Refusal 1204 when there is none or when the
// operation has changed since without a save (a conversion of the plan).
UndoTarget undoTarget(Session& session, int operId);

// `version` is the one that the caller has read, 0 for an operation that does not exist. Refusals
// beside those of a save or a delete: 1201 when it is another version now, 547 when other
// operations follow an entry that would go.
void undoSave(Session& session, int operId, int version);

}  // namespace tolvex::store
