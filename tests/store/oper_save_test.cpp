#include <gtest/gtest.h>

#include <functional>

#include "framework/references.h"
#include "host/store/demo.h"
#include "host/store/protocol.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

RowSet& entries(RowSet& record) { return *record["BR"].Rows(); }

const TestOper kInvoice{20040115,
                        {{"240", "500", 2000, {{1, kFirmA}}},
                         {"240", "4461", 360, {{1, kFirmA}}},
                         {"204", "450", 2800, {{-1, kFirmB}}, {{-1, "USD", 2.80, 1000}}}}};

void savesAndReadsBack(Session* session) {
  const int target = savedId(*session, kInvoice);
  TestOper oper{20040220, {}, 6, "O0201502"};
  oper.entries = {{"2713",
                   "240",
                   270.27,
                   {{-1, kFirmA}, {1, "O00014011"}, {-1, operRef(target)}, {1, "O030010012"}},
                   {{1, "USD", 2.7027, 100}, {-1, "EUR", 3.4528, 78.2756}},
                   20040221},
                  {"0", "301", 0.01, {}, {{-1, "USD", 0, 0}}}};
  const RowSetPtr record = newOperation(*session, oper);
  (*record)["FOIDR"] = kFirmA;
  (*record)["Parameters"] = "Už prekes##USD#2,7027#O00005001#O00001001###";
  (*record)["CreatedByUserName"] = "Ona";
  (*record)["CreationDate"] = Variant(DateTime::Of(2004, 2, 20, 9, 30, 1));
  RowSet& BR = entries(*record);
  BR.MoveFirst();
  BR["Info"] = "pastaba „ąčę“";
  BR["VATTariff"] = 18.0;
  BR["TradeOperationType"] = 2.0;
  BR["VATIndication"] = 1.0;
  BR["FGUID"] = "follows";
  const std::string typed = content(*record);
  const SaveOutcome saved = save(*session, *record);
  ASSERT_EQ(saved.Code, kDone) << saved.Text;
  const RowSetPtr read = loaded(*session, idOf(saved.reference));
  EXPECT_EQ(content(*read), typed);
  EXPECT_EQ(content(*record), typed);
  EXPECT_EQ((*read)["FOIDR"].Text(), "O0201502" + std::to_string(idOf(saved.reference)));
  EXPECT_EQ((*read)["ClientOIDR"].Text(), kFirmA);
  EXPECT_EQ((*record)["OIDR"].Text(), saved.reference);
  EXPECT_EQ(content(*record, Given::Shown), content(*read, Given::Shown));
  EXPECT_FALSE(record->HasChanges());
  EXPECT_EQ(findingsText(session->db()), "");
}

TEST(OperSave, ReadsBackWhatWasSaved) {
  for (const auto& place : OperPlace::bothEngines()) savesAndReadsBack(place->open().get());
}

TEST(OperSave, ADeletedOperationReadsAsARowWithoutReference) {
  const auto session = memoryBooks();
  const HostResult result = session->load("O0201500", operRef(4711));
  ASSERT_EQ(result.Code, kDone);
  RowSet& record = *result.Data.AsRows();
  EXPECT_TRUE(record["OIDR"].IsNull());
  EXPECT_TRUE(record["FOIDR"].IsNull());
}

