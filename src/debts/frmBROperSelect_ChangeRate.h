// frmBROperSelect_ChangeRate: another rate of one currency, typed or taken from the rates of a day.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "operations/screen/number_box.h"
#include "platform/host.h"

namespace tolvex {

class frmBROperSelect_ChangeRate final : public ui::Form {
 public:
  frmBROperSelect_ChangeRate(HostContext& host, std::shared_ptr<VXObjectUIO> operation,
                             std::string code, DateTime day, double rateLtPerUnit);

  const char* picture() const override;
  void opened() override;

  // Nothing when the user gave up.
  const std::optional<double>& chosen() const { return chosen_; }

  ui::DatePicker dtpDate{this, "dtpDate", "Valiutų kursų data"};
  ui::TextBox txtRate{this, "txtRate", "Kursas", 12, ui::Align::Right};
  ui::Button cmdOK{this, "cmdOK", "Gerai", ui::Role::Primary};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};

 private:
  void ChangeCurrencyDate();
  void accept();

  std::shared_ptr<VXObjectUIO> operation_;
  const std::string code_;
  NumberBox rate_{txtRate, 4, host().numbers(), NumberBox::Input::Number};
  std::optional<double> chosen_;
};

}  // namespace tolvex
