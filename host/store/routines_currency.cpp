// Currencies, their rates by day, and the tariffs of VAT.
#include "framework/references.h"
#include "framework/text.h"
#include "host/store/answer.h"
#include "host/store/day_rates.h"
#include "host/store/routine_table.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kCurrencyKind = "O0002200";

std::string currencyReference(std::int64_t id) {
  return refOf(kCurrencyKind, static_cast<int>(id));
}

// The rate of a day is the rate stored for that very day, else the fixed one, else none: an older
// rate in its place would keep the screens from asking for the day's own.
constexpr std::string_view kRatesOfDay =
    "SELECT c.code, COALESCE(r.rate, c.fixed_rate), c.base, c.name, c.id, c.fixed_rate"
    " FROM currency c LEFT JOIN currency_rate r ON r.currency_id = c.id AND r.day = $1"
    " ORDER BY c.base DESC, c.id";

constexpr ColumnSpec kCurrencyList[] = {col::text("Code", 3),         col::number("Rate"),
                                        col::integer("BaseCurrency"), col::text("Name", 100),
                                        col::text("OIDR", 30),        col::number("FixedRate")};

Variant GetCurrencyList(Session& session, const Arguments& arguments, std::string_view) {
  auto rates = session.db().prepare(kRatesOfDay);
  rates->bind(1, arguments[0].day());
  Answer answer(kCurrencyList);
  while (rates->step())
    answer.row()
        .text(rates->text(0))
        .number(rates->real(1))
        .integer(rates->integer(2) != 0 ? 1 : 0)
        .text(rates->text(3))
        .text(currencyReference(rates->integer(4)))
        .number(rates->real(5));
  return answer.done();
}

constexpr ColumnSpec kCurrencyCodes[] = {col::text("Code", 3), col::text("OIDR", 30),
                                         col::integer("BaseCurrency"), col::number("FixedRate"),
                                         col::text("Name", 100)};

Variant GetCurrencyCodeList(Session& session, const Arguments&, std::string_view) {
  auto currencies = session.db().prepare(
      "SELECT code, id, base, fixed_rate, name FROM currency ORDER BY base DESC, id");
  Answer answer(kCurrencyCodes);
  while (currencies->step())
    answer.row()
        .text(currencies->text(0))
        .text(currencyReference(currencies->integer(1)))
        .integer(currencies->integer(2) != 0 ? 1 : 0)
        .number(currencies->real(3))
        .text(currencies->text(4));
  return answer.done();
}

constexpr ColumnSpec kCurrencyByCode[] = {col::text("OIDR", 30), col::text("Code", 3),
                                          col::text("Name", 100), col::text("TwoCurr", 30),
                                          col::text("TwoSmall", 30)};

Variant GetCurrencyByCode(Session& session, const Arguments& arguments, std::string_view) {
  const std::string code = upper(trim(arguments[0].str()));
  auto currency = session.db().prepare(
      "SELECT id, code, name, two_curr, two_small FROM currency"
      " WHERE code = $1 OR ($1 = '' AND base <> 0) ORDER BY id");
  currency->bind(1, code);
  Answer answer(kCurrencyByCode);
  while (currency->step())
    answer.row()
        .text(currencyReference(currency->integer(0)))
        .text(currency->text(1))
        .text(currency->text(2))
        .text(currency->text(3))
        .text(currency->text(4));
  return answer.done();
}

constexpr ColumnSpec kCurrencyRates[] = {col::text("Code", 3), col::number("Rate"),
                                         col::date("Date")};

Variant ratesOfDay(Session& session, int day, const std::string& givenCode) {
  const std::string code = upper(trim(givenCode));
  auto rates = session.db().prepare(kRatesOfDay);
  rates->bind(1, day);
  Answer answer(kCurrencyRates);
  while (rates->step())
    if (rates->real(1) > 0 && (code.empty() || rates->text(0) == code))
      answer.row().text(rates->text(0)).number(rates->real(1)).day(day);
  return answer.done();
}

Variant ratesOfPeriod(Session& session, int from, int to, const std::string& givenCode) {
  auto rates = session.db().prepare(
      "SELECT c.code, r.rate, r.day FROM currency_rate r JOIN currency c ON c.id = r.currency_id"
      " WHERE r.day BETWEEN $1 AND $2 AND ($3 = '' OR c.code = $3) ORDER BY r.day, c.id");
  rates->bind(1, from).bind(2, to).bind(3, upper(trim(givenCode)));
  return rowsOf(*rates, kCurrencyRates, 3);
}

// 'date','code' or 'from','to','code'.
Variant GetCurrencyRates(Session& session, const Arguments& arguments, std::string_view) {
  if (arguments[2].absent()) return ratesOfDay(session, arguments[0].day(), arguments[1].str());
  const auto to = DateTime::Parse(arguments[1].str());
  if (!to) throw Refusal(kWrongParameters, "GetCurrencyRates: '" + arguments[1].str() + "'");
  return ratesOfPeriod(session, arguments[0].day(), to->DayNumber(), arguments[2].str());
}

// The card of a currency asks 'code' for today, or 'date','code'.
Variant GetRatesOfCurrency(Session& session, const Arguments& arguments, std::string_view) {
  if (arguments[1].absent())
    return ratesOfDay(session, session.now().DayNumber(), arguments[0].str());
  const auto day = DateTime::Parse(arguments[0].str());
  if (!day) throw Refusal(kWrongParameters, "GetCurrencyRates: '" + arguments[0].str() + "'");
  return ratesOfDay(session, day->DayNumber(), arguments[1].str());
}

Variant SaveDayRate(Session& session, const Arguments& arguments, std::string_view) {
  writeDayRate(session, {arguments[0].str(), arguments[1].day(), arguments[2].real()});
  return {};
}

// All rows or none.
Variant SaveDayRates(Session& session, const Arguments& arguments, std::string_view) {
  for (const DayRateChange& change : readDayRates(arguments[0].str())) {
    try {
      writeDayRate(session, change);
    } catch (const Refusal& refusal) {
      const std::string where = DateTime::FromDayNumber(change.day).Text() + " " + change.code;
      throw Refusal(refusal.code, where + ": " + refusal.what());
    }
  }
  return {};
}

constexpr ColumnSpec kVatTariffs[] = {col::number("Value")};

Variant GetVATtariffs(Session& session, const Arguments&, std::string_view) {
  auto tariffs = session.db().prepare("SELECT value FROM vat_tariff ORDER BY sort_order, id");
  Answer answer(kVatTariffs);
  while (tariffs->step()) answer.row().number(static_cast<double>(tariffs->integer(0)) / 100);
  return answer.done();
}

constexpr Routine kRoutines[] = {
    {"O0201500", "GetCurrencyList", "d", false, GetCurrencyList},
    {"O0200500", "GetCurrencyCodeList", "", false, GetCurrencyCodeList},
    {"O0201500 O0002200", "GetCurrencyByCode", "t", false, GetCurrencyByCode},
    {"O0200500", "GetCurrencyRates", "dtT", false, GetCurrencyRates},
    {"O0002200", "GetCurrencyRates", "tT", false, GetRatesOfCurrency},
    {"O0002200", "SaveDayRate", "tdn", true, SaveDayRate},
    {"O0002200", "SaveDayRates", "t", true, SaveDayRates},
    {"O0001629", "GetVATtariffs", "", false, GetVATtariffs},
};

}  // namespace

std::span<const Routine> currencyRoutines() { return kRoutines; }

}  // namespace tolvex::store
