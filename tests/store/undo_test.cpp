// Undo of saves: random work taken back step by step gives back every earlier state; and what
// refuses an undo.
#include "host/store/undo.h"

#include <gtest/gtest.h>
// after the test framework that it reports to
#include <rapidcheck/gtest.h>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/oper_image.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

const TestOper kInvoice = {20040115, {{"2711", "500", 118, {{1, kFirmA}}}, {"204", "450", 10}}};

RowSet& entries(RowSet& record) { return *record["BR"].Rows(); }

HostResult undo(Session& session, int id, int version) {
  return session.call("O0201500", "UndoSave", "'" + operRef(id) + "'," + std::to_string(version));
}

int versionOf(Session& session, int id) {
  return static_cast<int>(
      integerFrom(session.db(), "SELECT row_version FROM oper WHERE id = $1", id).value_or(0));
}

HostResult undoNow(Session& session, int id) { return undo(session, id, versionOf(session, id)); }

// The operation with its entries in their order, but without its version; "" when it is gone.
std::string state(Session& session, int id) {
  if (versionOf(session, id) == 0) return "";
  std::string text = content(*loaded(session, id), Given::Shown);
  const auto from = text.find("RowVersion=");
  text.erase(from, text.find(';', from) - from);
  // Rows of references may be other rows than before.
  for (auto at = text.find("\n    ID="); at != std::string::npos; at = text.find("\n    ID=", at)) {
    text.erase(at + 5, text.find(';', at) - at - 4);
  }
  return text;
}

int below(int limit) { return *rc::gen::inRange(0, limit); }

TestEntry randomEntry(int other) {
  static constexpr const char* kAccounts[] = {"240", "450", "2711", "500", "204", "0"};
  TestEntry entry;
  entry.debit = kAccounts[below(5)];
  entry.credit = kAccounts[below(6)];
  entry.sum = (1 + below(99999)) / 100.0;
  if (below(3) == 0) {
    entry.sum = 270;
    entry.currencies.push_back({below(2) != 0 ? 1 : -1, "USD", 2.7, 100});
  }
  for (const int sign : {1, -1}) {
    if (below(2) == 0) entry.refs.push_back({sign, below(2) != 0 ? kFirmA : kFirmB});
    if (below(3) == 0) entry.refs.push_back({sign, operRef(other)});
  }
  return entry;
}

void randomEdit(RowSet& record, int other) {
  RowSet& BR = *record["BR"].Rows();
  const int kind = below(6);
  if (kind == 0) record["Comment"] = "tab\tir\r\neilutė \\" + std::to_string(below(1000));
  if (kind == 1) record["DateD"] = Variant(DateTime::FromDayNumber(20040101 + below(28)));
  if (kind < 3 || BR.RecordCount() == 0) return addEntry(record, randomEntry(other));
  BR.Move(below(static_cast<int>(BR.RecordCount())));
  RowSet& refs = *BR["BRProperties"].Rows();
  if (kind == 3) BR.Delete();
  if (kind == 4) BR["DateD"] = Variant(DateTime::FromDayNumber(20040101 + below(28)));
  if (kind == 5 && refs.RecordCount() > 0) {
    refs.MoveFirst();
    refs.Delete();
  } else if (kind == 5) {
    BR["AccountC"] = "2713";
  }
}

