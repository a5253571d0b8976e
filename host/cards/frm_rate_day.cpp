#include "host/cards/frm_rate_day.h"

#include <algorithm>

#include "framework/references.h"
#include "host/cards/frm_rates_import.h"
#include "host/cards/missing_rates.h"
#include "host/cards/working_days.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

// How far back the rate before is looked for, and missing ones are told.
constexpr int kDaysBack = 31;

}  // namespace

frmRateDay::frmRateDay(HostContext& host, DateTime day) : Form(host, "frmRateDay"), day_(day) {
  SOPanel.titleBand = true;
  cmdPrevious.tip = "Ankstesnė darbo diena";
  cmdPrevious.shortcut = "Alt+Left";
  cmdNext.tip = "Kita darbo diena";
  cmdNext.shortcut = "Alt+Right";
  cmdNextRate.shortcut = "Alt+Down";
  cmdWrite.shortcut = "Ctrl+S";
  cmdWrite.isDefault = true;
  cmdCancel.isCancel = true;
  dtpDate.onChange = [this] {
    if (dtpDate.value()) go(*dtpDate.value());
  };
  cmdPrevious.onClick = [this] { step(-1); };
  cmdNext.onClick = [this] { step(1); };
  cmdNextRate.onClick = [this] {
    if (!table.next()) setFocus(cmdWrite);
  };
  cmdImport.onClick = [this] { import(); };
  cmdWrite.onClick = [this] { save(); };
  SSCClose.onClick = cmdCancel.onClick = [this] {
    if (mayClose()) close();
  };
}

const char* frmRateDay::picture() const {
  return R"(
[SOPanel]
  dtpDate cmdPrevious cmdNext | >> | cmdImport
  lvwRates>
  txtRate | cmdNextRate | >> | cmdRemoveRate
  lblMissing>
SSCClose | >> | cmdCancel | cmdWrite
)";
}

std::string frmRateDay::objectReference() const { return refOf(kRateDayKind, day_.DayNumber()); }

void frmRateDay::opened() {
  const RightFlags rights = host().rights().of(kCurrencyRights);
  readOnly = !rights.change && !rights.create;
  cmdWrite.enabled = !readOnly;
  cmdImport.enabled = !readOnly;
  cmdNextRate.enabled = !readOnly;
  read();
  setFocus(readOnly ? static_cast<ui::Control&>(table.lvwRates) : table.txtRate);
}

void frmRateDay::recordsChanged(const std::string& kind) {
  if ((kind == kRateDayKind || kind == kCurrencyKind) && !changed_) read();
}

void frmRateDay::read() {
  changed_ = false;
  dtpDate.value = day_;
  setTitle("Valiutų kursai " + day_.Text());
  const auto currencies = ratedCurrencies(host());
  const auto known = readDayRates(host(), day_.AddDays(-kDaysBack), day_, "");
  if (!currencies || !known) {
    table.show({}, true);
    lblMissing.caption = std::string();
    return;
  }
  currencies_ = *currencies;
  std::vector<RateRow> rows;
  for (const RatedCurrency& currency : currencies_) {
    RateRow row{day_, currency.code, currency.name, {}, {}};
    if (currency.fixedRate > 0) row.before = currency.fixedRate;
    for (const DayRate& rate : *known) {
      if (rate.code != currency.code) continue;
      (rate.day == day_ ? row.stored : row.before) = rate.rate;
    }
    rows.push_back(std::move(row));
  }
  table.show(std::move(rows), readOnly);
  lblMissing.caption = missingRatesText(*known, currencies_, day_.AddDays(-kDaysBack),
                                        std::min(day_, host().clock().today()));
}

void frmRateDay::go(DateTime day) {
  if (day == day_) return;
  if (!mayClose()) {
    dtpDate.value = day_;
    return;
  }
  day_ = day.Date();
  read();
}

void frmRateDay::step(int by) {
  DateTime day = day_.AddDays(by);
  while (!isWorkingDay(day)) day = day.AddDays(by);
  go(day);
}

void frmRateDay::save() {
  if (readOnly) return;
  if (const std::string why = table.refusal(); !why.empty()) {
    warn(host(), why);
    return setFocus(table.txtRate);
  }
  ui::BusyScope busy(*this, SOPanel);
  if (writeDayRates(host(), table.changes())) read();
}

void frmRateDay::import() {
  if (!mayClose()) return;
  RateTextRules rules;
  for (const RatedCurrency& currency : currencies_) rules.codes.push_back(currency.code);
  rules.day = day_;
  frmRatesImport form(host(), std::move(rules));
  host().screens().runModal(form);
  if (form.result == 1) read();
}

bool frmRateDay::mayClose() {
  return !changed_ || readOnly || askCloseUnsaved(host(), SOPanel.caption);
}

Card rateDayCard() {
  Card card;
  card.kind = kRateDayKind;
  card.component = kCurrencyRights;
  card.newEntry = "Nauja kursų diena";
  card.make = [](HostContext& host, std::shared_ptr<VXObjectUIO> object) {
    return std::make_shared<frmRateDay>(host, object->Fields()["DateD"].Value().AsDate());
  };
  return card;
}

}  // namespace tolvex
