// Trade made at random: documents, payments in part and beyond, in other currencies and at other
// rates, covers, corrections. At every date what is listed as open is what the entries say.
#include <gtest/gtest.h>

#include <map>
#include <random>

#include "framework/references.h"
#include "framework/rounding.h"
#include "host/store/oper_rows.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

constexpr const char* kTracked[] = {"240", "450", "255"};
constexpr const char* kMoney = "2711";  // matched for a part of the time only
constexpr const char* kClients[] = {kFirmA, kFirmB, "O000010078", "O00014011"};
constexpr int kDays[] = {20031230, 20031231, 20040101, 20040115, 20040131, 20040229, 20041231};

// Rests in cents by operation, without zeros.
using Rests = std::map<int, std::int64_t>;

struct Line {  // one side of an entry, as the record of its operation tells it
  std::string account;
  int sign = 0, day = 0, item = 0;
  std::int64_t cents = 0;
};

class Trade {
 public:
  explicit Trade(Session& session) : session_(session) {}

  void step() {
    switch (below(9)) {
      case 0:
      case 1:
        return add(document());
      case 2:
      case 3:
        return add(payment());
      case 4:
        return add(difference());
      case 5:
        return add(cover());
      case 6:
        return add(astray());
      case 7:
        return edit();
      default:
        return erase();
    }
  }

  Rests rests(const std::string& account, int day) const {
    Rests sums;
    for (const auto& [id, lines] : lines_)
      for (const Line& line : lines)
        if (line.account == account && line.day <= day) sums[line.item] += line.sign * line.cents;
    std::erase_if(sums, [](const auto& row) { return row.second == 0; });
    return sums;
  }

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  template <class T, std::size_t N>
  T oneOf(const T (&values)[N]) {
    return values[below(static_cast<int>(N))];
  }
  std::string client() { return oneOf(kClients); }
  // Any operation of before; its own when there is none, which points nowhere.
  std::string operation() {
    if (lines_.empty()) return client();
    return operRef(std::next(lines_.begin(), below(static_cast<int>(lines_.size())))->first);
  }
  double sum() { return (1 + below(5000)) / 100.0; }

  // A sale, a purchase or an advance; of one client or of two, now and then in a currency.
  TestOper document() {
    const char* account = oneOf(kTracked);
    const int side = account[0] == '4' ? -1 : 1;
    TestOper oper;
    for (int i = below(3); i >= 0; --i) {
      TestEntry entry{side == 1 ? account : "204", side == 1 ? "500" : account, sum()};
      entry.refs.push_back({side, client()});
      if (below(3) == 0) inCurrency(entry, side);
      oper.entries.push_back(entry);
    }
    return oper;
  }

  // Money for a document or in advance: often only a part, often too much; in any currency.
  TestOper payment() {
    const char* account = oneOf(kTracked);
    const int side = account[0] == '4' ? 1 : -1;
    TestEntry entry{side == 1 ? account : kMoney, side == 1 ? kMoney : account, sum()};
    if (below(4) != 0) entry.refs.push_back({side, client()});
    if (below(4) != 0) entry.refs.push_back({side, operation()});
    if (below(3) == 0) entry.refs.push_back({side, operation()});  // the first one counts
    if (below(3) == 0) inCurrency(entry, side);
    return {20040115, {entry}};
  }

  // A rate difference, with a row of zeros or without one; its pointer stands on both sides.
  TestOper difference() {
    const char* account = oneOf(kTracked);
    const bool gain = below(2) == 0;
    TestEntry entry{gain ? account : "636", gain ? "536" : account, sum()};
    const std::string named = operation();
    const int side = gain ? 1 : -1;
    if (below(2) == 0) entry.currencies.push_back({side, oneOf(kCurrencies), 0, 0});
    for (const int sign : {1, -1}) entry.refs.push_back({sign, named});
    return {20040115, {entry}};
  }

  // One document against another; a side without a pointer is an item of the cover itself.
  TestOper cover() {
    TestEntry entry{oneOf(kTracked), oneOf(kTracked), sum()};
    for (const int sign : {-1, 1}) {
      entry.refs.push_back({sign, client()});
      if (below(3) != 0) entry.refs.push_back({sign, operation()});
    }
    return {20040115, {entry}};
  }

  // Pointers where they mean nothing: on an account that the document never used, on money.
  TestOper astray() {
    TestEntry entry{kMoney, oneOf(kTracked), sum()};
    entry.refs.push_back({1, operation()});
    if (below(2) == 0) entry.refs.push_back({-1, operation()});
    return {20040115, {entry}};
  }

