#include "operations/frmBROperRecord.h"

#include <algorithm>
#include <vector>

#include "framework/parameters.h"
#include "framework/told.h"
#include "operations/screen/account_combo.h"
#include "operations/screen/operation_rows.h"
#include "operations/screen/vat_marks.h"

namespace tolvex {

frmBROperRecord::frmBROperRecord(const EntryEditorRequest& request)
    : Form(request.host, kEntryEditor),
      request_(request),
      books_{request.object, {}, {}, request.allowed, {}},
      suma_(txtSuma, 2, request.host.numbers(), NumberBox::Input::Arithmetic) {
  readOnly = request.readOnly || !request.mayChange;
  setTitle("Operacijos įrašas");
  cmbTradeOperationTypes.setTexts(tradeOperationTexts());
  cmbVAT.setTexts(vatMeaningTexts());
  cmbVATTariff.editable = true;
  cmdWrite.isDefault = true;
  cmdWrite.shortcut = "Ctrl+S";
  cmdWrite.menu = &menuWrite;
  mnuSaveOper.shortcut = "Ctrl+Shift+S";
  mnuSaveOperAndNew.shortcut = "Ctrl+Shift+N";
  cmdPrevious.shortcut = "Alt+Left";
  cmdNext.shortcut = "Alt+Right";
  wire();
}

// Accounts and sum come first in the order of Enter and Tab: that is how an entry is read out.
const char* frmBROperRecord::picture() const {
  return R"(
[fraEntry]
  cmbAccountD>
  cmbAccountC>
  txtSuma | dtpDate | txtComment>
[columns]
  [fraSideD]>
    cmbCurrD | txtRateCurrD | txtSumCurrD
    lvwAddressD>
    cmdAddresseeD cmdNoAddresseeD
  [fraSideC]>
    cmbCurrC | txtRateCurrC | txtSumCurrC
    lvwAddressC>
    cmdAddresseeC cmdNoAddresseeC
[fraVAT]
  cmbTradeOperationTypes | cmbVAT | chkVATFlag cmbVATTariff
chkNavigation | cmdPrevious cmdNext | >> | cmdExit | cmdWrite
)";
}

void frmBROperRecord::wire() {
  txtSuma.onLeave = [this] { suma_.normalise(); };
  for (EntrySide* side : {&debit, &credit}) {
    side->onSumLt = [this](double sumLt) { suma_.show(sumLt); };
    side->lvwAddress.menu = &menuProperties;
  }
  menuProperties.onPopup = [this] {
    const bool may = sideInFocus().mayChangeLine();
    mnuProperties.enabled = may;
    mnuPropertiesDelete.enabled = may;
  };
  mnuProperties.onClick = [this] { sideInFocus().chooseAddressee(); };
  mnuPropertiesDelete.onClick = [this] { sideInFocus().clearAddressee(); };
  cmbVAT.onChange = [this] { enableInputs(); };
  chkVATFlag.onChange = [this] { enableInputs(); };
  chkNavigation.onChange = [this] { enableNavigation(); };
  cmdPrevious.onClick = [this] { go(-1); };
  cmdNext.onClick = [this] { go(1); };
  cmdExit.onClick = [this] { close(); };
  cmdWrite.onClick = [this] { saveAndClose(kEntrySaved); };
  mnuSaveOper.onClick = [this] { saveAndClose(kSaveOperation); };
  mnuSaveOperAndNew.onClick = [this] { saveAndClose(kSaveOperationAndNew); };
}

void frmBROperRecord::opened() {
  loadBooks();
  debit.fillChoices();
  credit.fillChoices();
  fillTariffs();
  chkNavigation.visible = request_.mode != 0;
  chkNavigation.on = request_.mode != 0;
  show(request_.guid);
}

