// One side of the debts cover: the account and side its debts lie on, the addressee, the sum and
// its currency, and the list of debts to tick.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "debts/cover_posting.h"
#include "debts/debt_list.h"
#include "framework/param_dictionary.h"
#include "operations/screen/number_box.h"
#include "platform/form.h"

namespace tolvex {

class CoverSideBox {
 public:
  // `letter` ends the names of its controls, `list` names its list.
  CoverSideBox(ui::Form* form, char letter, const char* list, const char* caption);

  void offerAccounts(const ParamDictionary& accounts);  // they outlive the box
  void showAddressee(std::string_view reference, std::string_view text);
  const std::string& addressee() const { return txtAddr.tag; }
  std::string account() const;
  bool onCredit() const { return optCred.on(); }
  int direction() const { return onCredit() ? -1 : 1; }  // as the store is asked
  void chooseSide(bool credit);
  // The currencies that the side may be covered in, besides litas.
  void offerCurrencies(const std::vector<std::string>& codes);
  // The sum is in that money from now on. The list keeps its rows until it is filled.
  void payIn(const CoverMoney& money);

  // Reads the debts that are open at the date and that the operation does not close already; false
  // when they could not be read, which has been shown.
  bool read(VXObjectUIO& operation, DateTime date);
  // Brings what was read and the currency of the cover to the rates and fills the list anew; a
  // typed sum is spent on it.
  void fill(const RateOf& rateOf, const InfluenceAccounts& accounts);
  void clear();  // the list and the sum; the currency stays
  CoverParty party();
  // After a posting that took something off the rows of party(), or all of it.
  void posted();
  void showSum();

  std::function<void()> onChange;                      // what the list was read by has changed
  std::function<void()> onTicks;                       // something was ticked or released
  std::function<void(const std::string&)> onComplain;  // why a tick was taken back
  std::function<void()> onSide, onPick;
  std::function<void(const std::string& code)> onCurrency;  // three blanks: litas

  ui::Panel fraSide;
  ui::ComboBox cmbAcc;
  ui::OptionButton optDeb, optCred;
  ui::TextBox txtAddr;
  ui::Button cmdAddr, cmdCleanAddr;
  ui::TextBox txtSum;
  ui::Label lblCurrCode;
  ui::Button cmdCurr;
  ui::Menu menuCurr;
  ui::ListView lvw;
  ui::Button optAll, optDrop;
  DebtList list;

 private:
  void wire();
  void offerCurrency(const std::string& code);
  NumberBox sum_;
  double typed_ = 0;
  std::vector<std::unique_ptr<ui::MenuItem>> currencies_;
  std::vector<Debt> debts_;
};

}  // namespace tolvex
