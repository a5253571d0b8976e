// The accounts that take the gains and losses of exchange rates.
#pragma once

#include <string>

#include "platform/host.h"

namespace tolvex {

struct InfluenceAccounts {
  std::string gain, loss;
};

// Those that the user chose last, else the first ones marked in the plan. A plan without either
// mark is told; what is missing stays "".
InfluenceAccounts readInfluenceAccounts(HostContext& host);
void rememberInfluenceAccounts(HostContext& host, const InfluenceAccounts& accounts);

}  // namespace tolvex
