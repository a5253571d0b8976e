// frmPeriod: which documents a list shows, by a range of dates or by the last days.
#pragma once

#include "platform/form.h"
#include "platform/host.h"

namespace tolvex {

class frmPeriod final : public ui::Form {
 public:
  frmPeriod(HostContext& host, const ViewPeriod& period);
  const char* picture() const override;
  void opened() override;
  bool accepted() const { return result == 1; }
  ViewPeriod period() const;

  ui::OptionButton optDays{this, "optDays", "Paskutinės dienos", "period"};
  ui::OptionButton optRange{this, "optRange", "Laikotarpis", "period"};
  ui::TextBox txtDays{this, "txtDays", "Dienų skaičius", 6, ui::Align::Right};
  ui::DatePicker dtpFrom{this, "dtpFrom", "Nuo"};
  ui::DatePicker dtpTo{this, "dtpTo", "Iki"};
  ui::Button cmdOk{this, "cmdOk", "Gerai", ui::Role::Primary};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};

 private:
  void applyMode();
  void accept();
};

}  // namespace tolvex
