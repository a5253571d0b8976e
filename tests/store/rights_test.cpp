// What a user may do is asked by the store, whatever the screens allow.
#include "host/store/rights.h"

#include <functional>

#include "framework/references.h"
#include "host/store/routines.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"
#include "tests/store/record_cases.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

constexpr const char* kFlagColumns[] = {"can_view", "can_delete", "can_edit", "can_create",
                                        "can_admin"};
enum FlagIndex { View, Delete, Edit, Create, Admin };

// The user of the session takes roles in turn, so that one connection is enough.
class Rights : public BooksTest {
 protected:
  void SetUp() override {
    BooksTest::SetUp();
    if (IsSkipped()) return;
    run(db(), "INSERT INTO bank (id, name) VALUES (1, 'Bankas')");
    if (db().engine() == Engine::Postgres) db().execute("SELECT setval('bank_id_seq', 1)");
    run(db(), "INSERT INTO app_role (id, name) VALUES (44, 'Ribota')");
    addUser("kitas", 1);  // somebody must administer all the time
  }
  void asAdministrator() { run(db(), "UPDATE app_user SET role_id = 1 WHERE id = 1"); }
  // With one flag of every component that stands by itself, and no other; with the flag to
  // administer besides where that is asked of everybody who writes. -1: with none at all.
  void asHolderOf(int flag, bool administers = false) {
    run(db(), "DELETE FROM right_grant WHERE role_id = 44");
    if (flag >= 0) {
      std::string values;
      for (int i = 0; i < 5; ++i) {
        values += i == flag || (i == Admin && administers) ? ", 1" : ", 0";
      }
      run(db(),
          "INSERT INTO right_grant (role_id, component, can_view, can_delete, can_edit,"
          " can_create, can_admin) SELECT 44, component" +
              values + " FROM right_component WHERE component NOT LIKE 'CBROper%Rights_%'");
    }
    run(db(), "UPDATE app_user SET role_id = 44 WHERE id = 1");
  }
  RowSetPtr first(const HostResult& result) {
    RowSetPtr rows = rowsIn(result);
    rows->MoveFirst();
    return rows;
  }
};

// A kind with a way to fill a new record and to change a stored one.
struct Subject {
  std::string kind;
  std::function<void(RowSet&)> fill, change;
  bool readByAll = false;     // locks are shown to whoever they bind
  bool administered = false;  // written by administrators only
};

std::vector<Subject> subjects() {
  std::vector<Subject> all;
  for (const RecordCase& about : recordCases()) {
    const auto fillAgain = [&about](unsigned seed) {
      return [&about, seed](RowSet& row) {
        std::mt19937 random(seed);
        fill(row, about, random);
      };
    };
    all.push_back({about.kind, fillAgain(7), fillAgain(8)});
  }
  all.push_back({"O0201300",
                 [](RowSet& row) {
                   row["Account"] = "2711";
                   row["DateToHigh"] = Variant(DateTime::Of(2004, 1, 31));
                 },
                 [](RowSet& row) { row["DateToHigh"] = Variant(DateTime::Of(2004, 2, 29)); },
                 true});
  all.push_back({"O0201500",
                 [](RowSet& row) {
                   row["BROperGroupID"] = Variant(2);
                   row["DateD"] = Variant(DateTime::Of(2004, 1, 15));
                   row["Number"] = "1";
                   addEntry(row, {"2711", "500", 100});
                 },
                 [](RowSet& row) { row["Comment"] = "kitas"; }});
  all.push_back({"O0000800",
                 [](RowSet& row) {
                   row["Login"] = "ona";
                   row["Name"] = "Ona";
                   row["RoleID"] = Variant(3);
                 },
                 [](RowSet& row) { row["Name"] = "Ona Onaitė"; }, false, true});
  all.push_back({"O0000830", [](RowSet& row) { row["Name"] = "Kasininkas"; },
                 [](RowSet& row) { row["Name"] = "Vyr. kasininkas"; }, false, true});
  return all;
}

