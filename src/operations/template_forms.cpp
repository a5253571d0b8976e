#include "operations/template_forms.h"

#include "operations/frmBROperTemplateSelect.h"
#include "operations/frmBRTemplate.h"

namespace tolvex {

void registerTemplateForms(FormRegistry& forms) {
  forms.add<ObjectFormRequest>(kTemplateScreen, [](const ObjectFormRequest& request) {
    return std::make_shared<frmBRTemplate>(request);
  });
  forms.add<TemplateChoiceRequest>(kTemplateChoice, [](const TemplateChoiceRequest& request) {
    return std::make_shared<frmBROperTemplateSelect>(request);
  });
}

}  // namespace tolvex
