// A screen with every kind of control, and a document as accountants fill it in, for tests and
// pictures of the renderer.
#pragma once

#include <string>

#include "platform/form.h"

namespace tolvex::test {

class SampleForm final : public ui::Form {
 public:
  explicit SampleForm(HostContext& host);
  const char* picture() const override;
  bool mayClose() override { return agrees; }

  std::string log;  // what the handlers saw, in order
  bool agrees = true;

  ui::Panel SOPanel{this, "SOPanel", "Kasos pajamų orderis 2008.03.14 KPO 000137"};
  ui::Panel SSFrame{this, "SSFrame"}, SSFrameClient{this, "SSFrameClient"},
      SSFrameSum{this, "SSFrameSum"};
  ui::DatePicker dtpDate{this, "dtpDate", "&Data"};
  ui::TextBox txtCode{this, "txtCode", "Šifras", 8};
  ui::TextBox txtSeries{this, "txtSeries", "", 5}, txtNumber{this, "txtNumber", "", 10};
  ui::TextBox txtClient{this, "txtClient", "Priimta iš :"}, txtDetails{this, "txtDetails"};
  ui::Button cmdClient{this, "cmdClient", "", ui::Role::Small};
  ui::TextBox txtSum{this, "txtSum", "&Suma", 12, ui::Align::Right};
  ui::ComboBox cmbCurr{this, "cmbCurr", "Valiuta", 5};
  ui::ComboBox cmbAccount{this, "cmbAccount", "Sąskaita", 22};
  ui::TextBox txtRate{this, "txtRate", "Kursas", 8, ui::Align::Right};
  ui::Button cmdDebts{this, "cmdDebts", "Skolų &pasirinkimas"};
  ui::TextBox txtFoundation{this, "txtFoundation", "Pagrindas"};
  ui::Button cmdComments{this, "cmdComments", "", ui::Role::Small};
  ui::CheckBox chkPrint{this, "chkPrint", "Spausdinti įrašius"};
  ui::Label lblState{this, "lblState", "Nepatikrinti įrašai: 2"};
  ui::OptionButton optEntries{this, "optEntries", "Orderio įrašai", "view"},
      optLinks{this, "optLinks", "Nuorodos iš kitų operacijų", "view"},
      optBalance{this, "optBalance", "Operacijos balansas", "view"};
  ui::TabStrip tabMain{this, "tabMain"};
  ui::ListView lvwEntries{this,
                          "lvwEntries",
                          {{"Debeto b/s", 10},
                           {"Kredito b/s", 10},
                           {"Suma, Lt", 12, ui::Align::Right},
                           {"Valiuta D", 12, ui::Align::Right},
                           {"Valiuta K", 12, ui::Align::Right},
                           {"Apmokamos operacijos", 30, ui::Align::Left, true}}};
  ui::TreeView tvwGroups{this, "tvwGroups", "Grupės"};
  ui::TextBox txtNote{this, "txtNote", "Pastabos"};
  ui::TextBox txtSecret{this, "txtSecret", "Slaptažodis", 14};
  ui::Button cmdClose{this, "cmdClose", "Uždaryti", ui::Role::Quiet},
      cmdPrint{this, "cmdPrint", "Spausdinti"},
      cmdDelete{this, "cmdDelete", "Panaikinti", ui::Role::Danger},
      cmdCancel{this, "cmdCancel", "Atšaukti"},
      cmdWrite{this, "cmdWrite", "Į&rašyti", ui::Role::Primary};
  ui::MenuItem mnuFirm{this, "mnuFirm", "Įmonė"}, mnuPerson{this, "mnuPerson", "Fizinis asmuo"};
  ui::Menu menuClient;
  ui::Timer tmrWait{this, "tmrWait", 10};
};

}  // namespace tolvex::test
