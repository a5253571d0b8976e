// Figures of works on the books as a whole, as ratios within one run:
//   conversion_bench [--quick] [--folder FOLDER]
// Both are measured on a copy of the kept demo books, which goes afterwards.
#include <filesystem>

#include "bench/demo_books.h"
#include "host/store/backup.h"
#include "host/store/plan_mapping.h"
#include "host/store/schema.h"
#include "host/store/sql.h"
#include "host/store/sqlite_database.h"

namespace tolvex::store {
namespace {

using bench::wallSeconds;
namespace fs = std::filesystem;

constexpr int kRounds = 3;

// Fastest of some rounds: whatever else the machine does only adds.
template <class Work>
double fastest(Work work) {
  double best = 0;
  for (int round = 0; round < kRounds; ++round) {
    const double start = wallSeconds();
    work();
    const double seconds = wallSeconds() - start;
    if (round == 0 || seconds < best) best = seconds;
  }
  return best;
}

void removeBooks(const std::string& file) {
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) fs::remove(file + suffix);
}

void backupAgainstEngine(Database& db, const std::string& file) {
  const double ours = fastest([&] { backupBooks(db, file); });
  const double engines = fastest([&] {
    removeBooks(file);
    const Transaction snapshot(db, Transaction::For::Read);
    copySqlite(
        db, file, [](void*, double) { return true; }, nullptr);
  });
  removeBooks(file);
  bench::note("the engine's own copy of the file", engines, "s");
  bench::report("backup against the engine's own copy", ours / engines, 1.5, "x", false);
}

// Every account that the books use moves, some onto one counterpart.
void makeNewPlan(Database& db) {
  Transaction making(db, Transaction::For::Write);
  const int group = insertedId(db,
                               "INSERT INTO account (plan, code, name, type, group_flag)"
                               " VALUES (1, '9', 'Nauja', 'D', 1) RETURNING id");
  for (const std::string& code : withoutCounterpart(db)) {
    const std::string counterpart = "9" + code.substr(0, 3);
    run(db,
        "INSERT INTO account (plan, parent_id, code, name, type)"
        " VALUES (1, $1, $2, 'Nauja', 'D') ON CONFLICT (plan, code) DO NOTHING",
        group, counterpart);
    run(db,
        "UPDATE account SET new_id = (SELECT id FROM account WHERE plan = 1 AND code = $2)"
        " WHERE plan = 0 AND code = $1",
        code, counterpart);
  }
  making.commit();
}

// The tables that a conversion writes, copied bare into books without a row: same columns, keys and
// indices, no questions asked. One transaction on the disk, as the conversion is one.
double copyOfItsTables(const std::string& books, const std::string& file) {
  removeBooks(file);
  Database::Options options;
  options.create = true;
  const auto empty = Database::open(file, options);
  migrate(*empty, 0);
  Database& db = *empty;
  db.execute("PRAGMA foreign_keys = OFF");
  db.execute("ATTACH '" + books + "' AS books");
  const double start = wallSeconds();
  Transaction copying(db, Transaction::For::Write);
  for (const char* table : {"posting", "turn_acc", "turn_dim", "open_item"}) {
    db.execute(std::string("INSERT INTO main.") + table + " SELECT * FROM books." + table);
  }
  copying.commit();
  return wallSeconds() - start;
}

void conversionAgainstCopy(const std::string& file, const std::string& scratch) {
  const double copying = copyOfItsTables(file, scratch);
  removeBooks(scratch);
  const auto session = openBooks(file, "admin", "");
  makeNewPlan(session->db());
  const double start = wallSeconds();
  const HostResult converted = session->call("O0200400", "Convert", "");
  const double converting = wallSeconds() - start;
  if (converted.Code != kDone) throw BooksError(converted.Text);
  bench::note("bare copy of the tables that a conversion writes", copying, "s");
  bench::note("conversion", converting, "s");
  bench::report("conversion against the bare copy of its tables", converting / copying, 3, "x",
                false);
}

int benchmarks(bool quick, const std::string& folder) {
  // Nearly two entries an operation.
  const int operations = quick ? 50000 : 1000000;
  std::printf("works on the whole books of %d operations\n", operations);
  const std::string scratch = folder + "/bench_scratch.tolvex";
  const std::string books = folder + "/bench_converted.tolvex";
  removeBooks(scratch);
  removeBooks(books);
  {
    const auto kept = bench::openOrMake(bench::booksOf(folder, operations), operations);
    bench::note("entries",
                static_cast<double>(*integerFrom(kept->db(), "SELECT COUNT(*) FROM entry")), "");
    backupAgainstEngine(kept->db(), scratch);
    backupBooks(kept->db(), books);
  }
  conversionAgainstCopy(books, scratch);
  removeBooks(books);
  return bench::missed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tolvex::store

int main(int count, char** arguments) {
  return tolvex::bench::measured(count, arguments, tolvex::store::benchmarks);
}
