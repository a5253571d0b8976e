// Balances and open items of random books against plain sums over their postings.
#include "host/store/balances.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>

#include "host/store/debts.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

struct RangeCase {
  int from, to;
  std::vector<std::pair<int, int>> want;
};

TEST(PeriodRanges, AreWholeYearsMonthsAndDays) {
  const RangeCase kCases[] = {
      {20040115, 20040120, {{20040115, 20040120}}},
      {20040201, 20040229, {{200402, 200402}}},
      {20040201, 20040228, {{20040201, 20040228}}},
      {20040115, 20040215, {{20040115, 20040131}, {20040201, 20040215}}},
      {kFirstDay, 20040331, {{1900, 2003}, {200401, 200403}}},
      {kFirstDay, 20031231, {{1900, 2003}}},
      {kFirstDay, kNoLimit, {{1900, 9999}}},
      {20031105,
       20050310,
       {{20031105, 20031130},
        {200312, 200312},
        {2004, 2004},
        {200501, 200502},
        {20050301, 20050310}}},
      {20031201, 20040131, {{200312, 200401}}},
      {20031210, 20040131, {{20031210, 20031231}, {200401, 200401}}},
      {20040102, 20040101, {}},
  };
  for (const RangeCase& c : kCases) {
    SCOPED_TRACE(std::to_string(c.from) + "-" + std::to_string(c.to));
    std::vector<std::pair<int, int>> ranges;
    for (const PeriodRange& range : periodRanges(c.from, c.to))
      ranges.emplace_back(range.from, range.to);
    EXPECT_EQ(ranges, c.want);
  }
}

const std::vector<std::string> kAccounts = {"240", "450", "2711", "500", "204", "0"};
const std::vector<std::string> kFirms = {kFirmA, kFirmB, "O00014012", "O00016011"};
const std::vector<int> kDays = {20031130, 20031231, 20040101, 20040114, 20040115,
                                20040131, 20040201, 20040229, 20041231, 20050101};

// Operations at random dates, some in dollars, some pointing at earlier ones, some deleted again.
void fillRandomly(Session& session) {
  std::vector<int> ids;
  const int count = *rc::gen::inRange(1, 14);
  for (int i = 0; i < count; ++i) {
    TestOper oper;
    oper.day = *rc::gen::elementOf(kDays);
    const int entries = *rc::gen::inRange(1, 4);
    for (int k = 0; k < entries; ++k) {
      TestEntry entry;
      entry.debit = *rc::gen::elementOf(kAccounts);
      do entry.credit = *rc::gen::elementOf(kAccounts);
      while (entry.credit == "0" && entry.debit == "0");
      const int units = *rc::gen::inRange(1, 2000);
      entry.sum = units * 2.0;
      for (const int sign : {1, -1}) {
        if (*rc::gen::inRange(0, 3) == 0) entry.currencies.push_back({sign, "USD", 2, units * 1.0});
        for (const std::string& firm : kFirms)
          if (*rc::gen::inRange(0, 3) == 0) entry.refs.push_back({sign, firm});
        if (!ids.empty() && *rc::gen::inRange(0, 2) == 0)
          entry.refs.push_back({sign, operRef(*rc::gen::elementOf(ids))});
      }
      oper.entries.push_back(entry);
    }
    ids.push_back(savedId(session, oper));
  }
  if (*rc::gen::arbitrary<bool>())
    (void)session.erase("O0201500", operRef(*rc::gen::elementOf(ids)));  // 547 when pointed at
}

struct Plain {
  int account = 0, sign = 0, day = 0;
  std::string cur;
  std::int64_t lt = 0, sumCur = 0;
  std::vector<std::string> addressees;
};

// Postings with the addressees of their side, from the base rows alone.
std::vector<Plain> plainPostings(Database& db) {
  std::vector<Plain> all;
  auto select = db.prepare(
      "SELECT p.account_id, p.sign, e.day, p.cur, e.sum_lt, p.sum_cur, e.id FROM posting p"
      " JOIN entry e ON e.id = p.entry_id");
  while (select->step()) {
    Plain plain{select->whole(0),
                select->whole(1),
                select->whole(2),
                std::string(select->text(3)),
                select->integer(4),
                select->integer(5),
                {}};
    auto refs =
        bound(db, "SELECT foidr FROM entry_ref WHERE entry_id = $1 AND sign = $2 AND role = 0",
              select->integer(6), plain.sign);
    while (refs->step()) plain.addressees.emplace_back(refs->text(0));
    all.push_back(std::move(plain));
  }
  return all;
}

