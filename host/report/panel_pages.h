// The boxes of a form as marks.
#pragma once

#include "host/report/page_flow.h"

namespace tolvex::report {

// At flow.y; the caller has seen to it that there is room.
void placePanel(PageFlow& flow, const Panel& panel, const PageSetup& page);

// The size in points at which the text of a box fits it, `kSmallestPoints` at the least.
float fittingPoints(FontSet& fonts, const Box& box, const PageSetup& page);

}  // namespace tolvex::report
