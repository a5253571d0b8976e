// A process that saves is killed at random: what it had acknowledged is there, whole, and nothing
// is there by halves.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <set>
#include <thread>

#include "framework/references.h"
#include "host/store/numbering.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

enum class Told : char { Saved = '+', Deleted = '-' };
struct Message {
  Told what;
  int id;
};

// Saves, edits and deletes without end and tells each success through the pipe.
[[noreturn]] void saveForEver(OperPlace& place, int pipe, unsigned seed) {
  const auto session = place.open();
  std::minstd_rand random(seed);
  const auto tell = [pipe](Told what, int id) {
    const Message message{what, id};
    if (write(pipe, &message, sizeof message) != sizeof message) _exit(2);
  };
  int last = 0;
  for (;;) {
    TestOper oper{
        20040115, {{"240", "500", 20, {{1, kFirmA}}}, {"240", "4461", 3.6, {{1, kFirmA}}}}, 4};
    if (last != 0 && random() % 3 == 0) {
      oper.entries = {{"2711", "240", 1, {{-1, operRef(last)}}}};
    }
    const RowSetPtr record = newOperation(*session, oper);
    const int number =
        offerNumber(*session, *readNumberRules(session->db(), 4), 1, "AD", "O0201500", 20040115);
    (*record)["AutoNumber"] = static_cast<double>(number);
    if (save(*session, *record).Code != kDone) _exit(3);
    const int id = idOf((*record)["OIDR"].Text());
    tell(Told::Saved, id);
    if (random() % 4 == 0) {
      (*(*record)["BR"].Rows())["SumA"] = 7.0;
      if (save(*session, *record).Code != kDone) _exit(4);
    }
    if (random() % 8 == 0) {
      tell(Told::Deleted, id);  // from now on it may be gone
      if (session->erase("O0201500", operRef(id)).Code != kDone) _exit(5);
      last = 0;
      continue;
    }
    last = id;
  }
}

TEST(Kill, NothingAcknowledgedIsLostAndNothingIsHalfSaved) {
  constexpr int kRounds = 20;
  const auto place = OperPlace::file();
  place->open();
  std::set<int> saved, perhapsGone;
  std::minstd_rand random(
      static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count()));
  for (int round = 0; round < kRounds; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const auto seed = static_cast<unsigned>(random());
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      close(ends[0]);
      saveForEver(*place, ends[1], seed);
    }
    close(ends[1]);
    std::this_thread::sleep_for(std::chrono::microseconds(20000 + random() % 60000));
    ASSERT_EQ(kill(child, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child gave up with " << WEXITSTATUS(status);
    Message message{};
    while (read(ends[0], &message, sizeof message) == sizeof message) {
      (message.what == Told::Saved ? saved : perhapsGone).insert(message.id);
    }
    close(ends[0]);

    const auto session = place->open();
    std::set<int> stored;
    auto select = session->db().prepare("SELECT id FROM oper");
    while (select->step()) stored.insert(select->whole(0));
    for (const int id : saved) {
      EXPECT_TRUE(stored.contains(id) || perhapsGone.contains(id)) << "lost " << id;
    }
    ASSERT_EQ(findingsText(session->db()), "");
    EXPECT_EQ(integerFrom(session->db(),
                          "SELECT COUNT(*) FROM oper o WHERE NOT EXISTS (SELECT 1 FROM oper_log l"
                          " WHERE l.oper_id = o.id AND l.action = 'C')"),
              0);
  }
  EXPECT_GT(saved.size(), std::size_t{kRounds}) << "the children hardly worked";
}

enum class Dies { WithAnOffer, WhenKilled };

// Draws a number and saves under it, over and over.
[[noreturn]] void numberUntilDeath(OperPlace& place, unsigned seed, Dies dies) {
  const auto session = place.open();
  std::minstd_rand random(seed);
  for (;;) {
    const RowSetPtr record = newOperation(*session, {20040115, {{"240", "500", 20}}, 4});
    const int number =
        offerNumber(*session, *readNumberRules(session->db(), 4), 1, "AD", "O0201500", 20040115);
    (*record)["AutoNumber"] = static_cast<double>(number);
    (*record)["Number"] = session->offer().text;
    if (dies == Dies::WithAnOffer && random() % 8 == 0) raise(SIGKILL);
    if (save(*session, *record).Code != kDone) _exit(3);
  }
}

class Numbering : public testing::TestWithParam<Store> {};

// Two clients draw from one counter. One dies with an offered number in hand, the other at any
// moment, within a save as well; neither takes a number along.
TEST_P(Numbering, ClientsThatDieLeaveNeitherGapsNorDoubles) {
  const auto place = GetParam() == Store::Postgres ? OperPlace::postgres() : OperPlace::file();
  if (!place) GTEST_SKIP() << "no PostgreSQL server (TOLVEX_TEST_PG)";
  place->open();
  constexpr int kRounds = 12;
  std::minstd_rand random(
      static_cast<unsigned>(std::chrono::steady_clock::now().time_since_epoch().count()));
  for (int round = 0; round < kRounds; ++round) {
    pid_t children[2];
    const auto seed = static_cast<unsigned>(random());
    for (const Dies dies : {Dies::WithAnOffer, Dies::WhenKilled}) {
      const pid_t child = children[static_cast<int>(dies)] = fork();
      ASSERT_GE(child, 0);
      if (child == 0) numberUntilDeath(*place, seed, dies);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(30000 + random() % 50000));
    ASSERT_EQ(kill(children[1], SIGKILL), 0);
    for (const pid_t child : children) {
      int status = 0;
      ASSERT_EQ(waitpid(child, &status, 0), child);
      ASSERT_TRUE(WIFSIGNALED(status)) << "the child gave up with " << WEXITSTATUS(status);
    }
  }
  const auto session = place->open();
  // In one statement: the server may yet be at the last word of a client that is dead.
  auto counts =
      session->db().prepare("SELECT COUNT(*), MAX(auto_number), COUNT(DISTINCT number) FROM oper");
  ASSERT_TRUE(counts->step());
  EXPECT_GT(counts->integer(0), 2 * kRounds) << "the children hardly worked";
  EXPECT_EQ(counts->integer(1), counts->integer(0));
  EXPECT_EQ(counts->integer(2), counts->integer(0));
  EXPECT_TRUE(numberGaps(session->db()).empty());
  EXPECT_EQ(findingsText(session->db()), "");
}

INSTANTIATE_TEST_SUITE_P(Engines, Numbering, testing::Values(Store::File, Store::Postgres), nameOf);

}  // namespace
}  // namespace tolvex::store
