#include "debts/frmBROperSelect.h"

#include <algorithm>

#include "debts/frmBROperSelect_ChangeRate.h"
#include "debts/frmBROperSelect_Find.h"
#include "debts/frmCoverSum.h"
#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "framework/told.h"
#include "operations/screen/account_combo.h"
#include "operations/screen/addressee_pick.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

constexpr const char* kFirms = "O0000100";

}  // namespace

frmBROperSelect::frmBROperSelect(const OperationSelectRequest& request)
    : Form(request.host, kOperationSelect),
      operation_(request.operation),
      selected_(request.selected),
      asked_(readSelectParameters(*request.parameters, request.host.clock().today())),
      sum_(isCurrency(asked_.money.code) ? txtPaymentCurr : txtPaymentLt, 2, request.host.numbers(),
           NumberBox::Input::Arithmetic) {
  setTitle("Operacijų pasirinkimas");
  for (ui::TextBox* box : {&txtAddr, &txtDate, &txtRateDate, &txtCurrCode, &txtRate, &txtSkolaLt})
    box->readOnly = true;
  (isCurrency(asked_.money.code) ? txtPaymentLt : txtPaymentCurr).readOnly = true;
  cmdAddr.menu = &menuAddr;
  lvwBROper.menu = &menuRow;
  cmdCleanAddr.tip = "Visi adresatai";
  cmdGo.shortcut = "F5";
  mnuFind.shortcut = "Ctrl+F";
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  wire();
}

const char* frmBROperSelect::picture() const {
  return R"(
[fraSettings]
  cmbAcc> | optDeb optCred | txtDate | txtRateDate | txtCurrCode txtRate
  txtAddr> cmdAddr cmdCleanAddr | chkByFirmChildrens | txtOperGroup> cmdOperGroup cmdCleanGroup
  optDebtOpers | optTradeDocOpers dtpDate | >> | cmdGo
lvwBROper>
txtSkolaLt | txtPaymentLt | txtPaymentCurr | lblTotals>
>> | cmdCancel | cmdOK
)";
}

void frmBROperSelect::wire() {
  cmdAddr.onClick = [this] { popup(menuAddr, cmdAddr); };
  cmdCleanAddr.onClick = [this] { takeParty("", ""); };
  mnuFirm.onClick = [this] { pickParty(kFirms); };
  mnuPerson.onClick = [this] { pickParty("O0001402"); };
  mnuPersonal.onClick = [this] { pickParty("O0001401"); };
  mnuFind.onClick = [this] { findByNumber(); };
  cmbAcc.onChange = optDeb.onChange = optCred.onChange = [this] { askedChanged(); };
  optDebtOpers.onChange = optTradeDocOpers.onChange = dtpDate.onChange =
      chkByFirmChildrens.onChange = group_.onChange = [this] { askedChanged(); };
  cmdGo.onClick = [this] { fill(); };
  sum_.box.onLeave = [this] { sumChanged(); };
  cmdOK.onClick = [this] { accept(); };
  cmdCancel.onClick = [this] { close(); };
  wireList();
}

void frmBROperSelect::wireList() {
  lvwBROper.onCheck = [this] { changed(list_.takeTick()); };
  lvwBROper.onActivate = mnuSum.onClick = [this] { enterSum(); };
  menuRow.onPopup = [this] { prepareMenu(); };
  mnuExact.onClick = [this] {
    list_.coverCurrentExactly();
    changed("");
  };
  mnuRates.onClick = [this] { enterRate(); };
  mnuAll.onClick = [this] { changed(join(list_.tickAll(), kLineBreak)); };
  mnuDrop.onClick = [this] {
    list_.releaseAll();
    changed("");
  };
}

// --- opening ----------------------------------------------------------------------------------

