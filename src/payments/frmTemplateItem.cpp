#include "payments/frmTemplateItem.h"

#include <string>

namespace tolvex {

frmTemplateItem::frmTemplateItem(const InstalmentRequest& request)
    : Form(request.host, "frmTemplateItem"), limit_(request.limit) {
  setTitle("Įmoka");
  txtDays.maxLength = txtPercent.maxLength = 5;
  txtPercent.tip = "Daugiausia " + std::to_string(limit_) + "%";
  const Instalment shown = request.present.value_or(Instalment{0, limit_});
  txtDays.text = std::to_string(shown.days);
  txtPercent.text = std::to_string(shown.percent);
  txtDays.onLeave = txtPercent.onLeave = [this] { normalise(); };
  cmdWrite.isDefault = true;
  cmdCancel.isCancel = true;
  cmdWrite.onClick = [this] {
    normalise();
    accepted_ = {leadingNumber(txtDays.text()), leadingNumber(txtPercent.text())};
    close();
  };
  cmdCancel.onClick = [this] { close(); };
  setFocus(txtDays);
}

const char* frmTemplateItem::picture() const {
  return R"(
txtDays "dienų"
txtPercent "%"
>> | cmdCancel | cmdWrite
)";
}

void frmTemplateItem::normalise() {
  txtDays.text = std::to_string(leadingNumber(txtDays.text()));
  txtPercent.text = std::to_string(takenPercent(leadingNumber(txtPercent.text()), limit_));
}

}  // namespace tolvex