RC_GTEST_PROP(Undo, GivesBackEveryEarlierState, ()) {
  const auto session = memoryBooks();
  const int other = savedId(*session, kInvoice);
  const RowSetPtr record = newOperation(*session, {20040110, {randomEntry(other)}});
  const SaveOutcome saved = save(*session, *record);
  RC_ASSERT(saved.Text == "");
  const int id = idOf(saved.reference);
  std::vector<std::string> states = {"", state(*session, id)};
  for (int steps = 1 + below(6); steps > 0; --steps) {
    const RowSetPtr read = loaded(*session, id);
    randomEdit(*read, other);
    RC_ASSERT(save(*session, *read).Text == "");
    states.push_back(state(*session, id));
    if (below(4) == 0) {  // there and back in between
      RC_ASSERT(undoNow(*session, id).Text == "");
      states.pop_back();
      RC_ASSERT(state(*session, id) == states.back());
    }
  }
  if (below(2) == 0) {
    RC_ASSERT(session->erase("O0201500", operRef(id)).Code == kDone);
    states.emplace_back();
  }
  RC_ASSERT(findingsText(session->db()) == "");
  while (states.size() > 1) {
    const HostResult undone = undoNow(*session, id);
    RC_ASSERT(undone.Text == "");
    states.pop_back();
    RC_ASSERT(state(*session, id) == states.back());
    RC_ASSERT(findingsText(session->db()) == "");
  }
}

class UndoTest : public testing::Test {
 protected:
  void change(const char* comment) {
    const RowSetPtr record = loaded(*session, id);
    (*record)["Comment"] = comment;
    ASSERT_EQ(save(*session, *record).Code, kDone);
  }
  void refused(int code, int version) {
    const std::string before = allTables(session->db());
    EXPECT_EQ(undo(*session, id, version).Code, code);
    EXPECT_EQ(allTables(session->db()), before);
  }

  std::unique_ptr<Session> session = memoryBooks();
  int id = savedId(*session, kInvoice);
};

TEST_F(UndoTest, IsLoggedAndNamesWhatItTookBack) {
  change("kitas");
  const int changed =
      static_cast<int>(integerFrom(session->db(), "SELECT MAX(id) FROM oper_log").value_or(0));
  ASSERT_EQ(undoNow(*session, id).Code, kDone);
  EXPECT_EQ(textFrom(session->db(), "SELECT action FROM oper_log ORDER BY id DESC"), "A");
  const auto image =
      imageFrom(textFrom(session->db(), "SELECT detail FROM oper_log ORDER BY id DESC"));
  ASSERT_TRUE(image.has_value());
  EXPECT_EQ(image->undone, changed);
}

TEST(Undo, OfADeleteGivesTheOldIdAndOfItsUndoTheOperationAgain) {
  for (const auto& place : OperPlace::bothEngines()) {
    const auto session = place->open();
    const int id = savedId(*session, kInvoice);
    const std::string before = state(*session, id);
    ASSERT_EQ(session->erase("O0201500", operRef(id)).Code, kDone);
    ASSERT_EQ(undoNow(*session, id).Text, "");
    EXPECT_EQ(state(*session, id), before);
    ASSERT_EQ(undoNow(*session, id).Text, "") << "the creation";
    EXPECT_EQ(state(*session, id), "");
    ASSERT_EQ(undoNow(*session, id).Text, "") << "what an undo removed comes back";
    EXPECT_EQ(state(*session, id), before);
    const RowSetPtr record = loaded(*session, id);
    entries(*record).MoveFirst();
    entries(*record).Delete();
    ASSERT_EQ(save(*session, *record).Text, "");
    ASSERT_EQ(undoNow(*session, id).Text, "");
    EXPECT_EQ(state(*session, id), before) << "an entry comes back in its place";
    EXPECT_EQ(findingsText(session->db()), "");
  }
}

// What a save adds to the protocol for its undo; an operation of two entries.
TEST_F(UndoTest, KeepsLittle) {
  const auto kept = [&] {
    const std::string detail =
        textFrom(session->db(), "SELECT detail FROM oper_log ORDER BY id DESC");
    return detail.size() - detail.find("=V");
  };
  EXPECT_LT(kept(), 20U) << "a new operation has nothing to give back";
  change("kitas");
  EXPECT_LT(kept(), 250U) << "a header";
  ASSERT_EQ(session->erase("O0201500", operRef(id)).Code, kDone);
  EXPECT_LT(kept(), 700U) << "all of it";
  RecordProperty("bytes of a delete", static_cast<int>(kept()));
}

