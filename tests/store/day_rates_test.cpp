// Rates by day: written all or none, by those who may, and shown as days.
#include "host/store/day_rates.h"

#include "host/store/sql.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

constexpr const char* kCurrency = "O0002200";

class DayRates : public BooksTest {
 protected:
  HostResult save(const std::string& rows) {
    return session().call(kCurrency, "SaveDayRates", "'" + rows + "'");
  }
  // "20040503 USD 2.8" of every stored rate, in order.
  std::string stored() {
    auto rates = db().prepare(
        "SELECT r.day, c.code, r.rate FROM currency_rate r JOIN currency c ON c.id = r.currency_id"
        " ORDER BY r.day, c.id");
    std::string out;
    while (rates->step()) {
      out += (out.empty() ? "" : "; ") + std::to_string(rates->integer(0)) + " " +
             std::string(rates->text(1)) + " " + Variant(rates->real(2)).Show();
    }
    return out;
  }
};

TEST_P(DayRates, AreWrittenAllOrNone) {
  EXPECT_EQ(save("2004.05.03;USD;2.8#2004.05.03;eur;3.45#2004.05.04;USD;2.81").Code, kDone);
  const std::string before = "20040503 EUR 3.45; 20040503 USD 2.8; 20040504 USD 2.81";
  EXPECT_EQ(stored(), before);

  const struct {
    const char *name, *rows;
    int code;
    const char* text;
  } refused[] = {
      {"an unknown currency", "2004.05.05;USD;2.9#2004.05.05;GBP;4.9", kReferred,
       "2004.05.05 GBP: Tokios valiutos nėra: GBP"},
      {"the base currency", "2004.05.05;USD;2.9#2004.05.05;LTL;1", kRuleBroken,
       "2004.05.05 LTL: Bazinės valiutos kursas nenustatomas!"},
      {"no rate", "2004.05.05;USD;2.9#2004.05.06;USD;0", kRuleBroken,
       "2004.05.06 USD: Nenurodytas valiutos kursas!"},
      {"a negative one", "2004.05.03;USD;#2004.05.06;USD;-2.8", kRuleBroken,
       "2004.05.06 USD: Nenurodytas valiutos kursas!"},
      {"no day", "2004.02.30;USD;2.9", kWrongParameters, "SaveDayRates: '2004.02.30;USD;2.9'"},
      {"a decimal comma", "2004.05.05;USD;2,9", kWrongParameters,
       "SaveDayRates: '2004.05.05;USD;2,9'"},
      {"a cell too few", "2004.05.05;USD", kWrongParameters, "SaveDayRates: '2004.05.05;USD'"},
  };
  for (const auto& c : refused) {
    SCOPED_TRACE(c.name);
    const HostResult result = save(c.rows);
    EXPECT_EQ(result.Code, c.code);
    EXPECT_EQ(result.Text, c.text);
    EXPECT_EQ(stored(), before);
  }

  EXPECT_EQ(save("2004.05.03;USD;2.79#2004.05.04;USD;#2004.05.07;USD;").Code, kDone);
  EXPECT_EQ(stored(), "20040503 EUR 3.45; 20040503 USD 2.79");
}

TEST_P(DayRates, StandAsDays) {
  EXPECT_EQ(save("2004.05.03;USD;2.8#2004.05.04;USD;2.81#2004.05.04;EUR;3.46").Code, kDone);
  RowSetPtr days = rowsIn(session().list(kRateDayKind, "", "", ""));
  ASSERT_EQ(days->RecordCount(), 2U);
  days->MoveFirst();
  EXPECT_EQ((*days)["OIDR"].Text(), "O000220120040504");
  EXPECT_EQ((*days)["Rates"].Text(), "EUR 3,46   USD 2,81");
  RowSetPtr record = rowsIn(session().load(kRateDayKind, "O000220120040503"));
  EXPECT_EQ((*record)["DateD"].Value().Show(), "2004.05.03");
  EXPECT_EQ(session().erase(kRateDayKind, "O000220120040504").Code, kDone);
  EXPECT_EQ(session().erase(kRateDayKind, "O000220120040504").Code, kObjectGone);
  EXPECT_EQ(stored(), "20040503 USD 2.8");
}

