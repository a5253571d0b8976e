// Lock dates: how they are kept, and that no way of writing an entry gets past them.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <thread>

#include "framework/references.h"
#include "host/store/records.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

constexpr const char* kKind = "O0201300";

Variant dateOrNull(int day) {
  return day != 0 ? Variant(DateTime::FromDayNumber(day)) : Variant(Null{});
}

void setDates(RowSet& row, int high, int low) {
  row["DateToHigh"] = dateOrNull(high);
  row["DateToLow"] = dateOrNull(low);
}

RowSetPtr lockOf(Session& session, const std::string& account) {
  const auto id = integerFrom(
      session.db(), "SELECT id FROM account WHERE plan IN (0, -9) AND code = $1", account);
  RowSetPtr lock = rowsIn(session.load(kKind, refOf(kKind, static_cast<int>(*id))));
  lock->MoveFirst();
  return lock;
}

SaveOutcome saveLock(Session& session, RowSet& lock, RowSet* further = nullptr) {
  return session.save(kKind, "", lock, further, nullptr);
}

void lock(Session& session, const std::string& account, int high, int low) {
  const RowSetPtr record = lockOf(session, account);
  setDates(*record, high, low);
  ASSERT_EQ(saveLock(session, *record).Code, kDone);
}

std::string locksIn(Session& session) {
  std::string text;
  const RowSetPtr list = rowsIn(session.list(kKind, " DateToLow>'1900.01.01'", "", ""));
  ForEachRow(*list, [&](RowSet& row) {
    text.append(row["Account"].Text()).append(" ").append(row["DateToHigh"].Value().Show());
    text.append("-").append(row["DateToLow"].Value().Show()).append(";");
  });
  return text;
}

// --- the dates
// -----------------------------------------------------------------------------------

class Locks : public BooksTest {};

TEST_P(Locks, AreShownForEveryAccountAndTheOpeningBalances) {
  RowSetPtr list = rowsIn(session().list(kKind, "", "", ""));
  EXPECT_EQ((*list)["Account"].Text(), "0");
  EXPECT_EQ((*list)["Preview"].Text(), "Likutis");
  EXPECT_EQ(
      list->RecordCount(),
      *integerFrom(db(), "SELECT COUNT(*) FROM account WHERE plan = 0 AND group_flag = 0") + 1);
  EXPECT_EQ(locksIn(session()), "");

  const RowSetPtr record = lockOf(session(), "0");
  setDates(*record, 20040201, 20040131);
  EXPECT_EQ(saveLock(session(), *record).Code, kRuleBroken) << "the head's date is the later one";
  setDates(*record, 20040201, 20040228);
  EXPECT_EQ(saveLock(session(), *record).Code, kDone);
  EXPECT_EQ(locksIn(session()), "0 2004.02.01-2004.02.28;");
  setDates(*record, 0, 0);
  EXPECT_EQ(saveLock(session(), *record).Code, kDone);
  EXPECT_FALSE(anyRow(db(), "SELECT 1 FROM account_lock"));
  EXPECT_EQ(session().erase(kKind, "O02013000").Code, kObjectGone);
}

TEST_P(Locks, AreRefusedWhenSomebodyElseMovedThem) {
  const RowSetPtr mine = lockOf(session(), "500");
  lock(session(), "500", 0, 20040131);
  setDates(*mine, 0, 20040229);
  EXPECT_EQ(saveLock(session(), *mine).Code, kChangedByOther);
  // Cleared and set again is changed as well.
  const RowSetPtr stale = lockOf(session(), "500");
  lock(session(), "500", 0, 0);
  lock(session(), "500", 0, 20040115);
  setDates(*stale, 0, 0);
  EXPECT_EQ(saveLock(session(), *stale).Code, kChangedByOther);
  EXPECT_EQ(locksIn(session()), "500 -2004.01.15;");
}

TEST_P(Locks, OfAWholeListAreSetTogetherOrNotAtAll) {
  const auto setAll = [](RowSet& list, int high, int low) {
    ForEachRow(list, [&](RowSet& row) { setDates(row, high, low); });
  };
  const RowSetPtr door = lockOf(session(), "0");
  const RowSetPtr stale = rowsIn(session().list(kKind, "", "", ""));
  lock(session(), "2711", 0, 20031231);
  setAll(*stale, 20040131, 20040131);
  const SaveOutcome refused = saveLock(session(), *door, stale.get());
  EXPECT_EQ(refused.Code, kChangedByOther);
  EXPECT_NE(refused.Text.find("2711"), std::string::npos) << refused.Text;
  EXPECT_EQ(locksIn(session()), "2711 -2003.12.31;");

  const RowSetPtr fresh = rowsIn(session().list(kKind, "", "", ""));
  setAll(*fresh, 20040131, 20040229);
  EXPECT_EQ(saveLock(session(), *door, fresh.get()).Code, kDone);
  EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM account_lock"), fresh->RecordCount());
  EXPECT_FALSE(fresh->HasChanges());
  setAll(*fresh, 0, 0);
  EXPECT_EQ(saveLock(session(), *door, fresh.get()).Code, kDone);
  EXPECT_EQ(locksIn(session()), "");
}

