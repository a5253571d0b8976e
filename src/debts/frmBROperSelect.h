// frmBROperSelect: the debts that a payment covers, or the orders and offers of the trade that it
// pays, chosen by the user from what stands open.
//
// A fixed sum is split over the rows in their order, each taking up to its rest; a sum of 0 lets
// every ticked row take all of its rest. The payment's currency counts at the payment's own rate,
// other currencies at those of the rate date, unless the user gives a rate.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "debts/debt_list.h"
#include "debts/operation_lines.h"
#include "debts/operation_select.h"
#include "operations/screen/number_box.h"
#include "platform/group_box.h"
#include "platform/host.h"

namespace tolvex {

class frmBROperSelect final : public ui::Form {
 public:
  explicit frmBROperSelect(const OperationSelectRequest& request);

  const char* picture() const override;
  void opened() override;

  ui::Panel fraSettings{this, "fraSettings", "Nustatymai"};
  ui::ComboBox cmbAcc{this, "cmbAcc", "Sąskaita"};
  ui::OptionButton optDeb{this, "optDeb", "Debetas", "side"};
  ui::OptionButton optCred{this, "optCred", "Kreditas", "side"};
  ui::TextBox txtAddr{this, "txtAddr", "Adresatas"};
  ui::Button cmdAddr{this, "cmdAddr", "…", ui::Role::Small};
  ui::Button cmdCleanAddr{this, "cmdCleanAddr", "×", ui::Role::Small};
  ui::CheckBox chkByFirmChildrens{this, "chkByFirmChildrens", "Su įmonės filialais"};
  ui::TextBox txtOperGroup{this, "txtOperGroup", "Grupė"};
  ui::Button cmdOperGroup{this, "cmdOperGroup", "…", ui::Role::Small};
  ui::Button cmdCleanGroup{this, "cmdCleanGroup", "×", ui::Role::Small};
  ui::TextBox txtDate{this, "txtDate", "Data", 10};
  ui::TextBox txtRateDate{this, "txtRateDate", "Valiutų kursų data", 10};
  ui::TextBox txtCurrCode{this, "txtCurrCode", "Skolos valiuta", 5};
  ui::TextBox txtRate{this, "txtRate", "Kursas", 10, ui::Align::Right};
  ui::OptionButton optDebtOpers{this, "optDebtOpers", "Operacijos pagal nustatymus", "what"};
  ui::OptionButton optTradeDocOpers{this, "optTradeDocOpers",
                                    "Prekybos užsakymo ir pasiūlymo operacijos nuo datos", "what"};
  ui::DatePicker dtpDate{this, "dtpDate"};
  ui::Button cmdGo{this, "cmdGo", "Užpildyti"};
  ui::ListView lvwBROper{this, "lvwBROper", operationColumns(ListedOperations::Debts)};
  ui::TextBox txtSkolaLt{this, "txtSkolaLt", "Skola, Lt", 14, ui::Align::Right};
  ui::TextBox txtPaymentLt{this, "txtPaymentLt", "Mokama, Lt", 14, ui::Align::Right};
  ui::TextBox txtPaymentCurr{this, "txtPaymentCurr", "Mokama valiuta", 14, ui::Align::Right};
  ui::Label lblTotals{this, "lblTotals"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOK{this, "cmdOK", "Gerai", ui::Role::Primary};

  ui::MenuItem mnuFirm{this, "mnuFirm", "Įmonės"};
  ui::MenuItem mnuPerson{this, "mnuPerson", "Fiziniai asmenys"};
  ui::MenuItem mnuPersonal{this, "mnuPersonal", "Darbuotojai"};
  ui::MenuItem mnuFind{this, "mnuFind", "Dokumento paieška"};
  ui::Menu menuAddr{{&mnuFirm, &mnuPerson, &mnuPersonal, nullptr, &mnuFind}, {}};
  ui::MenuItem mnuSum{this, "mnuSum", "Sumos įvedimas"};
  ui::MenuItem mnuExact{this, "mnuExact", "Padengti visą valiutos likutį"};
  ui::MenuItem mnuRates{this, "mnuRates", "Kurso įvedimas (žinynas)"};
  ui::MenuItem mnuAll{this, "mnuAll", "Parinkti viską"};
  ui::MenuItem mnuDrop{this, "mnuDrop", "Atšaukti"};
  ui::Menu menuRow{{&mnuSum, &mnuExact, &mnuRates, nullptr, &mnuAll, &mnuDrop}, {}};

 private:
  void wire();
  void wireList();
  void showAsked();
  void enableByState();

  // What is asked for.
  void pickParty(const char* kind);
  void takeParty(std::string reference, std::string name);
  void findByNumber();
  int side() const { return optDeb.on() ? 1 : -1; }  // on which the debts lie
  // With the branches of a firm; nothing when these could not be read, which was told.
  std::optional<std::vector<std::string>> parties();
  void askedChanged();  // the list is no answer to it any more
  ListedOperations wanted() const;

  // The list.
  void fill();
  bool readDebtsOf(const std::string& party, std::vector<Debt>& debts);
  bool readTrade(std::vector<Debt>& debts);
  void listDebts(std::vector<Debt> debts);
  void split();  // the sum over the debts, anew
  void refreshTotals();
  std::string totals() const;
  double rateOf(std::string_view code) const { return rates_.rate(code).value_or(0); }
  CoverMoney money() const { return {asked_.money.code, rateOf(asked_.money.code)}; }

  // Rows.
  void changed(const std::string& refusal);  // ticks; why not all of them
  double left() const;                       // of the sum
  void prepareMenu();
  void enterSum();
  void enterRate();
  void sumChanged();
  void accept();
  void inform(const std::string& text);

  std::shared_ptr<VXObjectUIO> operation_;
  RowSetPtr& selected_;
  SelectionAsked asked_;
  ParamDictionary accounts_;
  InfluenceAccounts influence_;
  RateBook rates_;
  ListedOperations listed_ = ListedOperations::Debts;  // what the list shows now
  std::vector<Debt> debts_;
  GroupBox group_{txtOperGroup, cmdOperGroup, &cmdCleanGroup, "O0201400", false};
  const NumberFormat numbers_ = host().numbers();
  DebtList list_{lvwBROper, numbers_,
                 [this](const DebtRow& row) { return operationLine(row, listed_, numbers_); }};
  NumberBox sum_;        // of the payment, in its money
  double splitSum_ = 0;  // what the list was split by
};

}  // namespace tolvex
