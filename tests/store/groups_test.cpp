// Groups of operations in the store: where they may stand, what may change while they hold
// documents, and the full sums of debts that a group asks for.
#include "framework/references.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"
#include "tests/store/routine_answers.h"

namespace tolvex::store {
namespace {

constexpr const char* kGroups = "O0201400";

class Groups : public BooksTest {
 protected:
  RowSetPtr group(int id) {
    RowSetPtr record = rowsIn(session().load(kGroups, refOf(kGroups, id)));
    record->MoveFirst();
    return record;
  }
  RowSetPtr fresh(Variant above, int common) {
    RowSetPtr record = rowsIn(session().create(kGroups, ""));
    record->MoveFirst();
    (*record)["Name"] = "Nauja";
    (*record)["ParentID"] = above;
    (*record)["GroupFlag"] = common;
    return record;
  }
  SaveOutcome save(RowSet& record) { return session().save(kGroups, "", record, nullptr, nullptr); }
  int stored(Variant above, int common) {
    const SaveOutcome saved = save(*fresh(above, common));
    EXPECT_EQ(saved.Code, kDone) << saved.Text;
    return idOf(saved.reference);
  }
  std::string changed(int id, const char* field, Variant value) {
    RowSetPtr record = group(id);
    (*record)[field] = std::move(value);
    const SaveOutcome saved = save(*record);
    return saved.Code == kDone ? "" : std::to_string(saved.Code) + " " + saved.Text;
  }
  HostResult sums(int id, const std::string& code) {
    return session().call(kGroups, "DO0201400_CreateFullSum",
                          std::to_string(id) + ",'" + code + "'");
  }
};

TEST_P(Groups, StandInCommonGroupsBelowOneTop) {
  EXPECT_EQ(save(*fresh(Null{}, 1)).Text, "Nenurodyta aukštesnio lygio grupė!");
  EXPECT_EQ(save(*fresh(3, 0)).Text, "Operacijų grupėje kitų grupių būti negali!");
  EXPECT_EQ(save(*fresh(999, 0)).Code, kParentGone);
  const int common = stored(1, 1), inside = stored(common, 0);
  EXPECT_EQ(changed(common, "GroupFlag", 0),
            "1204 Grupė, kurioje yra kitų grupių, turi būti bendra!");
  EXPECT_EQ(changed(common, "ParentID", inside), "1204 Įrašas negali būti savo paties viduje!");
  EXPECT_EQ(changed(common, "ParentID", Null{}), "1204 Nenurodyta aukštesnio lygio grupė!");

  const HostResult full = session().erase(kGroups, refOf(kGroups, common));
  EXPECT_EQ(full.Code, kReferred);
  EXPECT_EQ(full.Text, "Įrašas turi pavaldžių įrašų: Nauja");
  EXPECT_EQ(session().erase(kGroups, refOf(kGroups, inside)).Code, kDone);
  EXPECT_EQ(session().erase(kGroups, refOf(kGroups, common)).Code, kDone);
  const HostResult top = session().erase(kGroups, "O02014001");
  EXPECT_EQ(top.Code, kReferred);
  EXPECT_EQ(top.Text, "Pagrindinės grupės panaikinti negalima!");
}

TEST_P(Groups, KeepTheirKindWhileTheyHoldDocuments) {
  EXPECT_EQ(changed(2, "FormOID", "O0201506"), "") << "an empty one";
  EXPECT_EQ(changed(2, "FormOID", "O0201500"), "");
  TestOper oper;
  oper.entries = {{"2711", "500", 100.0}};
  (void)savedId(session(), oper);
  EXPECT_EQ(changed(2, "FormOID", "O0201506"),
            "1204 Grupėje yra operacijų, jos dokumentų tipo pakeisti negalima!");
  EXPECT_EQ(changed(2, "GroupFlag", 1), "1204 Grupė, kurioje yra operacijų, negali būti bendra!");
  EXPECT_EQ(changed(2, "Name", "Kitaip"), "");
  EXPECT_EQ(session().erase(kGroups, "O02014002").Code, kReferred);
}

TEST_P(Groups, FullSumsAreKeptWhileSomeGroupAsks) {
  TestOper first;
  first.entries = {{"2711", "500", 100.0, {{1, kFirmA}}}, {"2711", "240", 7.0, {{1, kFirmA}}}};
  const int paid = savedId(session(), first);
  TestOper second;
  second.day = 20040202;
  second.entries = {{"500", "2711", 40.0, {{-1, kFirmA}, {-1, operRef(paid)}}}};
  (void)savedId(session(), second);

  const auto debts = [&](const char* account) {
    return answerText(session(), "O0201500", "GetDebts1",
                      "'0','" + std::string(account) + "','2004.12.31','O00001001',1",
                      "OIDR,SumA,LikutisLt");
  };
  const auto items = [&](const char* account) {
    return integerFrom(db(),
                       "SELECT COUNT(*) FROM open_item i JOIN account a ON a.id = i.account_id"
                       " WHERE a.code = $1",
                       account)
        .value_or(-1);
  };
  const std::string before = debts("2711");
  EXPECT_NE(before.find("67"), std::string::npos) << before;
  EXPECT_EQ(items("2711"), 0);

  EXPECT_EQ(sums(5, "2710").Code, kDone);
  EXPECT_EQ(items("2711"), 1) << "one document, paid in part";
  EXPECT_EQ(debts("2711"), before);
  EXPECT_EQ((*group(5))["AccountCode"].Text(), "2710");
  EXPECT_EQ(findingsText(db()), "");
  (void)savedId(session(), first);
  EXPECT_EQ(items("2711"), 2) << "kept by every save from now on";
  EXPECT_EQ(sums(6, "2710").Code, kDone);
  EXPECT_EQ(items("2711"), 2);
  const std::string after = debts("2711");

  EXPECT_EQ(sums(5, "").Code, kDone);
  EXPECT_EQ(items("2711"), 2) << "the other group still asks";
  EXPECT_EQ(session().erase(kGroups, refOf(kGroups, 6)).Code, kDone);
  EXPECT_EQ(items("2711"), 0);
  EXPECT_EQ(debts("2711"), after) << "the same debts, from the postings";
  EXPECT_EQ(findingsText(db()), "");

  const auto buyers = items("240");
  EXPECT_GT(buyers, 0);
  EXPECT_EQ(sums(5, "240").Code, kDone);
  EXPECT_EQ(sums(5, "").Code, kDone);
  EXPECT_EQ(items("240"), buyers) << "what buyers owe is matched in any books";
  EXPECT_EQ(findingsText(db()), "");
}

TEST_P(Groups, ARefusedFullSumChangesNothing) {
  EXPECT_EQ(sums(5, "2710").Code, kDone);
  RowSetPtr stale = group(5);
  const HostResult unknown = sums(5, "9999");
  EXPECT_EQ(unknown.Code, kReferred);
  EXPECT_EQ(unknown.Text, "Nurodytas sąskaitos požymis neegzistuoja!");
  EXPECT_EQ((*group(5))["AccountCode"].Text(), "2710");
  EXPECT_EQ(sums(999, "2710").Code, kObjectGone);
  EXPECT_EQ(sums(5, "240").Code, kDone);
  (*stale)["Name"] = "Pavėluota";
  EXPECT_EQ(save(*stale).Code, kChangedByOther) << "the group has another code by now";
  EXPECT_EQ(textFrom(db(), "SELECT detail FROM record_log WHERE kind = $1 ORDER BY id DESC LIMIT 1",
                     kGroups),
            "AccountCode: 2710 -> 240");
}

TEST_P(Groups, AJournalReadsTheGroupItNames) {
  const auto read = [&](const char* asked) {
    return answerText(session(), "O0200500", "GetBROperGroupByOIDR", asked, "OIDR,Name,FormOID");
  };
  EXPECT_EQ(read("'O02014005'"), "O02014005|Mokėjimo nurodymai|O0201501");
  EXPECT_EQ(read("O02014003"), "O02014003|Pirkimai|O0201500");
  EXPECT_EQ(read("'O0201400999'"), "16 Objektas panaikintas!");
}

TEST_P(Groups, WhoMayNotChangeAGroupComputesNothing) {
  run(db(), "UPDATE right_grant SET can_edit = 0 WHERE component = 'CBROperGroupRights'");
  EXPECT_EQ(sums(5, "2710").Code, kNoSaveRight);
  EXPECT_EQ(textFrom(db(), "SELECT account_code FROM oper_group WHERE id = 5"), "");
}

TOLVEX_ALL_STORES(Groups);

}  // namespace
}  // namespace tolvex::store
