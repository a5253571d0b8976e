// The conversion to a new chart of accounts: balances arrive at the counterparts, what names an
// account follows it, and a conversion that does not happen leaves everything as it was.
#include "host/store/convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/demo.h"
#include "host/store/plan_mapping.h"
#include "host/store/schema.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"
#include "tests/support/full_disk.h"
#include "tests/support/plan_fixture.h"

namespace tolvex::store {
namespace {

Auditor::Balances atCounterparts(const Auditor::Balances& balances) {
  Auditor::Balances mapped;
  for (const auto& [key, sums] : balances) {
    auto& to = mapped[{counterpartOf(key.first), key.second}];
    to.first += sums.first;
    to.second += sums.second;
  }
  std::erase_if(mapped, [](const auto& row) {
    return row.second == std::pair<std::int64_t, std::int64_t>{};
  });
  return mapped;
}

class Conversion : public BooksTest {
 protected:
  void SetUp() override {
    BooksTest::SetUp();
    if (IsSkipped()) return;
    fillDemo(session());
    session().setBackupFolder(folder_.path("kopijos"));
    run(db(), "INSERT INTO firm (id, name) VALUES (77, 'UAB Antra')");
  }
  HostResult call(const char* routine, const char* parameters = "") {
    return session().call("O0200400", routine, parameters);
  }
  std::string state() {
    const std::string file = folder_.path("state" + std::to_string(++states_));
    backupBooks(db(), file);
    return file;
  }
  // Base tables whose rows differ between two copies, and the epoch.
  static std::string differences(const std::string& one, const std::string& other) {
    const auto copy = Database::open(one, {});
    copy->execute("ATTACH '" + other + "' AS other");
    std::string out;
    std::vector<std::string> tables = baseTables();
    tables.emplace_back("store_meta");
    for (const std::string& table : tables) {
      const std::string mine = "SELECT * FROM main." + table;
      const std::string theirs = "SELECT * FROM other." + table;
      if (anyRow(*copy, mine + " EXCEPT " + theirs) || anyRow(*copy, theirs + " EXCEPT " + mine)) {
        out += table + " ";
      }
    }
    return out;
  }
  // Work on accounts that become one with others.
  void addJoined() {
    savedId(session(), {20040210,
                        {{"204", "443", 70, {{-1, kFirmA}}},
                         {"2713", "240", 28, {{-1, kFirmA}}, {{1, "USD", 2.8, 10}}}}});
  }
  std::string codeIn(const char* sql) { return textFrom(db(), sql); }

