// Books for tests of operations: a seeded company, operations made from short descriptions, a plain
// auditor fed by the same calls, and all tables as text.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/store/books.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {

struct TestRef {
  int sign = 1;
  std::string foidr = {};
};
struct TestCurrency {
  int sign = 1;
  std::string code = {};
  double rate = 0, sum = 0;
};
struct TestEntry {
  std::string debit = {}, credit = {};
  double sum = 0;
  std::vector<TestRef> refs = {};
  std::vector<TestCurrency> currencies = {};
  int day = 0;  // 0: the operation's
};
struct TestOper {
  int day = 20040115;
  std::vector<TestEntry> entries = {};
  int group = 2;
  std::string kind = "O0201500";
};

inline constexpr const char* kFirmA = "O00001001";
inline constexpr const char* kFirmB = "O000010077";
inline std::string operRef(int id) { return "O0201500" + std::to_string(id); }

// A seeded company in a place of its own, for as many clients as are wanted.
class OperPlace {
 public:
  explicit OperPlace(Store store) : place_(store) {}
  static std::unique_ptr<OperPlace> file() { return std::make_unique<OperPlace>(Store::File); }
  static std::unique_ptr<OperPlace> postgres();  // null without a server
  // Memory, and where there is a server, PostgreSQL.
  static std::vector<std::unique_ptr<OperPlace>> bothEngines();

  std::unique_ptr<Session> open(const std::string& login = "admin");

 private:
  TestPlace place_;
  bool seeded_ = false;
};

std::unique_ptr<Session> memoryBooks();

void addEntry(RowSet& record, const TestEntry& entry);
RowSetPtr newOperation(Session& session, const TestOper& oper);
SaveOutcome save(Session& session, RowSet& record);
int savedId(Session& session, const TestOper& oper);  // fails the test when it is refused
RowSetPtr loaded(Session& session, int id);

// The record as text; without what the store gives it (ids, version, keys of rows) unless asked.
enum class Given { Left, Shown };
std::string content(RowSet& record, Given given = Given::Left);

// Every table row by row, for "a refusal changes nothing". SQLite.
std::string allTables(Database& db);
std::string findingsText(Database& db);  // of verifyBooks; "" when clean

// Balances kept in a map by the test itself.
class Auditor {
 public:
  void replace(int operId, RowSet* record);  // null: the operation is gone
  // Account and currency to debit less credit in cents and 1/10000, without zeros.
  using Balances =
      std::map<std::pair<std::string, std::string>, std::pair<std::int64_t, std::int64_t>>;
  Balances balances(int until) const;
  static Balances stored(Database& db, int until);  // from the postings
  static Balances rolledUp(Database& db);           // from the years of the roll-ups
  static Balances ofItems(Database& db,
                          Balances all);  // `all` against open items, tracked accounts

 private:
  struct Line {
    int day;
    std::string debit, credit, curD, curC;
    std::int64_t cents, sumCurD, sumCurC;
  };
  std::map<int, std::vector<Line>> operations_;
};

}  // namespace tolvex::store
