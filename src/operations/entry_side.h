// One side of the entry editor, debit or credit: account, currency, addressees.
//
// Owns the controls of its side under their fixed names (a "D" or "C" at the end) and knows how to
// show, check and write that side of an entry. What both sides share stands in EntryBooks.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "operations/screen/addressee_lines.h"
#include "operations/screen/currency_sides.h"
#include "operations/screen/number_box.h"
#include "operations/screen/rate_book.h"
#include "platform/host.h"

namespace tolvex {

// What the editor has read to show entries by.
struct EntryBooks {
  std::shared_ptr<VXObjectUIO> operation;
  ParamDictionary accounts;                                // with "0"
  std::vector<std::pair<std::string, std::string>> kinds;  // of addressee: code and name
  std::string allowedKinds;                                // see kindAllowed
  RateBook rates;

  std::string kindName(std::string_view kind) const;
};

// Why an entry cannot be saved, and where the user mends it.
struct Complaint {
  std::string text;
  ui::Control* where = nullptr;
};

class EntrySide {
 public:
  EntrySide(ui::Form* form, int sign, EntryBooks& books);

  ui::Panel fraSide;
  ui::ComboBox cmbAccount, cmbCurr;
  ui::TextBox txtRateCurr, txtSumCurr;
  ui::ListView lvwAddress;
  ui::Button cmdAddressee, cmdNoAddressee;

  // Called with the litas value when currency sum and rate give one.
  std::function<void(double sumLt)> onSumLt;

  void fillChoices();
  void show(RowSet& BR, bool readOnly);
  std::string account() const;
  std::string fingerprint() const;  // differs whenever the user has changed something

  // In the order of the editor's checks; no text means nothing to complain of.
  Complaint checkAccount();
  Complaint checkCurrency(double sumLt);
  Complaint checkAddressees();

  CurrencySide currency() const;
  void writeAddressees(RowSet& BR) { writeAddresseeLines(BR, sign_, lines_); }

  void chooseAddressee();  // for the line under the cursor
  void addAddressee();     // of any kind
  void clearAddressee();
  bool mayChangeLine() const;  // the line under the cursor

 private:
  void wire();
  void showLines();
  void currencyChosen();
  void recompute();
  AddresseeLine* currentLine();
  void take(std::vector<std::string> kinds, AddresseeLine* line);
  // Why the operation that is pointed at is not the client's; "" when it is.
  std::string whyNotOf(const std::string& pointer, const std::string& client);

  int sign_;
  EntryBooks& books_;
  NumberBox rate_, sumCurr_;
  std::vector<AddresseeLine> lines_;
  bool readOnly_ = false;
};

}  // namespace tolvex