  TestFolder folder_;
  int states_ = 0;
};

TEST_P(Conversion, BalancesArriveAtTheCounterparts) {
  // A debt on an account that is matched with documents, joined with one on which nothing was.
  run(db(), "UPDATE account SET track_items = 0 WHERE plan = 0 AND code = '443'");
  addJoined();
  makeSmallPlan(session());
  constexpr int kDays[] = {20031231, 20040131, 20040210, 20040229, 20040331, 99991231};
  std::vector<Auditor::Balances> before;
  for (const int day : kDays) before.push_back(Auditor::stored(db(), day));

  const HostResult converted = call("Convert");
  ASSERT_EQ(converted.Code, kDone) << converted.Text;

  for (std::size_t i = 0; i < before.size(); ++i) {
    EXPECT_EQ(Auditor::stored(db(), kDays[i]), atCounterparts(before[i])) << kDays[i];
  }
  const Auditor::Balances all = atCounterparts(before.back());
  EXPECT_EQ(Auditor::rolledUp(db()), all);
  EXPECT_TRUE(Auditor::ofItems(db(), all).empty());
  EXPECT_EQ(findingsText(db()), "");
  EXPECT_EQ(integerFrom(db(),
                        "SELECT COUNT(*) FROM open_item i JOIN account a"
                        " ON a.id = i.account_id WHERE a.code = '4430' AND a.plan = 0"),
            integerFrom(db(),
                        "SELECT COUNT(DISTINCT p.item_id) FROM posting p JOIN account a"
                        " ON a.id = p.account_id WHERE a.code = '4430'"));
  // The same work goes on in the same session, by the new numbers.
  const int sale = savedId(session(), {20040331, {{"2410", "9500", 10, {{1, kFirmA}}}}});
  savedId(session(), {20040331, {{"2720", "2410", 10, {{-1, operRef(sale)}}}}});
  EXPECT_EQ(findingsText(db()), "");
}

TEST_P(Conversion, WhatNamesAnAccountFollowsIt) {
  makeSmallPlan(session());
  run(db(),
      "UPDATE oper_group SET parameters = '536#69#6#240#39#340#341' WHERE form_oid = 'O0201506'");
  run(db(),
      "UPDATE journal SET param_list = '2721;3;LTL;;;Kasa litais;;;1;1;0;0'"
      " WHERE otype = 'O0200508'");
  run(db(), "INSERT INTO user_setting VALUES (1, 'O0201500', 'Clone536', '536')");
  run(db(), "INSERT INTO user_setting VALUES (1, 'O0201500', 'TelebankLast', '7')");
  const HostResult converted = call("Convert");
  ASSERT_EQ(converted.Code, kDone) << converted.Text;

  EXPECT_EQ(codeIn("SELECT parameters FROM oper_group WHERE form_oid = 'O0201505'"),
            "4430#9453#9255");
  EXPECT_EQ(codeIn("SELECT parameters FROM oper_group WHERE form_oid = 'O0201506'"),
            "9536#69#6#2410#39#340#341")
      << "accounts without a counterpart and beginnings of numbers stay";
  EXPECT_EQ(codeIn("SELECT param_list FROM journal WHERE otype = 'O0200508'"),
            "92721;3;LTL;;;Nauja 92721;;;1;1;0;0");
  EXPECT_EQ(codeIn("SELECT param_list FROM journal WHERE otype = 'O0200505'"), "2410;1;O0000100");
  EXPECT_EQ(codeIn("SELECT param_list FROM journal WHERE otype = 'O0200504' AND group_flag = 1"
                   " ORDER BY id DESC"),
            "1")
      << "the kind of a statement is no account";
  EXPECT_EQ(codeIn("SELECT d.code FROM template_line l JOIN account d ON d.id = l.account_d"
                   " JOIN account c ON c.id = l.account_c WHERE l.template_id = 11 AND c.plan = 0"
                   " AND c.code = '4430' AND l.factor = 1"),
            "9204");
  EXPECT_FALSE(anyRow(db(),
                      "SELECT 1 FROM account WHERE plan < 0 AND id <> 0 AND (mark_id IS NOT"
                      " NULL OR new_id IS NOT NULL OR track_items <> 0)"));

  std::string left;
  ForEachRow(*rowsIn(converted), [&](RowSet& row) {
    left += std::string(row["Where"].Text()) + "=" + std::string(row["Text"].Text()) + "\n";
  });
  const auto tells = [&](const char* line) {
    EXPECT_NE(left.find(line), std::string::npos) << line << " in\n" << left;
  };
  tells("Balansas: Atsargos=20");
  tells("Sąskaitų uždarymas=69");
  tells("Sąskaitų uždarymas=340");
  tells("Clone536 (Administratorius)=536");
  EXPECT_EQ(left.find("TelebankLast"), std::string::npos);
  const std::string protocol = codeIn("SELECT detail FROM admin_log");
  EXPECT_NE(protocol.find("240 -> 2410"), std::string::npos);
  EXPECT_NE(protocol.find("! Balansas: Atsargos: 20"), std::string::npos) << protocol;
}

// What only a group asked for is dropped when it asks no more, in the new plan as in the old.
TEST_P(Conversion, FullSumsOfAGroupStayAsLongAsItAsks) {
  makeSmallPlan(session());
  const auto sums = [this](const char* code) {
    return session().call("O0201400", "CreateFullSum", "5,'" + std::string(code) + "'").Code;
  };
  const auto matched = [this] {
    return integerFrom(db(),
                       "SELECT COUNT(*) FROM open_item i JOIN account a ON a.id = i.account_id"
                       " WHERE a.plan = 0 AND a.mark_id IN"
                       " (SELECT id FROM account_mark WHERE code = '2710')")
        .value_or(-1);
  };
  ASSERT_EQ(sums("2710"), kDone);
  const auto before = matched();
  ASSERT_GT(before, 0);
  ASSERT_EQ(call("Convert").Code, kDone);
  EXPECT_EQ(matched(), before);
  EXPECT_EQ(sums(""), kDone);
  EXPECT_EQ(matched(), 0);
  EXPECT_EQ(findingsText(db()), "");
}

TEST_P(Conversion, OfSeveralLocksTheLaterDatesWin) {
  struct Case {
    const char *name, *first, *second, *counterpart;
    int high1, low1, high2, low2, high, low;  // 0: none
  };
  constexpr Case kCases[] = {
      {"one of two", "112", "1127", "81", 20040101, 20040131, 0, 0, 20040101, 20040131},
      {"the later of each", "120", "121", "82", 20040101, 20040301, 20040201, 20040228, 20040201,
       20040301},
      {"the user's is never earlier", "122", "123", "83", 20040301, 0, 0, 20040131, 20040301,
       20040301},
      {"the head's alone", "201", "203", "84", 20040301, 0, 20040201, 0, 20040301, 0},
  };
  makeSmallPlan(session());
  const auto day = [](int value) { return value != 0 ? std::optional(value) : std::nullopt; };
  const auto lock = [&](const char* code, int high, int low) {
    if (high == 0 && low == 0) return;
    run(db(),
        "INSERT INTO account_lock (account_id, day_high, day_low, user_id) VALUES ($1, $2, $3, 1)",
        accountId(session(), 0, code), day(high), day(low));
  };
  for (const Case& c : kCases) {
    addNewAccount(session(), c.counterpart);
    setCounterpart(session(), c.first, c.counterpart);
    setCounterpart(session(), c.second, c.counterpart);
    lock(c.first, c.high1, c.low1);
    lock(c.second, c.high2, c.low2);
  }
  ASSERT_EQ(call("Convert").Code, kDone);
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    const int id = accountId(session(), 0, c.counterpart);
    const auto stored = [&](const char* sql) { return integerFrom(db(), sql, id).value_or(0); };
    EXPECT_EQ(stored("SELECT day_high FROM account_lock WHERE account_id = $1"), c.high);
    EXPECT_EQ(stored("SELECT day_low FROM account_lock WHERE account_id = $1"), c.low);
  }
  EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM account_lock"), 4);
}

TEST_P(Conversion, OneAccountBearsOneMarkAndTheOthersAreTold) {
  makeSmallPlan(session());
  setCounterpart(session(), "2721", "2720");  // bank and cash in one
  setCounterpart(session(), "636", "9536");   // the new plan has its own idea of 9536
  run(db(),
      "UPDATE account SET mark_id = (SELECT id FROM account_mark WHERE code = '39')"
      " WHERE plan = 1 AND code = '9536'");
  const HostResult converted = call("Convert");
  ASSERT_EQ(converted.Code, kDone) << converted.Text;
  constexpr const char* kMark =
      "SELECT m.code FROM account a JOIN account_mark m ON m.id = a.mark_id"
      " WHERE a.plan = 0 AND a.code = $1";
  EXPECT_EQ(textFrom(db(), kMark, "2720"), "2710") << "of 2711, the first by number";
  EXPECT_EQ(textFrom(db(), kMark, "92722"), "2720") << "not joined";
  EXPECT_EQ(textFrom(db(), kMark, "9536"), "39");
  std::string left;
  ForEachRow(*rowsIn(converted),
             [&](RowSet& row) { left += std::string(row["Text"].Text()) + ";"; });
  EXPECT_TRUE(left.starts_with("2721 → 2720;536 → 9536;636 → 9536;")) << left;
}

TEST_P(Conversion, FormerPlansMoveAsideAndStay) {
  makeSmallPlan(session());
  run(db(), "INSERT INTO account (plan, code, name, type) VALUES (-8, '240', 'Senas', 'D')");
  ASSERT_EQ(call("Convert").Code, kDone);
  EXPECT_EQ(codeIn("SELECT name FROM account WHERE plan = -1 AND code = '240'"), "Pirkėjų skolos");
  EXPECT_EQ(codeIn("SELECT name FROM account WHERE plan = -10 AND code = '240'"), "Senas")
      << "past the plan of the opening balances";
  EXPECT_EQ(codeIn("SELECT code FROM account WHERE plan = -9"), "0");
  EXPECT_FALSE(anyRow(db(), "SELECT 1 FROM account WHERE plan = 1"));
  const int group = accountId(session(), 0, "9");
  for (const std::string& code : withoutCounterpart(db())) {
    if (accountId(session(), 1, code) == 0) addNewAccount(session(), code);
  }
  ASSERT_EQ(call("SetAccountAuto").Code, kDone);
  ASSERT_EQ(call("Convert").Code, kDone);
  EXPECT_EQ(accountId(session(), -1, "9"), group);
  EXPECT_EQ(codeIn("SELECT name FROM account WHERE plan = -2 AND code = '240'"), "Pirkėjų skolos");
  EXPECT_EQ(findingsText(db()), "");
}

TEST_P(Conversion, EveryAccountInUseNeedsAnAccountForIt) {
  struct Case {
    const char *name, *code;
    bool group;  // the counterpart is one, else there is none
  };
  constexpr Case kCases[] = {
      {"entries", "204", false},
      {"a template line only", "6123", false},
      {"a mark only", "162", false},
      {"a group for a counterpart", "204", true},
  };
  makeSmallPlan(session());
  addNewAccount(session(), "99", true);
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    setCounterpart(session(), c.code, c.group ? "99" : "");
    const std::string before = state();
    const HostResult refused = call("Convert");
    EXPECT_EQ(refused.Code, kReferred);
    EXPECT_EQ(refused.Text,
              std::string("Sąskaita ") + c.code + " neturi atitinkamos naujos sąskaitos!");
    EXPECT_EQ(differences(before, state()), "");
    setCounterpart(session(), c.code, counterpartOf(c.code));
  }
  EXPECT_EQ(call("Convert").Code, kDone);
}

