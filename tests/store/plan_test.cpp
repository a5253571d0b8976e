// Rules of the chart of accounts.
#include "host/store/sql.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

class Plan : public BooksTest {
 protected:
  int idOf(const std::string& code) {
    return static_cast<int>(
        integerFrom(db(), "SELECT id FROM account WHERE plan = 0 AND code = $1", code).value_or(0));
  }
  RowSetPtr node(const std::string& code) {
    RowSetPtr record = rowsIn(session().load("O0200400", "O0200400" + std::to_string(idOf(code))));
    record->MoveFirst();
    return record;
  }
  RowSetPtr newNode(const std::string& parent, const std::string& code) {
    RowSetPtr record = rowsIn(session().create("O0200400", ""));
    record->MoveFirst();
    (*record)["ParentID"] = Variant(idOf(parent));
    (*record)["Account"] = code;
    (*record)["Name"] = "Nauja";
    (*record)["Type"] = "D";
    (*record)["GroupFlag"] = Variant(0);
    return record;
  }
  int save(RowSet& record) { return session().save("O0200400", "", record, nullptr, nullptr).Code; }
  int erase(const std::string& code) {
    return session().erase("O0200400", "O0200400" + std::to_string(idOf(code))).Code;
  }
};

TEST_P(Plan, NumbersAreDigitsBehindTheParentsNumber) {
  struct Case {
    const char *name, *parent, *code;
    int want;
  };
  constexpr Case kCases[] = {
      {"letters", "240", "240A", kRuleBroken},
      {"not behind the parent", "240", "2501", kRuleBroken},
      {"no longer than the parent", "240", "240", kRuleBroken},
      {"taken in this plan", "24", "240", kDuplicate},
      {"a subaccount", "240", "2401", kDone},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(save(*newNode(c.parent, c.code)), c.want);
  }
}

TEST_P(Plan, MarksAndCounterpartsMustExist) {
  RowSetPtr record = newNode("240", "2401");
  (*record)["BRAPropertyID"] = Variant(99);
  EXPECT_EQ(save(*record), kReferred);
  (*record)["BRAPropertyID"] = Variant(6);
  (*record)["NewID"] = Variant(idOf("240"));  // of the working plan, so no counterpart
  EXPECT_EQ(save(*record), kReferred);
  (*record)["NewID"] = Null{};
  EXPECT_EQ(save(*record), kDone);
}

TEST_P(Plan, ANewAccountIsMatchedWithDocumentsAsItsParent) {
  EXPECT_EQ(save(*newNode("240", "2401")), kDone);
  EXPECT_EQ(save(*newNode("2711", "27111")), kDone);
  constexpr const char* kTracked = "SELECT track_items FROM account WHERE plan = 0 AND code = $1";
  EXPECT_EQ(integerFrom(db(), kTracked, "2401"), 1);
  EXPECT_EQ(integerFrom(db(), kTracked, "27111"), 0);
}

TEST_P(Plan, RenumberingANodeRenumbersAllBelow) {
  RowSetPtr record = node("27");
  (*record)["Account"] = "28";
  EXPECT_EQ(save(*record), kDone);
  EXPECT_EQ(idOf("2711"), 0);
  EXPECT_NE(idOf("2811"), 0);
  EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM account WHERE plan = 0 AND code LIKE '27%'"),
            0);
  EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM account WHERE plan = 0 AND code LIKE '28%'"),
            10);
}

TEST_P(Plan, SettingsFollowARenumberedAccount) {
  run(db(), "UPDATE oper_group SET parameters = '2721#27#271#x' WHERE form_oid = 'O0201505'");
  RowSetPtr below = node("2711");  // open in a screen meanwhile
  RowSetPtr record = node("27");
  (*record)["Account"] = "28";
  ASSERT_EQ(save(*record), kDone);
  EXPECT_EQ(textFrom(db(), "SELECT parameters FROM oper_group WHERE form_oid = 'O0201505'"),
            "2821#28#281#x");
  EXPECT_TRUE(anyRow(db(), "SELECT 1 FROM record_log WHERE detail LIKE '%2711 -> 2811%'"));
  EXPECT_TRUE(anyRow(db(), "SELECT 1 FROM record_log WHERE detail LIKE '! %'"))
      << "formulas are left to a person";
  (*below)["Name"] = "Kita";
  EXPECT_EQ(save(*below), kChangedByOther);
}

TEST_P(Plan, AMovedBranchHasItsNewPath) {
  EXPECT_EQ(save(*newNode("2", "277")), kDone);
  RowSetPtr moved = node("277");
  (*moved)["ParentID"] = Variant(idOf("27"));
  EXPECT_EQ(save(*moved), kDone);
  EXPECT_EQ((*node("277"))["OwnCode"].Text(),
            std::string((*node("27"))["OwnCode"].Text()) + "*" + std::to_string(idOf("277")));
  RowSetPtr ring = node("27");
  (*ring)["ParentID"] = Variant(idOf("277"));
  EXPECT_EQ(save(*ring), kRuleBroken) << "a node below itself";
}

TEST_P(Plan, WhatIsUsedIsNotDeleted) {
  EXPECT_EQ(erase("27"), kReferred) << "subaccounts";
  EXPECT_EQ(erase("450"), kReferred) << "template lines";
  EXPECT_EQ(erase("274"), kDone);
  EXPECT_EQ(idOf("274"), 0);
}

TEST_P(Plan, TheListIsByNumberAndInModes) {
  const auto count = [&](const char* first, const char* second) {
    return rowsIn(session().list("O0200400", first, second, ""))->RecordCount();
  };
  EXPECT_EQ(count("", ""), 108U);
  EXPECT_EQ(count("'All'", ""), 108U);
  EXPECT_EQ(count("'','Account Like '27%''", ""), 10U);
  RowSetPtr next = newNode("", "1");
  (*next)["ParentID"] = Null{};
  EXPECT_EQ(session().save("O0200401", "", *next, nullptr, nullptr).Code, kDone);
  EXPECT_EQ(count("", ""), 108U);
  RowSetPtr full = rowsIn(session().list("O0200400", "FULL", "", ""));
  EXPECT_EQ(full->RecordCount(), 110U) << "both plans, and a row above the new one";
  full->SetFilter("OType='Root'");
  EXPECT_EQ((*full)["OIDR"].Text(), "O0200401");
  full->SetFilter("ParentOIDR='O0200401'");
  EXPECT_EQ((*full)["Account"].Text(), "1");
  EXPECT_EQ(rowsIn(session().list("O0200401", "", "", ""))->RecordCount(), 1U);
}

TOLVEX_ALL_STORES(Plan);

}  // namespace
}  // namespace tolvex::store