// Each change is made on the stored invoice; what is read afterwards is what the screen held.
struct Edit {
  const char* name;
  std::function<void(RowSet&)> change;
};
const Edit kEdits[] = {
    {"header alone", [](RowSet& r) { r["Comment"] = "kitas"; }},
    {"a sum", [](RowSet& r) { entries(r)["SumA"] = 1999.99; }},
    {"an account", [](RowSet& r) { entries(r)["AccountC"] = "501"; }},
    {"a date into another year",
     [](RowSet& r) { entries(r)["DateD"] = Variant(DateTime::Of(2003, 12, 31)); }},
    {"an addressee", [](RowSet& r) { (*entries(r)["BRProperties"].Rows())["FOIDR"] = kFirmB; }},
    {"an addressee is taken away", [](RowSet& r) { entries(r)["BRProperties"].Rows()->Delete(); }},
    {"an addressee is added",
     [](RowSet& r) {
       RowSet& refs = *entries(r)["BRProperties"].Rows();
       refs.AddNew();
       refs["Sign"] = -1.0;
       refs["FOIDR"] = kFirmB;
       refs["ShowString"] = "UAB Antra";
     }},
    {"an addressee changes its side",
     [](RowSet& r) { (*entries(r)["BRProperties"].Rows())["Sign"] = -1.0; }},
    {"a currency sum",
     [](RowSet& r) {
       entries(r).MoveLast();
       entries(r)["SumA"] = 1400.0;
       (*entries(r)["BRCurrency"].Rows())["SumCurr"] = 500.0;
     }},
    {"a currency moves to the other side",
     [](RowSet& r) {
       entries(r).MoveLast();
       (*entries(r)["BRCurrency"].Rows())["Sign"] = 1.0;
     }},
    {"a currency is replaced by another",
     [](RowSet& r) {
       entries(r).MoveLast();
       RowSet& rows = *entries(r)["BRCurrency"].Rows();
       rows.Delete();
       rows.AddNew();
       rows["Sign"] = -1.0;
       rows["RateCurr"] = 3.5;
       rows["SumCurr"] = 800.0;
       rows["FCurrencyCode"] = "EUR";
     }},
    {"an entry is deleted", [](RowSet& r) { entries(r).Delete(); }},
    {"all entries are deleted",
     [](RowSet& r) { ForEachRow(entries(r), [](RowSet& row) { row.Delete(); }); }},
    {"one goes, one changes, one comes",
     [](RowSet& r) {
       entries(r).Delete();
       entries(r).MoveFirst();
       entries(r)["Info"] = "pakeista";
       addEntry(r, {"6123", "2711", 10.5});
     }},
};

void editsInTurn(Session* session) {
  for (const Edit& edit : kEdits) {
    SCOPED_TRACE(edit.name);
    const int id = savedId(*session, kInvoice);
    const RowSetPtr record = loaded(*session, id);
    entries(*record).MoveFirst();
    edit.change(*record);
    const std::string typed = content(*record);
    const SaveOutcome saved = save(*session, *record);
    ASSERT_EQ(saved.Code, kDone) << saved.Text;
    EXPECT_EQ(content(*loaded(*session, id)), typed);
    EXPECT_EQ((*record)["RowVersion"].Number(), 2);
    EXPECT_EQ(findingsText(session->db()), "");
  }
}

TEST(OperSave, Edits) {
  for (const auto& place : OperPlace::bothEngines()) editsInTurn(place->open().get());
}

TEST(OperSave, ListsTheOperationsOfAGroupOrThoseOfAFilter) {
  const auto session = memoryBooks();
  savedId(*session, kInvoice);
  const int other = savedId(*session, {20040116, {{"2711", "500", 7}}, 4});
  const auto listed = [&](std::string_view first, std::string_view second) {
    const HostResult result = session->list("O0201500", first, second, "");
    EXPECT_EQ(result.Code, kDone) << result.Text;
    std::string text;
    ForEachRow(*result.Data.AsRows(), [&](RowSet& row) {
      text += row["OIDR"].Value().Show() + " " + row["DateD"].Value().Show() + " " +
              row["SumA"].Value().Show() + "; ";
    });
    return text;
  };
  EXPECT_EQ(listed("O02014004", ""), operRef(other) + " 2004.01.16 7; ");
  EXPECT_EQ(listed("", "SumA > 5000"), operRef(1) + " 2004.01.15 5160; ");
}

TEST(OperSave, DeletingLeavesNothingButTheProtocol) {
  const auto session = memoryBooks();
  const int id = savedId(*session, kInvoice);
  ASSERT_EQ(session->erase("O0201500", operRef(id)).Code, kDone);
  Database& db = session->db();
  for (const char* table :
       {"oper", "entry", "posting", "entry_ref", "open_item", "turn_acc", "turn_dim", "oper_doc"}) {
    EXPECT_EQ(integerFrom(db, "SELECT COUNT(*) FROM " + std::string(table)), 0) << table;
  }
  EXPECT_EQ(textFrom(db, "SELECT group_concat(action || ' ' || oper_name) FROM oper_log"),
            "C 2004.01.15,D 2004.01.15");
}

