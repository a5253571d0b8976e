#include "debts/frmBROperSelect.h"

#include <algorithm>
#include <set>

#include "debts/frmBROperSelect_ChangeRate.h"
#include "debts/frmBROperSelect_Find.h"
#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "operations/screen/account_combo.h"
#include "operations/screen/addressee_pick.h"

namespace tolvex {
namespace {

constexpr const char* kFirms = "O0000100";

std::vector<ui::Column> debtColumns() {
  constexpr auto right = ui::Align::Right;
  return {{"Data", 10},
          {"Informacija", 26},
          {"Suma, Lt", 11, right},
          {"Suma valiuta", 11, right},
          {"Balansas, Lt", 11, right},
          {"Balansas val.", 11, right},
          {"Apm., Lt", 11, right},
          {"Apm. valiuta", 11, right},
          {"Valiuta", 6},
          {"Kursas", 8, right},
          {"Kurso įtaka", 10, right}};
}

std::vector<ui::Column> tradeColumns(bool offers) {
  constexpr auto right = ui::Align::Right;
  return {{"Data", 10},
          {"Nr", 10},
          {"Suma, Lt", 13, right},
          {"Suma valiuta", 13, right},
          {"Valiuta", 6},
          {offers ? "Apmokėta, Lt" : "Likutis, Lt", 13, right},
          {offers ? "Apmokėta valiuta" : "Likutis valiuta", 13, right},
          {"Valiuta", 6},
          {"Informacija", 30, ui::Align::Left, true},
          {"Kursas", 9, right},
          {"Apm., Lt", 13, right}};
}

std::string information(const Debt& debt) {
  std::string text = debt.Number;
  for (const std::string* part : {&debt.Comment, &debt.AddrName}) {
    if (part->empty()) continue;
    if (!text.empty()) text += ", ";
    text += *part;
  }
  return text;
}

}  // namespace

frmBROperSelect::frmBROperSelect(const OperationSelectRequest& request)
    : Form(request.host, kOperationSelect),
      operation_(request.operation),
      selected_(request.selected),
      asked_(readSelectParameters(*request.parameters, request.host.clock().today())),
      sum_(isCurrency(asked_.money.code) ? txtPaymentCurr : txtPaymentLt, 2, request.host.numbers(),
           NumberBox::Input::Arithmetic) {
  setTitle("Operacijų pasirinkimas");
  lvwBROper.checkBoxes = true;
  for (ui::TextBox* box : {&txtAddr, &txtDate, &txtRateDate, &txtCurrCode, &txtRate, &txtSkolaLt})
    box->readOnly = true;
  (isCurrency(asked_.money.code) ? txtPaymentLt : txtPaymentCurr).readOnly = true;
  cmdAddr.menu = &menuAddr;
  lvwBROper.menu = &menuRow;
  cmdCleanAddr.tip = "Visi adresatai";
  cmdGo.shortcut = "F5";
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  wire();
}

const char* frmBROperSelect::picture() const {
  return R"(
[fraSettings]
  cmbAcc> | optDeb optCred
  txtAddr> cmdAddr cmdCleanAddr | chkByFirmChildrens
  txtOperGroup> cmdOperGroup cmdCleanGroup
  txtDate | txtRateDate | txtCurrCode txtRate | >>
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
  optDebtOpers.onChange = optTradeDocOpers.onChange = [this] { enableByState(); };
  cmdGo.onClick = [this] { fill(); };
  lvwBROper.onCheck = [this] { tickChanged(); };
  lvwBROper.onActivate = mnuSum.onClick = [this] { enterSum(); };
  mnuRates.onClick = [this] { enterRate(); };
  mnuAll.onClick = [this] { tickAll(true); };
  mnuDrop.onClick = [this] { tickAll(false); };
  menuRow.onPopup = [this] {
    const DebtRow* row = currentRow();
    const bool currency = row && isCurrency(row->LikutisCurrCode);
    mnuSum.caption = currency ? row->LikutisCurrCode + " sumos įvedimas" : "Sumos įvedimas";
    mnuRates.caption =
        currency ? row->LikutisCurrCode + " kursų žinynas" : "Kurso įvedimas (žinynas)";
    mnuSum.enabled = row != nullptr;
    mnuRates.enabled = currency && !trade_;
  };
  sum_.box.onLeave = [this] { sumChanged(); };
  cmdOK.onClick = [this] { accept(); };
  cmdCancel.onClick = [this] { close(); };
}

// --- opening ----------------------------------------------------------------------------------

void frmBROperSelect::opened() {
  const MethodResult accounts = operation_->Properties("AccountList", "");
  if (accounts.Code == kDone && accounts.Value.IsDictionary())
    accounts_ = *accounts.Value.AsDictionary();
  fillAccounts(cmbAcc, accounts_);
  influence_ = markedInfluenceAccounts(host());
  rates_.load(*operation_, asked_.rateDate);
  optDebtOpers.choose();
  setColumns();
  showAsked();
  enableByState();
  refreshTotals();
  if (!asked_.accountFree()) fill();
  setFocus(asked_.accountFree() ? static_cast<ui::Control&>(cmbAcc) : lvwBROper);
}

void frmBROperSelect::showAsked() {
  (asked_.onDebit ? optDeb : optCred).choose();
  if (!asked_.accountFree()) showAccount(cmbAcc, asked_.account);
  for (ui::Control* control : std::initializer_list<ui::Control*>{&cmbAcc, &optDeb, &optCred})
    control->enabled = asked_.accountFree();
  takeParty(asked_.addressee, asked_.addresseeName);
  txtDate.text = asked_.date.Text();
  txtRateDate.text = asked_.rateDate.Text();
  dtpDate.value = FirstDayOfMonth(asked_.date);
  const bool currency = isCurrency(asked_.money.code);
  for (ui::Control* control :
       std::initializer_list<ui::Control*>{&txtCurrCode, &txtRate, &txtPaymentCurr})
    control->visible = currency;
  txtCurrCode.text = currency ? asked_.money.code : std::string();
  if (asked_.sum > 0) sum_.show(asked_.sum);
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
  enableByState();
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
    Message box;
    box.text = "Klaida!" + std::string(kLineBreak) +
               "DO0201500_GetBROpersByNumber:" + std::string(kLineBreak) + read.Text;
    box.icon = Icon::Stop;
    show(host(), box);
    return;
  }
  const RowSetPtr rows = read.Data.AsRows();
  if (rows->RecordCount() == 0) {
    warn(host(), "Neapmokėto dokumento tokiu numeriu nėra!");
    return;
  }
  rows->MoveFirst();
  FoundParty found{std::string((*rows)["FOIDR"].Text()), std::string((*rows)["ClientName"].Text())};
  if (rows->RecordCount() > 1) {
    frmBROperSelect_Find choice(host(), rows);
    host().screens().runModal(choice);
    if (!choice.chosen()) return;
    found = *choice.chosen();
  }
  takeParty(found.reference, found.name);
  fill();
}

