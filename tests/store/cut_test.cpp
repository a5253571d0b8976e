// The power goes at every write of a work in turn: when it comes back, the work is there whole or
// not at all, and one that was acknowledged is there. Cut as well is the closing of the books, when
// the log is moved into the file.
#include <gtest/gtest.h>

#include "host/store/sql.h"
#include "tests/store/book_works.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

using Unflushed = MemoryDisk::Unflushed;

// Of one work; where it makes more calls, the cuts are spread over them evenly.
constexpr int kMostCuts = 150;

class Cut : public testing::TestWithParam<Work> {
 protected:
  std::string statementOf(const MemoryDisk::Files& files) {
    books_.insert(files);
    const auto session = books_.open();
    EXPECT_EQ(textFrom(session->db(), "PRAGMA integrity_check"), "ok");
    return statement(session->db());
  }
  // Of the work and of the closing of the books, when nothing happens.
  int callsOfTheWork() {
    books_.insert();
    auto session = books_.open();
    const Act act = GetParam().prepare(*session);
    const int begun = books_.disk().calls();
    EXPECT_EQ(act(), kDone);
    EXPECT_EQ(findingsText(session->db()), "");
    session.reset();
    return books_.disk().calls() - begun;
  }
  // Works and closes the books while the power goes; whether the work was acknowledged.
  bool workUntil(int cut) {
    books_.insert();
    const auto session = books_.open();
    const Act act = GetParam().prepare(*session);
    books_.disk().cutAt(cut);
    return act() == kDone;
  }

  DemoOnDisk books_;
};

TEST_P(Cut, LeavesTheWorkWholeOrUndone) {
  books_.insert();
  const std::string before = statementOf(books_.disk().files());
  const int calls = callsOfTheWork();
  const std::string after = statementOf(books_.disk().files());
  ASSERT_NE(before, after);

  int undone = 0, acknowledged = 0;
  for (int cut = 1; cut <= calls; cut += calls / kMostCuts + 1) {
    const bool told = workUntil(cut);
    if (told) ++acknowledged;
    std::vector<MemoryDisk::Files> found;
    for (const Unflushed unflushed : {Unflushed::Kept, Unflushed::Dropped, Unflushed::Torn}) {
      found.push_back(books_.disk().found(unflushed, static_cast<unsigned>(cut)));
    }
    for (std::size_t i = 0; i < found.size(); ++i) {
      const std::string now = statementOf(found[i]);
      ASSERT_TRUE(now == after || (now == before && !told))
          << "cut at call " << cut << " of " << calls << "; kept, dropped, torn: " << i
          << (told ? "; acknowledged" : "");
      if (now == before) ++undone;
    }
  }
  EXPECT_GT(undone, 0);
  EXPECT_GT(acknowledged, 0);
}

INSTANTIATE_TEST_SUITE_P(Works, Cut, testing::ValuesIn(bookWorks()), workName);

}  // namespace
}  // namespace tolvex::store
