// Record sets against a loop over plain structs, a hash map, and SQLite in memory:
//   recordset_bench [--quick]
// Both sides of a ratio run in turn in this one program, by the time of its thread.
#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/goals.h"
#include "bench/measure.h"
#include "framework/recordset.h"

namespace tolvex::bench {
namespace {

double kept = 0;  // so that nothing is left out as unused
void keep(double value) { kept += value; }

// Bytes in use, with what the allocator adds.
std::size_t allocated() {
  const auto heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

struct Entry {
  std::string GUID, OIDR, AccountD, AccountC, CurrCode, Tag, Info;
  double SumA, SumCurr, RateCurr, BRDate;
  int Sign, SortOrder;
};

constexpr ColumnSpec kEntry[] = {
    {"GUID", FieldType::Text, 50},     {"OIDR", FieldType::Text, 20},
    {"AccountD", FieldType::Text, 10}, {"AccountC", FieldType::Text, 10},
    {"CurrCode", FieldType::Text, 10}, {"Tag", FieldType::Text, 50},
    {"Info", FieldType::Text, 500},    {"SumA", FieldType::Double},
    {"SumCurr", FieldType::Double},    {"RateCurr", FieldType::Double},
    {"BRDate", FieldType::Double},     {"Sign", FieldType::Integer},
    {"SortOrder", FieldType::Integer},
};
enum Ordinal : std::size_t {
  GUID,
  OIDR,
  AccountD,
  AccountC,
  CurrCode,
  Tag,
  Info,
  SumA,
  SumCurr,
  RateCurr,
  BRDate,
  Sign,
  SortOrder
};

std::string guidText(std::mt19937& random) {
  char text[40];
  std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%04X-%04X%08X}", unsigned(random()),
                unsigned(random() & 0xFFFF), unsigned(random() & 0xFFFF),
                unsigned(random() & 0xFFFF), unsigned(random() & 0xFFFF), unsigned(random()));
  return text;
}

// A journal: some two hundred accounts, ten entries an operation, a comment to every third entry.
std::vector<Entry> madeEntries(std::size_t rows) {
  std::mt19937 random(20040209);
  const char* currencies[] = {"   ", "EUR", "USD"};
  std::vector<Entry> entries;
  for (std::size_t i = 0; i < rows; ++i) {
    const auto account = [&] { return std::to_string(200 + random() % 200); };
    Entry e{guidText(random),
            "O0201500" + std::to_string(i / 10),
            account(),
            account(),
            currencies[random() % 3],
            random() % 5 == 0 ? "pažymėta" : "",
            "Prekių pirkimas, sąskaita Nr. " + std::to_string(random() % (rows / 3 + 1)),
            double(random() % 1000000) / 100,
            double(random() % 100000) / 100,
            3.4528,
            double(1041379200 + 86400 * std::int64_t(random() % 365)),
            random() % 2 == 0 ? 1 : -1,
            int(i % 10)};
    entries.push_back(std::move(e));
  }
  return entries;
}

RowSetPtr filled(const std::vector<Entry>& entries) {
  RowSetPtr set = RowSet::make(kEntry);
  FieldList& fields = set->Fields();
  Field guid = fields[GUID], oidr = fields[OIDR], accountD = fields[AccountD],
        accountC = fields[AccountC], currCode = fields[CurrCode], tag = fields[Tag],
        info = fields[Info], sumA = fields[SumA], sumCurr = fields[SumCurr],
        rateCurr = fields[RateCurr], date = fields[BRDate], sign = fields[Sign],
        order = fields[SortOrder];
  for (const Entry& e : entries) {
    set->LoadRow();
    guid = e.GUID, oidr = e.OIDR, accountD = e.AccountD, accountC = e.AccountC;
    currCode = e.CurrCode, tag = e.Tag, info = e.Info, sumA = e.SumA, sumCurr = e.SumCurr;
    rateCurr = e.RateCurr, date = e.BRDate, sign = e.Sign, order = e.SortOrder;
  }
  set->MoveFirst();
  return set;
}

// The same entries as a table of SQLite.
class Sql {
 public:
  explicit Sql(const std::vector<Entry>& entries) {
    sqlite3_open(":memory:", &db_);
    run("CREATE TABLE br(GUID TEXT COLLATE NOCASE, OIDR TEXT COLLATE NOCASE,"
        " AccountD TEXT COLLATE NOCASE, AccountC TEXT COLLATE NOCASE, CurrCode TEXT COLLATE NOCASE,"
        " Tag TEXT COLLATE NOCASE, Info TEXT COLLATE NOCASE, SumA REAL, SumCurr REAL,"
        " RateCurr REAL, BRDate REAL, Sign INTEGER, SortOrder INTEGER)");
    fill(entries);
  }
  ~Sql() {
    for (auto& [text, statement] : statements_) sqlite3_finalize(statement);
    sqlite3_close(db_);
  }
  Sql(const Sql&) = delete;
  Sql& operator=(const Sql&) = delete;

