// Accounts by their marks in the plan: "2720" the cash accounts, "536" and "636" those of the
// influence of exchange rates.
#pragma once

#include <string>

#include "framework/param_dictionary.h"
#include "platform/host.h"

namespace tolvex {

// The first account of each mark. A failed read has been shown and gives an empty dictionary.
ParamDictionary presetAccounts(HostContext& host);

// The accounts that take the gains and losses of exchange rates; "" when the plan marks none.
struct InfluenceAccounts {
  std::string gain, loss;
};
// A plan without either mark is told.
InfluenceAccounts markedInfluenceAccounts(HostContext& host);

}  // namespace tolvex
