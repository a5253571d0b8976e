// The derived tables made anew from the base tables, inside the caller's transaction; see
// rebuildBooks for the whole step.
#pragma once

#include "host/store/books.h"

namespace tolvex::store {

void rebuildDerived(Database& db, const Progress& progress = {});

}  // namespace tolvex::store
