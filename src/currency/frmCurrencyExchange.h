// frmCurrencyExchange: buying or selling of currency inside one operation, shown over its screen.
//
// A changed date goes to the operation at once. With the entries it gets the name of what was done
// as its comment, if it had none.
#pragma once

#include <memory>

#include "currency/exchange_side_box.h"
#include "currency/influence_accounts.h"
#include "operations/operation_tools.h"
#include "platform/form.h"

namespace tolvex {

class frmCurrencyExchange final : public ui::Form {
 public:
  explicit frmCurrencyExchange(const OperationToolRequest& request);

  const char* picture() const override;
  void opened() override;

  ui::DatePicker dtpDate{this, "dtpDate", "Operacijos data"};

 private:
  ExchangeBooks books_;  // before the sides, which choose from it

 public:
  ExchangeSideBox debit{this, 1, books_};
  ExchangeSideBox credit{this, -1, books_};
  ui::Panel fraInfluence{this, "fraInfluence",
                         "Valiutos kurso pasikeitimo įtakos balansinės sąskaitos"};
  ui::ComboBox cmbAcc536{this, "cmbAcc536", "Teigiamos įtakos b/s"};
  ui::ComboBox cmbAcc636{this, "cmbAcc636", "Neigiamos įtakos b/s"};
  ui::Label lblDifference{this, "lblDifference"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOK{this, "cmdOK", "Gerai", ui::Role::Primary};

 private:
  void wire();
  void dateChanged();
  void refresh();
  Exchange exchange() const;
  void accept();
  void keepRates(const Exchange& exchange);
  bool add(const ExchangeEntries& entries);
  RowSet& header() const { return *operation_->RsFields(); }

  std::shared_ptr<VXObjectUIO> operation_;
  OperationLink& link_;
  // A document of another kind keeps its own date.
  bool datesOperation_ = true;
};

}  // namespace tolvex