TEST_P(Locks, NeedTheirRightAndTheAccount) {
  addUser("jonas", 3);
  const RowSetPtr record = lockOf(session(), "500");
  if (GetParam() != Store::Memory) {
    const auto clerk = another("jonas");
    const RowSetPtr his = lockOf(*clerk, "500");
    setDates(*his, 0, 20040131);
    EXPECT_EQ(saveLock(*clerk, *his).Code, kNoSaveRight);
    EXPECT_EQ(clerk->erase(kKind, (*his)["OIDR"].Text()).Code, kEditedGone);
  }
  run(db(), "UPDATE account SET code = '50099' WHERE code = '500' AND plan = 0");
  setDates(*record, 0, 20040131);
  EXPECT_EQ(saveLock(session(), *record).Code, kReferred) << "the number has gone to another";
}

TEST_P(Locks, TheLatestDayIsThatOfAnyAccount) {
  const auto lockedTo = [&] {
    return (*rowsIn(session().call(kKind, "GetLockedTo", "None")))["Date"].Value().Show();
  };
  EXPECT_EQ(lockedTo(), "");
  lock(session(), "500", 0, 20040131);
  lock(session(), "0", 20031231, 20040229);
  EXPECT_EQ(lockedTo(), "2004.02.29");
}

TOLVEX_ALL_STORES(Locks);

// --- entries
// -------------------------------------------------------------------------------------

// Locks on account 240, on "0" or on none; what is tried; whether it is refused.
struct LockCase {
  const char* name;
  const char* account;
  int high, low;
  bool mayAll;
  std::function<void(RowSet&)> change;  // of a stored entry 240-0 of 2004.01.15
  const char* refusal;
};

RowSet& entry(RowSet& record) { return *record["BR"].Rows(); }
void setDay(RowSet& record, unsigned day) {
  entry(record)["DateD"] = Variant(DateTime::Of(2004, 1, day));
}
const auto kSum = [](RowSet& r) { entry(r)["SumA"] = 30.0; };
constexpr const char* k240 = "Sąskaita 240 užblokuota iki 2004.01.15!";

const LockCase kLocks[] = {
    {"the last locked day", "240", 20040115, 20040115, true, kSum, k240},
    {"the day after the lock", "240", 20040114, 20040114, true, kSum, ""},
    {"the lower date for all others", "240", 20040101, 20040120, false, kSum,
     "Sąskaita 240 užblokuota iki 2004.01.20!"},
    {"the lower date alone", "240", 0, 20040115, false, kSum, k240},
    {"the lower date does not bind who may all", "240", 20040101, 20040120, true, kSum, ""},
    {"the higher date binds even him", "240", 20040115, 20040120, true, kSum, k240},
    {"no account is an account too", "0", 20040115, 20040115, true, kSum,
     "Sąskaita 0 užblokuota iki 2004.01.15!"},
    {"a lock holds for the very account", "24", 20040115, 20040115, true, kSum, ""},
    {"an entry may not leave the locked days", "240", 20040115, 20040115, true,
     [](RowSet& r) { setDay(r, 25); }, k240},
    {"nor enter them", "240", 20040110, 20040110, true, [](RowSet& r) { setDay(r, 5); },
     "Sąskaita 240 užblokuota iki 2004.01.10!"},
    {"nor be moved to another account", "240", 20040115, 20040115, true,
     [](RowSet& r) { entry(r)["AccountD"] = "2711"; }, k240},
    {"nor come from another one", "2711", 20040115, 20040115, true,
     [](RowSet& r) { entry(r)["AccountD"] = "2711"; }, "Sąskaita 2711 užblokuota iki 2004.01.15!"},
    {"nor change sides", "240", 20040115, 20040115, true,
     [](RowSet& r) {
       entry(r)["AccountD"] = "0";
       entry(r)["AccountC"] = "240";
     },
     k240},
    {"nor be deleted", "240", 20040115, 20040115, true, [](RowSet& r) { entry(r).Delete(); }, k240},
    {"nor lose an addressee", "240", 20040115, 20040115, true,
     [](RowSet& r) { entry(r)["BRProperties"].Rows()->Delete(); }, k240},
    {"nor get a currency", "240", 20040115, 20040115, true,
     [](RowSet& r) {
       RowSet& sides = *entry(r)["BRCurrency"].Rows();
       sides.AddNew();
       sides["Sign"] = 1.0;
       sides["FCurrencyCode"] = "EUR";
       sides["RateCurr"] = 3.4528;
       sides["SumCurr"] = 5.79;
     },
     k240},
    {"its text may change", "240", 20040115, 20040115, true,
     [](RowSet& r) { entry(r)["Info"] = "kita"; }, ""},
    {"the operation's own date and comment may", "240", 20040115, 20040115, true,
     [](RowSet& r) {
       r["DateD"] = Variant(DateTime::Of(2004, 1, 20));
       r["Comment"] = "kitas";
     },
     ""},
    {"a new entry may not come", "240", 20040115, 20040115, true,
     [](RowSet& r) {
       addEntry(r, {"0", "240", 3});
     },
     k240},
    {"a new entry of a later day may", "240", 20040115, 20040115, true,
     [](RowSet& r) {
       addEntry(r, {"0", "240", 3, {}, {}, 20040116});
     },
     ""},
};

