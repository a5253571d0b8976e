#include "host/cards/missing_rates.h"

#include <set>

#include "framework/text.h"
#include "host/cards/working_days.h"

namespace tolvex {
namespace {

// One line of a screen: so many days, of so many currencies; of more currencies only how many days.
constexpr std::size_t kDaysNamed = 5, kCurrenciesByDays = 2, kCurrenciesNamed = 8;

struct Missing {
  std::string code;
  std::vector<DateTime> days;
};

std::string named(const Missing& missing) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < missing.days.size() && i < kDaysNamed; ++i)
    names.push_back(missing.days[i].Text());
  const std::string text = missing.code + " " + join(names, ", ");
  const std::size_t more = missing.days.size() - names.size();
  return more == 0 ? text : text + " ir dar " + std::to_string(more);
}

std::string counted(const std::vector<Missing>& all) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < all.size() && i < kCurrenciesNamed; ++i)
    names.push_back(all[i].code + " " + std::to_string(all[i].days.size()) + " d.");
  const std::string text = join(names, ", ");
  const std::size_t more = all.size() - names.size();
  return more == 0 ? text : text + " ir dar " + std::to_string(more) + " val.";
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
  std::vector<Missing> all;
  for (const RatedCurrency& currency : currencies) {
    if (currency.fixedRate > 0) continue;
    auto days = daysWithoutRate(rates, currency.code, from, to);
    if (!days.empty()) all.push_back({currency.code, std::move(days)});
  }
  if (all.empty()) return {};
  if (all.size() > kCurrenciesByDays) return "Trūksta kursų: " + counted(all);
  std::vector<std::string> parts;
  for (const Missing& missing : all) parts.push_back(named(missing));
  return "Trūksta kursų: " + join(parts, "; ");
}

}  // namespace tolvex
