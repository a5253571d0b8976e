// frmBRTemplateAcc: one line of a template: its accounts, its factor, and the addressees that each
// side requires. Runs modally; the template's record changes only when the line is accepted.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "operations/template_rules.h"
#include "platform/form.h"
#include "platform/host.h"
#include "platform/objects.h"

namespace tolvex {

struct TemplateLineRequest {
  HostContext& host;
  std::shared_ptr<VXObjectUIO> object;  // the template
  std::string guid;                     // of the line; "" for a new one
  bool readOnly = false;
};

class frmBRTemplateAcc final : public ui::Form {
 public:
  explicit frmBRTemplateAcc(const TemplateLineRequest& request);

  const char* picture() const override;
  void opened() override;

  // GUID of the line that was written, or "".
  const std::string& written() const { return written_; }

  ui::ComboBox cmbAccountD{this, "cmbAccountD", "Debetas"};
  ui::ComboBox cmbAccountC{this, "cmbAccountC", "Kreditas"};
  ui::TextBox txtFactor{this, "txtFactor", "Sumos pakeitimo koeficientas", 12, ui::Align::Right};
  ui::ListView lvwAddrD{
      this, "lvwAddrD", {{"Debeto adresatas", 34, ui::Align::Left, true}}, "Būtini adresatai:"};
  ui::ListView lvwAddrC{
      this, "lvwAddrC", {{"Kredito adresatas", 34, ui::Align::Left, true}}, "Būtini adresatai:"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

 private:
  void wire();
  bool readLists();
  void fillKinds(ui::ListView& list, int sign, RowSet& kinds);
  void showFixed(ui::Row& row);
  void fixAddressee(ui::ListView& list);
  void write();
  void collect(const ui::ListView& list, int sign);

  std::shared_ptr<VXObjectUIO> object_;
  ParamDictionary accounts_;
  TemplateLine line_;
  std::string written_;
};

}  // namespace tolvex
