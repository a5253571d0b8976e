// What a new company begins with must hold together.
#include <map>
#include <set>

#include "framework/text.h"
#include "host/store/sql.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

class Seed : public BooksTest {
 protected:
  std::set<std::string> codes(const std::string& condition) {
    std::set<std::string> out;
    auto query = db().prepare("SELECT code FROM account WHERE plan = 0 AND " + condition);
    while (query->step()) out.emplace(query->text(0));
    return out;
  }
  // How often each account is summed by the formulas of a journal's statement rows.
  std::map<std::string, int> timesSummed(int journal) {
    std::map<std::string, int> times;
    auto rows = bound(db(), "SELECT parameter1, parameter2 FROM journal_row WHERE journal_id = $1",
                      journal);
    while (rows->step()) {
      for (const int column : {0, 1}) {
        for (const std::string& part : split(rows->text(column), ',')) {
          if (part.empty()) continue;
          for (const std::string& code : codes("group_flag = 0")) {
            if (covers(part, code)) ++times[code];
          }
        }
      }
    }
    return times;
  }
  // "24-25": every account that begins with a number from 24 to 25.
  static bool covers(const std::string& part, const std::string& code) {
    const auto ends = split(part, '-');
    const std::string& low = ends.front();
    const std::string& high = ends.back();
    return code.substr(0, low.size()) >= low && code.substr(0, high.size()) <= high;
  }
};

TEST_P(Seed, EveryNumberBeginsWithThatOfItsParent) {
  EXPECT_EQ(codes("1 = 1").size(), 108U);
  auto pairs = db().prepare(
      "SELECT a.code, a.path, COALESCE(p.code, ''), COALESCE(p.path, ''), p.group_flag, a.id"
      " FROM account a LEFT JOIN account p ON p.id = a.parent_id WHERE a.plan = 0");
  while (pairs->step()) {
    const std::string code(pairs->text(0)), parent(pairs->text(2));
    EXPECT_TRUE(code.starts_with(parent) && code.size() > parent.size()) << code;
    EXPECT_EQ(parent.empty(), code.size() == 1) << code;
    const std::string above = parent.empty() ? "" : std::string(pairs->text(3)) + "*";
    EXPECT_EQ(pairs->text(1), above + std::string(pairs->text(5)));
  }
}

TEST_P(Seed, EveryMarkStandsOnAnAccountThatCanBePostedTo) {
  EXPECT_FALSE(anyRow(db(),
                      "SELECT 1 FROM account_mark m WHERE NOT EXISTS (SELECT 1 FROM account a"
                      " WHERE a.mark_id = m.id AND a.plan = 0 AND a.group_flag = 0)"));
  EXPECT_EQ(codes("mark_id = (SELECT id FROM account_mark WHERE code = '2710')"),
            (std::set<std::string>{"2711", "2712", "2713"}));
}

TEST_P(Seed, TemplatesPostToAccountsAndNotToGroups) {
  EXPECT_FALSE(anyRow(db(),
                      "SELECT 1 FROM template_line l JOIN account a"
                      " ON a.id IN (l.account_d, l.account_c) WHERE a.group_flag <> 0"));
}

// A balance that leaves an account out, or counts it twice, does not balance.
TEST_P(Seed, TheBalanceCountsEveryAccountOnceAndTheProfitThoseOfIncomeAndExpense) {
  const auto balance = timesSummed(104), profit = timesSummed(105);
  for (const std::string& code : codes("group_flag = 0")) {
    const bool result = code[0] == '5' || code[0] == '6';
    const auto times = [&](const std::map<std::string, int>& in) {
      const auto found = in.find(code);
      return found == in.end() ? 0 : found->second;
    };
    EXPECT_EQ(times(balance), 1) << code;
    EXPECT_EQ(times(profit), result ? 1 : 0) << code;
  }
}

TEST_P(Seed, StatementSumsPointAtRowsOfTheirOwnJournal) {
  EXPECT_FALSE(anyRow(db(),
                      "SELECT 1 FROM journal_row_pointer p JOIN journal_row r ON r.id = p.row_id"
                      " WHERE NOT EXISTS (SELECT 1 FROM journal_row o"
                      " WHERE o.journal_id = r.journal_id AND o.guid = p.pointed_guid)"));
}

TEST_P(Seed, NewRowsComeBehindTheFixedIds) {
  for (const char* insert : {"INSERT INTO firm (name) VALUES ('x') RETURNING id",
                             "INSERT INTO template (name) VALUES ('x') RETURNING id",
                             "INSERT INTO oper_group (name) VALUES ('x') RETURNING id",
                             "INSERT INTO journal (otype, name, guid, config_list, param_list)"
                             " VALUES ('O0200501', 'x', 'x', '', '') RETURNING id"}) {
    EXPECT_NO_THROW(EXPECT_GT(insertedId(db(), insert), 1)) << insert;
  }
}

struct RightCase {
  int role;
  const char* component;
  const char* want;  // view, delete, edit, create, admin
};
constexpr RightCase kRights[] = {
    {1, "CBROperRights", "vdeca"},
    {1, "CBROperRights4", "vdeca"},
    {2, "CAccountPlanRights", "vdec"},
    {2, "CAllAccLock", "vdec"},
    {3, "CBROperRights4", "vec"},
    {3, "CBROperGroupRights", "v"},
    {3, "CBROperGroupRights4", "v"},
    {3, "CAllAccLock", ""},
    {3, "O0200502", "vec"},
    {1, "CNobodyKnows", ""},
};

TEST_P(Seed, RolesGrantWhatTheyShould) {
  if (GetParam() == Store::Memory) return;
  addUser("chief", 2);
  addUser("clerk", 3);
  const auto chief = another("chief"), clerk = another("clerk");
  for (const RightCase& c : kRights) {
    Session& who = c.role == 1 ? session() : c.role == 2 ? *chief : *clerk;
    const Flags flags = who.rights(c.component);
    std::string shown;
    if (flags.view) shown += 'v';
    if (flags.remove) shown += 'd';
    if (flags.edit) shown += 'e';
    if (flags.create) shown += 'c';
    if (flags.admin) shown += 'a';
    EXPECT_EQ(shown, c.want) << c.role << " " << c.component;
  }
}

// A grant of the group itself counts before that of all groups.
TEST_P(Seed, AGroupMayBeGrantedByItself) {
  run(db(),
      "INSERT INTO right_grant (role_id, component, can_view, can_delete, can_edit,"
      " can_create, can_admin) VALUES (1, 'CBROperRights4', 1, 0, 0, 0, 0)");
  EXPECT_FALSE(session().rights("CBROperRights4").edit);
  EXPECT_TRUE(session().rights("CBROperRights5").edit);
}

TOLVEX_ALL_STORES(Seed);

}  // namespace
}  // namespace tolvex::store
