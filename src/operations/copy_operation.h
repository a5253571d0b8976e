// A stored operation as the beginning of a new one of today.
#pragma once

#include <memory>

#include "platform/host.h"

namespace tolvex {

// A new operation of the same kind and group with the comment and the entries of `from`, dated
// today. Null when it cannot be made.
//
// Number and series are not copied: they are offered anew. Neither are references to other
// operations: what a payment closes is closed already, and a copy must not pay it twice. Other
// addressees, currencies with their rates, comments of entries and their VAT marks are.
std::shared_ptr<VXObjectUIO> copyOperation(HostContext& host, VXObjectUIO& from);

}  // namespace tolvex
