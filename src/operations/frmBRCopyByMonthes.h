// frmBRCopyByMonthes: how an entry is spread over months. Below the fields stands what will come of
// it; nothing is changed here. `result` is 1 when the user accepted.
#pragma once

#include "operations/screen/number_box.h"
#include "operations/spreading.h"
#include "platform/form.h"
#include "platform/host.h"

namespace tolvex {

inline constexpr const char* kSpreadScreen = "frmBRCopyByMonthes";

struct SpreadRequest {
  HostContext& host;
  SpreadEntry entry;
  SpreadTerms& terms;  // written when the user accepts; outlives the screen
};

class frmBRCopyByMonthes final : public ui::Form {
 public:
  explicit frmBRCopyByMonthes(const SpreadRequest& request);
  const char* picture() const override;

  ui::TextBox txtSum{this, "txtSum", "Suma", 14, ui::Align::Right};
  ui::OptionButton optMonthSum{this, "optMonthSum", "Mėnesio suma", "sum"};
  ui::OptionButton optPeriodSum{this, "optPeriodSum", "Bendra laikotarpio suma", "sum"};
  ui::TextBox txtMonthCount{this, "txtMonthCount", "Mėnesių skaičius", 4, ui::Align::Right};
  ui::OptionButton optPointedDay{this, "optPointedDay", "Nurodyta menesio diena", "day"};
  ui::TextBox txtDay{this, "txtDay", "Mėnesio diena", 4, ui::Align::Right};
  ui::OptionButton optLastDay{this, "optLastDay", "Paskutinė mėnesio diena", "day"};
  ui::CheckBox chkWithComment{this, "chkWithComment", "Kopijuoti įrašo komentarą"};
  ui::Label lblParts{this, "lblParts"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOK{this, "cmdOK", "Gerai", ui::Role::Primary};

 private:
  SpreadTerms typed() const;
  void refresh();
  void accept();

  SpreadEntry entry_;
  SpreadTerms& terms_;
  NumberBox sum_;
};

}  // namespace tolvex
