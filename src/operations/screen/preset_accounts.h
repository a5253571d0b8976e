// Accounts by their marks in the plan: "2720" the cash accounts, "536" and "636" those of the
// influence of exchange rates.
#pragma once

#include "framework/param_dictionary.h"
#include "platform/host.h"

namespace tolvex {

// The first account of each mark. A failed read has been shown and gives an empty dictionary.
ParamDictionary presetAccounts(HostContext& host);

}  // namespace tolvex