TEST_P(Conversion, WhatStopsInTheMiddleLeavesAllAsItWas) {
  addJoined();
  makeSmallPlan(session());
  const std::string before = state();
  int steps = 0;
  session().watch({[&](std::string_view, double) { return ++steps > 0; }, {}});
  {
    const Transaction trial(db(), Transaction::For::Exclusive);
    (void)convertPlan(session());
  }
  const int all = steps;
  EXPECT_GT(all, 0);
  for (int last = 1; last <= all; ++last) {
    steps = 0;
    session().watch({[&](std::string_view, double) { return ++steps < last; }, {}});
    EXPECT_EQ(call("Convert").Code, kStopped) << last;
    EXPECT_EQ(differences(before, state()), "") << last;
  }
  session().watch({});
  // An entry that lost a side is found when everything has been moved and is compared.
  run(db(),
      "DELETE FROM posting WHERE entry_id = (SELECT MAX(entry_id) FROM posting) AND sign = 1");
  const std::string damaged = state();
  EXPECT_EQ(call("Convert").Code, kEngine);
  EXPECT_EQ(differences(damaged, state()), "");
}

TEST_P(Conversion, AFullDiskLeavesTheBooksAsTheyWere) {
  if (GetParam() != Store::File) return;
  addJoined();
  makeSmallPlan(session());
  ASSERT_EQ(call("BackUpDB").Code, kDone);
  constexpr std::int64_t kPlenty = 1 << 30;
  FullDisk disk(kPlenty);
  reopen();
  session().setBackupFolder(folder_.path("kopijos"));
  for (const char* routine : {"Convert", "RestoreDB"}) {
    const std::string before = state();
    int refusals = 0;
    for (std::int64_t left = 0;; left = left * 2 + 4096) {
      disk.bytesLeft(left);
      const HostResult answer = call(routine);
      disk.bytesLeft(kPlenty);
      if (answer.Code == kDone) break;  // there was room for all of it
      ++refusals;
      ASSERT_NE(answer.Text.find("nebėra vietos"), std::string::npos) << answer.Text;
      ASSERT_EQ(differences(before, state()), "") << routine << " with " << left;
    }
    EXPECT_GT(refusals, 3) << routine;
  }
}

