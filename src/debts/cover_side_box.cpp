#include "debts/cover_side_box.h"

#include <algorithm>

#include "debts/new_covers.h"
#include "framework/rounding.h"
#include "framework/told.h"
#include "operations/entries.h"
#include "operations/screen/account_combo.h"

namespace tolvex {
namespace {

std::string named(const char* stem, char letter) { return std::string(stem) + letter; }

}  // namespace

CoverSideBox::CoverSideBox(ui::Form* form, char letter, const char* listName, const char* caption)
    : fraSide(form, named("fraSide", letter), caption),
      cmbAcc(form, named("cmbAcc", letter), "Sąskaita", 26),
      optDeb(form, named("optDeb", letter), "Debetas", named("side", letter)),
      optCred(form, named("optCred", letter), "Kreditas", named("side", letter)),
      txtAddr(form, named("txtAddr", letter), "Adresatas"),
      cmdAddr(form, named("cmdAddr", letter), "…", ui::Role::Small),
      cmdCleanAddr(form, named("cmdCleanAddr", letter), "×", ui::Role::Small),
      txtSum(form, named("txtSum", letter), "Suma, Lt", 13),
      lblCurrCode(form, named("lblCurrCode", letter), std::string(kNoCurrency)),
      cmdCurr(form, named("cmdCurr", letter), "▾", ui::Role::Small),
      lvw(form, listName, DebtList::columns()),
      optAll(form, named("optAll", letter), "Parinkti viską"),
      optDrop(form, named("optDrop", letter), "Atšaukti"),
      list(lvw, form->host().numbers()),
      sum_(txtSum, 2, form->host().numbers(), NumberBox::Input::Arithmetic) {
  txtAddr.readOnly = true;
  cmdAddr.tip = "Pasirinkti adresatą";
  cmdCleanAddr.tip = "Visi adresatai";
  cmdCurr.tip = "Dengimo valiuta";
  cmdCurr.menu = lblCurrCode.menu = &menuCurr;
  txtSum.tip = "Kiek dengti: įrašyta suma paskirstoma skoloms iš eilės";
  wire();
}

void CoverSideBox::wire() {
  cmdCurr.onClick = [this] { cmdCurr.form.popup(menuCurr, cmdCurr); };
  cmbAcc.onChange = [this] { onChange(); };
  optDeb.onChange = optCred.onChange = [this] { onSide(); };
  cmdAddr.onClick = [this] { onPick(); };
  cmdCleanAddr.onClick = [this] {
    showAddressee({}, {});
    onChange();
  };
  txtSum.onChange = [this] {
    typed_ = sum_.value();
    list.limit(typed_);
  };
  txtSum.onLeave = [this] {
    if (!txtSum.text().empty()) sum_.normalise();
  };
  lvw.onCheck = [this] {
    const std::string message = list.takeTick();
    showSum();
    onTicks();
    if (!message.empty()) onComplain(message);
  };
  optAll.onClick = [this] {
    const std::vector<std::string> messages = list.tickAll();
    showSum();
    onTicks();
    for (const std::string& message : messages) onComplain(message);
  };
  optDrop.onClick = [this] {
    list.releaseAll();
    showSum();
    onTicks();
  };
}

void CoverSideBox::offerAccounts(const ParamDictionary& accounts) {
  fillAccounts(cmbAcc, accounts);
  cmbAcc.onLeave = [this, &accounts] { checkAccountOnLeave(cmbAcc, accounts); };
}

void CoverSideBox::showAddressee(std::string_view reference, std::string_view text) {
  txtAddr.text = std::string(text);
  txtAddr.tag = std::string(reference);
  cmdCleanAddr.enabled = !reference.empty();
}

std::string CoverSideBox::account() const { return accountIn(cmbAcc); }

void CoverSideBox::chooseSide(bool credit) { (credit ? optCred : optDeb).choose(); }

void CoverSideBox::offerCurrencies(const std::vector<std::string>& codes) {
  menuCurr.items.clear();
  currencies_.clear();
  offerCurrency(std::string(kNoCurrency));
  for (const std::string& code : codes) offerCurrency(code);
  payIn(list.money());
}

void CoverSideBox::offerCurrency(const std::string& code) {
  const std::string name = "mnu" + lblCurrCode.name.substr(3) + std::to_string(currencies_.size());
  auto item = std::make_unique<ui::MenuItem>(&cmdCurr.form, name, isCurrency(code) ? code : "Lt");
  item->tag = code;
  item->onClick = [this, code] { onCurrency(code); };
  menuCurr.items.push_back(item.get());
  currencies_.push_back(std::move(item));
}

void CoverSideBox::payIn(const CoverMoney& money) {
  if (money.code != list.money().code) {
    typed_ = 0;  // it was in another money
    list.limit(0);
    sum_.clear();
  }
  list.payIn(money);
  lblCurrCode.caption = money.code;
  txtSum.caption = isCurrency(money.code) ? "Suma" : "Suma, Lt";
  for (const auto& item : currencies_) item->ticked = item->tag == money.code;
}

bool CoverSideBox::read(VXObjectUIO& operation, DateTime date) {
  const RowSetPtr rows = toldRows(operation.Properties(
      DebtsMethodName(addressee(), 0), debtsParameters(account(), date, addressee(), direction())));
  if (!rows) return false;
  debts_ = readDebts(*rows);
  takeOffNewCovers(debts_, account(), *entriesOf(operation));
  return true;
}

void CoverSideBox::fill(const RateOf& rateOf, const InfluenceAccounts& accounts) {
  CoverMoney money = list.money();
  if (isCurrency(money.code)) money.rate = rateOf(money.code);
  list.payIn(money);
  ComputeInfluence(debts_, rateOf);
  list.show(FillDebtList(debts_, accounts, money, typed_));
  showSum();
}

void CoverSideBox::clear() {
  debts_.clear();
  list.show({});
  typed_ = 0;
  list.limit(0);
  sum_.clear();
}

CoverParty CoverSideBox::party() {
  return {account(), addressee(), onCredit() ? 1 : -1, &list.edit()};
}

// What is posted is neither offered nor spent again.
void CoverSideBox::posted() {
  const double before = list.ticked();
  debts_.clear();
  for (const DebtRow& row : list.rows()) {
    const Debt& debt = row.debt;
    if (debt.LikutisLt != 0 || debt.LikutisCurr != 0) debts_.push_back(debt);
  }
  list.redraw();
  if (typed_ > 0) typed_ = std::max(0.0, roundHalfEven(typed_ - before + list.ticked(), 2));
  list.limit(typed_);
  showSum();
}

void CoverSideBox::showSum() {
  if (list.ticked() > 0) return sum_.show(list.ticked());
  if (typed_ > 0) return sum_.show(typed_);
  sum_.clear();
}

}  // namespace tolvex
