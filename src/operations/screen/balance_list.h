// The balance of one operation over its accounts.
#pragma once

#include <string>
#include <vector>

#include "framework/recordset.h"
#include "platform/host.h"

namespace tolvex {

struct AccountBalance {
  std::string account;
  double debitLt = 0, creditLt = 0;
  double balanceLt() const;  // debits less credits
};

// By account code. A side without account ("0") is left out.
std::vector<AccountBalance> operationBalance(RowSet& BR);

// A row an account with its name, and the totals below in bold.
void showOperationBalance(ui::ListView& list, VXObjectUIO& object);

}  // namespace tolvex