std::vector<std::string> frmBROperSelect::parties() {
  std::vector<std::string> all = {txtAddr.tag};
  if (!chkByFirmChildrens.enabled() || !chkByFirmChildrens.on()) return all;
  HostResult read;
  operation_->BO()->CallBO("DO0201500_GetFirmChildrens", Parameters().text(txtAddr.tag).str(),
                           nullptr, read);
  if (read.Code != kDone) {
    warn(host(), read.Text);
  } else if (read.Data.IsRows()) {
    ForEachRow(*read.Data.AsRows(), [&](RowSet& row) { all.emplace_back(row["OIDR"].Text()); });
  }
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
    for (const std::string& party : parties())
      if (!readDebtsOf(party, debts)) return;
    // Branches are paid with their firm: the oldest debt first, whosever it is.
    std::stable_sort(debts.begin(), debts.end(),
                     [](const Debt& a, const Debt& b) { return a.DateD < b.DateD; });
  }
  trade_ = optTradeDocOpers.on();
  debts_ = std::move(debts);
  setColumns();
  split();
}

bool frmBROperSelect::readDebtsOf(const std::string& party, std::vector<Debt>& debts) {
  const std::string group = group_.reference().empty() ? "0" : group_.reference();
  const MethodResult read =
      operation_->Properties(DebtsMethodName(party, side()),
                             debtsParameters(accountIn(cmbAcc), asked_.date, party, side(), group));
  if (read.Code != kDone || !read.Value.IsRows()) return false;
  const std::vector<Debt> more = readDebts(*read.Value.AsRows());
  debts.insert(debts.end(), more.begin(), more.end());
  return true;
}

