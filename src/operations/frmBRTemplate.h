// frmBRTemplate: the card of one template of operations: its name, its group, its lines. A group of
// templates is edited here too, without lines.
//
// Lines go into the record as they are accepted; name, comment and group when it is saved.
#pragma once

#include <memory>
#include <string>

#include "framework/form_registry.h"
#include "framework/param_dictionary.h"
#include "platform/group_box.h"

namespace tolvex {

class frmBRTemplate final : public ui::Form {
 public:
  explicit frmBRTemplate(const ObjectFormRequest& request);

  const char* picture() const override;
  void opened() override;
  bool mayClose() override;
  std::string objectReference() const override;

  std::shared_ptr<tolvex::VXObjectUIO> VXObjectUIO;

  ui::Panel SOPanel{this, "SOPanel"};
  ui::TextBox txtName{this, "txtName", "Pavadinimas"};
  ui::TextBox txtComment{this, "txtComment", "Komentaras"};
  ui::TextBox txtGroup{this, "txtGroup", "Grupė"};
  ui::Button cmdParentGroup{this, "cmdParentGroup", "…", ui::Role::Small};
  ui::ListView lvwRows{this,
                       "lvwRows",
                       {{"Debeto b/s", 34, ui::Align::Left, true},
                        {"Kredito b/s", 34, ui::Align::Left, true},
                        {"Koeficientas", 13, ui::Align::Right}}};
  ui::Button cmdNewRow{this, "cmdNewRow", "Nauja eilutė"};
  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button SSCNew{this, "SSCNew", "Naujas"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

  ui::MenuItem mnuAdd{this, "mnuAdd", "Pridėti"};
  ui::MenuItem mnuEdit{this, "mnuEdit", "Redaguoti"};
  ui::MenuItem mnuDelete{this, "mnuDelete", "Panaikinti"};
  ui::Menu menuRows{{&mnuAdd, &mnuEdit, nullptr, &mnuDelete}, {}};

 private:
  void wire();
  void show();
  void showLines();
  std::string accountText(const std::string& account) const;
  void enableByState();
  void editLine(const std::string& guid);
  void deleteLine();
  std::string currentLine() const;
  bool save();
  void openNext();
  void deleteTemplate();
  void leave();
  void touch() { changed_ = true; }
  bool isGroup() const { return header()["GroupFlag"].Number() != 0; }
  RowSet& header() const { return *VXObjectUIO->RsFields(); }

  GroupBox group_{txtGroup, cmdParentGroup, nullptr, "O0201600", true};
  ParamDictionary accounts_;
  std::string newMode_;
  bool changed_ = false;  // since the record was read or saved
};

}  // namespace tolvex
