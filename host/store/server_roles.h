// Roles of a PostgreSQL server: who owns the books, and who works in them.
//
// The owner made the books; he alone changes their schema and restores a copy. Everybody else comes
// through a role of the server that may read and write what is entered, but only add to the
// protocols: whatever program he uses, nobody rewrites what he or another has done.
#pragma once

#include <string>

#include "host/store/database.h"

namespace tolvex::store {

// Lets an existing role of the server work in these books. By their owner.
void grantWork(Database& db, const std::string& role);
// After a change of the schema: the same for every role that worked here before. No server: nothing
// is done.
void grantAnew(Database& db);

}  // namespace tolvex::store