void frmBROperSelect::opened() {
  const DictionaryPtr accounts = toldDictionary(operation_->Properties("AccountList", ""));
  if (accounts) accounts_ = *accounts;
  fillAccounts(cmbAcc, accounts_);
  influence_ = markedInfluenceAccounts(host());
  rates_.load(*operation_, asked_.rateDate);
  if (asked_.money.rate > 0) rates_.setByHand(asked_.money.code, asked_.money.rate);
  optDebtOpers.choose();
  showAsked();
  if (!asked_.accountFree()) fill();
  setFocus(asked_.accountFree() ? static_cast<ui::Control&>(cmbAcc) : lvwBROper);
}

void frmBROperSelect::showAsked() {
  (asked_.onDebit ? optDeb : optCred).choose();
  if (!asked_.accountFree()) showAccount(cmbAcc, asked_.account);
  for (ui::Control* control : std::initializer_list<ui::Control*>{&cmbAcc, &optDeb, &optCred})
    control->enabled = asked_.accountFree();
  txtDate.text = asked_.date.Text();
  txtRateDate.text = asked_.rateDate.Text();
  dtpDate.value = FirstDayOfMonth(asked_.date);
  const bool currency = isCurrency(asked_.money.code);
  for (ui::Control* control :
       std::initializer_list<ui::Control*>{&txtCurrCode, &txtRate, &txtPaymentCurr})
    control->visible = currency;
  txtCurrCode.text = currency ? asked_.money.code : std::string();
  if (asked_.sum > 0) sum_.show(asked_.sum);
  takeParty(asked_.addressee, asked_.addresseeName);
}

void frmBROperSelect::enableByState() {
  dtpDate.enabled = optTradeDocOpers.on();
  group_.enable(optDebtOpers.on());
  chkByFirmChildrens.enabled =
      optDebtOpers.on() && isRef(txtAddr.tag) && kindOf(txtAddr.tag) == kFirms;
}

// --- whose debts --------------------------------------------------------------------------------

void frmBROperSelect::takeParty(std::string reference, std::string name) {
  txtAddr.tag = std::move(reference);
  txtAddr.text = std::move(name);
  cmdCleanAddr.enabled = !txtAddr.tag.empty();
  askedChanged();
}

void frmBROperSelect::askedChanged() {
  enableByState();
  listed_ = wanted();
  listDebts({});
}

void frmBROperSelect::pickParty(const char* kind) {
  const auto picked = pickAddressee(host(), *operation_, {kind}, txtAddr.tag);
  if (picked) takeParty(picked->reference, picked->showString);
}

void frmBROperSelect::findByNumber() {
  const auto number = host().dialogs().input("Dokumento numeris:", "Dokumento paieška", "");
  if (!number || trim(*number).empty()) return;
  HostResult read;
  operation_->BO()->CallBO("DO0201500_GetBROpersByNumber",
                           Parameters().text(trim(*number)).number(side()).str(), nullptr, read);
  if (read.Code != kDone) {
    return showStop(host(), "Klaida!" + std::string(kLineBreak) + "DO0201500_GetBROpersByNumber:" +
                                std::string(kLineBreak) + read.Text);
  }
  const RowSetPtr rows = read.Data.AsRows();
  if (rows->RecordCount() == 0) {
    warn(host(), "Neapmokėto dokumento tokiu numeriu nėra!");
    return;
  }
  rows->MoveFirst();
  FoundDocument found = foundDocument(*rows);
  if (rows->RecordCount() > 1) {
    frmBROperSelect_Find choice(host(), rows);
    host().screens().runModal(choice);
    if (!choice.chosen()) return;
    found = *choice.chosen();
  }
  takeParty(found.reference, found.name);
  fill();
  const auto& lines = lvwBROper.rows();
  const auto line = std::ranges::find(lines, found.operation, &ui::Row::tag);
  if (line != lines.end()) lvwBROper.current = static_cast<int>(line - lines.begin());
}

