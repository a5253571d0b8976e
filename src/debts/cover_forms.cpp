#include "debts/cover_forms.h"

#include "debts/frmDebtsCover.h"

namespace tolvex {

void registerCoverForms(FormRegistry& forms) {
  forms.add<OperationToolRequest>("frmDebtsCover", [](const OperationToolRequest& request) {
    return std::make_shared<frmDebtsCover>(request);
  });
}

}  // namespace tolvex