TEST_P(DayRates, FollowTheRightsOfTheUser) {
  if (GetParam() == Store::Memory) GTEST_SKIP() << "one client only";
  ASSERT_EQ(save("2004.05.03;USD;2.8").Code, kDone);
  addUser("buh", 3);
  const auto accountant = another("buh");
  const auto call = [&](const std::string& rows) {
    return accountant->call(kCurrency, "SaveDayRates", "'" + rows + "'").Code;
  };
  EXPECT_EQ(call("2004.05.04;USD;2.81"), kDone) << "the first rate comes with a document";
  EXPECT_EQ(call("2004.05.03;USD;2.8"), kDone) << "nothing changes";
  EXPECT_EQ(call("2004.05.03;USD;2.9"), kNoSaveRight);
  EXPECT_EQ(call("2004.05.03;USD;"), kNoSaveRight);
  EXPECT_EQ(accountant->call(kCurrency, "SaveDayRate", "'USD','2004.05.03',2.9").Code,
            kNoSaveRight);
  EXPECT_EQ(accountant->erase(kRateDayKind, "O000220120040503").Code, kEditedGone);
  EXPECT_EQ(stored(), "20040503 USD 2.8; 20040504 USD 2.81");

  run(db(), "UPDATE right_grant SET can_create = 0 WHERE role_id = 3");
  EXPECT_EQ(call("2004.05.05;USD;2.81"), kNoSaveRight);
  run(db(),
      "UPDATE right_grant SET can_edit = 1, can_delete = 1 WHERE role_id = 3 AND"
      " component = 'CCurrency'");
  EXPECT_EQ(call("2004.05.03;USD;2.9#2004.05.04;USD;"), kDone);
  EXPECT_EQ(stored(), "20040503 USD 2.9");
}

TEST_P(DayRates, GoWithTheirCurrencyAndTheBaseOneStays) {
  ASSERT_EQ(save("2004.05.03;USD;2.8").Code, kDone);
  EXPECT_EQ(session().erase(kCurrency, "O00022003").Code, kDone);
  EXPECT_EQ(stored(), "");
  const HostResult base = session().erase(kCurrency, "O00022001");
  EXPECT_EQ(base.Code, kReferred);
  EXPECT_EQ(base.Text, "Bazinė valiuta nenaikinama: LTL");
  for (const char* code : {"usd", "US", "DOL1", "Ž12", ""}) {
    RowSetPtr record = rowsIn(session().create(kCurrency, ""));
    record->MoveFirst();
    (*record)["Code"] = code;
    (*record)["Name"] = "valiuta";
    EXPECT_EQ(session().save(kCurrency, "", *record, nullptr, nullptr).Code, kRuleBroken) << code;
  }
}

TEST_P(DayRates, AreSavedWithTheirCurrencyOrNothingIs) {
  ASSERT_EQ(save("2004.05.03;USD;2.8").Code, kDone);
  constexpr ColumnSpec kRates[] = {{"DateD", FieldType::Date}, {"Rate", FieldType::Double}};
  const auto withRates = [&](std::vector<std::pair<int, Variant>> rates, const char* name) {
    RowSetPtr record = rowsIn(session().load(kCurrency, "O00022003"));
    record->MoveFirst();
    (*record)["Name"] = name;
    const RowSetPtr second = RowSet::make(kRates);
    for (const auto& [day, rate] : rates) {
      second->AddNew();
      (*second)["DateD"] = DateTime::FromDayNumber(day);
      (*second)["Rate"] = rate;
    }
    return session().save(kCurrency, "", *record, second.get(), nullptr).Code;
  };
  EXPECT_EQ(withRates({{20040504, 2.81}, {20040505, 0.0}}, "kitas"), kRuleBroken);
  EXPECT_EQ(stored(), "20040503 USD 2.8");
  EXPECT_EQ(textFrom(db(), "SELECT name FROM currency WHERE id = 3"), "doleris");
  EXPECT_EQ(withRates({{20040504, 2.81}, {20040503, Null{}}}, "kitas"), kDone);
  EXPECT_EQ(stored(), "20040504 USD 2.81");
  EXPECT_EQ(textFrom(db(), "SELECT name FROM currency WHERE id = 3"), "kitas");
}

TOLVEX_ALL_STORES(DayRates);

}  // namespace
}  // namespace tolvex::store
