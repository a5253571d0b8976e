#include "host/objects/frm_login.h"

#include "framework/text.h"
#include "host/objects/bare_context.h"
#include "host/objects/stage.h"

namespace tolvex {

frmLogin::frmLogin(HostContext& host, std::string booksName, std::string login, Open open)
    : Form(host, "frmLogin"), open_(std::move(open)) {
  setTitle("Prisijungimas");
  lblProgram.heading = true;
  lblBooks.caption = std::move(booksName);
  txtUser.text = std::move(login);
  txtPassword.password = true;
  cmdOk.isDefault = true;
  cmdCancel.isCancel = true;
  cmdOk.onClick = [this] { tryOpen(); };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmLogin::picture() const {
  return R"(
lblProgram
lblBooks
txtUser
txtPassword
lblRefusal
cmdCancel | >> | cmdOk
)";
}

void frmLogin::opened() { setFocus(txtUser.text().empty() ? txtUser : txtPassword); }

void frmLogin::tryOpen() {
  const std::string refusal = open_(trim(txtUser.text()), txtPassword.text());
  if (refusal.empty()) {
    result = 1;
    close();
    return;
  }
  lblRefusal.caption = refusal;
  txtPassword.text = "";
  setFocus(txtPassword);
}

bool askLogin(Stage& stage, const std::string& booksName, const std::string& login,
              const frmLogin::Open& open) {
  BareContext context(stage);
  frmLogin form(context, booksName, login, open);
  form.markOpen(true);
  form.opened();
  stage.runModal(form);
  return form.accepted();
}

}  // namespace tolvex
