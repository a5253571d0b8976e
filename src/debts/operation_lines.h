// The lines of the selection of operations, as its list shows them: debts with what a payment takes
// of each, or the orders and offers of the trade.
#pragma once

#include <string>
#include <vector>

#include "debts/operation_select.h"
#include "platform/controls.h"
#include "platform/numbers.h"

namespace tolvex {

std::vector<ui::Column> operationColumns(ListedOperations listed);
// A row whose currency litas cannot cover is marked, its hint says what is left.
ui::Row operationLine(const DebtRow& row, ListedOperations listed, const NumberFormat& format);

}  // namespace tolvex
