// frmBRLock: the accounts with the dates until which their entries are closed.
#pragma once

#include <string>

#include "accounts/lock_forms.h"
#include "platform/form.h"

namespace tolvex {

class frmBRLock final : public ui::Form {
 public:
  explicit frmBRLock(const LockListRequest& request);
  const char* picture() const override;
  void opened() override { InitForm(); }
  std::string objectReference() const override;

  // Reads the list anew; the current account stays current while it is shown.
  void InitForm();

  ui::CheckBox chkOnlyLocked{this, "chkOnlyLocked", "Rodyti tik blokuotas sąskaitas"};
  ui::ListView lsvBRLock{this,
                         "lsvBRLock",
                         {{"Sąskaita", 12},
                          {"Pavadinimas", 40, ui::Align::Left, true},
                          {"Vadovo užblokuota iki", 20},
                          {"Užblokuota iki", 16}}};
  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button cmdDelete{this, "cmdDelete", "Panaikinti"};
  ui::Button cmdDates{this, "cmdDates", "Blokuoti…", ui::Role::Primary};

 private:
  void fill();
  void editDates();
  void removeLock();
  bool onRow();  // puts the cursor of the list on the current account

  RowSetPtr locks_;
  std::string wanted_;  // the account to stand on, by its lock's reference
};

}  // namespace tolvex
