// frmPaymentTemplate: the card of one payment template: its name and its instalments. A group of
// templates is edited here too, without instalments.
//
// The instalments are kept here and stored with the record, or not at all.
#pragma once

#include <memory>
#include <string>

#include "framework/form_registry.h"
#include "payments/UIO0201700.h"
#include "payments/instalments.h"
#include "platform/group_box.h"

namespace tolvex {

class frmPaymentTemplate final : public ui::Form {
 public:
  explicit frmPaymentTemplate(const ObjectFormRequest& request);

  const char* picture() const override;
  void opened() override;
  bool mayClose() override;
  std::string objectReference() const override;

  std::shared_ptr<tolvex::VXObjectUIO> VXObjectUIO;
  int RestPercent = kWholePercent;  // not given out yet

  ui::Panel SOPanel{this, "SOPanel"};
  ui::TextBox txtName{this, "txtName", "Pavadinimas"};
  ui::TextBox txtGroup{this, "txtGroup", "Grupė"};
  ui::Button cmdParentGroup{this, "cmdParentGroup", "…", ui::Role::Small};
  ui::ListView lvwPaymentTemplate{
      this,
      "lvwPaymentTemplate",
      {{"Mokėti po (dienų)", 20, ui::Align::Right}, {"Įmokos dydis", 16, ui::Align::Right}},
      "Įmokos"};
  ui::Button cmdNewItem{this, "cmdNewItem", "Nauja įmoka"};
  ui::Label lblRest{this, "lblRest"};
  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button SSCNew{this, "SSCNew", "Naujas"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

  ui::MenuItem mnuNew{this, "mnuNew", "Pridėti"};
  ui::MenuItem mnuEdit{this, "mnuEdit", "Redaguoti"};
  ui::MenuItem mnuDelete{this, "mnuDelete", "Panaikinti"};
  ui::Menu menuItems{{&mnuNew, &mnuEdit, nullptr, &mnuDelete}, {}};

 private:
  void wire();
  void show();
  bool readItems();
  void fill();
  void enableByState();
  void addItems();
  void editItem();
  void deleteItem();
  bool moveToItem();
  void writeItem(const Instalment& item);
  bool save();
  void openNext();
  void deleteTemplate();
  void leave();
  void giveUp();
  bool isGroup() const { return header()["GroupFlag"].Number() != 0; }
  RowSet& header() const { return *VXObjectUIO->RsFields(); }

  GroupBox group_{txtGroup, cmdParentGroup, nullptr, kPaymentTemplateGroup, true};
  RowSetPtr items_ = noInstalments();
  bool changed_ = false;  // since the record was read or saved
};

}  // namespace tolvex
