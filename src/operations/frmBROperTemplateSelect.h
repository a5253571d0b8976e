// frmBROperTemplateSelect: which template makes the entries of an operation, and of what sum.
#pragma once

#include <memory>

#include "operations/screen/number_box.h"
#include "operations/screen/template_tree.h"
#include "operations/template_choice.h"
#include "platform/form.h"

namespace tolvex {

class frmBROperTemplateSelect final : public ui::Form {
 public:
  explicit frmBROperTemplateSelect(const TemplateChoiceRequest& request);

  const char* picture() const override;
  void opened() override;

  ui::TreeView trwTemplates{this, "trwTemplates", "Pasirinkite šabloną"};
  ui::TextBox txtSelect{this, "txtSelect", "Pasirinktas šablonas"};
  ui::TextBox txtSuma{this, "txtSuma", "Operacijos suma", 14, ui::Align::Right};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOK{this, "cmdOK", "Gerai", ui::Role::Primary};

 private:
  void fill();
  void chooseDefault();
  void nodeChanged();
  void accept();

  TemplateChoiceRequest request_;
  TemplateTree tree_{trwTemplates, "Grupės operacijų šablonai :"};
  NumberBox sum_{txtSuma, 2, host().numbers(), NumberBox::Input::Arithmetic};
};

}  // namespace tolvex
