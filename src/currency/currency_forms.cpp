#include "currency/currency_forms.h"

#include "currency/frmCurrencyExchange.h"

namespace tolvex {

void registerCurrencyForms(FormRegistry& forms) {
  forms.add<OperationToolRequest>("frmCurrencyExchange", [](const OperationToolRequest& request) {
    return std::make_shared<frmCurrencyExchange>(request);
  });
}

}  // namespace tolvex
