#include "host/objects/frm_input.h"

namespace tolvex {

frmInput::frmInput(HostContext& host, std::string prompt, std::string title, std::string initial)
    : Form(host, "frmInput") {
  setTitle(std::move(title));
  txtInput.caption = std::move(prompt);
  txtInput.text = std::move(initial);
  cmdOk.isDefault = true;
  cmdCancel.isCancel = true;
  cmdOk.onClick = [this] {
    result = 1;
    close();
  };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmInput::picture() const {
  return R"(
txtInput>
>> | cmdCancel | cmdOk
)";
}

void frmInput::opened() { setFocus(txtInput); }

}  // namespace tolvex