  void run(const char* text) {
    char* error = nullptr;
    if (sqlite3_exec(db_, text, nullptr, nullptr, &error) != SQLITE_OK) {
      std::fprintf(stderr, "%s: %s\n", text, error);
      std::exit(1);
    }
  }

  void fill(const std::vector<Entry>& entries) {
    run("BEGIN");
    sqlite3_stmt* insert = prepared("INSERT INTO br VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?)");
    for (const Entry& e : entries) {
      int at = 0;
      for (const std::string* text :
           {&e.GUID, &e.OIDR, &e.AccountD, &e.AccountC, &e.CurrCode, &e.Tag, &e.Info}) {
        sqlite3_bind_text(insert, ++at, text->data(), int(text->size()), SQLITE_STATIC);
      }
      for (const double number : {e.SumA, e.SumCurr, e.RateCurr, e.BRDate}) {
        sqlite3_bind_double(insert, ++at, number);
      }
      sqlite3_bind_int(insert, ++at, e.Sign);
      sqlite3_bind_int(insert, ++at, e.SortOrder);
      sqlite3_step(insert);
      sqlite3_reset(insert);
    }
    run("COMMIT");
  }

  // The first column of the last row; all rows are stepped through.
  double query(const std::string& text, const std::string& argument = {}) {
    sqlite3_stmt* select = prepared(text);
    if (!argument.empty()) {
      sqlite3_bind_text(select, 1, argument.data(), int(argument.size()), SQLITE_STATIC);
    }
    double value = 0;
    while (sqlite3_step(select) == SQLITE_ROW) value += sqlite3_column_double(select, 0);
    sqlite3_reset(select);
    return value;
  }

 private:
  sqlite3_stmt* prepared(const std::string& text) {
    sqlite3_stmt*& statement = statements_[text];
    if (statement == nullptr) sqlite3_prepare_v2(db_, text.c_str(), -1, &statement, nullptr);
    return statement;
  }

  sqlite3* db_ = nullptr;
  std::unordered_map<std::string, sqlite3_stmt*> statements_;
};

void same(const char* what, double a, double b) {
  if (a == b) return;
  std::fprintf(stderr, "%s: the two sides disagree, %g and %g\n", what, a, b);
  std::exit(1);
}

// Times that goals compare between the two sizes.
struct Times {
  double key, editOut, remove, clone;
};

class Round {
 public:
  Round(std::size_t rows, double seconds)
      : rows_(rows), big_(rows >= 100000), seconds_(seconds), entries_(madeEntries(rows)) {
    std::mt19937 random(7);
    for (auto& account : accounts_) account = std::to_string(200 + random() % 200);
    for (auto& key : keys_) key = entries_[random() % rows].GUID;
  }

  Times run() {
    std::printf("\n%zu rows\n", rows_);
    fill();
    set_ = filled(entries_);
    filters();
    walks();
    sort();
    Times times{};
    times.key = key();
    perRow(times);
    return times;
  }

 private:
  void goal(const char* what, double measured, double small, double big) {
    report(what, measured, big_ ? big : small, "", false);
  }
  void fasterThanSql(const char* what, double sql, double ours, double small, double big) {
    report(what, sql / ours, big_ ? big : small, "x", true);
  }
  std::vector<double> timed(const std::vector<std::function<void()>>& sides) const {
    return alternate(sides, seconds_);
  }