TEST(OperSave, ProtocolTellsOldAndNew) {
  const auto session = memoryBooks();
  const int id = savedId(*session, {20040115, {{"240", "500", 20, {{1, kFirmA}}}}});
  const RowSetPtr record = loaded(*session, id);
  (*record)["Comment"] = "kitas";
  entries(*record)["SumA"] = 21.5;
  addEntry(*record, {"2711", "2713", 5, {}, {{-1, "USD", 2.5, 2}}});
  ASSERT_EQ(save(*session, *record).Code, kDone);
  std::string told;
  for (const ProtocolChange& change :
       readableChanges(textFrom(session->db(), "SELECT detail FROM oper_log WHERE action = 'U'"))) {
    told += change.name + "|" + change.before + "|" + change.after + "\n";
  }
  EXPECT_EQ(told,
            "Comment|bandymas|kitas\n"
            "~|2004.01.15 240 500 20,00 D:rodoma O00001001|"
            "2004.01.15 240 500 21,50 D:rodoma O00001001\n"
            "+||2004.01.15 2711 2713[USD 2] 5,00\n");
}

TEST(OperSave, ASaveMakesBooksDurableOnce) {
  const auto place = OperPlace::file();
  const auto session = place->open();
  savedId(*session, kInvoice);
  const auto before = session->db().flushes();
  savedId(*session, kInvoice);
  EXPECT_EQ(session->db().flushes() - before, 1);
}

// Sums at the end of 2004.03.31 on each account's own side.
TEST(Demo, KnownAnswers) {
  const auto session = memoryBooks();
  run(session->db(), "DELETE FROM firm WHERE id = 77");
  fillDemo(*session);
  const std::map<std::string, std::int64_t> kWant = {
      {"2711", 4709000}, {"2721", 170000},  {"204", 3260000}, {"2441", 18000},  {"240", 136000},
      {"255", 30000},    {"301", -8200000}, {"4461", -36000}, {"500", -200000}, {"536", -10000},
      {"600", 120000},   {"636", 3000},     {"0", 0}};
  std::map<std::string, std::int64_t> sums;
  for (const auto& [key, sum] : Auditor::stored(session->db(), 20040331))
    sums[key.first] += sum.first;
  std::erase_if(sums, [](const auto& row) { return row.second == 0; });
  auto want = kWant;
  want.erase("0");
  EXPECT_EQ(sums, want);
  EXPECT_EQ(textFrom(session->db(),
                     "SELECT rest_lt || ' of ' || full_lt FROM open_item i JOIN account a"
                     " ON a.id = i.account_id WHERE a.code = '240'"),
            "136000 of 236000");
  EXPECT_EQ(integerFrom(session->db(),
                        "SELECT COUNT(*) FROM open_item i JOIN account a ON a.id = i.account_id"
                        " WHERE a.code = '450' AND is_open = 1"),
            0);
  EXPECT_EQ(textFrom(session->db(), "SELECT number FROM oper WHERE id = 4"), "P-0002");
  EXPECT_EQ(findingsText(session->db()), "");
}

TEST(Demo, GeneratedBooksAreInOrderAndAlwaysTheSame) {
  std::string first;
  for (int round = 0; round < 2; ++round) {
    const auto session = memoryBooks();
    Database& db = session->db();
    run(db, "DELETE FROM firm WHERE id = 77");
    fillDemo(*session);  // the large books go on where the small company stands
    generateDemo(db, 3000);
    EXPECT_EQ(findingsText(db), "");
    EXPECT_TRUE(numberGaps(db).empty());
    EXPECT_EQ(integerFrom(db, "SELECT COUNT(*) FROM oper"), 3010);
    const auto inCurrency =
        *integerFrom(db, "SELECT COUNT(DISTINCT oper_id) FROM posting WHERE cur <> 'LTL'");
    EXPECT_GT(inCurrency, 3000 * 6 / 100);
    EXPECT_LT(inCurrency, 3000 * 10 / 100);
    const std::string sums = textFrom(
        db, "SELECT SUM(debit * account_id) || ' ' || SUM(credit_cur * corr_id) FROM turn_acc");
    if (round == 0) first = sums;
    EXPECT_EQ(sums, first);
  }
}

}  // namespace
}  // namespace tolvex::store
