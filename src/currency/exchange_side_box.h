// One side of the exchange screen: account, own bank account, currency, rate and sum.
#pragma once

#include <functional>

#include "currency/exchange_rules.h"
#include "operations/screen/number_box.h"
#include "platform/form.h"

namespace tolvex {

// What both sides choose from.
struct ExchangeBooks {
  ParamDictionary accounts;
  RowSetPtr bankAccounts;  // of the own firm; null when they could not be read
  RateBook rates;
};

class ExchangeSideBox {
 public:
  ExchangeSideBox(ui::Form* form, int sign, ExchangeBooks& books);

  void fillChoices();  // accounts and bank accounts; the side is empty and in litas
  void showRates();    // the currencies and rates of another day; the currency stays
  ExchangeSide side() const;
  bool filled() const;  // an account of the plan and a sum
  ui::TextBox& rateBox() { return txtRate; }

  std::function<void()> onChange;  // something that counts was changed

  ui::Panel fraSide;
  ui::ComboBox cmbAcc, cmbBankAcc;
  ui::Button cmdClearBankAcc;
  ui::ComboBox cmbCurr;
  ui::TextBox txtRate, txtSum;

 private:
  void wire();
  void takeRate();
  void changed();

  const int sign_;
  ExchangeBooks& books_;
  NumberBox rate_, sum_;
};

}  // namespace tolvex
