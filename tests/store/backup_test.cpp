// Copies of books: whole, the same for both engines, and never half taken over.
#include <filesystem>
#include <fstream>

#include "host/store/books.h"
#include "host/store/demo.h"
#include "host/store/schema.h"
#include "host/store/sql.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

class Backup : public BooksTest {
 protected:
  void SetUp() override {
    BooksTest::SetUp();
    if (!IsSkipped()) fillDemo(session());
  }
  // Base tables whose rows differ between two copies.
  static std::string differences(const std::string& one, const std::string& other) {
    const auto db = Database::open(one, {});
    db->execute("ATTACH '" + other + "' AS other");
    std::string out;
    for (const std::string& table : baseTables()) {
      const std::string mine = "SELECT * FROM main." + table;
      const std::string theirs = "SELECT * FROM other." + table;
      if (anyRow(*db, mine + " EXCEPT " + theirs) || anyRow(*db, theirs + " EXCEPT " + mine)) {
        out += table + " ";
      }
    }
    return out;
  }
  std::string copyOf(Database& books, const std::string& name) {
    const std::string file = folder_.path(name);
    backupBooks(books, file);
    return file;
  }

  TestFolder folder_;
};

TEST_P(Backup, ComesBackTheSameOnEitherEngine) {
  const std::string copy = copyOf(db(), "copy");
  for (const Store store : {Store::Memory, Store::File, Store::Postgres}) {
    if (store == Store::Postgres && !std::getenv("TOLVEX_TEST_PG")) continue;
    TestPlace place(store);
    const auto target = place.connect();
    initBooks(*target, {});
    run(*target, "INSERT INTO bank (name) VALUES ('goes with the restore')");
    restoreBooks(*target, copy);
    EXPECT_EQ(differences(copy, copyOf(*target, "again")), "");
    EXPECT_GT(storedEpoch(*target), 1);
    for (const Finding& finding : verifyBooks(*target)) {
      ADD_FAILURE() << finding.check << ": " << finding.text;
    }
    EXPECT_GT(insertedId(*target, "INSERT INTO firm (name) VALUES ('x') RETURNING id"), 4)
        << "ids go on behind those restored";
  }
}

TEST_P(Backup, IsOfOneMoment) {
  if (GetParam() == Store::Memory) return;
  const auto other = another();
  bool first = true;
  const std::string file = folder_.path("copy");
  backupBooks(db(), file, [&](std::string_view, double) {
    if (first) run(other->db(), "INSERT INTO bank (name) VALUES ('meanwhile')");
    first = false;
    return true;
  });
  EXPECT_FALSE(first);
  EXPECT_FALSE(anyRow(*Database::open(file, {}), "SELECT 1 FROM bank WHERE name = 'meanwhile'"));
}

TEST_P(Backup, WhatIsStoppedOrRefusedChangesNothing) {
  const std::string before = copyOf(db(), "before");
  const Progress stop = [](std::string_view, double) { return false; };
  EXPECT_THROW(backupBooks(db(), folder_.path("stopped"), stop), Stopped);
  EXPECT_FALSE(std::filesystem::exists(folder_.path("stopped")));
  EXPECT_FALSE(std::filesystem::exists(folder_.path("stopped.part")));

  int tables = 0;
  const Progress stopLater = [&](std::string_view, double) { return ++tables < 20; };
  EXPECT_THROW(restoreBooks(db(), before, stopLater), Stopped);
  EXPECT_EQ(differences(before, copyOf(db(), "after")), "") << "stopped half way";

  const auto refuses = [&](const std::string& file) {
    EXPECT_THROW(restoreBooks(db(), file), BooksError) << file;
    EXPECT_EQ(differences(before, copyOf(db(), "after")), "") << file;
  };
  refuses(folder_.path("none"));
  std::ofstream(folder_.path("text")) << std::string(9000, 'x');
  refuses(folder_.path("text"));
  const std::string newer = copyOf(db(), "newer");
  Database::open(newer, {})->execute("UPDATE store_meta SET value = '999' WHERE name = 'schema'");
  refuses(newer);
  const std::string damaged = copyOf(db(), "damaged");
  std::fstream hole(damaged, std::ios::in | std::ios::out | std::ios::binary);
  hole.seekp(40 * 4096);
  hole << std::string(3 * 4096, '\x7F');
  hole.close();
  refuses(damaged);
  for (const Finding& finding : verifyBooks(db())) ADD_FAILURE() << finding.text;
}

TOLVEX_ALL_STORES(Backup);

}  // namespace
}  // namespace tolvex::store
