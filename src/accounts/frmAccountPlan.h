// frmAccountPlan: the card of a node of the chart of accounts: a class, an account or a subaccount.
//
// Which of the three it is follows from what stands above the node. Nothing but the counterpart
// goes into the record before it is saved.
#pragma once

#include <memory>
#include <string>

#include "accounts/counterpart.h"
#include "accounts/plan_rules.h"
#include "framework/form_registry.h"

namespace tolvex {

class frmAccountPlan final : public ui::Form {
 public:
  explicit frmAccountPlan(const ObjectFormRequest& request);

  const char* picture() const override;
  void opened() override;
  bool mayClose() override;
  std::string objectReference() const override;

  std::shared_ptr<tolvex::VXObjectUIO> VXObjectUIO;
  bool boolShowNewAccount;  // both plans are shown, so a counterpart can be chosen

  ui::Panel SOPanel{this, "SOPanel"};
  ui::Label LbClass{this, "LbClass", "Klasė"};
  ui::TextBox txtAccountClass{this, "txtAccountClass", {}, 8};
  ui::TextBox txtNameClass{this, "txtNameClass", "Pavadinimas:"};
  ui::TextBox txtTypeClass{this, "txtTypeClass", "Tipas:", 4};
  ui::Label LbAccount{this, "LbAccount"};

  ui::Panel SSPSubAcc{this, "SSPSubAcc"};
  ui::TextBox txtAccount{this, "txtAccount", "Numeris:", 22};
  ui::TextBox txtName{this, "txtName", "Pavadinimas:"};
  ui::TextBox txtType{this, "txtType", "Tipas:", 4};
  ui::Label lblOldAcc{this, "lblOldAcc", "Atitinkanti nauja sąskaita:"};
  ui::TextBox txtNewAcc{this, "txtNewAcc"};
  ui::Button cmdNewAcc{this, "cmdNewAcc", "…", ui::Role::Small};
  ui::Button cmdCleanAcc{this, "cmdCleanAcc", "×", ui::Role::Small};
  ui::ListView LVProperties{
      this, "LVProperties", {{"Atitikimas", 36, ui::Align::Left, true}, {"Sąskaita", 18}}};

  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button SSCNew{this, "SSCNew", "Nauja"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdEnter{this, "cmdEnter", "Įrašyti", ui::Role::Primary};

 private:
  void wire();
  void show();
  void showClass(tolvex::VXObjectUIO& node);
  void showAccount(tolvex::VXObjectUIO* parent, tolvex::VXObjectUIO* classNode);
  std::shared_ptr<tolvex::VXObjectUIO> nodeAbove(const char* key);
  void showCounterpart();
  void showTitles();
  void setDirty(bool dirty);
  void setCounterpart(const Counterpart& chosen);
  void turnMark();
  void focusFirst();
  bool save();
  bool complain(const NodeTexts& texts);
  void write(const NodeTexts& texts);
  void startNext();
  void cancel();
  void restorePlace();
  void applyRights();
  bool isNew() const;

  bool isClass() const { return level_ == NodeLevel::Class; }
  ui::TextBox& numberBox() { return isClass() ? txtAccountClass : txtAccount; }
  ui::TextBox& nameBox() { return isClass() ? txtNameClass : txtName; }
  ui::TextBox& typeBox() { return isClass() ? txtTypeClass : txtType; }
  FieldList& fields() const { return VXObjectUIO->Fields(); }

  NodeLevel level_ = NodeLevel::Class;
  std::string parentNumber_;
  Variant parentId_;  // a record that is begun anew takes it over
  bool mayCreate_ = false;
  bool whole_ = true;  // what was not read whole is only looked at
  bool marksKnown_ = false;
  bool dirty_ = false;
};

}  // namespace tolvex
