// CardForm: the screen of a record of the program's own directories, made from a table of fields.
//
//   constexpr CardField kFields[] = {{.column = "Name", .caption = "Pavadinimas", .chars = 40,
//                                     .missing = "Nenurodytas banko pavadinimas!"}, …};
//   const CardSpec kBank = {.kind = "O0000300", .form = "frmBank", .component = "CBanks",
//                           .caption = "Bankas", .newCaption = "Naujas bankas",
//                           .fields = kFields, .picture = "txtName>\ntxtCode | txtSWIFT\n"};
//   cards.add(kDirectories, cardOf(kBank));
//
// What a card has beyond its fields (a list, a button, a set saved with it, a question before the
// save) is a CardPart: an object of its own that puts its controls on the form and is told of the
// card's steps. A card that needs another shape altogether is an ordinary form.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/cards/card_field.h"
#include "host/objects/card_set.h"
#include "platform/form.h"

namespace tolvex {

class CardForm;

class CardPart {
 public:
  virtual ~CardPart() = default;
  virtual void shown() {}  // the record stands in the fields: after opening, saving, a new one
  // What was typed stands in the record, not saved yet; false, after a message of its own, stops.
  virtual bool maySave() { return true; }
  virtual RowSetPtr secondSet() { return nullptr; }  // saved with the record, in one transaction
  virtual void recordsChanged(const std::string& /*kind*/) {}  // somewhere else
};

struct CardSpec {
  const char* kind;
  const char* form;        // the form's name, "frmBank"
  const char* component;   // whose flags guard the card
  const char* caption;     // "Bankas"
  const char* newCaption;  // "Naujas bankas", also the entry of the menu
  std::span<const CardField> fields;
  const char* picture;  // what stands between the title and the commands; the first field leads
  std::vector<ui::TabStrip::Tab> tabs = {};  // of the strip tabCard, where the picture has one
  std::function<std::unique_ptr<CardPart>(CardForm&)> part = nullptr;
};

class CardForm final : public ui::Form {
 public:
  CardForm(HostContext& host, const CardSpec& spec, std::shared_ptr<VXObjectUIO> object);

  const char* picture() const override { return picture_.c_str(); }
  void opened() override;
  bool mayClose() override;
  std::string objectReference() const override { return object_->OIDR(); }
  void recordsChanged(const std::string& kind) override;

  // For parts.
  VXObjectUIO& object() { return *object_; }
  RowSet& record() { return *object_->RsFields(); }
  bool isStored() const;
  const RightFlags& rights() const { return rights_; }
  void touch();  // something that is saved with the card was changed
  bool save();
  // Puts the focus there, on whatever page it stands.
  void lead(ui::Control& control);

  ui::Panel SOPanel{this, "SOPanel"};
  ui::TabStrip tabCard{this, "tabCard"};
  ui::Label lblRemarks{this, "lblRemarks"};
  ui::MenuItem mnuLog{this, "mnuLog", "Pakeitimų protokolas"};
  ui::Menu mnuCard{{&mnuLog}, {}};
  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button SSCNew{this, "SSCNew", "Naujas"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

 private:
  void showRecord();
  void showRemarks();
  bool checkFields();
  void openNext();
  void showLog();
  void leave();
  bool refuse(ui::Control& control, const std::string& text);

  const CardSpec& spec_;
  const std::string picture_;
  std::shared_ptr<VXObjectUIO> object_;
  RightFlags rights_;
  std::vector<std::unique_ptr<CardBox>> boxes_;
  std::unique_ptr<CardPart> part_;
  bool changed_ = false;  // since the record was read or saved
};

// The row of CardSet for a card; `spec` lives as long as the program.
Card cardOf(const CardSpec& spec);

}  // namespace tolvex
