// An account moved one level down: everything that was entered on it, and nothing else, stands on
// its new subaccount.
#include <gtest/gtest.h>

#include "framework/references.h"
#include "host/store/demo.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"
#include "tests/support/plan_fixture.h"

namespace tolvex::store {
namespace {

constexpr const char* kPlan = "O0200400";

class MovedAccount : public BooksTest {
 protected:
  void SetUp() override {
    BooksTest::SetUp();
    if (IsSkipped()) return;
    fillDemo(session());
    run(db(), "INSERT INTO firm (id, name) VALUES (77, 'UAB Antra')");
  }
  int idOf(const std::string& code) { return accountId(session(), 0, code); }
  HostResult moveDown(int id, Session& by) {
    return by.call(kPlan, "MoveAccountDown", "'" + std::to_string(id) + "'");
  }
  std::string text(const char* sql) { return textFrom(db(), sql); }
  // What of the books names the account.
  std::int64_t uses(int id) {
    std::int64_t all = 0;
    for (const char* place :
         {"posting WHERE account_id", "posting WHERE corr_id", "turn_acc WHERE account_id",
          "turn_acc WHERE corr_id", "turn_dim WHERE account_id", "turn_dim WHERE corr_id",
          "open_item WHERE account_id", "template_line WHERE account_d",
          "template_line WHERE account_c"})
      all += integerFrom(db(), "SELECT COUNT(*) FROM " + std::string(place) + " = $1", id).value();
    return all;
  }
};

Auditor::Balances renamed(const Auditor::Balances& balances, const std::string& from,
                          const std::string& to) {
  Auditor::Balances result;
  for (const auto& [key, sums] : balances)
    result[{key.first == from ? to : key.first, key.second}] = sums;
  return result;
}

TEST_P(MovedAccount, EverythingFollowsIt) {
  // Entries within the account itself and in a currency beside those of the demo company.
  savedId(session(), {20040315,
                      {{"240", "240", 5, {{1, kFirmA}, {-1, kFirmB}}},
                       {"240", "500", 28, {{1, kFirmA}}, {{1, "USD", 2.8, 10}}}}});
  const int from = idOf("240");
  const int counterpart = (addNewAccount(session(), "2", true), addNewAccount(session(), "22"));
  setCounterpart(session(), "240", "22");
  run(db(),
      "INSERT INTO account_lock (account_id, day_high, day_low, user_id)"
      " VALUES ($1, 20040229, 20040331, 1)",
      from);
  run(db(),
      "UPDATE oper_group SET parameters = '536#240#6#24#39#340#341' WHERE form_oid = 'O0201506'");
  const auto before = Auditor::stored(db(), 99991231);
  const std::int64_t used = uses(from);

  const HostResult moved = moveDown(from, session());
  ASSERT_EQ(moved.Code, kDone) << moved.Text << ": lock dates do not stop it";

  const int to = idOf("2401");
  ASSERT_NE(to, 0);
  EXPECT_EQ(uses(from), 0);
  EXPECT_EQ(uses(to), used);
  EXPECT_EQ(Auditor::stored(db(), 99991231), renamed(before, "240", "2401"));
  EXPECT_EQ(Auditor::rolledUp(db()), Auditor::stored(db(), 99991231));
  EXPECT_EQ(findingsText(db()), "");
  EXPECT_EQ(text("SELECT a.name || a.type || m.code FROM account a JOIN account_mark m"
                 " ON m.id = a.mark_id WHERE a.plan = 0 AND a.code = '2401'"),
            text("SELECT name || type || '240' FROM account WHERE plan = 0 AND code = '240'"));
  EXPECT_EQ(integerFrom(db(), "SELECT new_id FROM account WHERE id = $1", to), counterpart);
  EXPECT_FALSE(anyRow(db(),
                      "SELECT 1 FROM account WHERE id = $1"
                      " AND (mark_id IS NOT NULL OR new_id IS NOT NULL)",
                      from));
  EXPECT_EQ(integerFrom(db(),
                        "SELECT COUNT(*) FROM account_lock WHERE day_high = 20040229"
                        " AND day_low = 20040331 AND account_id IN ($1, $2)",
                        from, to),
            2)
      << "a locked period stays shut on both";
  EXPECT_EQ(text("SELECT parameters FROM oper_group WHERE form_oid = 'O0201506'"),
            "536#2401#6#24#39#340#341");

  // Work goes on on both accounts, and the old one can be moved once more.
  const int sale = savedId(session(), {20040401, {{"2401", "500", 10, {{1, kFirmA}}}}});
  savedId(session(), {20040402, {{"2711", "2401", 4, {{-1, operRef(sale)}}}}});
  savedId(session(), {20040402, {{"240", "500", 3, {{1, kFirmB}}}}});
  ASSERT_EQ(moveDown(from, session()).Code, kDone);
  EXPECT_NE(idOf("2402"), 0);
  EXPECT_EQ(findingsText(db()), "");
}

TEST_P(MovedAccount, AScreenThatShowsTheOldNumberCannotBringItBack) {
  const int sale = savedId(session(), {20040315, {{"240", "500", 5, {{1, kFirmA}}}}});
  const RowSetPtr open = loaded(session(), sale);
  ASSERT_EQ(moveDown(idOf("240"), session()).Code, kDone);
  (*open)["Comment"] = "pakeista";
  EXPECT_EQ(save(session(), *open).Code, kChangedByOther);
  RowSet& entry = *(*loaded(session(), sale))["BR"].Rows();
  EXPECT_EQ(entry["AccountD"].Text(), "2401");
}

TEST_P(MovedAccount, TheNumberIsTheFirstFreeOne) {
  constexpr const char* kAdd =
      "INSERT INTO account (plan, parent_id, code, name, type) VALUES (0, $1, $2, 'x', 'D')";
  const int from = idOf("274");
  for (const char* taken : {"2741", "2742", "2744"}) run(db(), kAdd, from, taken);
  ASSERT_EQ(moveDown(from, session()).Code, kDone);
  EXPECT_NE(idOf("2743"), 0);
  for (const char* taken : {"2745", "2746", "2747", "2748", "2749"}) run(db(), kAdd, from, taken);
  ASSERT_EQ(moveDown(from, session()).Code, kDone);
  EXPECT_NE(idOf("2740"), 0) << "0 is the last digit";
  ASSERT_EQ(moveDown(from, session()).Code, kDone);
  EXPECT_NE(idOf("27400"), 0) << "then two digits";
  EXPECT_EQ(integerFrom(db(), "SELECT parent_id FROM account WHERE code = '27400'"), from);
}

TEST_P(MovedAccount, RefusalsChangeNothing) {
  const int from = idOf("240");
  run(db(), "UPDATE right_grant SET can_edit = 0 WHERE component = 'CAccountPlanRights'");
  EXPECT_EQ(moveDown(from, session()).Code, kNoSaveRight);
  run(db(), "UPDATE right_grant SET can_edit = 1 WHERE component = 'CAccountPlanRights'");
  EXPECT_EQ(moveDown(idOf("27"), session()).Code, kRuleBroken) << "a group";
  EXPECT_EQ(moveDown(0, session()).Code, kEditedGone) << "the account of opening balances";
  EXPECT_EQ(moveDown(99999, session()).Code, kEditedGone);
  EXPECT_EQ(idOf("2401"), 0);
  EXPECT_EQ(session().call(kPlan, "MoveAccountDown", "None").Code, kWrongParameters);
}

TOLVEX_ALL_STORES(MovedAccount);

}  // namespace
}  // namespace tolvex::store