  void inCurrency(TestEntry& entry, int sign) {
    const double rate = roundHalfEven(0.02 + below(40000) / 10000.0, 4);
    const double units = 1 + below(3000);
    entry.sum = roundLt(units * rate);
    entry.currencies.push_back({sign, oneOf(kCurrencies), rate, units});
  }

  void add(TestOper oper) {
    oper.day = oneOf(kDays);
    for (TestEntry& entry : oper.entries) entry.day = oneOf(kDays);
    remember(savedId(session_, oper));
  }

  void edit() {
    if (lines_.empty()) return;
    const int id = std::next(lines_.begin(), below(static_cast<int>(lines_.size())))->first;
    const RowSetPtr record = loaded(session_, id);
    RowSet& BR = *(*record)["BR"].Rows();
    if (BR.RecordCount() == 0) return;
    switch (below(4)) {
      case 0:
        BR["DateD"] = Variant(DateTime::FromDayNumber(oneOf(kDays)));
        break;
      case 1:
        if (BR["BRCurrency"].Rows()->RecordCount() == 0) BR["SumA"] = sum();
        break;
      case 2:
        if (RowSet& refs = *BR["BRProperties"].Rows(); refs.RecordCount() > 0) refs.Delete();
        break;
      default:
        if (BR["AccountC"].Text() != "500") break;
        BR["AccountD"] = oneOf(kTracked);
    }
    const SaveOutcome saved = save(session_, *record);
    ASSERT_EQ(saved.Code, kDone) << saved.Text;
    remember(id);
  }

  void erase() {
    if (lines_.empty()) return;
    const auto place = std::next(lines_.begin(), below(static_cast<int>(lines_.size())));
    if (session_.erase("O0201500", operRef(place->first)).Code == kDone) lines_.erase(place);
  }

  void remember(int id) {
    std::vector<Line> lines;
    const RowSetPtr record = loaded(session_, id);
    ForEachRow(*(*record)["BR"].Rows(), [&](RowSet& BR) {
      for (const int sign : {1, -1}) {
        Line line;
        line.account = BR[sign == 1 ? "AccountD" : "AccountC"].Text();
        line.sign = sign;
        line.day = BR["DateD"].Value().AsDate().DayNumber();
        line.cents = std::llround(BR["SumA"].Number() * 100);
        ForEachRow(*BR["BRProperties"].Rows(), [&](RowSet& ref) {
          const std::string named(ref["FOIDR"].Text());
          const bool points = ref["Sign"].Number() == sign && named.starts_with("O020150");
          if (points && line.item == 0) line.item = idOf(named);
        });
        if (line.item == 0) line.item = id;
        lines.push_back(line);
      }
    });
    lines_[id] = std::move(lines);
  }

  static constexpr const char* kCurrencies[] = {"USD", "EUR", "GBP"};
  Session& session_;
  std::mt19937 random_{20040131};  // the same trade everywhere
  std::map<int, std::vector<Line>> lines_;
};

class OpenItems : public BooksTest {
 protected:
  RowSetPtr asked(const char* routine, const std::string& parameters) {
    return rowsIn(session().call("O0201500", routine, parameters));
  }

  static std::int64_t centsIn(RowSet& row, const char* column) {
    return std::llround(row[column].Number() * 100);
  }

  std::int64_t sumOf(const char* routine, const std::string& parameters) {
    std::int64_t sum = 0;
    ForEachRow(*asked(routine, parameters), [&](RowSet& row) { sum += centsIn(row, "LikutisLt"); });
    return sum;
  }

  Rests listed(const std::string& account, int day) {
    Rests rests;
    const std::string parameters = "'0','" + account + "','" + dayText(day) + "',''";
    for (const char* routine : {"GetDebtsByDebit", "GetDebtsByCredit"})
      ForEachRow(*asked(routine, parameters), [&](RowSet& row) {
        rests[idOf(row["OIDR"].Text())] -=
            static_cast<int>(row["InfluenceSign"].Number()) * centsIn(row, "LikutisLt");
      });
    std::erase_if(rests, [](const auto& row) { return row.second == 0; });
    return rests;
  }

  void expectRestsOf(const Trade& trade, const std::string& account, int day) {
    SCOPED_TRACE(account + " " + dayText(day));
    const Rests rests = listed(account, day);
    EXPECT_EQ(rests, trade.rests(account, day));
    std::int64_t all = 0;
    for (const auto& [id, rest] : rests) all += rest;
    EXPECT_EQ(all, sumOf("GetAccountTotal", "'" + account + "','" + dayText(day) + "','',1"));
  }

