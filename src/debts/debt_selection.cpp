#include "debts/debt_selection.h"

#include "debts/debt_entries.h"
#include "debts/frmBROperSelect.h"

namespace tolvex {

void registerSelectionForms(FormRegistry& forms) {
  forms.add<OperationSelectRequest>(kOperationSelect, [](const OperationSelectRequest& request) {
    return std::make_shared<frmBROperSelect>(request);
  });
}

void addDebtMethods(MethodTable<UIO0201500>& methods) {
  methods.add({"Debts", {5, 6, 7, 8, 9}, "Method Debts:", Debts});
  methods.add({"BROperSelect", {3}, "Method BROperSelect:", BROperSelect});
}

}  // namespace tolvex