bool frmBROperSelect::offers() const {
  const std::string kind = operation_->OType();
  if (kind == "O0201502" || kind == "O0201504") return true;
  if (kind == "O0201501" || kind == "O0201503") return false;
  return optDeb.on();
}

bool frmBROperSelect::readTrade(std::vector<Debt>& debts) {
  const MethodResult read = operation_->Properties(offers() ? "Offer_BROpers" : "Order_BROpers",
                                                   Parameters()
                                                       .text("0")
                                                       .date(dtpDate.value().value_or(asked_.date))
                                                       .text(txtAddr.tag)
                                                       .number(side())
                                                       .str());
  if (read.Code != kDone || !read.Value.IsRows()) return false;
  debts = readTradeOperations(*read.Value.AsRows(), offers() ? TradeRest::Paid : TradeRest::Left,
                              -side());
  for (Debt& debt : debts) {
    debt.AddrOIDR = txtAddr.tag;
    debt.AddrName = txtAddr.text;
  }
  return true;
}

double frmBROperSelect::rateOf(const std::string& code) const {
  if (const auto given = givenRates_.find(code); given != givenRates_.end()) return given->second;
  if (code == asked_.money.code && asked_.money.rate > 0) return asked_.money.rate;
  return rates_.rate(code).value_or(0);
}

void frmBROperSelect::split() {
  if (!trade_)
    ComputeInfluence(debts_, [this](std::string_view code) { return rateOf(std::string(code)); });
  splitSum_ = sum_.value();
  rows_ = FillDebtList(debts_, influence_, money(), splitSum_);
  showRows();
}

void frmBROperSelect::setColumns() {
  lvwBROper.columns = trade_ ? tradeColumns(offers()) : debtColumns();
}

void frmBROperSelect::showRows() {
  std::vector<ui::Row> lines(rows_.size());
  for (std::size_t i = 0; i < lines.size(); ++i) lines[i] = lineOf(i);
  lvwBROper.setRows(std::move(lines));
  lvwBROper.current = rows_.empty() ? -1 : 0;
  refreshTotals();
}

ui::Row frmBROperSelect::lineOf(std::size_t index) const {
  const DebtRow& row = rows_[index];
  const Debt& debt = row.debt;
  const NumberFormat& format = numbers_;
  const auto sum = [&](double value) { return ui::Cell(FormatSum(value, format)); };
  const auto rate = [&](double value) {
    return ui::Cell(value > 0 ? formatNumber(value, 4, format) : std::string(" "));
  };
  const auto code = [](const std::string& text, bool shown) {
    return ui::Cell(shown ? text : " ");
  };
  const std::string& currency = row.LikutisCurrCode;
  ui::Row line;
  line.key = std::to_string(index);
  line.tag = debt.OIDR;
  line.checked = row.ticked;
  if (trade_) {
    line.cells = {debt.DateD.Text(),
                  debt.Number,
                  sum(debt.SumA),
                  sum(debt.SumCurr),
                  code(currency, isCurrency(currency)),
                  sum(offers() ? debt.SumA - debt.LikutisLt : row.LikutisLt),
                  sum(offers() ? debt.SumCurr - debt.LikutisCurr : row.LikutisCurr),
                  code(currency, isCurrency(currency)),
                  debt.Comment,
                  rate(debt.RateCurr),
                  sum(row.PaymentLt)};
    return line;
  }
  line.cells = {
      debt.DateD.Text(),         information(debt),       sum(debt.SumA),
      sum(debt.SumCurr),         sum(row.LikutisLt),      sum(row.LikutisCurr),
      sum(row.PaymentLt),        sum(row.PaymentSumCurr), code(currency, isCurrency(currency)),
      rate(row.PaymentCurrRate), sum(row.influence()),    information(debt)};
  line.hint = debt.Info;
  return line;
}