TEST_P(Conversion, OthersMustReopenAndTheConvertingClientGoesOn) {
  makeSmallPlan(session());
  if (GetParam() == Store::Memory) return;
  const auto other = another();
  const RowSetPtr typed = newOperation(*other, {20040331, {{"240", "500", 5, {{1, kFirmA}}}}});
  int renewed = 0;
  session().watch({{}, [&] { ++renewed; }});
  ASSERT_EQ(call("Convert").Code, kDone);
  EXPECT_EQ(renewed, 1);
  const SaveOutcome late = save(*other, *typed);
  EXPECT_EQ(late.Code, kEpochChanged);
  EXPECT_EQ(late.Text, "Duomenų bazė pakeista, atidarykite iš naujo!");
  EXPECT_EQ(call("GetAccountPlan").Code, kDone);
  savedId(*another(), {20040331, {{"2410", "9500", 5, {{1, kFirmA}}}}});
}

TEST_P(Conversion, RightsAreAskedInTheStore) {
  makeSmallPlan(session());
  const auto set = [&](const char* flag) {
    run(db(), std::string("UPDATE right_grant SET ") + flag +
                  " = 0 WHERE component = 'CAccountPlanRights'");
  };
  set("can_admin");
  ASSERT_EQ(call("BackUpDB", "'Convert'").Code, kDone);
  EXPECT_EQ(call("RestoreDB", "'Convert'").Code, kNoSaveRight);
  set("can_edit");
  for (const char* routine : {"Convert", "BackUpDB", "SetAccountAuto"}) {
    EXPECT_EQ(call(routine).Code, kNoSaveRight) << routine;
  }
}

