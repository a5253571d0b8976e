// What both engines must do alike.
#include "host/store/database.h"

#include <cmath>
#include <limits>

#include "host/store/schema.h"
#include "host/store/sql.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

using Kind = DatabaseError::Kind;

class DatabaseTest : public BooksTest {
 protected:
  void SetUp() override {
    BooksTest::SetUp();
    if (IsSkipped()) return;
    db().execute(
        "CREATE TABLE sample (id INTEGER PRIMARY KEY, whole BIGINT, rate DOUBLE PRECISION,"
        " name VARCHAR(400) NOT NULL DEFAULT '', parent INTEGER REFERENCES sample(id),"
        " CHECK (whole >= -9223372036854775807))");
  }
  Kind kindOf(const std::string& sql) {
    try {
      const Transaction transaction(db(), Transaction::For::Write);
      run(db(), sql);
    } catch (const DatabaseError& error) {
      return error.kind;
    }
    ADD_FAILURE() << "no error: " << sql;
    return Kind::Other;
  }
};

TEST_P(DatabaseTest, ValuesComeBackAsTheyWere) {
  const std::int64_t wholes[] = {0, -1, std::numeric_limits<std::int64_t>::max(),
                                 -std::numeric_limits<std::int64_t>::max(), 922337203685477580};
  const double rates[] = {0.1, 3.4528, 1.0 / 3, 1e-9, 123456789.123456789, 1e300};
  const std::string names[] = {"", "'; DROP TABLE sample; --", "Ąžuolas „ė“ ½", "a\nb\tc",
                               std::string(400, 'x')};
  int id = 0;
  for (const std::int64_t whole : wholes) {
    for (const double rate : rates) {
      for (const std::string& name : names) {
        ++id;
        run(db(), "INSERT INTO sample (id, whole, rate, name) VALUES ($1, $2, $3, $4)", id, whole,
            rate, name);
        auto row = bound(db(), "SELECT whole, rate, name, parent FROM sample WHERE id = $1", id);
        ASSERT_TRUE(row->step());
        EXPECT_EQ(row->integer(0), whole);
        EXPECT_EQ(row->real(1), rate);
        EXPECT_EQ(row->text(2), name);
        EXPECT_TRUE(row->isNull(3));
        EXPECT_EQ(row->integer(3), 0);
        EXPECT_EQ(row->text(3), "");
      }
    }
  }
}

TEST_P(DatabaseTest, MarksMeanTheirNumbersWhereverTheyStand) {
  run(db(), "INSERT INTO sample (name, id, parent) VALUES ($2, $1, $1)", 7, "seven");
  EXPECT_EQ(textFrom(db(), "SELECT name FROM sample WHERE parent = $1 AND id = $1", 7), "seven");
}

TEST_P(DatabaseTest, ALoopMayRunInsideALoopOfTheSameStatement) {
  for (const int id : {1, 2, 3}) run(db(), "INSERT INTO sample (id) VALUES ($1)", id);
  constexpr const char* kAll = "SELECT id FROM sample WHERE id >= $1 ORDER BY id";
  std::string pairs;
  auto outer = bound(db(), kAll, 2);
  while (outer->step()) {
    auto inner = bound(db(), kAll, 1);
    while (inner->step()) {
      pairs += std::to_string(outer->integer(0)) + std::to_string(inner->integer(0)) + " ";
    }
  }
  EXPECT_EQ(pairs, "21 22 23 31 32 33 ");
}

TEST_P(DatabaseTest, FailuresHaveTheSameKinds) {
  run(db(), "INSERT INTO sample (id) VALUES (1)");
  EXPECT_EQ(kindOf("INSERT INTO sample (id) VALUES (1)"), Kind::Unique);
  EXPECT_EQ(kindOf("INSERT INTO sample (id, parent) VALUES (2, 99)"), Kind::Reference);
  EXPECT_EQ(kindOf("INSERT INTO sample (id, name) VALUES (2, NULL)"), Kind::Check);
  EXPECT_EQ(kindOf("INSERT INTO currency_rate (currency_id, day, rate) VALUES (3, 20040101, 0)"),
            Kind::Check);
  EXPECT_EQ(kindOf("INSERT INTO nowhere (id) VALUES (1)"), Kind::Other);
  run(db(), "INSERT INTO sample (id, parent) VALUES (2, 1)");
  EXPECT_EQ(kindOf("DELETE FROM sample WHERE id = 1"), Kind::Reference);
}

TEST_P(DatabaseTest, WhatIsNotCommittedIsNotThere) {
  {
    Transaction dropped(db(), Transaction::For::Write);
    run(db(), "INSERT INTO sample (id) VALUES (1)");
  }
  EXPECT_FALSE(db().inTransaction());
  EXPECT_FALSE(anyRow(db(), "SELECT 1 FROM sample"));
  Transaction kept(db(), Transaction::For::Write);
  run(db(), "INSERT INTO sample (id) VALUES (1)");
  kept.commit();
  EXPECT_TRUE(anyRow(db(), "SELECT 1 FROM sample"));
}

TEST_P(DatabaseTest, AStatementOutlivesAChangeOfTheSchema) {
  constexpr const char* kCount = "SELECT COUNT(*) FROM sample";
  EXPECT_EQ(integerFrom(db(), kCount), 0);
  db().execute("ALTER TABLE sample ADD COLUMN extra INTEGER");
  run(db(), "INSERT INTO sample (id, extra) VALUES (1, 2)");
  EXPECT_EQ(integerFrom(db(), kCount), 1);
}

TEST_P(DatabaseTest, ASnapshotDoesNotMove) {
  if (GetParam() == Store::Memory) return;
  const auto writer = another();
  Transaction reading(db(), Transaction::For::Read);
  EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM bank"), 0);
  run(writer->db(), "INSERT INTO bank (name) VALUES ('Bankas')");
  EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM bank"), 0);
  reading.commit();
  EXPECT_EQ(integerFrom(db(), "SELECT COUNT(*) FROM bank"), 1);
}

TEST_P(DatabaseTest, AnExclusiveTransactionHoldsWritersOff) {
  if (GetParam() == Store::Memory) return;
  const auto other = another();
  Transaction exclusive(db(), Transaction::For::Exclusive);
  try {
    Transaction second(other->db(), Transaction::For::Write);
    FAIL() << "a second writer came in";
  } catch (const DatabaseError& error) {
    EXPECT_EQ(error.kind, Kind::Busy);
  }
  exclusive.commit();
  Transaction second(other->db(), Transaction::For::Write);
}

TEST_P(DatabaseTest, ACommitIsOneFlush) {
  if (GetParam() != Store::File) return;
  run(db(), "INSERT INTO bank (name) VALUES ('warm')");
  const std::int64_t before = db().flushes();
  for (int i = 0; i < 20; ++i) {
    Transaction saving(db(), Transaction::For::Write);
    run(db(), "INSERT INTO bank (name) VALUES ('a')");
    run(db(), "INSERT INTO bank (name) VALUES ('b')");
    saving.commit();
  }
  EXPECT_EQ(db().flushes() - before, 20);
}

// A screen that still shows a deleted record must not write onto the next one.
TEST_P(DatabaseTest, AnIdOfARecordIsNeverGivenTwice) {
  const int first = insertedId(db(), "INSERT INTO bank (name) VALUES ('a') RETURNING id");
  run(db(), "DELETE FROM bank WHERE id = $1", first);
  EXPECT_GT(insertedId(db(), "INSERT INTO bank (name) VALUES ('b') RETURNING id"), first);
}

TOLVEX_ALL_STORES(DatabaseTest);

}  // namespace
}  // namespace tolvex::store
