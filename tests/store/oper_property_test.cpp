// Random but meaningful work on operations: new ones, edits, deletions, payments of older ones;
// after it the books agree with a map that the test keeps itself.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "framework/references.h"
#include "framework/rounding.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

int below(int limit) { return *rc::gen::inRange(0, limit); }

template <std::size_t N>
const char* oneOf(const char* const (&texts)[N]) {
  return texts[static_cast<std::size_t>(below(static_cast<int>(N)))];
}

constexpr const char* kAccounts[] = {"240", "450", "2711", "500", "204", "255", "0", "536", "2713"};
constexpr const char* kAddressees[] = {kFirmA, kFirmB, "O00014011", "O00016012"};

int randomDay() {
  constexpr int kDays[] = {20031230, 20031231, 20040101, 20040131, 20040201, 20040229, 20041231};
  return kDays[below(7)];
}

TestEntry randomEntry(const std::vector<int>& operations) {
  TestEntry entry;
  entry.debit = oneOf(kAccounts);
  do {
    entry.credit = oneOf(kAccounts);
  } while (entry.debit == "0" && entry.credit == "0");
  entry.sum = (1 + below(200000)) / 100.0;
  entry.day = randomDay();
  for (const int sign : {1, -1}) {
    if (below(5) == 0) {
      const double sum = 1 + below(900), rate = roundHalfEven(2.0 + below(10000) / 10000.0, 4);
      entry.currencies.push_back({sign, below(2) != 0 ? "USD" : "EUR", rate, sum});
      entry.sum = roundLt(sum * rate);
    }
    if (below(2) == 0) entry.refs.push_back({sign, oneOf(kAddressees)});
    if (!operations.empty() && below(3) == 0) {
      const auto at = static_cast<std::size_t>(below(static_cast<int>(operations.size())));
      entry.refs.push_back({sign, operRef(operations[at])});
    }
  }
  if (entry.currencies.size() == 2) entry.currencies.pop_back();
  if (!entry.currencies.empty()) {
    entry.sum = roundLt(entry.currencies[0].sum * entry.currencies[0].rate);
  }
  return entry;
}

TestOper randomOperation(const std::vector<int>& operations) {
  TestOper oper;
  oper.day = randomDay();
  oper.group = 2 + below(3);
  for (int i = below(4); i >= 0; --i) oper.entries.push_back(randomEntry(operations));
  return oper;
}

void randomEdit(RowSet& record, const std::vector<int>& others) {
  RowSet& BR = *record["BR"].Rows();
  const int kind = below(6);
  if (BR.RecordCount() == 0 || kind == 0) return addEntry(record, randomEntry(others));
  BR.Move(below(static_cast<int>(BR.RecordCount())));
  RowSet& currencies = *BR["BRCurrency"].Rows();
  RowSet& refs = *BR["BRProperties"].Rows();
  if (kind == 1) BR.Delete();
  if (kind == 2 && currencies.RecordCount() == 0) BR["SumA"] = (1 + below(1000)) / 100.0;
  if (kind == 3) BR["DateD"] = Variant(DateTime::FromDayNumber(randomDay()));
  if (kind == 4 && BR["AccountC"].Text() != "0") BR["AccountD"] = oneOf(kAccounts);
  if (kind == 5 && refs.RecordCount() > 0) {
    if (below(2) == 0) {
      refs.Delete();
    } else {
      refs["FOIDR"] = oneOf(kAddressees);
    }
  }
}

class Work {
 public:
  explicit Work(Session& session) : session_(session) {}

  void step() {
    const int kind = below(10);
    if (operations_.empty() || kind < 5) return create();
    const auto at = static_cast<std::size_t>(below(static_cast<int>(operations_.size())));
    const int id = operations_[at];
    if (kind < 8) return edit(id);
    const HostResult result = session_.erase("O0201500", operRef(id));
    if (result.Code == kReferred) return;  // a later operation pays it
    RC_ASSERT(result.Code == kDone);
    operations_.erase(operations_.begin() + static_cast<std::ptrdiff_t>(at));
    auditor_.replace(id, nullptr);
  }

  void check() {
    Database& db = session_.db();
    for (const int day : {20031231, 20040131, 20050101}) {
      RC_ASSERT(Auditor::stored(db, day) == auditor_.balances(day));
    }
    RC_ASSERT(Auditor::rolledUp(db) == auditor_.balances(99991231));
    RC_ASSERT(Auditor::ofItems(db, auditor_.balances(99991231)).empty());
    RC_ASSERT(findingsText(db) == "");
  }

 private:
  void create() {
    const RowSetPtr record = newOperation(session_, randomOperation(operations_));
    const std::string typed = content(*record);
    const SaveOutcome saved = save(session_, *record);
    RC_ASSERT(saved.Text == "");
    const int id = idOf(saved.reference);
    operations_.push_back(id);
    readsBack(id, typed);
  }

  void edit(int id) {
    std::vector<int> others = operations_;
    std::erase(others, id);
    const RowSetPtr record = loaded(session_, id);
    randomEdit(*record, others);
    const std::string typed = content(*record);
    RC_ASSERT(save(session_, *record).Text == "");
    readsBack(id, typed);
  }

  void readsBack(int id, const std::string& typed) {
    const RowSetPtr read = loaded(session_, id);
    RC_ASSERT(content(*read) == typed);
    auditor_.replace(id, read.get());
  }

  Session& session_;
  Auditor auditor_;
  std::vector<int> operations_;
};

RC_GTEST_PROP(OperProperty, RandomWorkLeavesBooksInOrder, ()) {
  const auto session = memoryBooks();
  Work work(*session);
  for (int i = 5 + below(15); i > 0; --i) work.step();
  work.check();
}

RC_GTEST_PROP(OperProperty, RebuildMakesWhatTheSavesMade, ()) {
  const auto session = memoryBooks();
  Work work(*session);
  for (int i = 5 + below(10); i > 0; --i) work.step();
  Database& db = session->db();
  rebuildBooks(db);  // so that the engine's own statistics are there before as after
  const std::string saved = allTables(db);
  run(db, "UPDATE posting SET day = 19990101, sum_lt = 1, corr_id = 0, dimset_id = 0, item_id = 5");
  rebuildBooks(db);
  RC_ASSERT(allTables(db) == saved);
}

}  // namespace
}  // namespace tolvex::store
