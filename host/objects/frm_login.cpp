#include "host/objects/frm_login.h"

#include "framework/text.h"
#include "host/objects/bare_context.h"
#include "host/objects/frm_password.h"
#include "host/objects/stage.h"

namespace tolvex {

frmLogin::frmLogin(HostContext& host, Stage& stage, std::string booksName, std::string login,
                   Open open)
    : Form(host, "frmLogin"), open_(std::move(open)), stage_(stage) {
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
  lblRefusal.caption = " ";
  const LoginReply reply = open_(trim(txtUser.text()), txtPassword.text());
  if (!reply.refusal.empty()) return refuse(reply.refusal);
  if (!mayComeIn(reply)) return refuse("Prisijungti galima tik pasikeitus slaptažodį.");
  result = 1;
  close();
}

bool frmLogin::mayComeIn(const LoginReply& reply) {
  if (!reply.mustChange && !reply.offerPassword) return true;
  frmPassword::Request request;
  request.login = trim(txtUser.text());
  request.reason = reply.mustChange ? "Slaptažodį reikia pasikeisti."
                                    : "Prisijungta be slaptažodžio. Galite jį nustatyti dabar.";
  request.askOld = false;  // it was given a moment ago
  request.change = [&](const std::string&, const std::string& fresh) {
    return reply.change(txtPassword.text(), fresh);
  };
  if (!reply.mustChange) request.laterCaption = "Vėliau";
  frmPassword form(host(), std::move(request));
  form.markOpen(true);
  form.opened();
  stage_.runModal(form);
  if (form.changed() || reply.mustChange) return form.changed();
  reply.declined();
  return true;
}

void frmLogin::refuse(const std::string& reason) {
  lblRefusal.caption = reason;
  txtPassword.text = "";
  setFocus(txtPassword);
}

bool askLogin(Stage& stage, const std::string& booksName, const std::string& login,
              const frmLogin::Open& open) {
  BareContext context(stage);
  frmLogin form(context, stage, booksName, login, open);
  form.markOpen(true);
  form.opened();
  stage.runModal(form);
  return form.accepted();
}

}  // namespace tolvex
