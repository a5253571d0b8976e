#include <gtest/gtest.h>

#include "framework/references.h"
#include "host/store/numbering.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

constexpr int kPurchases = 3;  // "Prefix_AutoNumber", "P", four digits, by group and year

int offered(Session& session, int day = 20040115, int group = kPurchases) {
  return offerNumber(session, *readNumberRules(session.db(), group), session.user().id, "AD",
                     "O0201500", day);
}

struct Drawn {
  int code, autoNumber;
  std::string number;
  bool operator==(const Drawn&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Drawn& drawn) {
  return out << drawn.code << " " << drawn.autoNumber << " " << drawn.number;
}

Drawn draw(Session& session, int autoNumber, const std::string& number, int day = 20040115,
           int group = kPurchases) {
  const RowSetPtr record = newOperation(session, {day, {}, group});
  (*record)["AutoNumber"] = static_cast<double>(autoNumber);
  (*record)["Number"] = number;
  const SaveOutcome saved = save(session, *record);
  return {saved.Code, static_cast<int>((*record)["AutoNumber"].Number()),
          std::string((*record)["Number"].Text())};
}

TEST(Numbers, AtSave) {
  const auto session = memoryBooks();
  Session& s = *session;
  EXPECT_EQ(offered(s), 1);
  EXPECT_EQ(s.offer().text, "P-0001");
  EXPECT_EQ(draw(s, 1, "P-0001"), (Drawn{kDone, 1, "P-0001"})) << "the offer is free";
  EXPECT_EQ(draw(s, 1, "P-0001"), (Drawn{kDone, 2, "P-0002"})) << "the offer was drawn meanwhile";
  EXPECT_EQ(draw(s, 0, "P-0001"), (Drawn{kDone, 3, "P-0003"})) << "the text of the offer counts";
  EXPECT_EQ(draw(s, 1, "ranka"), (Drawn{kDone, 4, "ranka"})) << "a text of its own stays";
  EXPECT_EQ(draw(s, 9, "P-0009"), (Drawn{kDone, 9, "P-0009"})) << "typed and free";
  EXPECT_EQ(draw(s, 2, "P-0002").code, kDuplicate) << "typed and taken";
  EXPECT_EQ(draw(s, 0, "be skaitliuko"), (Drawn{kDone, 0, "be skaitliuko"}));
  EXPECT_EQ(draw(s, 9, "P-0009", 20030115), (Drawn{kDone, 9, "P-0009"})) << "another year";
  EXPECT_EQ(draw(s, 9, "S-0009", 20040115, 4), (Drawn{kDone, 9, "S-0009"})) << "another group";
  EXPECT_EQ(offered(s), 10) << "after the highest, not in the gap";
  EXPECT_EQ(numberGaps(s.db()).size(), 1u);
  EXPECT_EQ(findingsText(s.db()), "");
}

TEST(Numbers, AnEditKeepsItsNumberUntilTheCounterChanges) {
  const auto session = memoryBooks();
  offered(*session);
  const RowSetPtr record = newOperation(*session, {20040115, {}, kPurchases});
  (*record)["AutoNumber"] = 1.0;
  (*record)["Number"] = "P-0001";
  ASSERT_EQ(save(*session, *record).Code, kDone);
  draw(*session, 1, "P-0001");  // 2; the offer still stands at 1
  (*record)["Comment"] = "kitas";
  ASSERT_EQ(save(*session, *record).Code, kDone);
  EXPECT_EQ((*record)["AutoNumber"].Number(), 1) << "its own number, not the offer again";

  draw(*session, 1, "P-0001", 20030110);  // takes 1 of the year before
  (*record)["DateD"] = Variant(DateTime::Of(2003, 5, 5));
  offered(*session, 20040601, 4);  // an offer of another group has no say
  EXPECT_EQ(save(*session, *record).Code, kDuplicate);
}

TEST(Numbers, DeletingTheHighestFreesIt) {
  const auto session = memoryBooks();
  offered(*session);
  draw(*session, 1, "P-0001");
  const RowSetPtr record = newOperation(*session, {20040115, {}, kPurchases});
  (*record)["AutoNumber"] = 1.0;
  ASSERT_EQ(save(*session, *record).Code, kDone);
  ASSERT_EQ((*record)["AutoNumber"].Number(), 2);
  ASSERT_EQ(session->erase("O0201500", (*record)["OIDR"].Text()).Code, kDone);
  EXPECT_EQ(offered(*session), 2);
}

TEST(Numbers, GroupsWithoutAMaskOrBeforeTheirDateDoNotCount) {
  const auto session = memoryBooks();
  EXPECT_EQ(offered(*session, 20040115, 16), 0);
  run(session->db(), "UPDATE oper_group SET an_day_from = 20040201, an_minimal = 50 WHERE id = 3");
  EXPECT_EQ(offered(*session, 20040131), 0);
  EXPECT_EQ(draw(*session, 5, "5"), (Drawn{kDone, 5, "5"}));
  EXPECT_EQ(draw(*session, 5, "5"), (Drawn{kDone, 5, "5"})) << "no counter, no double";
  EXPECT_EQ(offered(*session, 20040201), 50);
}

// Two documents are open at once, of one group or of two, and somebody else is faster.
TEST(Numbers, EveryOpenScreenKeepsItsOffer) {
  const auto session = memoryBooks();
  Session& s = *session;
  EXPECT_EQ(offered(s), 1);
  EXPECT_EQ(offered(s), 1);
  EXPECT_EQ(offered(s, 20040115, 4), 1);
  EXPECT_EQ(draw(s, 1, "P-0001"), (Drawn{kDone, 1, "P-0001"}));
  EXPECT_EQ(draw(s, 1, "P-0001"), (Drawn{kDone, 2, "P-0002"}));
  EXPECT_EQ(draw(s, 5, "P-0005"), (Drawn{kDone, 5, "P-0005"}));
  EXPECT_EQ(offered(s), 6);
  EXPECT_EQ(draw(s, 9, "P-0009"), (Drawn{kDone, 9, "P-0009"})) << "typed by another meanwhile";
  EXPECT_EQ(draw(s, 6, "P-0006"), (Drawn{kDone, 6, "P-0006"})) << "still free: no second gap";
  EXPECT_EQ(draw(s, 6, "P-0006", 20030115), (Drawn{kDone, 1, "P-0001"}))
      << "another year's counter";
  EXPECT_EQ(draw(s, 5, "P-0005").code, kDuplicate) << "never offered";
  EXPECT_EQ(findingsText(s.db()), "");
}

TEST(Numbers, ATextThatCannotBeReadBackFollowsItsNumberToo) {
  const auto session = memoryBooks();
  Session& s = *session;
  run(s.db(),
      "UPDATE oper_group SET an_prefix = 'A-1', an_mask = 'Prefix_UserPrefix_AutoNumber'"
      " WHERE id = 3");
  offered(s);
  ASSERT_EQ(s.offer().text, "A-1-AD-0001");
  EXPECT_EQ(draw(s, 0, "A-1-AD-0001"), (Drawn{kDone, 1, "A-1-AD-0001"}));
  EXPECT_EQ(draw(s, 0, "A-1-AD-0001"), (Drawn{kDone, 2, "A-1-AD-0002"}));
}

TEST(Numbers, ACounterThatHasRunOutSaysSo) {
  const auto session = memoryBooks();
  EXPECT_EQ(draw(*session, 2147483647, "P-2147483647").code, kDone);
  const HostResult asked = session->call("O0201500", "GetAutoNumber", "3,1,'AD',1,'2004.01.15'");
  EXPECT_EQ(asked.Code, kRuleBroken);
  EXPECT_EQ(asked.Text, "Auto numerio reikšmė 2147483648 yra per didelė!");
  EXPECT_EQ(draw(*session, 7, "P-0007").code, kDone) << "numbers can still be typed";
}

// Counters by user follow the one who made the document, also when it draws its number later.
TEST(Numbers, ADocumentStaysWithItsMaker) {
  const auto place = OperPlace::file();
  const auto maker = place->open();
  run(maker->db(), "UPDATE oper_group SET an_group_by = 3 WHERE id = 3");
  run(maker->db(),
      "INSERT INTO app_user (id, login, name, user_pref, role_id)"
      " SELECT 9, 'jonas', 'Jonas', 'JJ', role_id FROM app_user WHERE id = 1");
  offered(*maker);
  draw(*maker, 1, "P-0001");
  const int plain = savedId(*maker, {20040115, {}, kPurchases});

  const auto editor = place->open("jonas");
  EXPECT_EQ(offered(*editor), 1) << "a counter of his own";
  const RowSetPtr record = loaded(*editor, plain);
  (*record)["AutoNumber"] = 1.0;
  (*record)["Number"] = "P-0001";
  ASSERT_EQ(save(*editor, *record).Code, kDone);
  EXPECT_EQ((*record)["Number"].Text(), "P-0002");
  EXPECT_EQ(draw(*editor, 1, "P-0001"), (Drawn{kDone, 1, "P-0001"}));
  EXPECT_EQ(findingsText(editor->db()), "");
}

struct KeyCase {
  int groupBy, cycle;
  const char* want;  // of group 3, user 8, kind O0201504, 2004.05.17
};
const KeyCase kKeys[] = {
    {0, 3, "0|0|0||3|20040101|0"},         {1, 2, "1|3|0||2|20040401|0"},
    {2, 1, "2|0|8||1|20040501|0"},         {3, 0, "3|3|8||0|20040517|0"},
    {4, 3, "4|0|0|O0201504|3|20040101|0"}, {5, 3, "5|0|8|O0201504|3|20040101|0"},
};

TEST(Numbers, Buckets) {
  for (const KeyCase& c : kKeys) {
    NumberRules rules{3, false, "AutoNumber", "", "", 1, c.groupBy, c.cycle, 0};
    EXPECT_EQ(bucketKey(rules, 8, "O0201504", 20040517), c.want);
  }
}

struct CycleCase {
  int cycle, last, first;  // days of two neighbouring periods
};
const CycleCase kCycles[] = {
    {0, 20040228, 20040229}, {0, 20041231, 20050101}, {1, 20040229, 20040301},
    {1, 20041231, 20050101}, {2, 20040331, 20040401}, {2, 20040630, 20040701},
    {2, 20040930, 20041001}, {2, 20041231, 20050101}, {3, 20041231, 20050101}};

TEST(Numbers, BeginAnewWithEachCycle) {
  for (const CycleCase& c : kCycles) {
    SCOPED_TRACE(std::to_string(c.cycle) + " " + std::to_string(c.first));
    const auto session = memoryBooks();
    run(session->db(), "UPDATE oper_group SET an_cycle = $1, an_minimal = 20 WHERE id = 3",
        c.cycle);
    for (const int day : {c.last, c.first}) {
      EXPECT_EQ(offered(*session, day), 20);
      EXPECT_EQ(draw(*session, 20, "P-0020", day), (Drawn{kDone, 20, "P-0020"}));
      EXPECT_EQ(draw(*session, 20, "P-0020", day), (Drawn{kDone, 21, "P-0021"}));
    }
    EXPECT_EQ(offered(*session, c.last), 22) << "an ended period goes on where it stood";
  }
}

TEST(Numbers, AreCommonToTheGroupsKindsAndUsersThatTheCounterJoins) {
  const struct {
    int groupBy;
    bool joinsGroups, joinsUsers;
  } kCases[] = {{0, true, true},   {1, false, true}, {2, true, false},
                {3, false, false}, {4, true, true},  {5, true, false}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.groupBy);
    const NumberRules one{3, false, "AutoNumber", "", "", 1, c.groupBy, 3, 0};
    NumberRules other = one;
    other.groupId = 4;
    const std::string key = bucketKey(one, 8, "O0201500", 20040517);
    EXPECT_EQ(key == bucketKey(other, 8, "O0201500", 20040517), c.joinsGroups);
    EXPECT_EQ(key == bucketKey(one, 9, "O0201500", 20040517), c.joinsUsers);
    EXPECT_EQ(key == bucketKey(one, 8, "O0201504", 20040517), c.groupBy < 4);
    NumberRules renewed = one;
    renewed.dayFrom = 20040501;
    EXPECT_NE(key, bucketKey(renewed, 8, "O0201500", 20040517))
        << "a new date begins a new counter";
  }
}

}  // namespace
}  // namespace tolvex::store
