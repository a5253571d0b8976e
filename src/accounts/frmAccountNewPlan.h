// frmAccountNewPlan: the conversion of the books to the new plan: counterparts of the accounts,
// backup and restore, the conversion itself.
#pragma once

#include <memory>
#include <string>

#include "accounts/counterpart.h"
#include "framework/form_registry.h"
#include "platform/form.h"
#include "platform/host.h"

namespace tolvex {

class frmAccountNewPlan final : public ui::Form {
 public:
  explicit frmAccountNewPlan(const ObjectFormRequest& request);
  const char* picture() const override;
  void opened() override;

  // Begins the new plan with a class when it has no group at all, and shows both plans.
  void Prepare();

  ui::Panel SOPanel{this, "SOPanel", "Sąskaitų konvertavimas"};
  ui::ListView lsvCovert{this,
                         "lsvCovert",
                         {{"Sąskaitų planas", 30, ui::Align::Left, true},
                          {"Naujas sąskaitos", 30, ui::Align::Left, true}}};
  ui::Label lblSummary{this, "lblSummary"};
  ui::Label lblMissing{this, "lblMissing"};
  // What a conversion leaves to be put right by hand; shown when there is something.
  ui::Label lblLeft{this, "lblLeft", "Peržiūrėkite ir pataisykite patys:"};
  ui::ListView lsvLeft{
      this,
      "lsvLeft",
      {{"Kur", 40, ui::Align::Left, true}, {"Tekstas", 20, ui::Align::Left, true}}};
  ui::Button cmdBackUp{this, "cmdBackUp", "Išsaugoti DB"};
  ui::Button cmdRestore{this, "cmdRestore", "Atstatyti DB"};
  ui::Button cmdConvert{this, "cmdConvert", "Konvertuoti", ui::Role::Primary};

  ui::MenuItem mnuRefresh{this, "mnuRefresh", "Atnaujinti"};
  ui::MenuItem mnuSetAccountsAuto{this, "mnuSetAccountsAuto", "Parinkti sąskaitas automatiškai"};
  ui::MenuItem mnuToDeskTop{this, "mnuToDeskTop", "Padėti ant darbo stalo"};
  ui::MenuItem mnuChoose{this, "mnuChoose", "Pasirinkti atitinkamą sąskaitą"};
  ui::MenuItem mnuClean{this, "mnuClean", "Išvalyti atitinkamą sąskaitą"};
  ui::Menu mnuMenu{
      {&mnuChoose, &mnuClean, nullptr, &mnuRefresh, &mnuSetAccountsAuto, &mnuToDeskTop}, {}};

 private:
  void wire();
  void beginNewPlan();
  void fill();
  void fillKeepingRow();
  void enableMenu();
  const ui::Row* currentAccount() const;  // null: no row, or a group
  void choose();
  void setCounterpart(const Counterpart& chosen);
  bool hasCopy();
  bool store(const char* routine, const std::string& copy);
  void backUp();
  void restore();
  void convert();
  void showLeft(const Variant& left);
  void redrawPlans();
  void tell(const char* text);

  std::shared_ptr<VXObjectUIO> plan_;  // a node of the working plan; only its calls are used
  bool allFound_ = false;              // every account that needs a counterpart has one
};

}  // namespace tolvex
