// Seeded books for tests: in memory, in a file, or on the PostgreSQL server that the variable
// TOLVEX_TEST_PG names (tests over it are skipped when there is none).
//
//   class Saving : public BooksTest {};
//   TEST_P(Saving, KeepsEveryField) { session().call(…) … }
//   TOLVEX_ALL_STORES(Saving);
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "host/store/books.h"

namespace tolvex::store {

enum class Store { Memory, File, Postgres };
std::string nameOf(const ::testing::TestParamInfo<Store>& info);

// A folder of its own that goes with the object.
class TestFolder {
 public:
  TestFolder();
  ~TestFolder();
  TestFolder(const TestFolder&) = delete;
  std::string path(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// Where books can be made; empty ones. Several may be made in one test.
class TestPlace {
 public:
  explicit TestPlace(Store store);
  ~TestPlace();
  TestPlace(const TestPlace&) = delete;
  std::unique_ptr<Database> connect();  // Memory: once only
  const std::string& url() const { return url_; }

 private:
  Store store_;
  TestFolder folder_;
  std::string url_, schema_;
};

class BooksTest : public ::testing::TestWithParam<Store> {
 protected:
  void SetUp() override;
  void TearDown() override;

  Session& session() { return *session_; }
  Database& db() { return session_->db(); }
  // The same books once more, as another client; not in memory.
  std::unique_ptr<Session> another(const std::string& login = "admin",
                                   const std::string& password = "");
  // Closes and opens, as a program that is started again would; in memory nothing happens.
  void reopen();
  void addUser(const std::string& login, int role);

  DateTime now = DateTime::Of(2004, 3, 31, 12, 0, 0);

 private:
  Session::ClockFunction clock() {
    return [this] { return now; };
  }
  std::unique_ptr<TestPlace> place_;
  std::unique_ptr<Session> session_;
};

// The set of a successful answer; a failure of the test and an empty set otherwise.
RowSetPtr rowsIn(const HostResult& result);

#define TOLVEX_ALL_STORES(suite)          \
  INSTANTIATE_TEST_SUITE_P(Stores, suite, \
                           ::testing::Values(Store::Memory, Store::File, Store::Postgres), nameOf)

}  // namespace tolvex::store