TEST_F(UndoTest, RefusedAfterAnothersSave) {
  const int seen = versionOf(*session, id);
  change("kito vartotojo");
  refused(kChangedByOther, seen);
}

TEST_F(UndoTest, RefusedOnLockedAccounts) {
  run(session->db(),
      "INSERT INTO account_lock (account_id, day_high, day_low, user_id)"
      " SELECT id, 20040131, NULL, 1 FROM account WHERE code = '500' AND plan = 0");
  refused(kLocked, versionOf(*session, id));
}

TEST_F(UndoTest, RefusedWhereOthersFollow) {
  const RowSetPtr record = loaded(*session, id);
  addEntry(*record, {"240", "500", 5});
  ASSERT_EQ(save(*session, *record).Code, kDone);
  savedId(*session, {20040120, {{"2711", "240", 5, {{-1, operRef(id)}}}}});
  refused(kReferred, versionOf(*session, id));
}

TEST_F(UndoTest, RefusedAfterAChangeThatWasNoSave) {
  run(session->db(), "UPDATE oper SET row_version = row_version + 1 WHERE id = $1", id);
  refused(kRuleBroken, versionOf(*session, id));
}

TEST_F(UndoTest, RefusedWithNothingLeft) {
  ASSERT_EQ(undoNow(*session, id).Code, kDone);
  id = 4711;
  refused(kRuleBroken, 0);
}

// An engine that counts ids by the rows that are there gives those of the last entries away.
TEST(Undo, OfADeleteKeepsTheOrderOfEntriesWhoseIdsWereGivenAway) {
  for (const int newcomers : {1, 2, 3}) {
    SCOPED_TRACE(newcomers);
    const auto session = memoryBooks();
    const int id = savedId(
        *session,
        {20040115, {{"240", "500", 100, {{1, kFirmB}}}, {"240", "4461", 18, {{1, kFirmA}}}}});
    ASSERT_EQ(session->erase("O0201500", operRef(id)).Code, kDone);
    TestOper newcomer{20040116, {}};
    newcomer.entries.resize(static_cast<std::size_t>(newcomers), {"2711", "500", 5});
    savedId(*session, newcomer);
    EXPECT_EQ(undoNow(*session, id).Text, "");
    const RowSetPtr record = loaded(*session, id);
    std::string sums;
    ForEachRow(entries(*record),
               [&](RowSet& row) { sums += plainNumber(row["SumA"].Number()) + " "; });
    EXPECT_EQ(sums, "100 18 ");
    EXPECT_EQ(findingsText(session->db()), "");
  }
}

TEST_F(UndoTest, ADeletedNumberThatWasTakenBecomesTheNext) {
  run(session->db(),
      "UPDATE oper_group SET an_mask = 'Prefix_AutoNumber', an_prefix = 'A'"
      " WHERE id = 2");
  const auto numbered = [&](int number) {
    const RowSetPtr record = newOperation(*session, kInvoice);
    (*record)["AutoNumber"] = number;
    (*record)["Number"] = "A-" + std::to_string(number);
    const SaveOutcome saved = save(*session, *record);
    EXPECT_EQ(saved.Text, "");
    return idOf(saved.reference);
  };
  const int first = numbered(1);
  ASSERT_EQ(session->erase("O0201500", operRef(first)).Code, kDone);
  ASSERT_EQ(undoNow(*session, first).Code, kDone);
  EXPECT_EQ((*loaded(*session, first))["Number"].Text(), "A-1");
  ASSERT_EQ(session->erase("O0201500", operRef(first)).Code, kDone);
  numbered(1);
  ASSERT_EQ(undoNow(*session, first).Code, kDone);
  EXPECT_EQ((*loaded(*session, first))["Number"].Text(), "A-0002");
  EXPECT_EQ((*loaded(*session, first))["AutoNumber"].Number(), 2);
}

}  // namespace
}  // namespace tolvex::store
