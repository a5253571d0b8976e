#include "debts/frmBROperSelect_ChangeRate.h"

#include "framework/parameters.h"
#include "framework/recordset.h"
#include "framework/told.h"
#include "operations/entry_rules.h"

namespace tolvex {

frmBROperSelect_ChangeRate::frmBROperSelect_ChangeRate(HostContext& host,
                                                       std::shared_ptr<VXObjectUIO> operation,
                                                       std::string code, DateTime day,
                                                       double rateLtPerUnit)
    : Form(host, "frmBROperSelect_ChangeRate"),
      operation_(std::move(operation)),
      code_(std::move(code)) {
  setTitle(code_ + " kursas");
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  dtpDate.value = day;
  if (rateLtPerUnit > 0) rate_.show(rateLtPerUnit);
  dtpDate.onChange = [this] { ChangeCurrencyDate(); };
  cmdOK.onClick = [this] { accept(); };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmBROperSelect_ChangeRate::picture() const {
  return R"(
dtpDate | txtRate
>> | cmdCancel | cmdOK
)";
}

void frmBROperSelect_ChangeRate::opened() {
  if (rate_.value() == 0) ChangeCurrencyDate();
  setFocus(txtRate);
}

void frmBROperSelect_ChangeRate::ChangeCurrencyDate() {
  if (!dtpDate.value()) return;
  const RowSetPtr read = toldRows(operation_->Properties("CurrencyList", dtpDate.value()->Text()));
  if (!read) return;
  const RowSetPtr rows = read->Clone();
  rows->SetFilter("Code = " + quoted(code_));
  rate_.clear();
  if (rows->RecordCount() == 0 || (*rows)["Rate"].Number() <= 0) return;
  rate_.show((*rows)["Rate"].Number());
}

void frmBROperSelect_ChangeRate::accept() {
  if (rate_.value() <= 0) {
    warn(host(), std::string(kNoCurrencyRate));
    return setFocus(txtRate);
  }
  chosen_ = rate_.value();
  close();
}

}  // namespace tolvex
