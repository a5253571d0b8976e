#include "operations/entry_side.h"

#include <algorithm>
#include <optional>

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "operations/entry_rules.h"
#include "operations/screen/account_combo.h"
#include "operations/screen/addressee_pick.h"
#include "operations/screen/operation_rows.h"

namespace tolvex {
namespace {

constexpr int kRateDecimals = 4;
constexpr std::string_view kFirm = "O0000100";
constexpr std::string_view kPerson = "O0001402";
constexpr std::string_view kBank = "O0000300";

std::string named(const char* stem, int sign) {
  return std::string(stem) + (sign == 1 ? "D" : "C");
}

}  // namespace

std::string EntryBooks::kindName(std::string_view kind) const {
  for (const auto& [code, name] : kinds) {
    if (code == kind) return name;
  }
  return std::string(kind);
}

EntrySide::EntrySide(ui::Form* form, int sign, EntryBooks& books)
    : fraSide(form, named("fraSide", sign), sign == 1 ? "Debeto pusė" : "Kredito pusė"),
      cmbAccount(form, named("cmbAccount", sign), sign == 1 ? "Debetas" : "Kreditas"),
      cmbCurr(form, named("cmbCurr", sign), "Valiuta", 6),
      txtRateCurr(form, named("txtRateCurr", sign), "Kursas", 10),
      txtSumCurr(form, named("txtSumCurr", sign), "Suma valiuta", 13),
      lvwAddress(form, named("lvwAddress", sign),
                 {{"Pavadinimas", 18}, {"Reikšmė", 24, ui::Align::Left, true}}, "Adresatai"),
      cmdAddressee(form, named("cmdAddressee", sign), "Pridėti adresatą…", ui::Role::Quiet),
      cmdNoAddressee(form, named("cmdNoAddressee", sign), "Panaikinti", ui::Role::Quiet),
      sign_(sign),
      books_(books),
      rate_(txtRateCurr, kRateDecimals, form->host().numbers(), NumberBox::Input::Number),
      sumCurr_(txtSumCurr, 2, form->host().numbers(), NumberBox::Input::Arithmetic) {
  wire();
}

void EntrySide::wire() {
  cmbAccount.onLeave = [this] { CheckAccountBox(cmbAccount, books_.accounts, false, false); };
  cmbCurr.onChange = [this] { currencyChosen(); };
  for (NumberBox* number : {&rate_, &sumCurr_}) {
    number->box.onChange = [this] { recompute(); };
    number->box.onLeave = [this, number] {
      number->normalise();
      recompute();
    };
  }
  lvwAddress.onActivate = [this] { chooseAddressee(); };
  lvwAddress.onInsert = [this] { addAddressee(); };
  lvwAddress.onDelete = [this] { clearAddressee(); };
  cmdAddressee.onClick = [this] { addAddressee(); };
  cmdNoAddressee.onClick = [this] { clearAddressee(); };
}

void EntrySide::fillChoices() {
  fillAccounts(cmbAccount, books_.accounts);
  std::vector<std::string> codes = {std::string(kNoCurrency)};
  for (std::string& code : books_.rates.codes()) codes.push_back(std::move(code));
  cmbCurr.setTexts(codes);
}

void EntrySide::show(RowSet& BR, bool readOnly) {
  readOnly_ = readOnly;
  const std::string account(BR[named("Account", sign_)].Text());
  showAccount(cmbAccount, account);
  // A template that names the account fixes it; one that leaves it open does not.
  const bool fixed = BR["BRTemplateAccID"].Number() > 0 && books_.accounts.Exists(account);
  cmbAccount.enabled = !readOnly && !fixed;

  const CurrencySide side = currencySide(BR, sign_);
  if (cmbCurr.find(side.code) < 0) {
    std::vector<ui::ComboBox::Item> items = cmbCurr.items;
    items.push_back({side.code, {}});
    cmbCurr.items = std::move(items);
  }
  cmbCurr.index = cmbCurr.find(side.code);
  rate_.show(side.rateLtPerUnit);
  sumCurr_.clear();
  if (side.hasCode()) sumCurr_.show(side.sumCurr);
  cmbCurr.enabled = !readOnly;
  txtRateCurr.readOnly = readOnly;
  txtSumCurr.readOnly = readOnly;

  lines_ = readAddresseeLines(BR, sign_);
  showLines();
  cmdAddressee.enabled = !readOnly;
  cmdNoAddressee.enabled = !readOnly;
}

void EntrySide::showLines() {
  std::vector<ui::Row> rows;
  rows.reserve(lines_.size());
  for (const AddresseeLine& line : lines_) {
    ui::Row row;
    row.key = line.kind;
    row.tag = line.reference;
    row.cells = {books_.kindName(line.kind), line.showString};
    row.bold = line.required;
    row.mark = line.required && !line.filled() ? ui::Mark::Bad : ui::Mark::None;
    rows.push_back(std::move(row));
  }
  const int count = static_cast<int>(rows.size());
  lvwAddress.setRows(std::move(rows));
  lvwAddress.current = count == 0 ? -1 : std::clamp(lvwAddress.current(), 0, count - 1);
}

std::string EntrySide::account() const { return accountIn(cmbAccount); }

CurrencySide EntrySide::currency() const {
  CurrencySide side;
  const std::string code = cmbCurr.text();
  if (!trim(code).empty()) side.code = code;
  side.rateLtPerUnit = rate_.value();
  side.sumCurr = sumCurr_.value();
  return side;
}

std::string EntrySide::fingerprint() const {
  std::string all =
      account() + '\n' + cmbCurr.text() + '\n' + txtRateCurr.text() + '\n' + txtSumCurr.text();
  for (const AddresseeLine& line : lines_) all += '\n' + line.reference + ' ' + line.showString;
  return all;
}

// --- currency ---------------------------------------------------------------------------------

void EntrySide::currencyChosen() {
  const CurrencySide side = currency();
  if (!side.hasCode()) {
    rate_.show(0);
    sumCurr_.clear();
    return;
  }
  const std::optional<double> offered = books_.rates.rate(side.code);
  if (!offered) return;
  const NumberFormat numbers = cmbCurr.form.host().numbers();
  const std::string before = formatNumber(side.rateLtPerUnit, kRateDecimals, numbers, false);
  const std::string after = formatNumber(*offered, kRateDecimals, numbers, false);
  if (before == after) return;
  Message question;
  question.text = before + " -> " + after;
  question.text.append(kLineBreak).append("Pakeisti valiutos kursą ?");
  question.icon = Icon::Question;
  question.buttons = Buttons::YesNo;
  question.preset = Answer::Yes;
  question.title = "";
  if (cmbCurr.form.host().dialogs().message(question) != Answer::Yes) return;
  rate_.show(*offered);
  recompute();
}

void EntrySide::recompute() {
  const CurrencySide side = currency();
  if (side.hasCode() && side.sumCurr > 0 && side.rateLtPerUnit > 0 && onSumLt) {
    onSumLt(roundLt(side.sumCurr * side.rateLtPerUnit));
  }
}

// --- checks -----------------------------------------------------------------------------------

Complaint EntrySide::checkAccount() {
  if (books_.accounts.Exists(account())) return {};
  return {std::string(kBadAccount), &cmbAccount};
}

Complaint EntrySide::checkCurrency(double sumLt) {
  const CurrencySide side = currency();
  if (side.sumCurr <= 0) return {};
  if (!side.hasCode()) return {std::string(kNoCurrencyCode), &cmbCurr};
  if (side.rateLtPerUnit == 0) return {std::string(kNoCurrencyRate), &txtRateCurr};
  if (roundLt(side.sumCurr * side.rateLtPerUnit) != roundHalfEven(sumLt, 2)) {
    return {std::string(kRateMismatch), &txtSumCurr};
  }
  return {};
}

Complaint EntrySide::checkAddressees() {
  std::string pointer, client;
  for (const AddresseeLine& line : lines_) {
    if (line.required && !line.filled()) return {std::string(kNoRequiredAddressee), &lvwAddress};
    if (!line.filled()) continue;
    if (line.kind == kOperationKind && pointer.empty()) pointer = line.reference;
    if ((line.kind == kFirm || line.kind == kPerson) && client.empty()) client = line.reference;
  }
  if (pointer.empty() || client.empty()) return {};
  return {whyNotOf(pointer, client), &lvwAddress};
}

// The store confirms with a row whose first field is neither 0 nor false.
std::string EntrySide::whyNotOf(const std::string& pointer, const std::string& client) {
  HostResult answer;
  books_.operation->BO()->CallBO("DO0201500_CheckBRPointerClient",
                                 Parameters().text(pointer).text(client).text(account()).str(),
                                 nullptr, answer);
  if (answer.Code != kDone) return answer.Text;
  constexpr const char* kOther = "Adresatas nuorodoje nesutampa su įrašo adresatu!";
  if (!answer.Data.IsRows()) return kOther;
  RowSet& rows = *answer.Data.AsRows();
  rows.MoveFirst();
  if (rows.Eof()) return kOther;
  const Variant first = rows.Fields()[std::size_t{0}].Value();
  const bool confirmed =
      first.IsBool() ? first.AsBool() : !first.IsNumber() || first.AsDouble() != 0;
  return confirmed ? std::string() : kOther;
}

// --- addressees -------------------------------------------------------------------------------

AddresseeLine* EntrySide::currentLine() {
  const int index = lvwAddress.current;
  if (index < 0 || static_cast<std::size_t>(index) >= lines_.size()) return nullptr;
  return &lines_[static_cast<std::size_t>(index)];
}

bool EntrySide::mayChangeLine() const {
  const ui::Row* row = lvwAddress.currentRow();
  return row && !readOnly_ && kindAllowed(books_.allowedKinds, row->key);
}

void EntrySide::chooseAddressee() {
  AddresseeLine* line = currentLine();
  if (line && mayChangeLine()) take({line->kind}, line);
}

void EntrySide::addAddressee() {
  if (readOnly_) return;
  std::vector<std::string> kinds;
  for (const auto& [kind, name] : books_.kinds) {
    if (kindAllowed(books_.allowedKinds, kind)) kinds.push_back(kind);
  }
  if (!kinds.empty()) take(std::move(kinds), nullptr);
}

void EntrySide::take(std::vector<std::string> kinds, AddresseeLine* line) {
  const std::optional<PickedAddressee> picked =
      pickAddressee(lvwAddress.form.host(), *books_.operation, std::move(kinds),
                    line ? line->reference : std::string());
  if (!picked) return;
  if (picked->reference.empty()) {
    if (line) clearAddressee();
    return;
  }
  if (!line) line = &lineFor(lines_, kindOf(picked->reference));
  line->reference = picked->reference;
  line->showString = picked->showString;
  const std::string chosen = line->kind;
  const auto bank = std::find_if(lines_.begin(), lines_.end(),
                                 [](const AddresseeLine& l) { return l.kind == kBank; });
  if (bank != lines_.end() && isRef(picked->bankReference)) {
    bank->reference = picked->bankReference;
    bank->showString = picked->bankName;
  }
  showLines();
  const int index = lvwAddress.find(chosen);
  if (index >= 0 && currentLine() != line) lvwAddress.current = index;
}

void EntrySide::clearAddressee() {
  AddresseeLine* line = currentLine();
  if (!line || !mayChangeLine()) return;
  line->reference.clear();
  line->showString.clear();
  showLines();
}

}  // namespace tolvex
