// The store's figures, as ratios within one run:
//   store_bench [--quick] [--folder FOLDER]
// Books are made in the folder (default: here) and kept, so that a second run finds them; --quick
// takes a twentieth of their size.
#include <algorithm>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "bench/demo_books.h"
#include "framework/references.h"
#include "host/store/dimset.h"
#include "host/store/guid.h"
#include "host/store/numbering.h"
#include "host/store/oper_save.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

using bench::cpuSeconds;
using bench::openOrMake;
using bench::wallSeconds;

constexpr int kSlices = 12, kPerSlice = 150;
constexpr const char* kBuyer = "O00001001";

std::unique_ptr<Session> openEmpty(const std::string& file) {
  for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(file + suffix);
  return openOrMake(file, 0);
}

// A sale with VAT: two entries with the buyer on the debit, numbered.
RowSetPtr sale(Session& session, int day) {
  const HostResult made = session.create("O0201500", "O0201500");
  RowSet& record = *made.Data.AsRows();
  record["DateD"] = Variant(DateTime::FromDayNumber(day));
  record["BROperGroupID"] = 4.0;
  record["Number"] = "S-0001";
  record["Comment"] = "Prekės";
  record["AutoNumber"] = 1.0;
  for (const auto& [credit, sum] : {std::pair{"500", 2000.0}, {"4461", 360.0}}) {
    RowSet& BR = *record["BR"].Rows();
    BR.AddNew();
    BR["GUID"] = newGuid();
    BR["DateD"] = record["DateD"].Value();
    BR["SumA"] = sum;
    BR["AccountD"] = "240";
    BR["AccountC"] = credit;
    BR["TradeOperationType"] = 2.0;
    BR["VATTariff"] = 18.0;
    RowSet& refs = *BR["BRProperties"].Rows();
    refs.AddNew();
    refs["Sign"] = 1.0;
    refs["FOIDR"] = kBuyer;
    refs["ShowString"] = "UAB Pirkėjas";
  }
  return made.Data.AsRows();
}

class Saver {
 public:
  explicit Saver(Session& session) : session_(session) {
    offerNumber(session, *readNumberRules(session.db(), 4), 1, "AD", "O0201500", kDay);
    session.offer().number = 1;  // what the sales below bear; every save draws the true one
  }
  void prepare() {
    for (int i = 0; i < kPerSlice; ++i) records_.push_back(sale(session_, kDay));
  }
  void run() {
    for (const RowSetPtr& record : records_) {
      const SaveOutcome saved = session_.save("O0201500", "O0201500", *record, nullptr, nullptr);
      if (saved.Code != kDone) throw BooksError(saved.Text);
    }
    records_.clear();
  }

 private:
  static constexpr int kDay = 20040617;
  Session& session_;
  std::vector<RowSetPtr> records_;
};

// The same operation's own rows by prepared statements, one transaction each.
class BareInserts {
 public:
  explicit BareInserts(Database& db) : db_(db) {
    HeaderRow& header = header_;
    header.otype = "O0201500";
    header.groupId = 4;
    header.day = 20040617;
    header.comment = "Prekės";
    db.beginWrite();
    header.bucketId = lockBucket(db, "bench");
    for (const char* credit : {"500", "4461"}) {
      EntryRow entry;
      entry.day = header.day;
      entry.sumLt = 200000;
      entry.tradeType = 2;
      entry.vatTariff = 1800;
      entry.debit.accountId = account("240");
      entry.debit.tracked = true;
      entry.credit.accountId = account(credit);
      entry.refs.push_back({0, 1, kBuyer, kAddressee, 0, "UAB Pirkėjas"});
      derive(entry, 0, dimsets_);
      entries_.push_back(entry);
    }
    db.commit();
  }
  void run() {
    for (int i = 0; i < kPerSlice; ++i) {
      Transaction transaction(db_, Transaction::For::Write);
      header_.id = 0;  // each is a new one
      header_.autoNumber = ++number_;
      header_.number = "S-" + std::to_string(number_);
      insertHeader(db_, header_);
      for (EntryRow& entry : entries_) {
        entry.id = 0;
        entry.guid = newGuid();
        entry.debit.itemId = header_.id;
        insertEntry(db_, header_.id, entry);
      }
      transaction.commit();
    }
  }

 private:
  int account(const char* code) {
    return static_cast<int>(
        *integerFrom(db_, "SELECT id FROM account WHERE plan = 0 AND code = $1", code));
  }
  Database& db_;
  HeaderRow header_;
  std::vector<EntryRow> entries_;
  DimsetIds ids_;
  Dimsets dimsets_{db_, ids_};
  int number_ = 0;
};