  void fill() {
    std::size_t before = allocated();
    auto structs = std::make_unique<std::vector<Entry>>();
    for (const Entry& e : entries_) structs->push_back(e);
    structs->shrink_to_fit();
    const double structBytes = double(allocated() - before) / double(rows_);
    before = allocated();
    {
      const RowSetPtr set = filled(entries_);
      const double bytes = double(allocated() - before) / double(rows_);
      note("bytes a row", bytes, "");
      note("bytes a struct", structBytes, "");
      goal("bytes a row / struct", bytes / structBytes, 0.80, 0.65);
    }
    structs.reset();
    sql_ = std::make_unique<Sql>(entries_);
    Sql empty({});
    const auto t = timed({[&] { filled(entries_); },
                          [&] {
                            std::vector<Entry> copy;
                            for (const Entry& e : entries_) copy.push_back(e);
                            keep(copy.back().SumA);
                          },
                          [&] {
                            empty.run("DELETE FROM br");
                            empty.fill(entries_);
                          }});
    note("fill, microseconds", t[0] * 1e6, "");
    goal("fill / copy of structs", t[0] / t[1], 4, 3);
    fasterThanSql("fill: times faster than SQLite", t[2], t[0], 1.5, 1.5);
  }

  void filters() {
    std::size_t turn = 0;
    const auto account = [&]() -> const std::string& { return accounts_[turn++ % 16]; };
    double ours = 0, theirs = 0, sqls = 0;
    const std::string equal = "SELECT COUNT(*) FROM br WHERE AccountD = ?";
    auto t = timed({[&] {
                      set_->SetFilter("AccountD = '" + account() + "'");
                      ours = double(set_->RecordCount());
                    },
                    [&] {
                      theirs = countStructs(
                          [&, &a = account()](const Entry& e) { return e.AccountD == a; });
                    },
                    [&] { sqls = sql_->query(equal, account()); }});
    set_->SetFilter("AccountD = '" + accounts_[0] + "'");
    same("equality", double(set_->RecordCount()), sql_->query(equal, accounts_[0]));
    note("text equality filter and count, microseconds", t[0] * 1e6, "");
    goal("text equality filter and count / struct scan", t[0] / t[1], 0.20, 0.04);
    fasterThanSql("text equality: times faster than SQLite", t[2], t[0], 50, 100);

    t = timed({[&] {
                 set_->SetFilter("SumA >= 1000 And SumA <= 2000");
                 ours = double(set_->RecordCount());
               },
               [&] {
                 theirs =
                     countStructs([](const Entry& e) { return e.SumA >= 1000 && e.SumA <= 2000; });
               },
               [&] {
                 sqls = sql_->query("SELECT COUNT(*) FROM br WHERE SumA >= 1000 AND SumA <= 2000");
               }});
    same("bounds", ours, theirs);
    same("bounds", ours, sqls);
    note("bounds and count, microseconds", t[0] * 1e6, "");
    goal("numeric bounds and count / struct scan", t[0] / t[1], 0.80, 0.15);
    fasterThanSql("numeric bounds: times faster than SQLite", t[2], t[0], 50, 100);

    const auto begins = [](const std::string& text) { return text.compare(0, 2, "24") == 0; };
    t = timed({[&] {
                 set_->SetFilter("AccountD Like '24%' OR AccountC Like '24%'");
                 ours = double(set_->RecordCount());
               },
               [&] {
                 theirs = countStructs(
                     [&](const Entry& e) { return begins(e.AccountD) || begins(e.AccountC); });
               },
               [&] {
                 sqls = sql_->query(
                     "SELECT COUNT(*) FROM br WHERE AccountD LIKE '24%' OR AccountC LIKE '24%'");
               }});
    same("prefix", ours, theirs);
    same("prefix", ours, sqls);
    note("prefix of two columns and count, microseconds", t[0] * 1e6, "");
    goal("prefix on two account columns / struct scan", t[0] / t[1], 1.0, 0.30);
    fasterThanSql("prefix: times faster than SQLite", t[2], t[0], 15, 20);
    set_->SetFilter("");
  }

  template <class Passes>
  double countStructs(Passes passes) const {
    std::size_t count = 0;
    for (const Entry& e : entries_) count += passes(e) ? 1 : 0;
    return double(count);
  }