// What a failed read would have filled stays empty.
void frmBROperRecord::loadBooks() {
  const DictionaryPtr accounts = toldDictionary(request_.object->Properties("AccountList", ""));
  if (accounts) books_.accounts = withOpeningBalances(*accounts);
  if (const RowSetPtr kinds = toldRows(request_.object->Properties("AddresseeList", ""))) {
    ForEachRow(*kinds, [&](RowSet& rows) {
      books_.kinds.emplace_back(rows["FOID"].Text(), rows["Name"].Text());
    });
  }
  const Variant date = request_.object->Fields()["DateD"].Value();
  const DateTime day = date.IsDate() ? date.AsDate() : host().clock().today();
  books_.rates.load(*request_.object, day);
}

void frmBROperRecord::fillTariffs() {
  std::vector<double> tariffs;
  const RowSetPtr rows = toldRows(*request_.object->BO(), "DO0001629_GetVATtariffs", kNoParameters);
  if (rows) {
    ForEachRow(*rows, [&](RowSet& row) { tariffs.push_back(row["Value"].Number()); });
  }
  if (tariffs.empty()) tariffs = {18, 0, 5};
  std::vector<std::string> texts;
  for (const double tariff : tariffs) texts.push_back(formatNumber(tariff, 2, host().numbers()));
  cmbVATTariff.setTexts(texts);
}

RowSetPtr frmBROperRecord::entry(const std::string& guid) const {
  return entryOf(*request_.object, guid);
}

// --- showing ----------------------------------------------------------------------------------

void frmBROperRecord::show(const std::string& guid) {
  const RowSetPtr shown = entry(guid);
  expect(shown != nullptr, "the entry to edit is in the operation");
  request_.guid = guid;
  RowSet& row = *shown;
  const Variant date = row["DateD"].Value();
  dtpDate.value = date.IsDate() ? std::optional(date.AsDate()) : std::nullopt;
  suma_.show(row["SumA"].Number());
  txtComment.text = std::string(row["Info"].Text());
  debit.show(row, readOnly);
  credit.show(row, readOnly);
  showVat(row);
  enableInputs();
  enableNavigation();
  focusFirst();
  shown_ = fingerprint();
}

void frmBROperRecord::showVat(RowSet& row) {
  cmbTradeOperationTypes.index = tradeIndex(tradeMarksOf(row));
  const int meaning = static_cast<int>(row["VATIndication"].Number());
  cmbVAT.index = meaning >= 0 && meaning <= 2 ? meaning : 0;
  chkVATFlag.on = row["VATFlag"].Number() != 0;
  const Variant tariff = row["VATTariff"].Value();
  if (tariff.IsAbsent()) {
    cmbVATTariff.setText(cmbVATTariff.items().front().text);
  } else {
    cmbVATTariff.setText(formatNumber(tariff.AsDouble(), 2, host().numbers()));
  }
}

void frmBROperRecord::enableInputs() {
  dtpDate.enabled = !readOnly;
  txtSuma.readOnly = readOnly;
  txtComment.readOnly = readOnly;
  cmbTradeOperationTypes.enabled = !readOnly;
  cmbVAT.enabled = !readOnly;
  chkVATFlag.enabled = !readOnly && cmbVAT.index >= 1;
  cmbVATTariff.enabled = !readOnly && cmbVAT.index >= 1 && chkVATFlag.on;
  cmdWrite.visible = !readOnly;
}

// A new entry begins with its accounts; of one that has them the sum is what changes most.
void frmBROperRecord::focusFirst() {
  if (readOnly) return setFocus(cmdExit);
  for (EntrySide* side : {&debit, &credit}) {
    if (side->cmbAccount.enabled && !side->checkAccount().text.empty()) {
      return setFocus(side->cmbAccount);
    }
  }
  setFocus(txtSuma);
}

void frmBROperRecord::enableNavigation() {
  const bool walks = request_.mode != 0 && chkNavigation.on;
  cmdPrevious.visible = walks;
  cmdNext.visible = walks;
  if (!walks) return;
  const RowSetPtr rows = entriesOf(*request_.object)->Clone();
  std::string first, last;
  ForEachRow(*rows, [&](RowSet& row) {
    if (first.empty()) first = row["GUID"].Text();
    last = row["GUID"].Text();
  });
  cmdPrevious.enabled = request_.guid != first;
  cmdNext.enabled = request_.guid != last;
}

