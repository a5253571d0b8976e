// The accounts of gains and losses of exchange rates as the user last chose them.
#pragma once

#include "operations/screen/preset_accounts.h"

namespace tolvex {

// Those that the user chose last, else the first ones marked in the plan. A plan without either
// mark is told; what is missing stays "".
InfluenceAccounts readInfluenceAccounts(HostContext& host);
void rememberInfluenceAccounts(HostContext& host, const InfluenceAccounts& accounts);

}  // namespace tolvex
