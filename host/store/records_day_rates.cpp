// Days that have rates of currencies. A day is listed, opened and deleted as an object; its rates
// are written by SaveDayRates.
#include "framework/references.h"
#include "framework/text.h"
#include "host/store/day_rates.h"
#include "host/store/record_table.h"
#include "host/store/routines.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kRecord[] = {{"ID", FieldType::Integer},   {"OIDR", FieldType::Text},
                                  {"OID", FieldType::Text},     {"OType", FieldType::Text},
                                  {"Preview", FieldType::Text}, {"RowVersion", FieldType::Integer},
                                  {"DateD", FieldType::Date}};
constexpr ColumnSpec kList[] = {{"OIDR", FieldType::Text},        {"OID", FieldType::Text},
                                {"ParentID", FieldType::Integer}, {"ParentOIDR", FieldType::Text},
                                {"OType", FieldType::Text},       {"GroupFlag", FieldType::Integer},
                                {"Name", FieldType::Text},        {"Preview", FieldType::Text},
                                {"DateD", FieldType::Date},       {"Rates", FieldType::Text}};

constexpr std::string_view kRatesOf =
    "SELECT r.day, c.code, r.rate FROM currency_rate r JOIN currency c ON c.id = r.currency_id"
    " ORDER BY r.day DESC, c.id";

class DayRateRecords final : public RecordHandler {
 public:
  RowSetPtr load(Session& session, std::string_view, int day) const override {
    if (!hasRates(session, day)) return nullptr;
    const RowSetPtr record = RowSet::make(kRecord);
    RowSet& row = *record;
    row.LoadRow();
    const DateTime date = DateTime::FromDayNumber(day);
    row["ID"] = Variant(day);
    row["OIDR"] = refOf(kRateDayKind, day);
    row["OID"] = refOf(kRateDayKind, day);
    row["OType"] = kRateDayKind;
    row["Preview"] = date.Text();
    row["RowVersion"] = Variant(0);
    row["DateD"] = date;
    return record;
  }

  RowSetPtr create(Session& session, std::string_view, std::string_view) const override {
    const RowSetPtr record = RowSet::make(kRecord);
    record->AddNew();
    (*record)["OType"] = kRateDayKind;
    (*record)["DateD"] = session.now().Date();
    return record;
  }

  int save(Session&, std::string_view, std::string_view, RowSet&, RowSet*, RowSet*) const override {
    throw Refusal(kUnknownRoutine, "Kursai įrašomi veiksmu SaveDayRates.");
  }

  void erase(Session& session, std::string_view, int day) const override {
    if (!hasRates(session, day)) refuseGone();
    if (!session.rights("CCurrency").remove) refuseErase();
    run(session.db(), "DELETE FROM currency_rate WHERE day = $1", day);
  }

  // The newest day first.
  RowSetPtr list(Session& session, std::string_view,
                 std::span<const std::string> arguments) const override {
    const RowSetPtr days = RowSet::make(kList);
    auto rates = session.db().prepare(kRatesOf);
    int day = 0;
    std::string shown;
    const auto finish = [&] {
      if (day != 0) (*days)["Rates"] = shown;
    };
    while (rates->step()) {
      if (const int next = rates->whole(0); next != day) {
        finish();
        day = next;
        shown.clear();
        addDay(*days, day);
      }
      shown += (shown.empty() ? "" : "   ") + std::string(rates->text(1)) + " " +
               replaceAll(plainNumber(rates->real(2)), ".", ",");
    }
    finish();
    return finishList(days, filterIn(arguments));
  }

 private:
  static bool hasRates(Session& session, int day) {
    return anyRow(session.db(), "SELECT 1 FROM currency_rate WHERE day = $1", day);
  }
  static void addDay(RowSet& days, int day) {
    const DateTime date = DateTime::FromDayNumber(day);
    days.LoadRow();
    days["OIDR"] = refOf(kRateDayKind, day);
    days["OID"] = refOf(kRateDayKind, day);
    days["ParentID"] = Variant(Null{});
    days["ParentOIDR"] = "";
    days["OType"] = kRateDayKind;
    days["GroupFlag"] = Variant(0);
    days["Name"] = date.Text();
    days["Preview"] = date.Text();
    days["DateD"] = date;
  }
};

}  // namespace

std::span<const HandlerRow> dayRateRecords() {
  static const DayRateRecords records;
  static const HandlerRow rows[] = {{kRateDayKind, &records}};
  return rows;
}

}  // namespace tolvex::store
