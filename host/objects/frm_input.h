// frmInput: one line of text asked of the user.
#pragma once

#include "platform/form.h"

namespace tolvex {

class frmInput final : public ui::Form {
 public:
  frmInput(HostContext& host, std::string prompt, std::string title, std::string initial);
  const char* picture() const override;
  void opened() override;
  bool accepted() const { return result == 1; }

  ui::TextBox txtInput{this, "txtInput", "", 40};
  ui::Button cmdOk{this, "cmdOk", "Gerai", ui::Role::Primary};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
};

}  // namespace tolvex