  void walks() {
    std::map<std::string, int, std::less<>> ordinals;
    for (std::size_t i = 0; i < set_->Fields().size(); ++i) {
      ordinals[set_->Fields()[i].Name()] = int(i);
    }
    // A row of a record set gives all its cells, so SQLite gives all of its columns too.
    double byName = 0, byOrdinal = 0, byMap = 0, bySql = 0;
    RowSet& set = *set_;
    const auto t =
        timed({[&] {
                 byName = 0;
                 ForEachRow(set, [&](RowSet& r) { byName += r["SumA"].Number(); });
               },
               [&] {
                 byOrdinal = 0;
                 ForEachRow(set, [&](RowSet& r) { byOrdinal += Field(r, SumA).Number(); });
               },
               [&] {
                 byMap = 0;
                 ForEachRow(set, [&](RowSet& r) {
                   byMap += Field(r, ordinals.find(std::string_view("SumA"))->second).Number();
                 });
               },
               [&] { bySql = sql_->query("SELECT SumA, * FROM br"); }});
    same("walk", byName, byOrdinal);
    same("walk", byName, byMap);
    same("walk", byName, bySql);
    note("walk by name, microseconds", t[0] * 1e6, "");
    goal("walk by name / by ordinal", t[0] / t[1], 2, 2);
    goal("walk by name / through a std::map of names", t[0] / t[2], 0.5, 0.5);
    fasterThanSql("walk: times faster than SQLite", t[3], t[0], 20, 30);
  }

  void sort() {
    // Orders never seen before: processors learn the comparisons of a short sort by heart.
    std::vector<std::vector<const Entry*>> orders(8);
    std::mt19937 random(11);
    for (auto& order : orders) {
      for (const Entry& e : entries_) order.push_back(&e);
      std::shuffle(order.begin(), order.end(), random);
    }
    std::vector<const Entry*> pointers;
    std::size_t turn = 0;
    const auto t =
        timed({[&] { set_->SetSort("SumA"); },
               [&] {
                 pointers = orders[turn++ % orders.size()];
                 std::stable_sort(pointers.begin(), pointers.end(),
                                  [](const Entry* a, const Entry* b) { return a->SumA < b->SumA; });
               },
               [&] { keep(sql_->query("SELECT rowid FROM br ORDER BY SumA")); }});
    same("sort", (*set_)["SumA"].Number(), pointers[0]->SumA);
    set_->SetSort("");
    note("sort by one number, microseconds", t[0] * 1e6, "");
    goal("sort by one number / stable_sort of pointers", t[0] / t[1], 1.5, 0.5);
    fasterThanSql("sort: times faster than SQLite", t[2], t[0], 1.5, 3);
  }

  double key() {
    std::unordered_map<std::string, const Entry*> map;
    for (const Entry& e : entries_) map.emplace(e.GUID, &e);
    sql_->run("CREATE INDEX br_guid ON br(GUID)");
    for (int i = 0; i < 40; ++i) set_->SetFilter("GUID = '" + keys_[0] + "'");
    std::size_t turn = 0;
    const auto key = [&]() -> const std::string& { return keys_[turn++ % keys_.size()]; };
    const auto t = timed({[&] {
                            set_->SetFilter("GUID = '" + key() + "'");
                            keep(double(set_->RecordCount()));
                          },
                          [&] { keep(map.find(key())->second->SumA); },
                          [&] { keep(sql_->query("SELECT SumA FROM br WHERE GUID = ?", key())); }});
    set_->SetFilter("GUID = '" + keys_[1] + "'");
    same("key", (*set_)["SumA"].Number(), map.find(keys_[1])->second->SumA);
    set_->SetFilter("");
    note("key filter with index, microseconds", t[0] * 1e6, "");
    goal("key filter with index / unordered_map::find", t[0] / t[1], 10, 5);
    fasterThanSql("key filter: times faster than SQLite", t[2], t[0], 3, 3);
    return t[0];
  }

