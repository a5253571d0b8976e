// frmVATTariffs: the VAT tariffs of the books, all in one list, in the order in which entries offer
// them.
#pragma once

#include <string>
#include <vector>

#include "host/objects/card_set.h"
#include "platform/form.h"

namespace tolvex {

class frmVATTariffs final : public ui::Form {
 public:
  // `withNew`: begins with a tariff to be typed.
  frmVATTariffs(HostContext& host, std::shared_ptr<BusinessObject> store, bool withNew);
  const char* picture() const override;
  void opened() override;
  bool mayClose() override;
  std::string objectReference() const override;  // the same for all tariffs: one screen

  ui::Panel SOPanel{this, "SOPanel", "PVM tarifai"};
  ui::ListView lvwTariffs{
      this, "lvwTariffs", {{"Eil. Nr.", 8}, {"Tarifas, %", 14, ui::Align::Right}}};
  ui::TextBox txtValue{this, "txtValue", "Tarifas, %", 8, ui::Align::Right};
  ui::Button cmdAdd{this, "cmdAdd", "Naujas tarifas"};
  ui::Button cmdUp{this, "cmdUp", "Aukštyn"};
  ui::Button cmdDown{this, "cmdDown", "Žemyn"};
  ui::Button cmdRemove{this, "cmdRemove", "Išimti"};
  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

 private:
  void read();
  void showRows(int current);
  void showCurrent();
  void takeValue();
  void add();
  void move(int by);
  void removeCurrent();
  bool save();
  std::string refusal() const;  // why these are no tariffs, "" when they are

  std::shared_ptr<BusinessObject> store_;
  const bool withNew_;
  std::string stored_;               // as read: "18;5;0"
  std::vector<std::string> values_;  // as typed
  bool changed_ = false;
};

Card vatTariffsCard();

}  // namespace tolvex
