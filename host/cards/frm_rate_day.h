// frmRateDay: the rates of all currencies on one day.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/cards/rate_table.h"
#include "host/objects/card_set.h"
#include "platform/form.h"

namespace tolvex {

class frmRateDay final : public ui::Form {
 public:
  frmRateDay(HostContext& host, DateTime day);
  const char* picture() const override;
  void opened() override;
  bool mayClose() override;
  std::string objectReference() const override;
  void recordsChanged(const std::string& kind) override;

  ui::Panel SOPanel{this, "SOPanel", "Valiutų kursai"};
  ui::DatePicker dtpDate{this, "dtpDate", "Data"};
  ui::Button cmdPrevious{this, "cmdPrevious", "‹", ui::Role::Small};
  ui::Button cmdNext{this, "cmdNext", "›", ui::Role::Small};
  RateTable table{*this, RateTable::Rows::Currencies, [this] { changed_ = true; }};
  ui::Button cmdNextRate{this, "cmdNextRate", "Kita valiuta"};
  ui::Label lblMissing{this, "lblMissing"};
  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button cmdImport{this, "cmdImport", "Įterpti kursus…"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

 private:
  void go(DateTime day);
  void step(int by);
  void read();
  void save();
  void import();

  DateTime day_;
  std::vector<RatedCurrency> currencies_;
  bool changed_ = false;
};

Card rateDayCard();

}  // namespace tolvex
