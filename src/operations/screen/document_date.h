// The date of a document against its entries and the operations that they point at.
#pragma once

#include "framework/recordset.h"
#include "platform/host.h"

namespace tolvex {

// Whether no entry points at an operation of a later date. The first pointer of each entry counts;
// an operation that is gone does not.
bool dateFitsReferences(HostContext& host, RowSet& BR, DateTime date);

// Gives all entries the date. Their currency rows are written back as they are, so that they count
// as changed and travel to the store with the new date.
void redateEntries(RowSet& BR, DateTime date);

}  // namespace tolvex
