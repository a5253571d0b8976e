// Who made an operation and who changed it last, as its header row says.
#pragma once

#include "framework/results.h"
#include "platform/objects.h"

namespace tolvex {

// Before a save: stamps the changing user and moment, on a new operation the creating ones too.
MethodResult CreateProtocol(VXObjectUIO& operation);

// Shows creator, moment of creation, last changer and moment of the change.
MethodResult ShowProtocol(VXObjectUIO& operation);

}  // namespace tolvex
