#include "currency/frmCurrencyExchange.h"

#include "framework/references.h"
#include "framework/told.h"
#include "operations/UIO0201500.h"
#include "operations/entries.h"
#include "operations/screen/account_combo.h"
#include "operations/screen/document_date.h"
#include "platform/save_outcome.h"

namespace tolvex {

frmCurrencyExchange::frmCurrencyExchange(const OperationToolRequest& request)
    : Form(request.host, "frmCurrencyExchange"),
      operation_(request.operation),
      link_(request.link) {
  setTitle("Valiutos pirkimas / pardavimas");
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  wire();
}

const char* frmCurrencyExchange::picture() const {
  return R"(
dtpDate | >>
[columns]
  [fraSideD]
    cmbAccD>
    cmbBankAccD> cmdClearBankAccD
    cmbCurrD | txtRateD | txtSumD
  [fraSideC]
    cmbAccC>
    cmbBankAccC> cmdClearBankAccC
    cmbCurrC | txtRateC | txtSumC
[fraInfluence]
  cmbAcc536>
  cmbAcc636>
lblDifference> | cmdCancel | cmdOK
)";
}

void frmCurrencyExchange::wire() {
  dtpDate.onChange = [this] { dateChanged(); };
  debit.onChange = credit.onChange = [this] { refresh(); };
  for (ui::ComboBox* box : {&cmbAcc536, &cmbAcc636}) {
    box->onChange = [this] { refresh(); };
    box->onLeave = [this, box] { checkAccountOnLeave(*box, books_.accounts); };
  }
  cmdOK.onClick = [this] { accept(); };
  cmdCancel.onClick = [this] { close(); };
}

void frmCurrencyExchange::opened() {
  const std::string kind(kindOf(header()["FOIDR"].Text()));
  datesOperation_ = (kind.empty() ? operation_->OType() : kind) == kOperationKind;
  const Variant date = header()["DateD"].Value();
  dtpDate.value = date.IsDate() ? date.AsDate() : host().clock().today();
  books_.bankAccounts = toldRows(operation_->Properties("MyFirmAccounts", ""));
  const InfluenceAccounts influence = readInfluenceAccounts(host());
  const DictionaryPtr accounts = toldDictionary(operation_->Properties("AccountList", ""));
  if (accounts) books_.accounts = *accounts;
  fillAccounts(cmbAcc536, books_.accounts);
  fillAccounts(cmbAcc636, books_.accounts);
  showAccount(cmbAcc536, influence.gain);
  showAccount(cmbAcc636, influence.loss);
  books_.rates.load(*operation_, *dtpDate.value());
  debit.fillChoices();
  credit.fillChoices();
  refresh();
  setFocus(debit.cmbAcc);
}

void frmCurrencyExchange::dateChanged() {
  if (!dtpDate.value()) return;
  const DateTime date = *dtpDate.value();
  const Variant before = header()["DateD"].Value();
  if (datesOperation_ && !dateFitsReferences(host(), *entriesOf(*operation_), date)) {
    warn(host(), "Data neatitinka esančių nuorodų datoms!");
    if (before.IsDate()) dtpDate.value = before.AsDate();
    return;
  }
  if (datesOperation_) {
    header()["DateD"] = date;
    link_.setDate(date);
  }
  books_.rates.load(*operation_, date);
  debit.showRates();
  credit.showRates();
  refresh();
}

// What the exchange comes to so far, and whether it is complete.
void frmCurrencyExchange::refresh() {
  const double debitLt = valueLt(debit.side()), creditLt = valueLt(credit.side());
  const bool bothSums = debitLt > 0 && creditLt > 0;
  const bool accounts =
      books_.accounts.Exists(accountIn(cmbAcc536)) && books_.accounts.Exists(accountIn(cmbAcc636));
  cmdOK.enabled = debit.filled() && credit.filled() && accounts;
  const auto shown = [&](double sum) { return formatNumber(sum, 2, host().numbers()) + " Lt"; };
  std::string text;
  if (bothSums) {
    text = "Debetas " + shown(debitLt) + "     Kreditas " + shown(creditLt);
    if (debitLt > creditLt) text += "     Teigiama įtaka " + shown(debitLt - creditLt);
    if (debitLt < creditLt) text += "     Neigiama įtaka " + shown(creditLt - debitLt);
  }
  lblDifference.caption = std::move(text);
}

Exchange frmCurrencyExchange::exchange() const {
  return {debit.side(), credit.side(), accountIn(cmbAcc536), accountIn(cmbAcc636),
          dtpDate.value().value_or(DateTime())};
}

void frmCurrencyExchange::accept() {
  if (!dtpDate.value()) return;
  const Exchange given = exchange();
  const ExchangeEntries entries = exchangeEntries(given);
  if (!entries.error.empty()) {
    Message box;
    box.text = entries.error;
    box.title = title();
    show(host(), box);
    const bool debitLacks = isCurrency(given.debit.code) && given.debit.rateLtPerUnit == 0;
    return setFocus((debitLacks ? debit : credit).txtRate);
  }
  keepRates(given);
  if (!add(entries)) return;
  if (header()["Comment"].Text().empty()) {
    header()["Comment"] = entries.name;
    link_.setComment(entries.name);
  }
  link_.refreshEntries();
  rememberInfluenceAccounts(host(), {given.gainAccount, given.lossAccount});
  close();
}

// A rate that the store refuses is told; the entries carry it all the same.
void frmCurrencyExchange::keepRates(const Exchange& given) {
  for (const ExchangeSide* side : {&given.debit, &given.credit}) {
    if (!isCurrency(side->code)) continue;
    showFailure(host(), books_.rates.keep(host(), side->code, side->rateLtPerUnit));
  }
}

// Both entries or none.
bool frmCurrencyExchange::add(const ExchangeEntries& entries) {
  const auto added = [&](const NewEntry& entry) {
    return operation_->Methods("AddBR", entry.arguments());
  };
  const MethodResult main = added(entries.main);
  if (main.Code != kDone) {
    showFailure(host(), main);
    return false;
  }
  if (!entries.difference) return true;
  const MethodResult difference = added(*entries.difference);
  if (difference.Code == kDone) return true;
  showFailure(host(), difference);
  showFailure(host(), operation_->Methods("DeleteBR", {main.Value}));
  return false;
}

}  // namespace tolvex