TEST_P(Rights, EachFlagAllowsItsActOnEveryKindAndNothingElse) {
  for (const Subject& subject : subjects()) {
    const auto& [kind, fillIn, change, readByAll, administered] = subject;
    for (int flag = -1; flag < 5; ++flag) {
      SCOPED_TRACE(kind + " with " + (flag < 0 ? "nothing" : kFlagColumns[flag]));
      const auto expected = [&](int needed, int refusal) {
        return flag == needed ? int{kDone} : refusal;
      };
      asAdministrator();
      RowSetPtr record = first(session().create(kind, kind));
      fillIn(*record);

      asHolderOf(flag, administered);
      SaveOutcome saved = session().save(kind, kind, *record, nullptr, nullptr);
      // A lock is a date on an account that is there: setting it is a change.
      EXPECT_EQ(saved.Code, expected(kind == "O0201300" ? Edit : Create, kNoSaveRight))
          << saved.Text;
      if (saved.Code != kDone) {
        asAdministrator();
        saved = session().save(kind, kind, *record, nullptr, nullptr);
        ASSERT_EQ(saved.Code, kDone) << saved.Text;
        asHolderOf(flag, administered);
      }
      EXPECT_EQ(session().load(kind, saved.reference).Code,
                readByAll ? int{kDone} : expected(View, kNoSaveRight));
      EXPECT_EQ(session().call(kind, "GetVXObject", "'" + saved.reference + "'").Code,
                readByAll ? int{kDone} : expected(View, kNoSaveRight));

      asAdministrator();
      record = first(session().load(kind, saved.reference));
      change(*record);
      asHolderOf(flag, administered);
      EXPECT_EQ(session().save(kind, kind, *record, nullptr, nullptr).Code,
                expected(Edit, kNoSaveRight));
      EXPECT_EQ(session().erase(kind, saved.reference).Code, expected(Delete, kEditedGone));
      asAdministrator();
      if (flag != Delete) {
        EXPECT_EQ(session().erase(kind, saved.reference).Code, kDone);
      }
    }
  }
}

// Parameters for a routine that says who may call it only once it knows what is meant; else plain
// ones that fit its declaration.
std::string parametersFor(const Routine& routine) {
  if (routine.name == "SaveDayRate") return "'USD','2004.01.15',2.75";
  if (routine.name == "SaveDayRates") return "'2004.01.15;USD;2.75'";
  std::string text;
  for (const char letter : routine.parameters) {
    if (letter >= 'A' && letter <= 'Z') continue;
    const bool isNumber = letter == 'i' || letter == 'n';
    text += text.empty() ? "" : ",";
    text += isNumber ? "1" : letter == 'd' ? "'2004.01.15'" : "'O02014002'";
  }
  return text.empty() ? "None" : text;
}

// Every action among the routines asks for a right; a user's own settings are his own.
TEST_P(Rights, WithoutRightsNoRoutineWrites) {
  asHolderOf(-1);
  for (const Routine& routine : routineTable()) {
    const bool ownSetting = routine.name == "SaveSetting" || routine.name.ends_with("Parameters");
    if (!routine.writes || ownSetting) continue;
    const std::string parameters = parametersFor(routine);
    const HostResult result =
        session().call(routine.kinds.substr(0, kKindLength), routine.name, parameters);
    EXPECT_TRUE(result.Code == kNoSaveRight || result.Code == kEditedGone)
        << routine.name << " (" << parameters << "): " << result.Code << " " << result.Text;
  }
}

TEST_P(Rights, AGroupMayBeClosedToARoleThatWritesInTheOthers) {
  asAdministrator();
  run(db(),
      "INSERT INTO right_grant (role_id, component, can_view, can_delete, can_edit, can_create,"
      " can_admin) VALUES (3, 'CBROperRights4', 1, 0, 0, 0, 0)");
  run(db(), "UPDATE app_user SET role_id = 3 WHERE id = 1");
  const RowSetPtr closed = newOperation(session(), {20040115, {{"2711", "500", 1}}, 4});
  EXPECT_EQ(save(session(), *closed).Code, kNoSaveRight);
  const RowSetPtr open = newOperation(session(), {20040115, {{"2711", "500", 1}}, 2});
  EXPECT_EQ(save(session(), *open).Code, kDone);
  (*open)["BROperGroupID"] = Variant(4);
  EXPECT_EQ(save(session(), *open).Code, kNoSaveRight) << "nor can a document be moved there";
}

