#include "debts/cover_side_box.h"

#include <algorithm>

#include "framework/rounding.h"
#include "operations/screen/account_combo.h"

namespace tolvex {
namespace {

std::string named(const char* stem, char letter) { return std::string(stem) + letter; }

}  // namespace

CoverSideBox::CoverSideBox(ui::Form* form, char letter, const char* listName, const char* caption)
    : fraSide(form, named("fraSide", letter), caption),
      cmbAcc(form, named("cmbAcc", letter), "Sąskaita", 36),
      optDeb(form, named("optDeb", letter), "Debetas", named("side", letter)),
      optCred(form, named("optCred", letter), "Kreditas", named("side", letter)),
      txtAddr(form, named("txtAddr", letter), "Adresatas"),
      cmdAddr(form, named("cmdAddr", letter), "…", ui::Role::Small),
      cmdCleanAddr(form, named("cmdCleanAddr", letter), "×", ui::Role::Small),
      txtSum(form, named("txtSum", letter), "Suma, Lt", 13),
      lblCurrCode(form, named("lblCurrCode", letter), std::string(kNoCurrency)),
      lvw(form, listName, DebtList::columns()),
      optAll(form, named("optAll", letter), "Parinkti viską"),
      optDrop(form, named("optDrop", letter), "Atšaukti"),
      list(lvw, form->host().numbers()),
      sum_(txtSum, 2, form->host().numbers(), NumberBox::Input::Arithmetic) {
  txtAddr.readOnly = true;
  cmdAddr.tip = "Pasirinkti adresatą";
  cmdCleanAddr.tip = "Visi adresatai";
  txtSum.tip = "Kiek dengti: įrašyta suma paskirstoma skoloms iš eilės";
  wire();
}

void CoverSideBox::wire() {
  cmbAcc.onChange = [this] { onChange(); };
  optDeb.onChange = optCred.onChange = [this] { onSide(); };
  cmdAddr.onClick = [this] { onPick(); };
  cmdCleanAddr.onClick = [this] {
    showAddressee({}, {});
    onChange();
  };
  txtSum.onChange = [this] {
    typedLt_ = sum_.value();
    list.limitLt(typedLt_);
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

bool CoverSideBox::read(VXObjectUIO& operation, DateTime date) {
  const MethodResult read = operation.Properties(
      DebtsMethodName(addressee(), 0), debtsParameters(account(), date, addressee(), direction()));
  if (read.Code != kDone) return false;
  debts_ = read.Value.IsRows() ? readDebts(*read.Value.AsRows()) : std::vector<Debt>{};
  return true;
}

void CoverSideBox::fill(const RateOf& rateOf, const InfluenceAccounts& accounts) {
  ComputeInfluence(debts_, rateOf);
  list.show(FillDebtList(debts_, accounts, {}, typedLt_));
  showSum();
}

void CoverSideBox::clear() {
  debts_.clear();
  list.show({});
  typedLt_ = 0;
  list.limitLt(0);
  sum_.clear();
}

CoverParty CoverSideBox::party() {
  return {account(), addressee(), onCredit() ? 1 : -1, &list.edit()};
}

// What is posted is neither offered nor spent again.
void CoverSideBox::posted() {
  const double before = list.tickedLt();
  debts_.clear();
  for (const DebtRow& row : list.rows()) debts_.push_back(row.debt);
  list.redraw();
  if (typedLt_ > 0) typedLt_ = std::max(0.0, roundHalfEven(typedLt_ - before + list.tickedLt(), 2));
  list.limitLt(typedLt_);
  showSum();
}

void CoverSideBox::showSum() {
  if (list.tickedLt() > 0) return sum_.show(list.tickedLt());
  if (typedLt_ > 0) return sum_.show(typedLt_);
  sum_.clear();
}

}  // namespace tolvex
