// Lists on paper: what stands on the screen as a report.
//
// Columns keep their order, width and side. A column set to the right holds numbers, one of which
// every filled cell is a day holds days; all else is text, also where it looks like a number.
#pragma once

#include <string>

#include "platform/controls.h"
#include "platform/report.h"

namespace tolvex {

inline constexpr float kPortraitCm = 17, kLandscapeCm = 27;

// Upright while the columns take at most 17 cm together, else on its side; margins leave 17 or
// 27 cm.
PageSetup listPage(float columnsCm);

// Widths follow from the columns' characters; growing ones fill the page. Bold rows stay bold. The
// ticks of a list with check boxes become a column of their own.
ReportTable listTable(const ui::ListView& list);

// The firm's name, the title, further lines and the table.
ReportDocument listReport(const std::string& firm, const ui::ListHeading& heading,
                          const ui::ListView& list);

// A text as the name of a file: without the marks that file systems keep for themselves.
std::string fileStem(std::string_view text);

}  // namespace tolvex
