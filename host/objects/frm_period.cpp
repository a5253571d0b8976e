#include "host/objects/frm_period.h"

#include "framework/text.h"

namespace tolvex {
namespace {
constexpr double kMostDays = 36600;
}

frmPeriod::frmPeriod(HostContext& host, const ViewPeriod& period) : Form(host, "frmPeriod") {
  setTitle("Peržiūros nustatymai");
  const DateTime today = host.clock().today();
  (period.byRange ? optRange : optDays).choose();
  txtDays.text = std::to_string(period.days);
  dtpFrom.value = period.byRange ? period.from : DateTime::Of(today.Year(), 1, 1);
  dtpTo.value = period.byRange ? period.to : today;
  cmdOk.isDefault = true;
  cmdCancel.isCancel = true;
  optDays.onChange = optRange.onChange = [this] { applyMode(); };
  // The two dates pull each other, so that the range is never the wrong way round.
  dtpFrom.onChange = [this] {
    if (*dtpFrom.value() > *dtpTo.value()) dtpTo.value = dtpFrom.value();
  };
  dtpTo.onChange = [this] {
    if (*dtpTo.value() < *dtpFrom.value()) dtpFrom.value = dtpTo.value();
  };
  cmdOk.onClick = [this] { accept(); };
  cmdCancel.onClick = [this] { close(); };
  applyMode();
}

const char* frmPeriod::picture() const {
  return R"(
optDays | optRange
txtDays
dtpFrom | dtpTo
>> | cmdCancel | cmdOk
)";
}

void frmPeriod::opened() {
  if (optDays.on())
    setFocus(txtDays);
  else
    setFocus(dtpFrom);
}

void frmPeriod::applyMode() {
  txtDays.enabled = optDays.on();
  dtpFrom.enabled = optRange.on();
  dtpTo.enabled = optRange.on();
}

void frmPeriod::accept() {
  double days = 0;
  if (optDays.on() && !(parsePlainNumber(trim(txtDays.text()), days) && days >= 1 &&
                        days <= kMostDays && days == static_cast<int>(days))) {
    warn(host(), "Neteisingas dienų skaičius!");
    setFocus(txtDays);
    return;
  }
  result = 1;
  close();
}

ViewPeriod frmPeriod::period() const {
  ViewPeriod period;
  period.byRange = optRange.on();
  period.from = dtpFrom.value().value_or(DateTime());
  period.to = dtpTo.value().value_or(DateTime());
  double days = 0;
  if (parsePlainNumber(trim(txtDays.text()), days)) period.days = static_cast<int>(days);
  return period;
}

}  // namespace tolvex
