// frmLogin: who works. Stands before there is a workspace, so it is shown over a bare context.
//
// Who must change his password does so before he comes in; who has none is offered to give himself
// one.
#pragma once

#include <functional>
#include <string>

#include "platform/form.h"

namespace tolvex {

// What became of an attempt to open the books.
struct LoginReply {
  std::string refusal;  // "" on success
  bool mustChange = false, offerPassword = false;
  std::function<std::string(const std::string& old, const std::string& fresh)> change;
  std::function<void()> declined;  // the offer, so that it need not be made again
};

class Stage;

class frmLogin final : public ui::Form {
 public:
  using Open = std::function<LoginReply(const std::string& login, const std::string& password)>;
  frmLogin(HostContext& host, Stage& stage, std::string booksName, std::string login, Open open);
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
  bool mayComeIn(const LoginReply& reply);
  void refuse(const std::string& reason);
  Open open_;
  Stage& stage_;
};

// Shows the login on the stage until it succeeds; false when the user gave up.
bool askLogin(Stage& stage, const std::string& booksName, const std::string& login,
              const frmLogin::Open& open);

}  // namespace tolvex