TEST_P(Conversion, CounterpartsAreFoundByNumber) {
  struct Case {
    const char *name, *code, *want;
  };
  constexpr Case kCases[] = {
      {"the same number", "2711", "2711"}, {"the longest beginning", "2712", "271"},
      {"a group is none", "2723", ""},     {"nothing like it", "500", ""},
      {"chosen before", "2722", "2711"},   {"outside of the branch", "204", ""},
  };
  addNewAccount(session(), "27", true);
  for (const char* code : {"271", "2711", "20"}) addNewAccount(session(), code);
  setCounterpart(session(), "2722", "2711");
  const std::string branch = refOf("O0200400", accountId(session(), 0, "27"));
  ASSERT_EQ(call("SetAccountAuto", branch.c_str()).Code, kDone);
  const auto counterpart = [&](const char* code) {
    return textFrom(db(),
                    "SELECT n.code FROM account a JOIN account n ON n.id = a.new_id"
                    " WHERE a.plan = 0 AND a.code = $1",
                    code);
  };
  for (const Case& c : kCases) EXPECT_EQ(counterpart(c.code), c.want) << c.name;
  EXPECT_EQ(counterpart("272"), "") << "a group needs none";
  ASSERT_EQ(call("SetAccountAuto", "''").Code, kDone);
  EXPECT_EQ(counterpart("204"), "20") << "the whole plan";
  EXPECT_EQ(call("SetAccountAuto", "'x'").Code, kWrongParameters);
}

TEST_P(Conversion, ThePreviewTellsWhatWouldMove) {
  const auto preview = [&](const char* field) {
    return (*rowsIn(call("GetConvertingPreview")))[field].Number();
  };
  const auto missing = preview("Missing");
  EXPECT_GT(missing, 0);
  EXPECT_EQ((*rowsIn(call("GetConvertingPreview")))["FirstMissing"].Text(), "162");
  EXPECT_LT(preview("Mapped"), preview("Turnover"));
  makeSmallPlan(session());
  EXPECT_EQ(preview("Missing"), 0);
  EXPECT_EQ(preview("Mapped"), preview("Turnover"));
  EXPECT_EQ(std::llround(preview("Turnover") * 100),
            2 * integerFrom(db(), "SELECT SUM(sum_lt) FROM entry").value_or(0));
  EXPECT_EQ(preview("Entries"), integerFrom(db(), "SELECT COUNT(*) FROM entry"));
  EXPECT_EQ(preview("Accounts"), integerFrom(db(),
                                             "SELECT COUNT(DISTINCT account_id) FROM posting"
                                             " WHERE account_id <> 0"));
}

// --- back again --------------------------------------------------------------------------------

