#include "host/cards/rate_table.h"

#include <algorithm>
#include <cmath>

#include "framework/text.h"
#include "platform/numbers.h"

namespace tolvex {
namespace {

constexpr double kOddChangePercent = 10;

std::string keyOf(DateTime day, const std::string& code) { return day.Text() + " " + code; }

std::string shownRate(std::optional<double> rate) { return rate ? shortNumber(*rate) : ""; }

// Nothing for a text that is no rate.
std::optional<double> rateIn(const std::string& typed) {
  const double rate = TextToDouble(typed);
  if (!isNumeric(typed) || !std::isfinite(rate) || !(rate > 0)) return std::nullopt;
  return rate;
}

std::vector<ui::Column> columnsOf(RateTable::Rows what) {
  const std::vector<ui::Column> numbers = {{"Kursas", 12, ui::Align::Right},
                                           {"Ankstesnis", 12, ui::Align::Right},
                                           {"Pokytis, %", 11, ui::Align::Right}};
  std::vector<ui::Column> columns;
  if (what == RateTable::Rows::Days)
    columns = {{"Data", 14}};
  else
    columns = {{"Valiuta", 8}, {"Pavadinimas", 30, ui::Align::Left, true}};
  columns.insert(columns.end(), numbers.begin(), numbers.end());
  return columns;
}

}  // namespace

RateTable::RateTable(ui::Form& form, Rows what, std::function<void()> changed)
    : lvwRates(&form, "lvwRates", columnsOf(what)),
      txtRate(&form, "txtRate", "Kursas", 12, ui::Align::Right),
      cmdRemoveRate(&form, "cmdRemoveRate", "Panaikinti kursą"),
      what_(what),
      changed_(std::move(changed)) {
  lvwRates.onChange = [this] { showCurrent(); };
  lvwRates.onActivate = [this] {
    if (!txtRate.readOnly) txtRate.form.setFocus(txtRate);
  };
  lvwRates.onDelete = cmdRemoveRate.onClick = [this] { type(""); };
  txtRate.keyFilter = [](char32_t key, const std::string&) -> char32_t {
    if (key == U'.') return U',';
    return key == U',' || (key >= U'0' && key <= U'9') ? key : U'\0';
  };
  txtRate.onChange = [this] { type(txtRate.text()); };
}

void RateTable::show(std::vector<RateRow> rows, bool readOnly) {
  const ui::Row* row = lvwRates.currentRow();
  const std::string current = row ? row->key : std::string();
  readOnly_ = readOnly;
  rows_ = std::move(rows);
  for (RateRow& rate : rows_) rate.typed = shownRate(rate.stored);
  fill(current);
}

void RateTable::lead(RateRow row) {
  const std::string key = keyOf(row.day, row.code);
  const auto stands = std::ranges::find_if(
      rows_, [&](const RateRow& rate) { return keyOf(rate.day, rate.code) == key; });
  if (stands == rows_.end()) {
    const auto place =
        std::ranges::find_if(rows_, [&](const RateRow& rate) { return rate.day < row.day; });
    row.typed = shownRate(row.stored);
    rows_.insert(place, std::move(row));
  }
  fill(key);
  txtRate.form.setFocus(txtRate);
}

bool RateTable::next() {
  const int below = lvwRates.current + 1;
  if (below >= static_cast<int>(lvwRates.rows().size())) return false;
  lvwRates.current = below;
  showCurrent();
  txtRate.form.setFocus(txtRate);
  return true;
}

void RateTable::showPeriod(DateTime from, DateTime to) {
  from_ = from;
  to_ = to;
  const ui::Row* row = lvwRates.currentRow();
  fill(row ? row->key : std::string());
}

void RateTable::fill(const std::string& current) {
  if (what_ == Rows::Days)
    for (std::size_t i = 0; i < rows_.size(); ++i)
      rows_[i].before = i + 1 < rows_.size() ? rateIn(rows_[i + 1].typed) : std::nullopt;
  std::vector<ui::Row> shown;
  for (const RateRow& rate : rows_)
    if (rate.day >= from_ && rate.day <= to_) shown.push_back(rowOf(rate));
  lvwRates.setRows(std::move(shown));
  const int at = lvwRates.find(current);
  lvwRates.current = at >= 0 || lvwRates.rows().empty() ? at : 0;
  showCurrent();
}

ui::Row RateTable::rowOf(const RateRow& rate) const {
  ui::Row row;
  row.key = keyOf(rate.day, rate.code);
  const NumberFormat numbers = lvwRates.form.host().numbers();
  const auto value = rateIn(rate.typed);
  std::string change;
  if (value && rate.before) {
    const double percent = (*value / *rate.before - 1) * 100;
    change = formatNumber(percent, 2, numbers);
    if (std::fabs(percent) > kOddChangePercent) {
      row.mark = ui::Mark::Bad;
      row.hint = "Kursas labai skiriasi nuo ankstesnio";
    }
  }
  if (!rate.typed.empty() && !value) {
    row.mark = ui::Mark::Bad;
    row.hint = "Klaidingas kursas";
  }
  if (what_ == Rows::Days)
    row.cells = {rate.day.Text()};
  else
    row.cells = {rate.code, rate.name};
  row.cells.insert(row.cells.end(), {rate.typed, shownRate(rate.before), change});
  row.bold = rate.typed != shownRate(rate.stored);
  return row;
}

RateRow* RateTable::current() {
  const ui::Row* row = lvwRates.currentRow();
  if (!row) return nullptr;
  const auto found = std::ranges::find_if(
      rows_, [&](const RateRow& rate) { return keyOf(rate.day, rate.code) == row->key; });
  return found == rows_.end() ? nullptr : &*found;
}

void RateTable::showCurrent() {
  const RateRow* rate = current();
  txtRate.text = rate ? rate->typed : std::string();
  txtRate.readOnly = readOnly_ || !rate;
  cmdRemoveRate.enabled = !readOnly_ && rate && !rate->typed.empty();
}

void RateTable::type(const std::string& text) {
  RateRow* rate = current();
  if (readOnly_ || !rate || rate->typed == text) return;
  rate->typed = text;
  fill(keyOf(rate->day, rate->code));
  if (changed_) changed_();
}

std::vector<DayRate> RateTable::changes() const {
  std::vector<DayRate> changed;
  for (const RateRow& rate : rows_) {
    if (rate.typed == shownRate(rate.stored)) continue;
    changed.push_back({rate.day, rate.code, rateIn(rate.typed)});
  }
  return changed;
}

std::vector<DayRate> RateTable::rates() const {
  std::vector<DayRate> typed;
  for (const RateRow& rate : rows_)
    if (const auto value = rateIn(rate.typed)) typed.push_back({rate.day, rate.code, value});
  return typed;
}

std::string RateTable::refusal() {
  for (const RateRow& rate : rows_) {
    if (rate.typed.empty() || rateIn(rate.typed)) continue;
    fill(keyOf(rate.day, rate.code));
    return "Klaidingas kursas: " + rate.day.Text() + " " + rate.typed + "!";
  }
  return {};
}

}  // namespace tolvex
