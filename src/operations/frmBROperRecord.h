// frmBROperRecord: the editor of one accounting entry of an operation.
//
// Shows the entry and writes it back only when it is saved; closing leaves the row as it was. What
// was done stands in `result`, see entry_editor.h.
#pragma once

#include <string>

#include "operations/entry_editor.h"
#include "operations/entry_side.h"
#include "platform/form.h"

namespace tolvex {

class frmBROperRecord final : public ui::Form {
 public:
  explicit frmBROperRecord(const EntryEditorRequest& request);

  const char* picture() const override;
  void opened() override;
  bool mayClose() override;

 private:
  EntryEditorRequest request_;
  EntryBooks books_;

 public:
  ui::Panel fraEntry{this, "fraEntry"};
  ui::TextBox txtSuma{this, "txtSuma", "Suma, Lt", 16};
  ui::DatePicker dtpDate{this, "dtpDate", "Data"};
  ui::TextBox txtComment{this, "txtComment", "Komentaras"};

  EntrySide debit{this, 1, books_};
  EntrySide credit{this, -1, books_};
  ui::MenuItem mnuProperties{this, "mnuProperties", "Pasirinkti adresatą"};
  ui::MenuItem mnuPropertiesDelete{this, "mnuPropertiesDelete", "Panaikinti"};
  ui::Menu menuProperties{{&mnuProperties, &mnuPropertiesDelete}, {}};

  ui::Panel fraVAT{this, "fraVAT"};
  ui::ComboBox cmbTradeOperationTypes{this, "cmbTradeOperationTypes", "Prekyba", 30};
  ui::ComboBox cmbVAT{this, "cmbVAT", "PVM", 24};
  ui::CheckBox chkVATFlag{this, "chkVATFlag", "PVM tarifas"};
  ui::ComboBox cmbVATTariff{this, "cmbVATTariff", {}, 8};

  ui::CheckBox chkNavigation{this, "chkNavigation", "Navigacija"};
  ui::Button cmdPrevious{this, "cmdPrevious", "‹ Ankstesnis"};
  ui::Button cmdNext{this, "cmdNext", "Kitas ›"};
  ui::Button cmdExit{this, "cmdExit", "Uždaryti"};
  ui::Button cmdWrite{this, "cmdWrite", "Išsaugoti", ui::Role::Primary};
  ui::MenuItem mnuSaveOper{this, "mnuSaveOper", "Išsaugoti ir įrašyti operaciją"};
  ui::MenuItem mnuSaveOperAndNew{this, "mnuSaveOperAndNew",
                                 "Išsaugoti, įrašyti operaciją ir pradėti naują"};
  ui::Menu menuWrite{{&mnuSaveOper, &mnuSaveOperAndNew}, {}};

 private:
  void wire();
  void loadBooks();
  void fillTariffs();
  void show(const std::string& guid);
  void showVat(RowSet& entry);
  void enableInputs();
  void focusFirst();
  void enableNavigation();
  void go(int step);
  void saveAndClose(int code);
  Complaint check();
  void write(RowSet& entry);
  void writeVat(RowSet& entry);
  std::string fingerprint() const;
  EntrySide& sideInFocus();
  RowSetPtr entry(const std::string& guid) const;

  NumberBox suma_;
  std::string shown_;  // fingerprint of the entry as it was shown
};

}  // namespace tolvex
