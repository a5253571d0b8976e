#include "operations/group_sums.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/told.h"
#include "platform/host.h"
#include "platform/save_outcome.h"

namespace tolvex {

GroupSums::GroupSums(ui::Form* form)
    : lvwAccountSettings(
          form, "lvwAccountSettings",
          {{"Požymis", 44}, {"Sąskaita", 12}, {"Pavadinimas", 30, ui::Align::Left, true}}),
      cmdCreateFullSum(form, "cmdCreateFullSum", "Apskaičiuoti skolas"),
      cmdClearFullSum(form, "cmdClearFullSum", "Panaikinti apskaičiuotas skolas"),
      form_(*form) {
  lvwAccountSettings.checkBoxes = true;
  lvwAccountSettings.onCheck = [this] { turn(lvwAccountSettings.currentRow()->checked); };
  lvwAccountSettings.onActivate = [this] { turn(!lvwAccountSettings.currentRow()->checked); };
  cmdCreateFullSum.onClick = [this] { compute("Ar tikrai norite apskaičiuoti skolas?", code_); };
  cmdClearFullSum.onClick = [this] {
    compute("Ar tikrai norite panaikinti apskaičiuotas skolas?", "");
  };
}

void GroupSums::show(std::shared_ptr<VXObjectUIO> group) {
  group_ = std::move(group);
  fill();
  tick(std::string(group_->Fields()["AccountCode"].Text()));
}

void GroupSums::fill() {
  const RowSetPtr settings = toldRows(*group_->BO(), "DO0201400_GetAccountSettings", kNoParameters);
  if (!settings) return lvwAccountSettings.setRows({});
  std::vector<ui::Row> rows;
  ForEachRow(*settings, [&](RowSet& setting) {
    const std::string account(setting["Account"].Text());
    ui::Row row;
    row.tag = setting["Code"].Text();
    row.key = row.tag + " " + account;
    row.cells = {{std::string(setting["CodeName"].Text())},
                 {account},
                 {std::string(setting["AccountName"].Text())}};
    rows.push_back(std::move(row));
  });
  lvwAccountSettings.setRows(std::move(rows));
}

// A setting is all accounts with its mark, so these are ticked together.
void GroupSums::tick(const std::string& code) {
  code_ = code;
  for (ui::Row& row : lvwAccountSettings.edit()) row.checked = !code.empty() && row.tag == code;
  refresh();
}

void GroupSums::turn(bool on) {
  if (!enabled_) return;
  tick(on ? lvwAccountSettings.currentRow()->tag : std::string());
  if (onChange) onChange();
}

void GroupSums::write(RowSet& group) const { group["AccountCode"] = code_; }

void GroupSums::enable(bool enabled) {
  enabled_ = enabled;
  lvwAccountSettings.enabled = enabled;
  refresh();
}

void GroupSums::refresh() {
  const bool stored = group_ && !isNew(group_->OID());
  cmdCreateFullSum.enabled = enabled_ && stored && !code_.empty();
  cmdClearFullSum.enabled = enabled_ && stored;
}

void GroupSums::compute(const char* question, const std::string& code) {
  HostContext& host = form_.host();
  if (!ask(host, question)) return;
  HostResult result;
  {
    LongWork busy(host.pump());
    const std::string asked = Parameters().number(idOf(group_->OID())).text(code).str();
    group_->BO()->CallBO("DO0201400_CreateFullSum", asked, nullptr, result);
  }
  if (result.Code != kDone) return warn(host, result.Text);
  showInfo(host, "Atlikta!");
  // The record has a new version now; what was typed elsewhere stands in its boxes.
  const SaveResult read = group_->Read();
  if (read.Code != kDone) warn(host, read.Text);
  tick(code);
}

}  // namespace tolvex
