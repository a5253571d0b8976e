// frmLogin: who works. Stands before there is a workspace, so it is shown over a bare context.
#pragma once

#include <functional>
#include <string>

#include "platform/form.h"

namespace tolvex {

class frmLogin final : public ui::Form {
 public:
  // Tries to open the books; "" on success, else the reason for the user.
  using Open = std::function<std::string(const std::string& login, const std::string& password)>;
  frmLogin(HostContext& host, std::string booksName, std::string login, Open open);
  const char* picture() const override;
  void opened() override;
  bool accepted() const { return result == 1; }

  ui::Label lblProgram{this, "lblProgram", "Tolvex"};
  ui::Label lblBooks{this, "lblBooks", ""};
  ui::TextBox txtUser{this, "txtUser", "Vartotojas", 34};
  ui::TextBox txtPassword{this, "txtPassword", "Slaptažodis", 34};
  ui::Label lblRefusal{this, "lblRefusal", " "};
  ui::Button cmdOk{this, "cmdOk", "Prisijungti", ui::Role::Primary};
  ui::Button cmdCancel{this, "cmdCancel", "Baigti"};

 private:
  void tryOpen();
  Open open_;
};

class Stage;
// Shows the login on the stage until it succeeds; false when the user gave up.
bool askLogin(Stage& stage, const std::string& booksName, const std::string& login,
              const frmLogin::Open& open);

}  // namespace tolvex