void frmBROperSelect::refreshTotals() {
  double debtLt = 0, paidLt = 0, paidCurr = 0;
  int ticked = 0;
  for (const DebtRow& row : rows_) {
    debtLt += row.LikutisLt + row.PaymentLt + row.InfluenceSum;
    if (!row.ticked) continue;
    ++ticked;
    paidLt += row.PaymentLt;
    paidCurr += row.CoverSumCurr;
  }
  const auto shown = [this](double sum) { return formatNumber(sum, 2, numbers_); };
  const CoverMoney payment = money();
  const bool currency = isCurrency(payment.code);
  txtSkolaLt.text = shown(debtLt);
  if (currency) {
    txtPaymentLt.text = shown(roundLt(sum_.value() * payment.rate));
    txtRate.text = formatNumber(payment.rate, 4, numbers_, false);
  }
  const std::string unit = currency ? payment.code : "Lt";
  std::string text =
      "Pažymėta: " + std::to_string(ticked) + "     Apmokama: " + shown(paidLt) + " Lt";
  if (currency) text += " (" + shown(paidCurr) + " " + unit + ")";
  if (sum_.value() > 0) text += "     Lieka: " + shown(leftOf(rows_, sum_.value())) + " " + unit;
  lblTotals.caption = std::move(text);
  cmdOK.enabled = ticked > 0;
}

// --- rows ---------------------------------------------------------------------------------------

DebtRow* frmBROperSelect::currentRow() {
  const int row = lvwBROper.current;
  return row >= 0 && static_cast<std::size_t>(row) < rows_.size()
             ? &rows_[static_cast<std::size_t>(row)]
             : nullptr;
}

void frmBROperSelect::rowChanged() {
  const auto index = static_cast<std::size_t>(lvwBROper.current());
  lvwBROper.edit()[index] = lineOf(index);
  refreshTotals();
}

void frmBROperSelect::tickChanged() {
  DebtRow* row = currentRow();
  if (!row) return;
  std::string refusal;
  if (!lvwBROper.currentRow()->checked) {
    ReleaseCover(*row);
  } else {
    std::set<std::string> told;
    refusal =
        tickRow(rows_, static_cast<std::size_t>(lvwBROper.current()), money(), sum_.value(), told);
  }
  rowChanged();
  inform(refusal);
}

void frmBROperSelect::tickAll(bool on) {
  std::set<std::string> told;
  std::vector<std::string> refusals;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (!on) {
      ReleaseCover(rows_[i]);
    } else if (!rows_[i].ticked) {
      const std::string refusal = tickRow(rows_, i, money(), sum_.value(), told);
      if (!refusal.empty()) refusals.push_back(refusal);
    }
  }
  showRows();
  inform(join(refusals, kLineBreak));
}

void frmBROperSelect::inform(const std::string& text) {
  if (text.empty()) return;
  Message box;
  box.text = text;
  box.icon = Icon::Info;
  show(host(), box);
}

// How much of the payment goes to one row, whatever the others took of it.
void frmBROperSelect::enterSum() {
  DebtRow* row = currentRow();
  if (!row) return;
  const bool currency = isCurrency(asked_.money.code);
  const double now = currency ? row->CoverSumCurr : row->PaymentLt;
  const std::string unit = currency ? asked_.money.code : "Lt";
  const auto typed =
      host().dialogs().input("Apmokama suma, " + unit, "Sumos įvedimas",
                             now > 0 ? formatNumber(now, 2, numbers_, false) : std::string());
  double sum = 0;
  if (!typed || !evaluateSum(*typed, sum)) return;
  sum = roundHalfEven(sum, 2);
  ReleaseCover(*row);
  std::string refusal;
  if (sum_.value() > 0 && sum > leftOf(rows_, sum_.value())) {
    refusal = "Suma didesnė už likusią mokėjimo sumą!";
  } else if (sum > 0) {
    std::set<std::string> told;
    const DebtCheck check = CheckDebtRow(*row, told);
    refusal =
        check.code == DebtCheck::Good ? ApplyCover(*row, money(), sum).message : check.message;
  }
  rowChanged();
  inform(refusal);
}

void frmBROperSelect::enterRate() {
  const DebtRow* row = currentRow();
  if (!row || trade_ || !isCurrency(row->LikutisCurrCode)) return;
  const std::string code = row->LikutisCurrCode;
  frmBROperSelect_ChangeRate dialog(host(), operation_, code, asked_.rateDate, rateOf(code));
  host().screens().runModal(dialog);
  if (!dialog.chosen() || *dialog.chosen() == rateOf(code)) return;
  givenRates_[code] = *dialog.chosen();
  const int current = lvwBROper.current;
  split();
  lvwBROper.current = current;
}

void frmBROperSelect::sumChanged() {
  if (!sum_.box.text().empty()) sum_.normalise();
  if (sum_.value() != splitSum_) split();
}

void frmBROperSelect::accept() {
  selected_ = selectedOperations(rows_, money(), influence_);
  close();
}

}  // namespace tolvex