  // Fresh sets, since the work uses them up; the time of one row of the first thousand.
  void perRow(Times& times) {
    constexpr int kRows = 800;
    std::vector<double> editOut, remove;
    for (int round = 0; round < 7; ++round) {
      const RowSetPtr set = filled(entries_);
      set->SetFilter("SumA >= 0");
      editOut.push_back(secondsOf([&] {
        for (int i = 0; i < kRows; ++i) {
          (*set)["SumA"] = -1;
          keep(double(set->RecordCount()));
          set->MoveNext();
        }
      }));
      set->SetFilter("");
      set->CancelBatch();
      remove.push_back(secondsOf([&] {
        for (int i = 0; i < kRows; ++i) {
          set->Delete();
          set->MoveFirst();
        }
      }));
    }
    times.editOut = median(editOut) / kRows;
    times.remove = median(remove) / kRows;
    times.clone = timed({[&] { keep(set_->Clone()->Eof() ? 1 : 0); }})[0];
    note("edit out of the filter and count, nanoseconds", times.editOut * 1e9, "");
    note("Delete and MoveFirst, nanoseconds", times.remove * 1e9, "");
    note("Clone, nanoseconds", times.clone * 1e9, "");
  }

  std::size_t rows_;
  bool big_;
  double seconds_;
  std::vector<Entry> entries_;
  std::string accounts_[16];
  std::vector<std::string> keys_ = std::vector<std::string>(8192);
  RowSetPtr set_;
  std::unique_ptr<Sql> sql_;
};

constexpr ColumnSpec kSide[] = {
    {"Sign", FieldType::SmallInt}, {"SumCurr", FieldType::Double}, {"Code", FieldType::Text, 10}};
constexpr ColumnSpec kBR[] = {{"GUID", FieldType::Text, 50},
                              {"AccountD", FieldType::Text, 10},
                              {"SumA", FieldType::Double},
                              {"BRCurrency", FieldType::Nested, 0, kSide, 3},
                              {"BRProperties", FieldType::Nested, 0, kSide, 3},
                              {"RequiredAddr", FieldType::Nested, 0, kSide, 3}};
constexpr ColumnSpec kHeader[] = {{"OIDR", FieldType::Text, 20},
                                  {"BR", FieldType::Nested, 0, kBR, 6}};

// One operation as a screen makes it: five entries, each with three nested sets, 25 rows in all.
RowSetPtr operation() {
  RowSetPtr header = RowSet::make(kHeader);
  header->LoadRow();
  (*header)["OIDR"] = "O02015001";
  const RowSetPtr entries = (*header)["BR"].Rows();
  int row = 0;
  for (int i = 0; i < 5; ++i) {
    entries->LoadRow();
    (*entries)["GUID"] = "{7F0AB2C4-0000-4000-8000-00000000000" + std::to_string(i) + "}";
    (*entries)["AccountD"] = "271";
    (*entries)["SumA"] = 100.5 * i;
    for (const char* name : {"BRCurrency", "BRProperties", "RequiredAddr"}) {
      const RowSetPtr side = (*entries)[name].Rows();
      for (int k = row++ % 3 == 2 ? 1 : 2; k > 0; --k) {
        side->LoadRow();
        (*side)["Sign"] = 1;
        (*side)["SumCurr"] = 12.5;
        (*side)["Code"] = "EUR";
      }
    }
  }
  return header;
}

int run(bool quick) {
  const double seconds = quick ? 0.02 : 0.3;
  const Times small = Round(1000, seconds).run();
  const Times big = Round(100000, seconds).run();
  std::printf("\n100000 rows / 1000 rows, a call\n");
  report("key filter", big.key / small.key, 6, "", false);
  report("edit out of the filter and count", big.editOut / small.editOut, 3, "", false);
  report("Delete and MoveFirst", big.remove / small.remove, 3, "", false);
  report("Clone", big.clone / small.clone, 2, "", false);
  std::printf("\nAn operation of 5 entries and 25 rows in 15 nested sets\n");
  const double made = alternate({[] { operation(); }}, seconds)[0];
  report("filled, microseconds", made * 1e6, 20, "us", false);
  return missed == 0 ? 0 : 1;
}

}  // namespace
}  // namespace tolvex::bench

int main(int argc, char** argv) {
  if (argc > 2 || (argc == 2 && std::strcmp(argv[1], "--quick") != 0)) {
    std::fprintf(stderr, "usage: recordset_bench [--quick]\n");
    return 2;
  }
  return tolvex::bench::run(argc == 2);
}
