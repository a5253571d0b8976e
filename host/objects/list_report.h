// What a user may do with any list on the screen, whatever it shows: print it, write it to a file.
#pragma once

#include <optional>

#include "platform/controls.h"
#include "platform/report.h"

namespace tolvex {

// The list as a report, with the rows that were not read yet. Nothing for an empty list, or when
// the user stopped the reading.
std::optional<ReportDocument> reportOf(const ui::ListView& list);

// The preview. An empty list does nothing.
void printList(const ui::ListView& list);
// A spreadsheet; the user is asked where.
void exportList(const ui::ListView& list);

}  // namespace tolvex
