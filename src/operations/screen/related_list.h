// The list of entries of other operations that point at this one.
#pragma once

#include "platform/host.h"

namespace tolvex {

// Fills the list; an operation that is not stored yet has none. A failed read has been shown.
void showRelatedEntries(ui::ListView& list, VXObjectUIO& object);
// Opens the operation of the row under the cursor.
void openRelated(ui::ListView& list);

}  // namespace tolvex
