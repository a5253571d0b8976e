// Currencies, VAT tariffs and the small lists of other modules.
#include <algorithm>

#include "framework/text.h"
#include "host/store/day_rates.h"
#include "host/store/mapped_records.h"
#include "host/store/record_table.h"
#include "host/store/referrers.h"
#include "host/store/sql.h"
#include "host/store/vat_tariff.h"
#include "host/store/whole_parts.h"

namespace tolvex::store {
namespace {

constexpr FieldMap kCurrencyFields[] = {
    text("Code", "code", 3).needed(),     text("Name", "name", 100).needed(),
    small("BaseCurrency", "base").zero(), real("FixedRate", "fixed_rate").zero(),
    text("OneCurr", "one_curr", 30),      text("TwoCurr", "two_curr", 30),
    text("ManyCurr", "many_curr", 30),    text("OneSmall", "one_small", 30),
    text("TwoSmall", "two_small", 30),    text("ManySmall", "many_small", 30),
};
constexpr FieldMap kCurrencyList[] = {text("Code", "code", 3), small("BaseCurrency", "base"),
                                      real("FixedRate", "fixed_rate")};
constexpr Referrer kCurrencyReferrers[] = {
    {"Bazinė valiuta nenaikinama: ", "SELECT code FROM currency WHERE id = $1 AND base = 1"},
    {"Valiuta naudojama sąskaitoje: ",
     "SELECT a.code FROM currency c JOIN turn_acc s ON s.cur = c.code"
     " JOIN account a ON a.id = s.account_id WHERE c.id = $1 LIMIT 1"},
};

// Which currency the books are kept in does not change, nor does the code that postings carry.
void checkCurrency(const Saving& saving) {
  Database& db = saving.session.db();
  const std::string code = trim(saving.row["Code"].Text());
  const auto isCapital = [](char letter) { return letter >= 'A' && letter <= 'Z'; };
  if (code.size() != 3 || !std::all_of(code.begin(), code.end(), isCapital)) {
    refuseRule("Valiutos kodas turi būti iš trijų didžiųjų raidžių!");
  }
  if (saving.row["FixedRate"].Number() < 0) refuseRule("Valiutos kursas negali būti neigiamas!");
  const bool base = saving.row["BaseCurrency"].Number() != 0;
  const bool wasBase = anyRow(db, "SELECT 1 FROM currency WHERE id = $1 AND base = 1", saving.id);
  if (base != wasBase) refuseRule("Bazinė valiuta nekeičiama!");
  if (saving.isNew) return;
  const std::string before = textFrom(db, "SELECT code FROM currency WHERE id = $1", saving.id);
  if (before != code && (base || anyRow(db, "SELECT 1 FROM turn_acc WHERE cur = $1", before))) {
    refuseRule("Naudojamos valiutos kodas nekeičiamas!");
  }
}

// Rates travel as the second set: a day and its rate, none to take it away.
void storeRates(const Saving& saving) {
  if (!saving.second) return;
  const std::string code(saving.row["Code"].Text());
  ForEachRow(*saving.second, [&](RowSet& row) {
    const int day = row["DateD"].IsAbsent() ? 0 : row["DateD"].Value().AsDate().DayNumber();
    writeDayRate(saving.session, {code, day, row["Rate"].Number(), row["Rate"].IsAbsent()});
  });
}

void eraseRates(Session& session, int id) {
  run(session.db(), "DELETE FROM currency_rate WHERE currency_id = $1", id);
}

constexpr RecordMap kCurrencies = {.table = "currency",
                                   .fields = kCurrencyFields,
                                   .referrers = kCurrencyReferrers,
                                   .listFields = kCurrencyList,
                                   .component = "CCurrency",
                                   .preview = "t.code",
                                   .check = checkCurrency,
                                   .stored = storeRates,
                                   .erasing = eraseRates};

constexpr const char* kPercent =
    "CAST(t.value / 100 AS VARCHAR(5)) || CASE WHEN t.value % 100 = 0 THEN '%' ELSE '.' ||"
    " SUBSTR(CAST(100 + t.value % 100 AS VARCHAR(3)), 2) || '%' END";
void checkTariff(const Saving& saving) { (void)tariffHundredths(saving.row["Value"].Number()); }

constexpr FieldMap kTariffFields[] = {real("Value", "value").decimals(2).zero(),
                                      number("SortOrder", "sort_order").zero()};
constexpr RecordMap kTariffs = {.table = "vat_tariff",
                                .fields = kTariffFields,
                                .listFields = kTariffFields,
                                .component = kTariffComponent,
                                .versioned = false,
                                .preview = kPercent,
                                .name = kPercent,
                                .order = "t.sort_order, t.id",
                                .check = checkTariff};

// Texts that documents of a kind offer for their comment; who writes operations keeps them.
constexpr FieldMap kCommentFields[] = {text("Name", "name", 1000).needed(),
                                       text("Kind", "kind", 8).preset("O0201500").needed()};
constexpr RecordMap kComments = {.table = "comment_text",
                                 .fields = kCommentFields,
                                 .component = "CBROperRights",
                                 .versioned = false,
                                 .where = "t.kind = 'O0201500'"};

constexpr FieldMap kObjectFields[] = {
    number("ParentID", "parent_id").zeroIsNull(),
    number("GroupFlag", "group_flag").zero(),
    text("Code", "code", 100),
    text("Name", "name", 300).needed(),
    text("Extra", "extra", 500),
    computed("DocumentTypeCodes", FieldType::Text, "t.extra"),
};
constexpr FieldMap kObjectList[] = {computed("ID", FieldType::Integer, "t.id"),
                                    text("Code", "code", 100),
                                    computed("Extra", FieldType::Text, "t.extra"),
                                    computed("DocumentTypeCodes", FieldType::Text, "t.extra")};
constexpr RecordMap kObjects = {.table = "ref_object",
                                .fields = kObjectFields,
                                .referrers = kAddresseeReferrers,
                                .listFields = kObjectList,
                                .component = "CBookLayout",
                                .tree = true,
                                .kindColumn = "kind",
                                .idsByKind = true};

constexpr std::string_view kObjectKinds =
    "O0001602 O0001612 O1000200 O0001601 O0001604 O0001605 O0001615 O3010100 O0000200 O0202100"
    " O0001900";

}  // namespace

int tariffHundredths(double percent) {
  constexpr int kWhole = 10000;
  const auto stored = wholeParts(percent, 100);
  if (!stored || *stored < 0 || *stored > kWhole)
    refuseRule("PVM tarifas turi būti nuo 0 iki 100, ne daugiau kaip du ženklai po kablelio!");
  return static_cast<int>(*stored);
}

std::span<const HandlerRow> listRecords() {
  static const MappedRecords currencies(kCurrencies), tariffs(kTariffs), objects(kObjects),
      comments(kComments);
  static const HandlerRow rows[] = {{"O0002200", &currencies},
                                    {"O0001629", &tariffs},
                                    {kObjectKinds, &objects},
                                    {"O0000900", &comments}};
  return rows;
}

}  // namespace tolvex::store