EntrySide& frmBROperRecord::sideInFocus() { return focus() == &credit.lvwAddress ? credit : debit; }

// --- leaving ----------------------------------------------------------------------------------

std::string frmBROperRecord::fingerprint() const {
  std::string all = debit.fingerprint() + '\n' + credit.fingerprint() + '\n';
  all += dtpDate.value() ? dtpDate.value()->Text() : std::string();
  for (const std::string& text :
       {txtSuma.text(), txtComment.text(), cmbTradeOperationTypes.text(), cmbVAT.text(),
        std::string(chkVATFlag.on ? "1" : "0"), cmbVATTariff.text()}) {
    all += '\n' + text;
  }
  return all;
}

bool frmBROperRecord::mayClose() {
  return readOnly || fingerprint() == shown_ || ask(host(), "Palikti be išsaugojimo ?");
}

void frmBROperRecord::go(int step) {
  if (!mayClose()) return;
  std::vector<std::string> guids;
  std::size_t at = 0;
  const RowSetPtr rows = entriesOf(*request_.object)->Clone();
  ForEachRow(*rows, [&](RowSet& row) {
    guids.emplace_back(row["GUID"].Text());
    if (guids.back() == request_.guid) at = guids.size() - 1;
  });
  if (step < 0 ? at == 0 : at + 1 >= guids.size()) return;
  show(guids[step < 0 ? at - 1 : at + 1]);
}

// --- saving -----------------------------------------------------------------------------------

Complaint frmBROperRecord::check() {
  if (suma_.value() != 0) {
    if (cmbVAT.index >= 1 && cmbTradeOperationTypes.index < 1) {
      return {"Nurodykite prekybos operacijos tipą.", &cmbTradeOperationTypes};
    }
    if (Complaint c = debit.checkAccount(); !c.text.empty()) return c;
    if (Complaint c = credit.checkAccount(); !c.text.empty()) return c;
  }
  if (Complaint c = debit.checkCurrency(suma_.value()); !c.text.empty()) return c;
  if (Complaint c = credit.checkCurrency(suma_.value()); !c.text.empty()) return c;
  if (Complaint c = debit.checkAddressees(); !c.text.empty()) return c;
  return credit.checkAddressees();
}

void frmBROperRecord::saveAndClose(int code) {
  if (readOnly) return;
  suma_.normalise();
  const Complaint complaint = check();
  if (!complaint.text.empty()) {
    warn(host(), complaint.text);
    if (complaint.where) setFocus(*complaint.where);
    return;
  }
  const RowSetPtr row = entry(request_.guid);
  expect(row != nullptr, "the edited entry is still in the operation");
  write(*row);
  result = code;
  close();
}

void frmBROperRecord::write(RowSet& row) {
  if (dtpDate.value()) row["DateD"] = *dtpDate.value();
  row["Info"] = txtComment.text();
  row["AccountD"] = debit.account();
  row["AccountC"] = credit.account();
  row["SumA"] = suma_.value();
  writeVat(row);
  debit.writeAddressees(row);
  credit.writeAddressees(row);
  writeCurrencySides(row, debit.currency(), credit.currency());
  row.Update();
}

void frmBROperRecord::writeVat(RowSet& row) {
  const TradeMarks marks = tradeMarks(cmbTradeOperationTypes.index);
  const int meaning = marks.type == 0 ? 0 : std::max<int>(cmbVAT.index, 0);
  const bool taxed = meaning >= 1 && chkVATFlag.on;
  row["TradeOperationType"] = marks.type;
  row["RestoringSign"] = marks.restoringSign;
  row["VATIndication"] = meaning;
  row["VATFlag"] = taxed ? 1 : 0;
  const std::string tariff = cmbVATTariff.text();
  row["VATTariff"] = taxed && isNumeric(tariff) ? Variant(TextToDouble(tariff)) : Variant(Null{});
}

}  // namespace tolvex
