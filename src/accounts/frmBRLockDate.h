// frmBRLockDate: sets or clears the lock dates of one account, or of every account in the list.
//
// All that is written is written at once or not at all; a refusal leaves the screen as it was
// typed. `result` is 1 when the dates were written.
#pragma once

#include <string>

#include "accounts/lock_dates.h"
#include "accounts/lock_forms.h"
#include "platform/form.h"

namespace tolvex {

class frmBRLockDate final : public ui::Form {
 public:
  explicit frmBRLockDate(const LockDateRequest& request);
  const char* picture() const override;

  ui::OptionButton optOneAccount{this, "optOneAccount", "Sąskaita", "accounts"};
  ui::OptionButton optAllAccounts{this, "optAllAccounts", "Visos sąskaitos", "accounts"};
  ui::Label lblAccounts{this, "lblAccounts"};
  ui::OptionButton optLock{this, "optLock", "Blokuoti", "lock"};
  ui::OptionButton optNotLock{this, "optNotLock", "Neblokuoti", "lock"};
  ui::Panel fraDates{this, "fraDates", "Blokavimo datos"};
  ui::DatePicker dtpAdmin{this, "dtpAdmin", "Vadovo užblokuota iki:"};
  ui::DatePicker dtpUser{this, "dtpUser", "Užblokuota iki:"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

 private:
  LockDates dates() const { return {dtpAdmin.value(), dtpUser.value()}; }
  void showDates(const LockDates& dates);
  void applyOptions();
  void write();

  RowSetPtr locks_;
  std::string OIDR;  // of the account's lock, kept while the dates are edited
  Variant place_;    // its row in the list
};

}  // namespace tolvex