TEST(EntryLocks, BindWhatTouchesAnEntry) {
  for (const LockCase& c : kLocks) {
    SCOPED_TRACE(c.name);
    const auto session = memoryBooks();
    const int id = savedId(*session, {20040115, {{"240", "0", 20, {{1, kFirmA}}}}});
    lock(*session, c.account, c.high, c.low);
    if (!c.mayAll) {
      run(session->db(), "UPDATE right_grant SET can_edit = 0 WHERE component = 'CAllAccLock'");
    }
    const RowSetPtr record = loaded(*session, id);
    c.change(*record);
    const std::string before = allTables(session->db());
    const SaveOutcome saved = save(*session, *record);
    EXPECT_EQ(saved.Text, c.refusal);
    EXPECT_EQ(saved.Code, *c.refusal ? int{kLocked} : int{kDone});
    if (*c.refusal) {
      EXPECT_TRUE(allTables(session->db()) == before) << "tables differ";
    }
  }
}

TEST(EntryLocks, BindWholeOperations) {
  const auto session = memoryBooks();
  const TestOper invoice{20040115, {{"240", "500", 20, {{1, kFirmA}}}}};
  const int id = savedId(*session, invoice);
  lock(*session, "500", 20040131, 20040131);
  EXPECT_EQ(save(*session, *newOperation(*session, invoice)).Code, kLocked);
  EXPECT_EQ(session->erase("O0201500", operRef(id)).Code, kLocked);
  // What points at a locked entry later is an entry of its own.
  const int payment = savedId(*session, {20040210, {{"2711", "240", 20, {{-1, operRef(id)}}}}});
  EXPECT_EQ(session->erase("O0201500", operRef(payment)).Code, kDone);
  EXPECT_EQ(findingsText(session->db()), "");
  lock(*session, "500", 0, 0);
  EXPECT_EQ(session->erase("O0201500", operRef(id)).Code, kDone);
}

TEST(EntryLocks, ALockSetAfterOpeningBindsTheSave) {
  const auto session = memoryBooks();
  const int id = savedId(*session, {20040115, {{"240", "500", 20, {{1, kFirmA}}}}});
  const RowSetPtr open = loaded(*session, id);
  lock(*session, "240", 20040115, 20040115);
  entry(*open)["SumA"] = 21.0;
  EXPECT_EQ(save(*session, *open).Code, kLocked);
  lock(*session, "240", 0, 0);
  EXPECT_EQ(save(*session, *open).Code, kDone) << "what was typed is kept by a refusal";
}

// --- two clients
// ---------------------------------------------------------------------------------

class LockRace : public testing::TestWithParam<Store> {
 protected:
  void SetUp() override {
    place_ = GetParam() == Store::File ? OperPlace::file() : OperPlace::postgres();
    if (!place_) GTEST_SKIP() << "no PostgreSQL server (TOLVEX_TEST_PG)";
    first_ = place_->open();
    second_ = place_->open();
  }
  std::unique_ptr<OperPlace> place_;
  std::unique_ptr<Session> first_, second_;
};

// The lock is written and not yet committed while the other client saves: he has to wait, and then
// to see it.
TEST_P(LockRace, ASaveThatWaitedForTheLockSeesIt) {
  const int id = savedId(*second_, {20040115, {{"240", "500", 20, {{1, kFirmA}}}}});
  const RowSetPtr record = loaded(*second_, id);
  entry(*record)["SumA"] = 30.0;
  const RowSetPtr dates = lockOf(*first_, "240");
  setDates(*dates, 20040131, 20040131);
  std::promise<void> written;
  std::thread head([&] {
    const HostResult set = first_->guarded(Transaction::For::Write, [&]() -> Variant {
      recordHandler(kKind)->save(*first_, kKind, "", *dates->Changes(), nullptr, nullptr);
      written.set_value();
      std::this_thread::sleep_for(std::chrono::milliseconds(300));
      return {};
    });
    EXPECT_EQ(set.Code, kDone) << set.Text;
  });
  written.get_future().wait();
  EXPECT_EQ(save(*second_, *record).Code, kLocked);
  head.join();
  EXPECT_EQ(findingsText(first_->db()), "");
}

INSTANTIATE_TEST_SUITE_P(Engines, LockRace, testing::Values(Store::File, Store::Postgres), nameOf);

}  // namespace
}  // namespace tolvex::store
