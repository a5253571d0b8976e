#include "operations/frmBRTemplateAcc.h"

#include "framework/conversions.h"
#include "framework/references.h"
#include "framework/text.h"
#include "framework/told.h"
#include "operations/screen/account_combo.h"

namespace tolvex {
namespace {

constexpr int kAccountChars = 38;  // a number and most of a name

std::string kindName(const ui::Row& row) {
  const std::string& text = row.cells[0].text;
  return text.substr(0, text.find(" ["));
}

}  // namespace

frmBRTemplateAcc::frmBRTemplateAcc(const TemplateLineRequest& request)
    : Form(request.host, "frmBRTemplateAcc"),
      object_(request.object),
      line_(templateLine(*request.object->RsFields(), request.guid)) {
  setTitle("Buhalterinio įrašo šablonas");
  readOnly = request.readOnly;
  txtFactor.tip = "Operacijos suma dauginama iš koeficiento";
  for (ui::ComboBox* box : {&cmbAccountD, &cmbAccountC}) box->chars = kAccountChars;
  for (ui::ListView* list : {&lvwAddrD, &lvwAddrC}) list->checkBoxes = true;
  cmdWrite.isDefault = true;
  cmdCancel.isCancel = true;
  wire();
}

const char* frmBRTemplateAcc::picture() const {
  return R"(
[columns]
  []
    cmbAccountD
    lvwAddrD>
  []
    cmbAccountC
    lvwAddrC>
txtFactor | >> | cmdCancel | cmdWrite
)";
}

void frmBRTemplateAcc::wire() {
  for (ui::ComboBox* box : {&cmbAccountD, &cmbAccountC}) {
    box->onLeave = [this, box] {
      if (!box->text().empty()) CheckAccountBox(*box, accounts_, true, false);
    };
  }
  txtFactor.keyFilter = FilterNumberKey;
  for (ui::ListView* list : {&lvwAddrD, &lvwAddrC}) {
    list->onActivate = [this, list] { fixAddressee(*list); };
    list->onCheck = [this, list] {
      ui::Row& row = list->edit()[static_cast<std::size_t>(list->current())];
      if (row.checked) return;
      row.tag.clear();  // what is not required is not fixed either
      showFixed(row);
    };
  }
  cmdWrite.onClick = [this] { write(); };
  cmdCancel.onClick = [this] { close(); };
}

void frmBRTemplateAcc::opened() {
  if (!readLists()) readOnly = true;
  showAccount(cmbAccountD, line_.accountD);
  showAccount(cmbAccountC, line_.accountC);
  txtFactor.text = shortNumber(line_.factor, host().numbers());
  txtFactor.readOnly = readOnly;
  cmbAccountD.enabled = !readOnly;
  cmbAccountC.enabled = !readOnly;
  lvwAddrD.enabled = !readOnly;
  lvwAddrC.enabled = !readOnly;
  cmdWrite.enabled = !readOnly;
  setFocus(readOnly ? static_cast<ui::Control&>(cmdCancel) : cmbAccountD);
}

// A line without the list of what it may require would lose what it requires.
bool frmBRTemplateAcc::readLists() {
  const DictionaryPtr plan = toldDictionary(object_->Properties("AccountList", ""));
  if (plan) accounts_ = templateAccounts(*plan);
  fillAccounts(cmbAccountD, accounts_);
  fillAccounts(cmbAccountC, accounts_);
  const MethodResult kinds = object_->Properties("EnabledAddressee", "");
  if (kinds.Code != kDone || !kinds.Value.IsRows()) {
    const std::string reason = kinds.Text.empty() ? kNothingRead : kinds.Text;
    warn(host(), join({"Klaida!", "GetEnabledAddressee:", reason}, kLineBreak));
    return false;
  }
  fillKinds(lvwAddrD, 1, *kinds.Value.AsRows());
  fillKinds(lvwAddrC, -1, *kinds.Value.AsRows());
  return accounts_.Count() > 0;
}

void frmBRTemplateAcc::fillKinds(ui::ListView& list, int sign, RowSet& kinds) {
  std::vector<ui::Row> rows;
  ForEachRow(kinds, [&](RowSet& kind) {
    ui::Row row;
    row.key = kind["FOID"].Text();
    row.cells = {ui::Cell(std::string(kind["Name"].Text()))};
    for (const RequiredAddressee& required : line_.required) {
      if (required.kind != row.key || required.sign != sign) continue;
      row.checked = true;
      row.tag = required.reference;
    }
    showFixed(row);
    rows.push_back(std::move(row));
  });
  list.setRows(std::move(rows));
  list.current = list.rows().empty() ? -1 : 0;
}

// The fixed addressee stands behind the name of its kind.
void frmBRTemplateAcc::showFixed(ui::Row& row) {
  std::string text = kindName(row);
  if (isRef(row.tag)) {
    const std::optional<Picked> addressee = host().pickers().lookup(row.tag);
    text += " [" + (addressee ? addressee->text : row.tag) + "]";
  }
  row.cells[0].text = std::move(text);
}

void frmBRTemplateAcc::fixAddressee(ui::ListView& list) {
  const ui::Row* current = list.currentRow();
  if (readOnly || !current || !current->checked) return;
  PickRequest request;
  request.kinds = {current->key};
  request.classes = "C;T;Contract;";
  request.prompt = "Pasirinkite";
  request.current = current->tag;
  const std::optional<Picked> picked = host().pickers().pick(request);
  if (!picked) return;
  if (picked->group) {
    warn(host(), "Grupės pasirinkti negalima. Pasirinkite adresato reikšmę.");
    return;
  }
  ui::Row& row = list.edit()[static_cast<std::size_t>(list.current())];
  row.tag = isRef(picked->reference) ? picked->reference : std::string();
  showFixed(row);
}

void frmBRTemplateAcc::collect(const ui::ListView& list, int sign) {
  for (const ui::Row& row : list.rows()) {
    if (row.checked) line_.required.push_back({row.key, sign, row.tag});
  }
}

void frmBRTemplateAcc::write() {
  for (ui::ComboBox* box : {&cmbAccountD, &cmbAccountC}) {
    if (!CheckAccountBox(*box, accounts_, true, false)) return setFocus(*box);
  }
  const double factor = TextToDouble(txtFactor.text());
  if (!isNumeric(txtFactor.text()) || factor < 0) {
    warn(host(), "Klaidinga koeficiento reikšmė!");
    return setFocus(txtFactor);
  }
  if (line_.guid.empty()) line_.guid = object_->GetGUID();
  line_.accountD = accountIn(cmbAccountD);
  line_.accountC = accountIn(cmbAccountC);
  line_.factor = factor;
  // A kind that may not be required any more is not offered, and stays as it was.
  std::erase_if(line_.required, [this](const RequiredAddressee& required) {
    return lvwAddrD.find(required.kind) >= 0;
  });
  collect(lvwAddrD, 1);
  collect(lvwAddrC, -1);
  writeTemplateLine(*object_->RsFields(), line_);
  written_ = line_.guid;
  close();
}

}  // namespace tolvex
