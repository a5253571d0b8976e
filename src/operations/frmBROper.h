// frmBROper: the screen of one financial operation and of every document kind without a screen of
// its own: header, entries, entries of others that point here or the balance over accounts.
//
// States: new, stored, read-only (the object is shown for preview, the form is modal over another
// one, or the rights of the group do not allow changes).
#pragma once

#include <memory>
#include <string>

#include "framework/form_registry.h"
#include "operations/operation_tools.h"
#include "operations/screen/debts_of_entry.h"
#include "operations/screen/document_save.h"
#include "operations/screen/entry_list.h"
#include "operations/screen/operation_header.h"
#include "platform/form.h"

namespace tolvex {

class frmBROper final : public ui::Form, private OperationLink {
 public:
  // `forms` knows the tools; it outlives every screen.
  frmBROper(const ObjectFormRequest& request, const FormRegistry& forms);

  const char* picture() const override;
  void opened() override;
  bool mayClose() override;
  std::string objectReference() const override;

  std::shared_ptr<tolvex::VXObjectUIO> VXObjectUIO;
  bool boolModalForm = false;
  std::string ClickedParameters;

  ui::Panel SOPanel{this, "SOPanel"};
  OperationHeader header{this, VXObjectUIO};

  ui::ListView lvwBRRecords{this,
                            "lvwBRRecords",
                            {{"Data", 10},
                             {"Debeto b/s", 11},
                             {"Kredito b/s", 11},
                             {"Suma, Lt", 13, ui::Align::Right},
                             {"Valiuta D", 14, ui::Align::Right},
                             {"Valiuta K", 14, ui::Align::Right},
                             {"Nuorodos", 30, ui::Align::Left, true}}};
  ui::Button cmdNewEntry{this, "cmdNewEntry", "Naujas įrašas"};
  ui::Label lblTotals{this, "lblTotals"};

  ui::OptionButton optBRBalance{this, "optBRBalance", "Operacijos balansas", "view"};
  ui::OptionButton optRelatedBRList{this, "optRelatedBRList", "Nuorodos iš kitų operacijų", "view"};
  ui::ListView lvwBRBalance{this,
                            "lvwBRBalance",
                            {{"Sąskaita", 11},
                             {"Pavadinimas", 30, ui::Align::Left, true},
                             {"Debetas", 14, ui::Align::Right},
                             {"Kreditas", 14, ui::Align::Right},
                             {"Balansas", 14, ui::Align::Right}}};
  ui::ListView lvwRelatedBR{this,
                            "lvwRelatedBR",
                            {{"Data", 10},
                             {"Debetas", 11},
                             {"Kreditas", 11},
                             {"Suma, Lt", 13, ui::Align::Right},
                             {"Debeto valiuta", 14, ui::Align::Right},
                             {"Kredito valiuta", 14, ui::Align::Right},
                             {"Operacija/Dokumentas", 30, ui::Align::Left, true}}};

  ui::Button SSCClose{this, "SSCClose", "Uždaryti", ui::Role::Quiet};
  ui::Button cmdTools{this, "cmdTools", "&Veiksmai", ui::Role::Quiet};
  ui::Button SSCNew{this, "SSCNew", "Nauja"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

  EntryMenu entryMenu{this};
  ui::MenuItem mnuCurrencyExchange{this, "mnuCurrencyExchange", "Valiutos pirkimas/pardavimas"};
  ui::MenuItem mnuCurrencyInfluence{this, "mnuCurrencyInfluence", "Valiutos perskaičiavimas"};
  ui::MenuItem mnuDebtsCover{this, "mnuDebtsCover", "Skolų dengimas"};
  ui::MenuItem mnuPayDebts{this, "mnuPayDebts", "Apmokėti skolas"};
  ui::MenuItem mnuReceiveDebts{this, "mnuReceiveDebts", "Priimti skolų apmokėjimą"};
  ui::MenuItem mnuOperToDesktop{this, "mnuOperToDesktop", "Padėti ant darbo stalo"};
  ui::MenuItem mnuProtocol{this, "mnuProtocol", "Protokolas"};
  ui::MenuItem mnuLog{this, "mnuLog", "Pakeitimai"};
  ui::MenuItem mnuUndo{this, "mnuUndo", "Atšaukti paskutinį įrašymą"};
  ui::MenuItem mnuCopyOper{this, "mnuCopyOper", "Kopijuoti operaciją"};
  ui::MenuItem mnuAutoNumber{this, "mnuAutoNumber", "Auto numerio nustatymas"};
  ui::Menu menuTools{{&mnuCurrencyExchange, &mnuCurrencyInfluence, &mnuDebtsCover, &mnuPayDebts,
                      &mnuReceiveDebts, nullptr, &mnuCopyOper, &mnuUndo, nullptr, &mnuOperToDesktop,
                      &mnuProtocol, &mnuLog, &mnuAutoNumber},
                     {}};

 private:
  // What added the last entries; an entry added free is taken back when its editor is left.
  enum class Block { BR, TemplateBR, FreeBR };

  void wire();
  void wireMenus();
  void openObject();
  void showTitle();
  void addDefaultTemplate();
  void enableByState();
  void refreshLists();
  void refreshView();
  void editEntry(const std::string& guid);
  void addEntry();
  void addByTemplate();
  void changeTemplate();
  bool useTemplate();
  void deleteEntries(const std::string& guid);
  void spreadEntry();
  bool save();
  void openNext();
  void copyToNew();
  void undo();
  void deleteOperation();
  void openTool(const OperationTool& tool);
  void openAskedTool();
  void chooseDebts(MoneyGoes way);
  void setDate(DateTime date) override;
  void setComment(std::string_view comment) override {
    header.txtComment.text = std::string(comment);
  }
  void refreshEntries() override;
  void leave();
  void touch() { changed_ = true; }

  const FormRegistry& forms_;
  EntryList entries_{lvwBRRecords, EntryList::Columns::WithDate};
  DocumentRights rights_;
  Block block_ = Block::BR;
  bool changed_ = false;  // since the record was read or saved
};

}  // namespace tolvex
