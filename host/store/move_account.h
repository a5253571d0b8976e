// An account is moved one level down: what was entered on it stands on a new subaccount below it,
// so that more of them can be made beside it.
#pragma once

#include <string>

#include "host/store/session.h"

namespace tolvex::store {

// Makes the subaccount and moves entries, template lines, the mark, the counterpart, turnovers and
// open items onto it; lock dates count for both. Lock dates do not stop it, since no sum and no day
// changes. Numbers in settings of groups and journals follow. Operations count as changed, so that
// a screen that shows the old number cannot bring it back. Gives the number of the subaccount.
// Refuses a node that is gone (32) and a group, which has no entries (1204). Needs the books to
// itself.
std::string moveAccountDown(Session& session, int accountId);

}  // namespace tolvex::store