// What an operation was is told to who may view its group, and brought back by who may write in it;
// of one that is gone the group that it stood in counts.
TEST_P(Rights, TheProtocolOfAnOperationIsGuardedByItsGroup) {
  const int id = savedId(session(), {20040115, {{"2711", "500", 1}}, 4});
  const auto log = integerFrom(db(), "SELECT MAX(id) FROM oper_log");
  const std::string reference = "'" + operRef(id) + "'";
  const auto asHolderIn = [&](const char* group) {
    asHolderOf(-1);
    run(db(), "INSERT INTO right_grant VALUES (44, $1, 1, 1, 1, 1, 0)", group);
  };
  for (const bool gone : {false, true}) {
    SCOPED_TRACE(gone ? "gone" : "standing");
    for (const auto& [group, expected] : {std::pair("CBROperRights2", int{kNoSaveRight}),
                                          std::pair("CBROperRights4", int{kDone})}) {
      asHolderIn(group);
      const auto code = [&](const char* routine, const std::string& parameters) {
        return session().call("O0201500", routine, parameters).Code;
      };
      EXPECT_EQ(code("GetBROperLog", reference), expected);
      EXPECT_EQ(code("GetBROperLogDetail", reference + "," + std::to_string(*log)), expected);
      EXPECT_EQ(code("GetUndo", reference), expected);
      if (gone) {
        EXPECT_EQ(code("UndoSave", reference + ",0"), expected);
      }
    }
    if (!gone) {
      EXPECT_EQ(session().erase("O0201500", operRef(id)).Code, kDone);
    }
  }
}

TEST_P(Rights, ABlockedUserAndOneWhoMustChangeHisPasswordHaveNone) {
  EXPECT_TRUE(session().rights("CFirms").edit);
  run(db(), "UPDATE app_user SET must_change = 1 WHERE id = 1");
  EXPECT_FALSE(session().rights("CFirms").view);
  run(db(), "UPDATE app_user SET must_change = 0, active = 0 WHERE id = 1");
  EXPECT_FALSE(session().rights("CFirms").view);
}

TEST_P(Rights, TheRowsOfARoleStandBelowTheirParentsAndNoneIsLost) {
  run(db(),
      "INSERT INTO right_component (component, parent, kind, caption)"
      " VALUES ('CLost', 'CNobodyKnows', 2, 'Našlaitė')");
  const RowSetPtr rows = rowsIn(session().call("O0000830", "GetRoleRights", "3"));
  std::set<std::string> before;
  ForEachRow(*rows, [&](RowSet& row) {
    const std::string parent(row["Parent"].Text());
    EXPECT_TRUE(parent.empty() || before.contains(parent)) << row["Component"].Text();
    before.emplace(row["Component"].Text());
    if (row["Component"].Text() == "CBROperRights4") {
      EXPECT_EQ(row["Granted"].Number(), 0);
      EXPECT_EQ(row["Caption"].Text(), textFrom(db(), "SELECT name FROM oper_group WHERE id = 4"));
    }
  });
  EXPECT_EQ(static_cast<std::int64_t>(before.size()),
            integerFrom(db(), "SELECT COUNT(*) FROM right_component"));
}

// A newer module brings a component: administrators hold it at once, the others are asked for.
TEST_P(Rights, AComponentOfANewModuleIsTakenInOnce) {
  const SecurityEntry brought[] = {{"DLL|L02020011", 10, "L02020011", "Buhalterinė apskaita"},
                                   {"L02020011", 2, "CBROperRights", "kitas pavadinimas"},
                                   {"L02020011", 2, "CNewThing", "Nauja galimybė"}};
  run(db(), "UPDATE right_grant SET can_edit = 0 WHERE role_id = 3");
  for (int opening = 0; opening < 2; ++opening) {
    EXPECT_EQ(registerComponents(session(), brought).Code, kDone);
    EXPECT_EQ(textFrom(db(), "SELECT parent FROM right_component WHERE component = 'CNewThing'"),
              "L02020011");
    EXPECT_TRUE(session().rights("CNewThing").admin);
    EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM right_grant WHERE component = 'CNewThing'"),
              1);
    EXPECT_EQ(
        textFrom(db(), "SELECT caption FROM right_component WHERE component = $1", "CBROperRights"),
        "Finansinių operacijų tvarkymas");
    // What was granted since stays.
    run(db(), "UPDATE right_grant SET can_edit = 0 WHERE component = 'CNewThing'");
  }
  EXPECT_FALSE(session().rights("CNewThing").edit);
}

TOLVEX_ALL_STORES(Rights);

}  // namespace
}  // namespace tolvex::store