TEST_P(Conversion, TheBackupBringsEverythingBack) {
  makeSmallPlan(session());
  const std::string before = state();
  ASSERT_EQ(call("BackUpDB", "'Convert'").Code, kDone);
  ASSERT_EQ(call("Convert").Code, kDone);
  const std::string converted = state();
  ASSERT_EQ(call("BackUpDB", "'Nauja'").Code, kDone);
  const HostResult restored = call("RestoreDB", "'Convert'");
  ASSERT_EQ(restored.Code, kDone) << restored.Text;
  EXPECT_EQ(differences(before, state()), "admin_log store_meta ")
      << "but for the epoch and the protocol of the restore";
  EXPECT_EQ(findingsText(db()), "");
  savedId(session(), {20040331, {{"240", "500", 10, {{1, kFirmA}}}}});
  EXPECT_EQ(rowsIn(call("GetBackups"))->RecordCount(), 2u);
  ASSERT_EQ(call("RestoreDB", "'Nauja'").Code, kDone);
  EXPECT_EQ(differences(converted, state()), "admin_log store_meta ") << "and forth";
}

// The copy was made when somebody else had the id.
TEST_P(Conversion, WhoIsGoneWithTheRestoreWritesNothing) {
  run(db(), "UPDATE app_user SET login = 'ankstesnis' WHERE id = 1");
  std::filesystem::create_directory(folder_.path("kopijos"));
  backupBooks(db(), folder_.path("kopijos/Ankstesne.tolvex"));
  run(db(), "UPDATE app_user SET login = 'admin' WHERE id = 1");
  ASSERT_EQ(call("RestoreDB", "'Ankstesne'").Code, kDone);
  EXPECT_FALSE(session().rights("CFirms").view);
  EXPECT_EQ(call("SaveSetting", "'O0201500','Clone536','5361'").Code, kNoSaveRight);
  EXPECT_EQ(session().call("O0201500", "DebtsCoverParameters", "'450 D'").Code, kNoSaveRight);
  EXPECT_FALSE(anyRow(db(), "SELECT 1 FROM user_setting WHERE user_id = 0"));
}

TEST_P(Conversion, ABackupThatFailsLeavesTheOlderOne) {
  ASSERT_EQ(call("BackUpDB").Code, kDone) << "an empty name means the usual one";
  const std::string file = folder_.path("kopijos/Convert.tolvex");
  const auto written = std::filesystem::last_write_time(file);
  session().watch({[](std::string_view, double) { return false; }, {}});
  EXPECT_EQ(call("BackUpDB", "'Convert'").Code, kStopped);
  session().watch({});
  {
    const FullDisk disk(20000);
    const HostResult full = call("BackUpDB", "'Convert'");
    EXPECT_EQ(full.Code, kEngine);
    EXPECT_NE(full.Text.find("diske nebėra vietos"), std::string::npos) << full.Text;
  }
  EXPECT_EQ(std::filesystem::last_write_time(file), written);
  EXPECT_EQ(rowsIn(call("GetBackups"))->RecordCount(), 1u);

  std::ofstream(folder_.path("file")) << "a file is no folder";
  session().setBackupFolder(folder_.path("file/kopijos"));
  EXPECT_EQ(call("BackUpDB", "'Convert'").Code, kEngine);
  session().setBackupFolder("");
  EXPECT_EQ(call("BackUpDB", "'Convert'").Code, kEngine);
}

TEST_P(Conversion, ACopyThatCannotBeRestoredIsRefused) {
  ASSERT_EQ(call("BackUpDB", "'Convert'").Code, kDone);
  const std::string file = folder_.path("kopijos/Convert.tolvex");
  const std::string before = state();
  const auto refuses = [&](const char* what, const char* name, int code) {
    const HostResult refused = call("RestoreDB", name);
    EXPECT_EQ(refused.Code, code) << what << ": " << refused.Text;
    EXPECT_EQ(differences(before, state()), "") << what;
  };
  refuses("no such copy", "'Kita'", kObjectGone);
  refuses("a way out of the folder", "'../Convert'", kWrongParameters);
  std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
  refuses("cut in half", "'Convert'", kEngine);
  std::ofstream(file) << std::string(9000, 'x');
  refuses("a foreign file", "'Convert'", kEngine);
  int steps = 0;
  ASSERT_EQ(call("BackUpDB", "'Convert'").Code, kDone);
  session().watch({[&](std::string_view what, double) {
                     return what != "Kopijuojami duomenys" || ++steps < 20;
                   },
                   {}});
  refuses("stopped", "'Convert'", kStopped);
}

TOLVEX_ALL_STORES(Conversion);

}  // namespace
}  // namespace tolvex::store
