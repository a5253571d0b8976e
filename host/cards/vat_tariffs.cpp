#include "host/cards/vat_tariffs.h"

#include <set>

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

constexpr const char* kKind = "O0001629";
constexpr const char* kComponent = "CBookLayout";

std::string plain(const std::vector<std::string>& typed) {
  std::vector<std::string> numbers;
  for (const std::string& value : typed) numbers.push_back(plainNumber(TextToDouble(value)));
  return join(numbers, ";");
}

}  // namespace

frmVATTariffs::frmVATTariffs(HostContext& host, std::shared_ptr<BusinessObject> store, bool withNew)
    : Form(host, "frmVATTariffs"), store_(std::move(store)), withNew_(withNew) {
  setTitle("PVM tarifai");
  SOPanel.titleBand = true;
  cmdWrite.shortcut = "Ctrl+S";
  cmdWrite.isDefault = true;
  cmdAdd.shortcut = "Ctrl+N";
  cmdUp.shortcut = "Ctrl+Up";
  cmdDown.shortcut = "Ctrl+Down";
  cmdCancel.isCancel = true;
  lvwTariffs.onChange = [this] { showCurrent(); };
  lvwTariffs.onActivate = [this] { setFocus(txtValue); };
  txtValue.onChange = [this] { takeValue(); };
  lvwTariffs.onInsert = cmdAdd.onClick = [this] { add(); };
  lvwTariffs.onDelete = cmdRemove.onClick = [this] { removeCurrent(); };
  cmdUp.onClick = [this] { move(-1); };
  cmdDown.onClick = [this] { move(1); };
  cmdWrite.onClick = [this] { save(); };
  SSCClose.onClick = cmdCancel.onClick = [this] {
    if (mayClose()) close();
  };
}

const char* frmVATTariffs::picture() const {
  return R"(
[SOPanel]
  lvwTariffs>
  txtValue | cmdAdd | cmdUp | cmdDown | cmdRemove
SSCClose | >> | cmdCancel | cmdWrite
)";
}

std::string frmVATTariffs::objectReference() const { return refOf(kKind, 0); }

void frmVATTariffs::opened() {
  readOnly = host().rights().of(kComponent).change == 0;
  read();
  if (withNew_ && !readOnly) add();
}

void frmVATTariffs::read() {
  HostResult answer;
  store_->CallBO("GetVATtariffs", kNoParameters, nullptr, answer);
  if (answer.Code != kDone) {
    warn(host(), answer.Text);
    close();
    return;
  }
  values_.clear();
  ForEachRow(*answer.Data.AsRows(), [this](RowSet& row) {
    values_.push_back(formatNumber(row["Value"].Number(), 2, host().numbers(), false));
  });
  stored_ = plain(values_);
  changed_ = false;
  showRows(values_.empty() ? -1 : 0);
}

void frmVATTariffs::showRows(int current) {
  std::vector<ui::Row> rows;
  for (const std::string& value : values_) {
    const std::string number = std::to_string(rows.size() + 1);
    ui::Row& row = rows.emplace_back();
    row.key = number;
    row.cells = {number, value};
  }
  lvwTariffs.setRows(std::move(rows));
  lvwTariffs.current = current;
  showCurrent();
}

void frmVATTariffs::showCurrent() {
  const int at = lvwTariffs.current;
  const int last = static_cast<int>(values_.size()) - 1;
  txtValue.text = at < 0 ? std::string() : values_[static_cast<std::size_t>(at)];
  txtValue.readOnly = readOnly || at < 0;
  cmdAdd.enabled = !readOnly;
  cmdWrite.enabled = !readOnly;
  cmdRemove.enabled = !readOnly && at >= 0;
  cmdUp.enabled = !readOnly && at > 0;
  cmdDown.enabled = !readOnly && at >= 0 && at < last;
}

void frmVATTariffs::takeValue() {
  const int at = lvwTariffs.current;
  if (at < 0) return;
  values_[static_cast<std::size_t>(at)] = trim(txtValue.text());
  lvwTariffs.edit()[static_cast<std::size_t>(at)].cells[1].text = trim(txtValue.text());
  changed_ = true;
}

void frmVATTariffs::add() {
  if (readOnly) return;
  values_.emplace_back();
  changed_ = true;
  showRows(static_cast<int>(values_.size()) - 1);
  setFocus(txtValue);
}

void frmVATTariffs::move(int by) {
  const int at = lvwTariffs.current, to = at + by;
  if (readOnly || at < 0 || to < 0 || to >= static_cast<int>(values_.size())) return;
  std::swap(values_[static_cast<std::size_t>(at)], values_[static_cast<std::size_t>(to)]);
  changed_ = true;
  showRows(to);
}

void frmVATTariffs::removeCurrent() {
  const int at = lvwTariffs.current;
  if (readOnly || at < 0) return;
  values_.erase(values_.begin() + at);
  changed_ = true;
  showRows(std::min(at, static_cast<int>(values_.size()) - 1));
}

std::string frmVATTariffs::refusal() const {
  std::set<double> seen;
  for (const std::string& value : values_) {
    const double percent = TextToDouble(value);
    if (!isNumeric(value) || percent < 0 || percent > 100 || roundHalfEven(percent, 2) != percent)
      return "PVM tarifas turi būti nuo 0 iki 100, ne daugiau kaip du ženklai po kablelio!";
    if (!seen.insert(percent).second) return "PVM tarifas nurodytas du kartus: " + value + "!";
  }
  return {};
}

bool frmVATTariffs::save() {
  if (readOnly) return false;
  if (const std::string why = refusal(); !why.empty()) {
    warn(host(), why);
    return false;
  }
  HostResult saved;
  {
    ui::BusyScope busy(*this, SOPanel);
    const std::string both = Parameters().text(stored_).text(plain(values_)).str();
    store_->CallBO("SaveVATtariffs", both, nullptr, saved);
  }
  if (saved.Code != kDone) {
    showFailedSave(host(), saved.Text);
    return false;
  }
  const int current = lvwTariffs.current;
  stored_ = plain(values_);
  for (std::string& value : values_)
    value = formatNumber(TextToDouble(value), 2, host().numbers(), false);
  changed_ = false;
  showRows(current);
  host().tree().redraw(kKind);
  return true;
}

bool frmVATTariffs::mayClose() {
  return !changed_ || readOnly || askCloseUnsaved(host(), SOPanel.caption);
}

Card vatTariffsCard() {
  Card card;
  card.kind = kKind;
  card.component = kComponent;
  card.newEntry = "Naujas PVM tarifas";
  card.make = [](HostContext& host, std::shared_ptr<VXObjectUIO> object) {
    return std::make_shared<frmVATTariffs>(host, object->BO(), isNew(object->OID()));
  };
  return card;
}

}  // namespace tolvex
