// Running numbers of documents: how a number text is composed by the mask of the group, read back
// from what the user left of it, and changed by hand.
//
// The counter itself lives in the store; the header field AutoNumber holds the document's own
// counter value, 0 when it holds none.
#pragma once

#include <string>
#include <string_view>

#include "framework/results.h"
#include "platform/objects.h"

namespace tolvex {

// Asks the store for the group's next number, keeps the counter in AutoNumber and gives the
// composed text. A group without a mask gives "" and leaves AutoNumber alone. `flag` 1 marks the
// first number of a new document. The date part of the text is always today's.
MethodResult GetAutoNumber(VXObjectUIO& operation, std::string_view date, int flag);

// Finds the counter in an edited number text and keeps it in AutoNumber; a text that the mask does
// not explain sets it to 0, so the document no longer holds a number. Nothing happens when mask or
// text is empty.
MethodResult SaveAutoNumber(VXObjectUIO& operation, std::string_view mask, std::string_view text);

// The number text with another counter in the place that the mask gives it, as wide as the one that
// stood there. A text without a counter there stays as it is.
std::string withCounter(std::string_view mask, std::string_view text, int counter);

// Lets the user change AutoNumber. Value: whether it changed.
MethodResult CheckAutoNumber(VXObjectUIO& operation);

}  // namespace tolvex
