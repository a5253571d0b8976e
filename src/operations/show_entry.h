// Opening the entry editor on one entry of an operation.
#pragma once

#include "framework/method_table.h"
#include "operations/UIO0201500.h"

namespace tolvex {

// Arguments: GUID; then true for read-only, or the text of the addressee kinds that may be changed,
// which is read-only too unless the operation is one of its own and no document's; then whether
// the entry may be changed (as a rule yes); then the mode. Value is the editor's result code. The
// filter of BR is cleared; an unknown GUID is refused and changes nothing.
MethodResult ShowBR(UIO0201500& operation, Arguments par);

}  // namespace tolvex
