#include "host/objects/frm_password.h"

#include "platform/host.h"
#include "platform/save_outcome.h"

namespace tolvex {

frmPassword::frmPassword(HostContext& host, Request request)
    : Form(host, "frmPassword"), request_(std::move(request)) {
  setTitle("Slaptažodžio keitimas");
  lblReason.caption = request_.reason;
  lblReason.visible = !request_.reason.empty();
  txtLogin.text = request_.login;
  txtLogin.readOnly = true;
  txtOld.visible = request_.askOld;
  for (ui::TextBox* box : {&txtOld, &txtNew, &txtAgain}) box->password = true;
  cmdCancel.caption = request_.laterCaption;
  cmdCancel.isCancel = true;
  cmdOk.isDefault = true;
  cmdCancel.onClick = [this] { close(); };
  cmdOk.onClick = [this] { change(); };
}

const char* frmPassword::picture() const {
  return R"(
lblReason>
txtLogin
txtOld
txtNew
txtAgain
cmdCancel | >> | cmdOk
)";
}

void frmPassword::opened() { setFocus(request_.askOld ? txtOld : txtNew); }

void frmPassword::change() {
  if (txtNew.text() != txtAgain.text()) {
    warn(host(), "Pakartotas slaptažodis nesutampa su nauju!");
    txtAgain.text = "";
    setFocus(txtAgain);
    return;
  }
  const std::string refusal = request_.change(txtOld.text(), txtNew.text());
  if (!refusal.empty()) {
    showFailedSave(host(), refusal);
    setFocus(txtOld.shown() ? txtOld : txtNew);
    return;
  }
  result = 1;
  close();
}

}  // namespace tolvex