std::optional<std::vector<std::string>> frmBROperSelect::parties() {
  std::vector<std::string> all = {txtAddr.tag};
  if (!chkByFirmChildrens.enabled() || !chkByFirmChildrens.on()) return all;
  const RowSetPtr branches = toldRows(*operation_->BO(), "DO0201500_GetFirmChildrens",
                                      Parameters().text(txtAddr.tag).str());
  if (!branches) return std::nullopt;
  ForEachRow(*branches, [&](RowSet& row) { all.emplace_back(row["OIDR"].Text()); });
  return all;
}

// --- the list -----------------------------------------------------------------------------------

void frmBROperSelect::fill() {
  if (!accounts_.Exists(accountIn(cmbAcc))) {
    warn(host(), "Neužduota sąskaita !");
    return setFocus(cmbAcc);
  }
  std::vector<Debt> debts;
  if (optTradeDocOpers.on()) {
    if (!readTrade(debts)) return;
  } else {
    const auto owners = parties();
    if (!owners) return;
    for (const std::string& party : *owners)
      if (!readDebtsOf(party, debts)) return;
    // Branches are paid with their firm: the oldest debt first, whosever it is.
    std::stable_sort(debts.begin(), debts.end(),
                     [](const Debt& a, const Debt& b) { return a.DateD < b.DateD; });
  }
  listDebts(std::move(debts));
  if (list_.current()) setFocus(lvwBROper);
}

void frmBROperSelect::listDebts(std::vector<Debt> debts) {
  debts_ = std::move(debts);
  lvwBROper.columns = operationColumns(listed_);
  split();
}

bool frmBROperSelect::readDebtsOf(const std::string& party, std::vector<Debt>& debts) {
  const std::string group = group_.reference().empty() ? "0" : group_.reference();
  const RowSetPtr answer = toldRows(operation_->Properties(
      DebtsMethodName(party, side()),
      debtsParameters(accountIn(cmbAcc), asked_.date, party, side(), group)));
  if (!answer) return false;
  const std::vector<Debt> more = readDebts(*answer);
  debts.insert(debts.end(), more.begin(), more.end());
  return true;
}

// A document that pays out covers orders, one that takes money offers.
ListedOperations frmBROperSelect::wanted() const {
  if (!optTradeDocOpers.on()) return ListedOperations::Debts;
  const std::string kind = operation_->OType();
  const bool offers = kind == "O0201502" || kind == "O0201504" ||
                      (kind != "O0201501" && kind != "O0201503" && optDeb.on());
  return offers ? ListedOperations::Offers : ListedOperations::Orders;
}

bool frmBROperSelect::readTrade(std::vector<Debt>& debts) {
  const RowSetPtr answer = toldRows(operation_->Properties(
      listed_ == ListedOperations::Offers ? "Offer_BROpers" : "Order_BROpers",
      Parameters()
          .text("0")
          .date(dtpDate.value().value_or(asked_.date))
          .text(txtAddr.tag)
          .number(side())
          .str()));
  if (!answer) return false;
  debts = readTradeOperations(*answer, listed_, -side());
  for (Debt& debt : debts) {
    debt.AddrOIDR = txtAddr.tag;
    debt.AddrName = txtAddr.text;
  }
  return true;
}

void frmBROperSelect::split() {
  if (listed_ == ListedOperations::Debts)
    ComputeInfluence(debts_, [this](std::string_view code) { return rateOf(code); });
  splitSum_ = sum_.value();
  list_.payIn(money());
  list_.limit(splitSum_);
  list_.show(FillDebtList(debts_, influence_, money(), splitSum_));
  refreshTotals();
}

