#include "currency/exchange_side_box.h"

#include "operations/screen/account_combo.h"

namespace tolvex {
namespace {

std::string named(const char* stem, int sign) {
  return std::string(stem) + (sign == 1 ? "D" : "C");
}

}  // namespace

ExchangeSideBox::ExchangeSideBox(ui::Form* form, int sign, ExchangeBooks& books)
    : fraSide(form, named("fraSide", sign), sign == 1 ? "Debetas" : "Kreditas"),
      cmbAcc(form, named("cmbAcc", sign), "Balansinė sąskaita"),
      cmbBankAcc(form, named("cmbBankAcc", sign), "Banko a/sąskaita"),
      cmdClearBankAcc(form, named("cmdClearBankAcc", sign), "×", ui::Role::Small),
      cmbCurr(form, named("cmbCurr", sign), "Valiuta", 6),
      txtRate(form, named("txtRate", sign), "Buh. kursas", 10),
      txtSum(form, named("txtSum", sign), "Suma", 13),
      sign_(sign),
      books_(books),
      rate_(txtRate, 4, form->host().numbers(), NumberBox::Input::Number),
      sum_(txtSum, 2, form->host().numbers(), NumberBox::Input::Number) {
  cmdClearBankAcc.tip = "Be banko sąskaitos";
  wire();
}

void ExchangeSideBox::wire() {
  cmbAcc.onChange = [this] { changed(); };
  cmbAcc.onLeave = [this] { checkAccountOnLeave(cmbAcc, books_.accounts); };
  cmbBankAcc.onChange = [this] { cmdClearBankAcc.enabled = cmbBankAcc.index >= 0; };
  cmdClearBankAcc.onClick = [this] {
    cmbBankAcc.index = -1;
    cmdClearBankAcc.enabled = false;
  };
  cmbCurr.onChange = [this] {
    takeRate();
    changed();
  };
  txtRate.onChange = txtSum.onChange = [this] { changed(); };
  // A rate stays as it was typed: of small currencies more than four decimals count.
  txtSum.onLeave = [this] {
    if (txtSum.text().empty()) return;
    sum_.normalise();
    changed();
  };
}

void ExchangeSideBox::changed() {
  if (onChange) onChange();
}

void ExchangeSideBox::fillChoices() {
  fillAccounts(cmbAcc, books_.accounts);
  std::vector<ui::ComboBox::Item> items;
  if (books_.bankAccounts) {
    ForEachRow(*books_.bankAccounts, [&](RowSet& row) {
      ui::ComboBox::Item item{std::string(row["Preview"].Text()),
                              std::string(row["AccOIDR"].Text())};
      const bool main = row["MainAccountFlag"].Number() != 0;
      items.insert(main ? items.begin() : items.end(), std::move(item));
    });
  }
  cmbBankAcc.items = std::move(items);
  cmbBankAcc.index = -1;
  cmdClearBankAcc.enabled = false;
  sum_.clear();
  showRates();
}

void ExchangeSideBox::showRates() {
  const std::string code = cmbCurr.text();
  std::vector<std::string> codes = books_.rates.codes();
  codes.insert(codes.begin(), std::string(kNoCurrency));
  cmbCurr.setTexts(codes);
  cmbCurr.index = std::max(cmbCurr.find(code), 0);
  takeRate();
}

void ExchangeSideBox::takeRate() {
  txtRate.enabled = isCurrency(cmbCurr.text());
  rate_.clear();
  if (const auto rate = books_.rates.rate(cmbCurr.text())) rate_.show(*rate);
}

ExchangeSide ExchangeSideBox::side() const {
  ExchangeSide side;
  side.account = accountIn(cmbAcc);
  if (isCurrency(cmbCurr.text())) side.code = cmbCurr.text();
  side.rateLtPerUnit = rate_.value();
  side.sum = sum_.value();
  if (books_.bankAccounts) {
    side.addressees = bankAddressees(sign_, *books_.bankAccounts, cmbBankAcc.key());
  }
  return side;
}

bool ExchangeSideBox::filled() const {
  return sum_.value() > 0 && books_.accounts.Exists(accountIn(cmbAcc));
}

}  // namespace tolvex
