#include "host/store/day_rates.h"

#include "framework/text.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kCurrencyRights = "CCurrency";
constexpr std::string_view kOperationRights = "CBROperRights";

int currencyToWrite(Database& db, const std::string& code) {
  auto currency = bound(db, "SELECT id, base FROM currency WHERE code = $1", upper(trim(code)));
  if (!currency->step()) throw Refusal(kReferred, "Tokios valiutos nėra: " + code);
  if (currency->integer(1) != 0) {
    refuseRule("Bazinės valiutos kursas nenustatomas!");
  }
  return currency->whole(0);
}

void requireRight(Session& session, const DayRateChange& change, bool stands) {
  const Flags own = session.rights(kCurrencyRights);
  const bool may = change.remove ? own.remove
                   : stands      ? own.edit
                                 : own.create || session.rights(kOperationRights).create;
  if (!may) throw Refusal(kNoSaveRight, "Nėra teisės keisti valiutų kursų!");
}

}  // namespace

void writeDayRate(Session& session, const DayRateChange& change) {
  Database& db = session.db();
  const int currency = currencyToWrite(db, change.code);
  if (change.day == 0) refuseRule("Nenurodyta kurso data!");
  if (!change.remove && !(change.rate > 0)) {
    refuseRule("Nenurodytas valiutos kursas!");
  }
  auto stored = bound(db, "SELECT rate FROM currency_rate WHERE currency_id = $1 AND day = $2",
                      currency, change.day);
  const bool stands = stored->step();
  if (change.remove ? !stands : stands && stored->real(0) == change.rate) return;
  requireRight(session, change, stands);
  if (change.remove) {
    run(db, "DELETE FROM currency_rate WHERE currency_id = $1 AND day = $2", currency, change.day);
    return;
  }
  run(db,
      "INSERT INTO currency_rate (currency_id, day, rate, user_id) VALUES ($1, $2, $3, $4)"
      " ON CONFLICT (currency_id, day) DO UPDATE SET rate = excluded.rate,"
      " user_id = excluded.user_id",
      currency, change.day, change.rate, session.user().id);
}

std::vector<DayRateChange> readDayRates(std::string_view text) {
  std::vector<DayRateChange> changes;
  for (const std::string& row : split(text, '#')) {
    const std::vector<std::string> cells = split(row, ';');
    DayRateChange change;
    const auto day = cells.size() == 3 ? DateTime::Parse(cells[0]) : std::nullopt;
    change.remove = cells.size() == 3 && cells[2].empty();
    if (!day || (!change.remove && !parsePlainNumber(cells[2], change.rate))) {
      throw Refusal(kWrongParameters, "SaveDayRates: '" + row + "'");
    }
    change.day = day->DayNumber();
    change.code = cells[1];
    changes.push_back(std::move(change));
  }
  return changes;
}

}  // namespace tolvex::store
