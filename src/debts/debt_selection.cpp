#include "debts/debt_selection.h"

#include "debts/debt_entries.h"

namespace tolvex {

void registerSelectionForms(FormRegistry&) {}

void addDebtMethods(MethodTable<UIO0201500>& methods) {
  methods.add({"Debts", {5, 6, 7, 8, 9}, "Method Debts:", Debts});
  methods.add({"BROperSelect", {3}, "Method BROperSelect:", BROperSelect});
}

}  // namespace tolvex
