#include "payments/payment_forms.h"

#include "payments/frmPaymentTemplate.h"

namespace tolvex {

void registerPaymentForms(FormRegistry& forms) {
  forms.add<ObjectFormRequest>(kPaymentScreen, [](const ObjectFormRequest& request) {
    return std::make_shared<frmPaymentTemplate>(request);
  });
}

}  // namespace tolvex
