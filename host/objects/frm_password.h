// frmPassword: a user gives himself a new password: from the menu of the program, or while he logs
// in, because he has none or must change it.
#pragma once

#include <functional>
#include <string>

#include "platform/form.h"

namespace tolvex {

class frmPassword final : public ui::Form {
 public:
  struct Request {
    std::string login;
    std::string reason;  // shown above the boxes; may be ""
    bool askOld = true;  // the password that he has
    std::string laterCaption = "Atšaukti";
    // Stores it; "" on success, else the refusal.
    std::function<std::string(const std::string& old, const std::string& fresh)> change;
  };
  frmPassword(HostContext& host, Request request);
  const char* picture() const override;
  void opened() override;
  bool changed() const { return result == 1; }

  ui::Label lblReason{this, "lblReason"};
  ui::TextBox txtLogin{this, "txtLogin", "Vartotojas", 34};
  ui::TextBox txtOld{this, "txtOld", "Dabartinis slaptažodis", 34};
  ui::TextBox txtNew{this, "txtNew", "Naujas slaptažodis", 34};
  ui::TextBox txtAgain{this, "txtAgain", "Pakartokite naują", 34};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOk{this, "cmdOk", "Pakeisti slaptažodį", ui::Role::Primary};

 private:
  void change();
  const Request request_;
};

}  // namespace tolvex
