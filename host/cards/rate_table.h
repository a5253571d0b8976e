// RateTable: day rates as a list that is typed into: of one currency by days, or of one day by
// currencies. What is typed stands in the current row at once; nothing is stored here.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/cards/day_rates.h"
#include "platform/form.h"

namespace tolvex {

struct RateRow {
  DateTime day;
  std::string code, name;
  std::optional<double> stored;
  std::optional<double> before;  // of the day before it, as far as one is known
  std::string typed = {};        // filled by the table
};

class RateTable {
 public:
  enum class Rows { Days, Currencies };
  // `changed` is called after the user changed a rate.
  RateTable(ui::Form& form, Rows what, std::function<void()> changed);

  void show(std::vector<RateRow> rows, bool readOnly);
  // The row of that day and currency, added at its place where there is none, to be typed into.
  void lead(RateRow row);
  bool next();  // to the row below, to be typed into; false on the last one
  // Days outside are kept but not shown.
  void showPeriod(DateTime from, DateTime to);

  std::vector<DayRate> changes() const;
  std::vector<DayRate> rates() const;  // as typed, without the bad ones
  // Why these are no rates, "" when they are; the cursor then stands on the first bad one.
  std::string refusal();

  ui::ListView lvwRates;
  ui::TextBox txtRate;
  ui::Button cmdRemoveRate;

 private:
  void fill(const std::string& current);
  ui::Row rowOf(const RateRow& rate) const;
  RateRow* current();
  void showCurrent();
  void type(const std::string& text);

  const Rows what_;
  std::function<void()> changed_;
  std::vector<RateRow> rows_;  // days: the newest first
  DateTime from_, to_ = DateTime::Of(9999, 12, 31);
  bool readOnly_ = false;
};

}  // namespace tolvex