void frmBROperSelect::refreshTotals() {
  double debtLt = 0;
  for (const DebtRow& row : list_.rows())
    debtLt += row.LikutisLt + row.PaymentLt + row.InfluenceSum;
  txtSkolaLt.text = formatNumber(debtLt, 2, numbers_);
  const CoverMoney payment = money();
  if (isCurrency(payment.code)) {
    txtPaymentLt.text = formatNumber(roundLt(sum_.value() * payment.rate), 2, numbers_);
    txtRate.text = formatNumber(payment.rate, 4, numbers_, false);
  }
  const DebtRow* over = list_.leftOver();
  lblTotals.caption = over ? leftOverText(*over, mnuExact.caption(), numbers_) : totals();
  cmdOK.enabled = std::ranges::any_of(list_.rows(), &DebtRow::ticked);
}

double frmBROperSelect::left() const { return roundHalfEven(splitSum_ - list_.ticked(), 2); }

// What is ticked, and what that leaves of the sum.
std::string frmBROperSelect::totals() const {
  const auto shown = [this](double sum) { return formatNumber(sum, 2, numbers_); };
  const bool currency = isCurrency(asked_.money.code);
  const std::string unit = currency ? asked_.money.code : "Lt";
  std::string text =
      "Pažymėta: " + std::to_string(std::ranges::count_if(list_.rows(), &DebtRow::ticked)) +
      "     Apmokama: " + shown(list_.tickedLt()) + " Lt";
  if (currency) text += " (" + shown(list_.ticked()) + " " + unit + ")";
  if (splitSum_ > 0) text += "     Lieka: " + shown(left()) + " " + unit;
  return text;
}

// --- rows ---------------------------------------------------------------------------------------

void frmBROperSelect::changed(const std::string& refusal) {
  refreshTotals();
  inform(refusal);
}

void frmBROperSelect::inform(const std::string& text) {
  if (!text.empty()) showInfo(host(), text);
}

void frmBROperSelect::prepareMenu() {
  const DebtRow* row = list_.current();
  const bool currency = row && isCurrency(row->LikutisCurrCode);
  mnuSum.caption = currency ? row->LikutisCurrCode + " sumos įvedimas" : "Sumos įvedimas";
  mnuRates.caption =
      currency ? row->LikutisCurrCode + " kursų žinynas" : "Kurso įvedimas (žinynas)";
  mnuSum.enabled = row != nullptr;
  mnuExact.enabled = row && leavesCurrency(*row);
  mnuRates.enabled = currency && listed_ == ListedOperations::Debts;
}

// How much of the payment goes to one row, whatever the others took of it.
void frmBROperSelect::enterSum() {
  const DebtRow* row = list_.current();
  if (!row) return;
  if (const std::string why = list_.currentRefused(); !why.empty()) return inform(why);
  frmCoverSum dialog(host(), *row, money());
  host().screens().runModal(dialog);
  if (!dialog.accepted) return;
  const double sum = isCurrency(asked_.money.code) ? dialog.curr() : dialog.lt();
  if (splitSum_ > 0 && sum > roundHalfEven(left() + row->taken(), 2))
    return inform("Suma didesnė už likusią mokėjimo sumą!");
  changed(list_.coverCurrent(dialog.lt(), dialog.curr()));
}

void frmBROperSelect::enterRate() {
  const DebtRow* row = list_.current();
  if (!row || listed_ != ListedOperations::Debts || !isCurrency(row->LikutisCurrCode)) return;
  const std::string code = row->LikutisCurrCode;
  frmBROperSelect_ChangeRate dialog(host(), operation_, code, asked_.rateDate, rateOf(code));
  host().screens().runModal(dialog);
  if (!dialog.chosen() || *dialog.chosen() == rateOf(code)) return;
  rates_.setByHand(code, *dialog.chosen());
  const int current = lvwBROper.current;
  split();
  lvwBROper.current = current;
}

void frmBROperSelect::sumChanged() {
  if (!sum_.box.text().empty()) sum_.normalise();
  if (sum_.value() != splitSum_) split();
}

void frmBROperSelect::accept() {
  selected_ = selectedOperations(list_.rows(), money(), influence_);
  close();
}

}  // namespace tolvex