void saveAgainstBareInserts(const std::string& folder) {
  const auto books = openEmpty(folder + "/bench_saves.tolvex");
  const auto bareBooks = openEmpty(folder + "/bench_bare.tolvex");
  Saver saver(*books);
  BareInserts bare(bareBooks->db());
  saver.prepare();
  saver.run();
  bare.run();
  double saving = 0, inserting = 0, savingCpu = 0, insertingCpu = 0;
  for (int slice = 0; slice < kSlices; ++slice) {
    saver.prepare();
    double wall = wallSeconds(), cpu = cpuSeconds();
    saver.run();
    saving += wallSeconds() - wall;
    savingCpu += cpuSeconds() - cpu;
    wall = wallSeconds(), cpu = cpuSeconds();
    bare.run();
    inserting += wallSeconds() - wall;
    insertingCpu += cpuSeconds() - cpu;
  }
  constexpr double kDone = kSlices * kPerSlice;
  bench::note("saves of a two-entry operation a second", kDone / saving, "");
  bench::note("bare inserts of its rows a second", kDone / inserting, "");
  bench::note("processor time of a save", savingCpu / kDone * 1e6, "us");
  bench::note("processor time of the bare inserts", insertingCpu / kDone * 1e6, "us");
  bench::report("save of two entries: rate against bare inserts of its rows", inserting / saving,
                0.5, "", true);

  // Every flush of a save is one commit; now and then SQLite moves its log into the file besides.
  int once = 0;
  for (int i = 0; i < 200; ++i) {
    const RowSetPtr record = sale(*books, 20040618);
    const auto before = books->db().flushes();
    (void)books->save("O0201500", "O0201500", *record, nullptr, nullptr);
    if (books->db().flushes() - before == 1) ++once;
  }
  bench::report("saves that flush exactly once (the rest: the log was moved)", once / 2.0, 95, "%",
                true);
}

void saveIntoBigBooks(const std::string& folder, Session& big) {
  const auto small = openEmpty(folder + "/bench_small.tolvex");
  Saver intoSmall(*small), intoBig(big);
  double cpuSmall = 0, cpuBig = 0;
  for (int slice = 0; slice <= kSlices / 2; ++slice) {
    intoSmall.prepare();
    intoBig.prepare();
    double cpu = cpuSeconds();
    intoSmall.run();
    if (slice > 0) cpuSmall += cpuSeconds() - cpu;  // the first slice warms up
    cpu = cpuSeconds();
    intoBig.run();
    if (slice > 0) cpuBig += cpuSeconds() - cpu;
  }
  bench::report("save into big books: processor time against empty ones", cpuBig / cpuSmall, 2, "x",
                false);
}

void verifyAgainstGroupBy(Session& big) {
  std::vector<double> grouping, verifying;
  for (int round = 0; round < 3; ++round) {
    double start = cpuSeconds();
    auto select = big.db().prepare(
        "SELECT account_id, cur, SUM(sign * sum_lt), SUM(sign * sum_cur) FROM posting"
        " GROUP BY account_id, cur");
    while (select->step()) {
    }
    grouping.push_back(cpuSeconds() - start);
    start = cpuSeconds();
    const auto findings = verifyBooks(big.db());
    verifying.push_back(cpuSeconds() - start);
    if (!findings.empty()) throw BooksError(findings.front().text);
  }
  std::sort(grouping.begin(), grouping.end());
  std::sort(verifying.begin(), verifying.end());
  bench::note("plain GROUP BY over the postings", grouping[1], "s");
  bench::report("verify against a plain GROUP BY", verifying[1] / grouping[1], 5, "x", false);
}

// Saves `count` sales; numbered, each draws its number first, as a screen does.
void saveSales(Session& session, int count, bool numbered) {
  constexpr int kDay = 20040617, kGroup = 4;
  for (int i = 0; i < count; ++i) {
    const RowSetPtr record = sale(session, kDay);
    (*record)["AutoNumber"] = 0.0;
    if (numbered) {
      const int number =
          offerNumber(session, *readNumberRules(session.db(), kGroup), 1, "AD", "O0201500", kDay);
      (*record)["AutoNumber"] = static_cast<double>(number);
      (*record)["Number"] = session.offer().text;
    }
    const SaveOutcome saved = session.save("O0201500", "O0201500", *record, nullptr, nullptr);
    if (saved.Code != kDone) throw BooksError(saved.Text);
  }
}

// Two clients draw their numbers from one counter, against one client that draws none.
void numbersOfTwoClients(const std::string& folder, int operations) {
  const std::string one = folder + "/bench_one.tolvex", two = folder + "/bench_two.tolvex";
  const auto alone = openEmpty(one);
  double start = wallSeconds();
  saveSales(*alone, operations, false);
  const double plain = wallSeconds() - start;

  const auto first = openEmpty(two);
  const auto second = openBooks(two, "admin", "");
  std::string failure;
  start = wallSeconds();
  std::thread other([&] {
    try {
      saveSales(*second, operations / 2, true);
    } catch (const std::exception& error) {
      failure = error.what();
    }
  });
  saveSales(*first, operations - operations / 2, true);
  other.join();
  const double together = wallSeconds() - start;
  if (!failure.empty()) throw BooksError(failure);
  const auto highest = integerFrom(first->db(), "SELECT MAX(auto_number) FROM oper");
  const auto drawn = integerFrom(first->db(), "SELECT COUNT(DISTINCT auto_number) FROM oper");
  if (highest != operations || drawn != operations)
    throw BooksError("the numbers of two clients have gaps or doubles");
  bench::note("one client without numbers, operations a second", operations / plain, "");
  bench::note("two clients with numbers, operations a second", operations / together, "");
  bench::report("two clients with numbers against one without", plain / together, 0.6, "x", true);
}

int benchmarks(bool quick, const std::string& folder) {
  const int operations = quick ? 50000 : 1000000;
  std::printf("store, big books of %d operations\n", operations);
  saveAgainstBareInserts(folder);
  numbersOfTwoClients(folder, quick ? 5000 : 100000);
  const auto big = openOrMake(bench::booksOf(folder, operations), operations);
  saveIntoBigBooks(folder, *big);
  verifyAgainstGroupBy(*big);
  return bench::missed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tolvex::store

int main(int count, char** arguments) {
  return tolvex::bench::measured(count, arguments, tolvex::store::benchmarks);
}
