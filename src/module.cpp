// The one file that knows the whole module: it makes the classes by name and fills the tables by
// which lower subjects reach higher ones.
#include <memory>
#include <string>
#include <string_view>

#include "accounts/UI0200400.h"
#include "accounts/UI0201300.h"
#include "accounts/UIO0200400.h"
#include "accounts/UIO0201300.h"
#include "accounts/account_forms.h"
#include "accounts/lock_forms.h"
#include "currency/currency_forms.h"
#include "debts/cover_forms.h"
#include "debts/debt_selection.h"
#include "framework/module_header.h"
#include "framework/object_contract.h"
#include "operations/UI0201400.h"
#include "operations/UI0201500.h"
#include "operations/UI0201600.h"
#include "operations/UIO0201400.h"
#include "operations/UIO0201500.h"
#include "operations/UIO0201600.h"
#include "operations/operation_forms.h"
#include "operations/operation_methods.h"
#include "operations/template_forms.h"
#include "payments/UI0201700.h"
#include "payments/UIO0201700.h"
#include "payments/payment_forms.h"
#include "platform/registration.h"

namespace tolvex {

namespace {

OperationTablesPtr fillTables() {
  auto tables = std::make_shared<OperationTables>();
  addOperationMethods(tables->methods);
  addDebtMethods(tables->methods);
  registerOperationForms(tables->forms);
  registerAccountForms(tables->forms);
  registerLockForms(tables->forms);
  registerCurrencyForms(tables->forms);
  registerSelectionForms(tables->forms);
  registerTemplateForms(tables->forms);
  registerPaymentForms(tables->forms);
  registerCoverForms(tables->forms);
  return tables;
}

class TolvexModule final : public Module {
 public:
  ~TolvexModule() override { adoptHostContext(nullptr); }

  std::unique_ptr<VXHeader> header() override { return std::make_unique<DLLHeader>(); }
  std::unique_ptr<VXHeaderSecurity> security() override {
    return std::make_unique<SecurityHeader>();
  }

  std::shared_ptr<VXObjectUI> createUI(std::string_view className) override {
    if (className == "UI0200400") return std::make_shared<UI0200400>(forms());
    if (className == "UI0201300") return std::make_shared<UI0201300>(forms());
    if (className == "UI0201400") return std::make_shared<UI0201400>(tables_);
    if (className == "UI0201500") return std::make_shared<UI0201500>(tables_);
    if (className == "UI0201600") return std::make_shared<UI0201600>(forms());
    if (className == "UI0201700") return std::make_shared<UI0201700>(forms());
    return nullptr;
  }

  std::shared_ptr<VXObjectUIO> createUIO(std::string_view className) override {
    if (className == "UIO0200400") return std::make_shared<UIO0200400>();
    if (className == "UIO0201300") return std::make_shared<UIO0201300>(forms());
    if (className == "UIO0201400") return std::make_shared<UIO0201400>();
    if (className == "UIO0201500") return std::make_shared<UIO0201500>(tables_);
    if (className == "UIO0201600") return std::make_shared<UIO0201600>(forms());
    if (className == "UIO0201700") return std::make_shared<UIO0201700>();
    return nullptr;
  }

  std::vector<std::string> formNames() const override { return tables_->forms.names(); }

 private:
  std::shared_ptr<const FormRegistry> forms() const { return {tables_, &tables_->forms}; }

  OperationTablesPtr tables_ = fillTables();
};

}  // namespace

}  // namespace tolvex

#if defined(_WIN32)
#define TOLVEX_EXPORT __declspec(dllexport)
#else
#define TOLVEX_EXPORT [[gnu::visibility("default")]]
#endif

extern "C" TOLVEX_EXPORT tolvex::Module* tolvexModule(int abi) {
  return abi == tolvex::kModuleAbi ? std::make_unique<tolvex::TolvexModule>().release() : nullptr;
}