using Sums = std::map<std::pair<int, std::string>, std::array<std::int64_t, 4>>;

Sums plainSums(const std::vector<Plain>& postings, const BalanceQuery& query) {
  Sums sums;
  for (const Plain& p : postings) {
    const bool his = query.addressee.asks() == AddresseeFilter::Asks::Everybody ||
                     std::any_of(p.addressees.begin(), p.addressees.end(), [&](const auto& ref) {
                       return ref.starts_with(query.addressee.text());
                     });
    if (!his || p.day < query.from || p.day > query.to) continue;
    if (query.account && *query.account != p.account) continue;
    auto& sum = sums[{p.account, p.cur}];
    sum[p.sign == 1 ? 0 : 1] += p.lt;
    sum[p.sign == 1 ? 2 : 3] += p.sumCur;
  }
  return sums;
}

RC_GTEST_PROP(Balances, EqualPlainSumsOverPostings, ()) {
  auto session = memoryBooks();
  fillRandomly(*session);
  Database& db = session->db();
  const auto postings = plainPostings(db);
  for (int round = 0; round < 20; ++round) {
    BalanceQuery query;
    query.to = *rc::gen::elementOf(kDays) + *rc::gen::inRange(0, 2);
    if (*rc::gen::arbitrary<bool>()) query.from = *rc::gen::elementOf(kDays);
    query.addressee = AddresseeFilter(
        *rc::gen::element<std::string>("", "O0000100", "O0001401", kFirmA, kFirmB, "O00016011"));
    if (*rc::gen::arbitrary<bool>() && !postings.empty())
      query.account = postings[*rc::gen::inRange<std::size_t>(0, postings.size())].account;
    Sums sums;
    for (const Turnover& turn : turnovers(db, query))
      sums[{turn.accountId, turn.currency}] = {turn.debit, turn.credit, turn.debitCur,
                                               turn.creditCur};
    RC_ASSERT(sums == plainSums(postings, query));
  }
}

BalanceQuery balanceAt(int account, int day) {
  BalanceQuery query;
  query.account = account;
  query.to = day;
  return query;
}

RC_GTEST_PROP(OpenItems, AddUpToTheBalanceOnAnyDayAndWithOrWithoutKeptItems, ()) {
  auto session = memoryBooks();
  fillRandomly(*session);
  Database& db = session->db();
  DimsetRefs sets(db);
  for (const char* code : {"240", "450"}) {
    const AccountRow account = *accountByCode(db, code);
    for (const int day : kDays) {
      DebtQuery query;
      query.account = account.id;
      query.day = day;
      const auto kept = openItems(db, query, sets);
      std::int64_t rest = 0, balance = 0;
      for (const Debt& debt : kept) rest += debt.row.restLt;
      for (const Turnover& turn : turnovers(db, balanceAt(account.id, day))) balance += turn.lt();
      RC_ASSERT(rest == balance);

      query.tracked = false;  // straight from the postings
      query.addressee = AddresseeFilter(*rc::gen::element<std::string>("", "O0000100", kFirmB));
      query.side = *rc::gen::element(-1, 0, 1);
      const auto plain = openItems(db, query, sets);
      query.tracked = true;
      const auto again = openItems(db, query, sets);
      RC_ASSERT(plain.size() == again.size());
      for (std::size_t i = 0; i < plain.size(); ++i) {
        RC_ASSERT(plain[i].itemId == again[i].itemId);
        RC_ASSERT(plain[i].row.restLt == again[i].row.restLt);
        RC_ASSERT(plain[i].row.restCur == again[i].row.restCur);
        RC_ASSERT(plain[i].row.dimsetId == again[i].row.dimsetId);
      }
    }
  }
}

}  // namespace
}  // namespace tolvex::store
