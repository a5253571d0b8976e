#include "accounts/account_forms.h"

#include "accounts/frmAccountNewPlan.h"
#include "accounts/frmAccountPlan.h"

namespace tolvex {

void registerAccountForms(FormRegistry& forms) {
  forms.add<ObjectFormRequest>(kNodeScreen, [](const ObjectFormRequest& request) {
    return std::make_shared<frmAccountPlan>(request);
  });
  forms.add<ObjectFormRequest>(kConversionScreen, [](const ObjectFormRequest& request) {
    return std::make_shared<frmAccountNewPlan>(request);
  });
}

}  // namespace tolvex
