// frmBROperGroup: the card of a group of operations: the kind of its documents, their series,
// number, templates and debts. A common group, which holds other groups, has a name alone.
//
// Nothing goes into the record before it is saved.
#pragma once

#include <memory>
#include <string>

#include "framework/form_registry.h"
#include "operations/UIO0201400.h"
#include "operations/group_numbering.h"
#include "operations/group_sums.h"
#include "operations/group_templates.h"
#include "platform/group_box.h"

namespace tolvex {

class frmBROperGroup final : public ui::Form {
 public:
  frmBROperGroup(const ObjectFormRequest& request, const FormRegistry& forms);

  const char* picture() const override;
  void opened() override;
  bool mayClose() override;
  std::string objectReference() const override;

  std::shared_ptr<tolvex::VXObjectUIO> VXObjectUIO;

  ui::Panel SOPanel{this, "SOPanel"};
  ui::TextBox txtParentGroup{this, "txtParentGroup", "Aukštesnio lygio grupė"};
  ui::Button cmdParentGroup{this, "cmdParentGroup", "…", ui::Role::Small};
  ui::TextBox txtName{this, "txtName", "Grupės pavadinimas"};
  ui::TabStrip tabGroup{this, "tabGroup"};
  ui::ComboBox cmbFormTypes{this, "cmbFormTypes", "Dokumento tipas"};
  ui::Button cmdParameters{this, "cmdParameters", "Nustatymai..."};
  ui::CheckBox chkSerija{this, "chkSerija", "Dokumentai turi seriją"};
  ui::TextBox txtSerija{this, "txtSerija", "Serija", 10};
  GroupNumbering numbering{this};
  ui::CheckBox chkNumByAcc{this, "chkNumByAcc", "Numeruoti pagal banko sąskaitas"};
  GroupTemplates templates{this};
  GroupSums sums{this};

  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

 private:
  void wire();
  void show();
  void showKinds();
  void showKind();
  void showTitles();
  void kindChanged();
  void editParameters();
  void applyRights();
  void setDirty(bool dirty);
  bool write();
  bool writeDocuments();
  std::string mainAccount();
  std::string parametersNow();
  void save();
  void cancel();
  void remove();
  bool isCommon() const;
  FieldList& fields() const { return VXObjectUIO->Fields(); }

  const FormRegistry& forms_;
  GroupBox parent_{txtParentGroup, cmdParentGroup, nullptr, kGroupKind, true};
  struct Place {
    Variant above, common;
  };
  Place place_;                    // of a new group in the tree
  std::string kind_, parameters_;  // as they would be stored
  bool dirty_ = false;
};

}  // namespace tolvex
