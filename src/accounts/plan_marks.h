// The list of marks on the card of an account: which special purpose it serves.
#pragma once

#include <optional>

#include "platform/controls.h"
#include "platform/objects.h"

namespace tolvex {

// A row for each mark with the accounts that carry it; the node's own mark is ticked. False when a
// read failed, which has been shown; the list is then empty and says nothing about the mark.
bool fillMarks(ui::ListView& list, VXObjectUIO& node);
// An account carries one mark at most: the tick of the current row takes the others back.
void keepOneMark(ui::ListView& list);
// Id of the ticked mark; Null when there is none.
Variant tickedMark(const ui::ListView& list);

}  // namespace tolvex
