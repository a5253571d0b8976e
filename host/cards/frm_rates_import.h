// frmRatesImport: day rates pasted as text or read from a file, shown line by line before they are
// stored.
//
// Form::result is 1 after rates were stored. All lines are stored or none; while some are bad, the
// good ones only when the user says so.
#pragma once

#include <string>
#include <vector>

#include "host/cards/rate_text.h"
#include "platform/form.h"

namespace tolvex {

class frmRatesImport final : public ui::Form {
 public:
  frmRatesImport(HostContext& host, RateTextRules rules);
  const char* picture() const override;
  void opened() override;

  ui::TextBox txtRates{this, "txtRates", "Kursai: data, valiuta, kursas"};
  ui::ListView lvwRates{this,
                        "lvwRates",
                        {{"Eilutė", 7, ui::Align::Right},
                         {"Data", 12},
                         {"Valiuta", 9},
                         {"Kursas", 12, ui::Align::Right},
                         {"Pastaba", 34, ui::Align::Left, true}}};
  ui::Label lblFound{this, "lblFound"};
  ui::Button cmdFile{this, "cmdFile", "Skaityti bylą…"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOK{this, "cmdOK", "Įrašyti", ui::Role::Primary};

 private:
  void read();
  void readFile();
  void store();

  const RateTextRules rules_;
  std::vector<RateLine> lines_;
};

}  // namespace tolvex
