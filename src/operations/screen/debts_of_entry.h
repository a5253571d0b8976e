// What a marked entry tells the choice of debts: the arguments of the keyed action "Debts".
#pragma once

#include <string_view>
#include <vector>

#include "framework/variant.h"
#include "platform/objects.h"

namespace tolvex {

// The money goes out through the entry's credit account, or comes in through its debit account;
// the debts stand on the other one. Sum and currency are those of the money's side, the client the
// first firm, person or employee of the entry. Empty when there is no such entry.
enum class MoneyGoes { Out, In };
std::vector<Variant> debtsArguments(VXObjectUIO& operation, std::string_view guid, MoneyGoes way);

}  // namespace tolvex