  void matchMoney(bool asked) {
    const std::string parameters = std::string("2,") + (asked ? "'2710'" : "''");
    EXPECT_EQ(session().call("O0201400", "CreateFullSum", parameters).Code, kDone);
    EXPECT_EQ(anyRow(db(),
                     "SELECT 1 FROM open_item i JOIN account a ON a.id = i.account_id"
                     " WHERE a.code = $1",
                     kMoney),
              asked);
  }

  // Who can be covered, and for how much, is what each one's own list says.
  void expectFirms(int day) {
    SCOPED_TRACE(dayText(day));
    const std::string date = "'" + dayText(day) + "'";
    const RowSetPtr firms = asked("GetCoverFirms", "'240',1,'450',-1,'O0000100'," + date);
    std::map<std::string, std::pair<std::int64_t, std::int64_t>> found, must;
    ForEachRow(*firms, [&](RowSet& row) {
      found[std::string(row["FOIDR"].Text())] = {centsIn(row, "Sum1"), centsIn(row, "Sum2")};
    });
    for (const std::string firm : {kFirmA, kFirmB, "O000010078"}) {
      const std::string of = "'," + date + ",'" + firm + "',";
      if (asked("GetDebts1", "'0','240" + of + "1")->RecordCount() > 0 &&
          asked("GetDebts1", "'0','450" + of + "-1")->RecordCount() > 0)
        must[firm] = {sumOf("GetDebts1", "'0','240" + of + "1"),
                      sumOf("GetDebts1", "'0','450" + of + "-1")};
    }
    EXPECT_EQ(found, must);
  }
};

TEST_P(OpenItems, AreWhatTheEntriesSayAtEveryDate) {
  Trade trade(session());
  for (int step = 1; step <= 160 && !HasFailure(); ++step) {
    trade.step();
    if (step == 60) matchMoney(true);
    if (step == 140) matchMoney(false);
    if (step % 40 != 0) continue;
    SCOPED_TRACE("after " + std::to_string(step) + " steps");
    for (const int day : kDays) {
      for (const char* account : kTracked) expectRestsOf(trade, account, day);
      expectRestsOf(trade, kMoney, day);
      expectFirms(day);
    }
    EXPECT_EQ(findingsText(db()), "");
  }
}

// By operations (0) looks for differences without a pointer, by totals (1) for those with one; on
// accounts whose items are kept as on those whose are not.
TEST_P(OpenItems, TheOtherWayOfRevaluingIsFoundByItsNewestDifference) {
  const int invoice = savedId(session(), {20040102, {{"204", "450", 28, {{-1, kFirmA}}}}});
  const auto difference = [&](int day, const char* account, double sum, std::vector<TestRef> refs) {
    const bool gain = sum > 0;
    const TestEntry entry{gain ? account : "636",
                          gain ? "536" : account,
                          gain ? sum : -sum,
                          std::move(refs),
                          {{gain ? 1 : -1, "USD", 0, 0}}};
    return savedId(session(), {day, {entry}});
  };
  struct Want {
    const char* account;
    int until, kind;
    int oper;  // 0: none
  };
  std::vector<Want> wanted;
  for (const char* account : {"450", "2713"}) {
    const int pointed = difference(20040105, account, 1, {{1, operRef(invoice)}});
    const int plain = difference(20040106, account, -2, {});
    // A pointer of the other side is none of the account's.
    const int elsewhere = difference(20040107, account, 3, {{-1, operRef(invoice)}});
    for (const Want& want :
         {Want{account, 20040104, 0, 0}, Want{account, 20040104, 1, 0},
          Want{account, 20040105, 0, 0}, Want{account, 20041231, 1, pointed},
          Want{account, 20040106, 0, plain}, Want{account, 20041231, 0, elsewhere}})
      wanted.push_back(want);
  }
  for (const Want& want : wanted) {
    const std::string parameters = "'" + std::string(want.account) + "','" + dayText(want.until) +
                                   "','636'," + std::to_string(want.kind);
    SCOPED_TRACE(parameters);
    const RowSetPtr rows = asked("GetCheckInfluenceType", parameters);
    std::string found;
    ForEachRow(*rows, [&](RowSet& row) { found += row["OIDR"].Text(); });
    EXPECT_EQ(found, want.oper == 0 ? "" : operRef(want.oper));
  }
}

TOLVEX_ALL_STORES(OpenItems);

}  // namespace
}  // namespace tolvex::store
