#include "host/cards/day_rates.h"

#include "framework/parameters.h"
#include "framework/text.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

HostResult call(HostContext& host, const char* routine, const std::string& parameters) {
  HostResult result;
  host.objects().kind(kCurrencyKind)->BO()->CallBO(routine, parameters, nullptr, result);
  return result;
}

RowSetPtr rowsOf(HostContext& host, const char* routine, const std::string& parameters) {
  const HostResult result = call(host, routine, parameters);
  if (result.Code != kDone) warn(host, result.Text);
  return result.Code == kDone && result.Data.IsRows() ? result.Data.AsRows() : nullptr;
}

}  // namespace

std::optional<std::vector<DayRate>> readDayRates(HostContext& host, DateTime from, DateTime to,
                                                 const std::string& code) {
  const RowSetPtr rows =
      rowsOf(host, "DO0200500_GetCurrencyRates", Parameters().date(from).date(to).text(code).str());
  if (!rows) return std::nullopt;
  std::vector<DayRate> rates;
  ForEachRow(*rows, [&](RowSet& row) {
    rates.push_back(
        {row["Date"].Value().AsDate(), std::string(row["Code"].Text()), row["Rate"].Number()});
  });
  return rates;
}

std::optional<std::vector<RatedCurrency>> ratedCurrencies(HostContext& host) {
  const RowSetPtr rows = rowsOf(host, "DO0200500_GetCurrencyCodeList", kNoParameters);
  if (!rows) return std::nullopt;
  std::vector<RatedCurrency> currencies;
  ForEachRow(*rows, [&](RowSet& row) {
    if (row["BaseCurrency"].Number() != 0) return;
    currencies.push_back({std::string(row["Code"].Text()), std::string(row["Name"].Text()),
                          row["FixedRate"].Number()});
  });
  return currencies;
}

bool writeDayRates(HostContext& host, const std::vector<DayRate>& rates) {
  if (rates.empty()) return true;
  std::vector<std::string> rows;
  for (const DayRate& one : rates)
    rows.push_back(one.day.Text() + ";" + one.code + ";" +
                   (one.rate ? plainNumber(*one.rate) : std::string()));
  const HostResult saved = call(host, "SaveDayRates", quoted(join(rows, "#")));
  if (saved.Code != kDone) {
    showFailedSave(host, saved.Text);
    return false;
  }
  host.tree().redraw(kRateDayKind);
  return true;
}

}  // namespace tolvex
