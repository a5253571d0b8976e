// The printed chart of accounts.
#pragma once

#include "framework/recordset.h"
#include "platform/report.h"

namespace tolvex {

// `nodes` are those of the list of the plan (Account, Name, Type, GroupFlag), printed in its order.
ReportDocument planReport(RowSet& nodes);

}  // namespace tolvex
