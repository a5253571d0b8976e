#include "host/cards/missing_rates.h"

#include <set>

#include "framework/text.h"
#include "host/cards/working_days.h"

namespace tolvex {
namespace {

constexpr std::size_t kNamed = 5;

std::string listed(const std::string& code, const std::vector<DateTime>& days) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < days.size() && i < kNamed; ++i) names.push_back(days[i].Text());
  const std::string more =
      days.size() > kNamed ? " ir dar " + std::to_string(days.size() - kNamed) : std::string();
  return code + " " + join(names, ", ") + more;
}

}  // namespace

std::vector<DateTime> daysWithoutRate(const std::vector<DayRate>& rates, const std::string& code,
                                      DateTime from, DateTime to) {
  std::set<DateTime> known;
  for (const DayRate& rate : rates)
    if (rate.code == code && rate.rate) known.insert(rate.day.Date());
  std::vector<DateTime> missing = workingDays(from, to);
  std::erase_if(missing, [&](DateTime day) { return known.contains(day); });
  return missing;
}

std::string missingRatesText(const std::vector<DayRate>& rates,
                             const std::vector<RatedCurrency>& currencies, DateTime from,
                             DateTime to) {
  std::vector<std::string> parts;
  for (const RatedCurrency& currency : currencies) {
    if (currency.fixedRate > 0) continue;
    const auto days = daysWithoutRate(rates, currency.code, from, to);
    if (!days.empty()) parts.push_back(listed(currency.code, days));
  }
  return parts.empty() ? std::string() : "Trūksta kursų: " + join(parts, "; ");
}

}  // namespace tolvex
