// The choice of debts for a payment, for the tables of the module: its screens, and the keyed
// actions "Debts" and "BROperSelect" of an operation.
#pragma once

#include "framework/form_registry.h"
#include "operations/UIO0201500.h"

namespace tolvex {

void registerSelectionForms(FormRegistry& forms);
void addDebtMethods(MethodTable<UIO0201500>& methods);

}  // namespace tolvex
