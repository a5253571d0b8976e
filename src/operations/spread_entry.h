// An entry of an operation spread over months: it becomes the first part itself, the other parts
// are new entries with its accounts, addressees and currencies.
#pragma once

#include <string_view>

#include "framework/results.h"
#include "operations/spreading.h"
#include "platform/objects.h"

namespace tolvex {

// What the rules of spreading ask of the entry at the cursor of BR.
SpreadEntry spreadEntryOf(RowSet& BR);

// Refused, with nothing changed, when there is no such entry, when the terms do not work out, or
// when a part is refused. Value is the number of parts.
MethodResult SpreadOverMonths(VXObjectUIO& operation, std::string_view guid,
                              const SpreadTerms& terms);

}  // namespace tolvex
