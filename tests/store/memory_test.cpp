// SQLite runs out of memory at each of its allocations in turn: a work is done, or it is refused
// with a text and the books are as they were, and the next try succeeds.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "host/store/sql.h"
#include "tests/store/book_works.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

// Between SQLite and the system's memory: counts allocations, and refuses some.
namespace memory {

enum class Fails { Never, Once, ForEver };

sqlite3_mem_methods system{};
int calls = 0, failAt = 0;
Fails fails = Fails::Never;

bool refuse() {
  ++calls;
  if (fails == Fails::Never) return false;
  return fails == Fails::Once ? calls == failAt : calls >= failAt;
}

void* allocate(int size) { return refuse() ? nullptr : system.xMalloc(size); }
void* reallocate(void* old, int size) { return refuse() ? nullptr : system.xRealloc(old, size); }

// SQLite takes such methods only before it is first used.
const bool installed = [] {
  sqlite3_config(SQLITE_CONFIG_GETMALLOC, &system);
  sqlite3_mem_methods counting = system;
  counting.xMalloc = allocate;
  counting.xRealloc = reallocate;
  return sqlite3_config(SQLITE_CONFIG_MALLOC, &counting) == SQLITE_OK &&
         sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0) == SQLITE_OK;
}();

void failFrom(Fails how, int call) {
  calls = 0;
  failAt = call;
  fails = how;
}

}  // namespace memory

using memory::Fails;

constexpr int kMostFailures = 110;  // of one work and one way to fail

class Memory : public testing::TestWithParam<Work> {
 protected:
  DemoOnDisk books_;
};

TEST_P(Memory, ThatRunsOutRefusesTheWorkAndHarmsNothing) {
  ASSERT_TRUE(memory::installed);
  std::string before, after;
  int calls = 0;
  {
    books_.insert();
    const auto session = books_.open();
    before = statement(session->db());
    const Act act = GetParam().prepare(*session);
    memory::failFrom(Fails::Never, 0);
    ASSERT_EQ(act(), kDone);
    calls = memory::calls;
    after = statement(session->db());
  }
  ASSERT_GT(calls, 0);

  int refused = 0;
  for (const Fails how : {Fails::Once, Fails::ForEver}) {
    for (int call = 1; call <= calls; call += calls / kMostFailures + 1) {
      SCOPED_TRACE("allocation " + std::to_string(call) + " of " + std::to_string(calls) +
                   (how == Fails::Once ? ", once" : ", for ever"));
      books_.insert();
      const auto session = books_.open();
      const Act act = GetParam().prepare(*session);
      memory::failFrom(how, call);
      const int code = act();
      memory::failFrom(Fails::Never, 0);
      if (code != kDone) {
        ++refused;
        ASSERT_EQ(code, kEngine);
        ASSERT_EQ(difference(statement(session->db()), before), "");
        ASSERT_EQ(act(), kDone) << "the next try";
      }
      ASSERT_EQ(difference(statement(session->db()), after), "");
    }
  }
  EXPECT_GT(refused, kMostFailures / 2);
}

INSTANTIATE_TEST_SUITE_P(Works, Memory, testing::ValuesIn(bookWorks()), workName);

}  // namespace
}  // namespace tolvex::store
