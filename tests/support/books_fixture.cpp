#include "tests/support/books_fixture.h"

#include <cstdlib>
#include <filesystem>

#include "host/store/guid.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

namespace fs = std::filesystem;

std::string serverUrl() {
  const char* url = std::getenv("TOLVEX_TEST_PG");
  return url ? url : "";
}

// Each test works in a schema of its own on the shared server.
std::string freshSchema() {
  std::string name = "t_" + newGuid();
  for (char& letter : name) {
    if (letter == '-') letter = '_';
  }
  Database::open(serverUrl(), {})->execute("CREATE SCHEMA " + name);
  return name;
}

std::string urlOfSchema(const std::string& schema) {
  const std::string server = serverUrl();
  const char mark = server.find('?') == std::string::npos ? '?' : '&';
  return server + mark + "options=-csearch_path%3D" + schema;
}

}  // namespace

std::string nameOf(const ::testing::TestParamInfo<Store>& info) {
  switch (info.param) {
    case Store::Memory:
      return "Memory";
    case Store::File:
      return "File";
    case Store::Postgres:
      return "Postgres";
  }
  return "";
}

TestFolder::TestFolder()
    : path_((fs::temp_directory_path() / ("tolvex-test-" + newGuid())).string()) {
  fs::create_directories(path_);
}

TestFolder::~TestFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

TestPlace::TestPlace(Store store) : store_(store) {
  if (store == Store::Postgres) {
    schema_ = freshSchema();
    url_ = urlOfSchema(schema_);
  } else {
    url_ = folder_.path("books.tolvex");
  }
}

TestPlace::~TestPlace() {
  if (store_ != Store::Postgres) return;
  const auto server = Database::open(serverUrl(), {});
  server->execute("DROP SCHEMA " + schema_ + " CASCADE");
}

std::unique_ptr<Database> TestPlace::connect() {
  Database::Options options;
  options.inMemory = store_ == Store::Memory;
  options.create = store_ == Store::File && !fs::exists(url_);
  options.busyMilliseconds = 500;
  return Database::open(url_, options);
}

void BooksTest::SetUp() {
  if (GetParam() == Store::Postgres && serverUrl().empty()) {
    GTEST_SKIP() << "TOLVEX_TEST_PG names no server";
  }
  place_ = std::make_unique<TestPlace>(GetParam());
  auto db = place_->connect();
  initBooks(*db);
  session_ = openSession(std::move(db), "admin", "", clock());
}

void BooksTest::TearDown() {
  session_.reset();
  place_.reset();
}

std::unique_ptr<Session> BooksTest::another(const std::string& login, const std::string& password) {
  return openSession(place_->connect(), login, password, clock());
}

void BooksTest::reopen() {
  if (GetParam() == Store::Memory) return;
  const std::string login = session_->user().login;
  session_.reset();
  session_ = another(login);
}

void BooksTest::addUser(const std::string& login, int role) {
  run(db(), "INSERT INTO app_user (login, name, role_id) VALUES ($1, $1, $2)", login, role);
}

RowSetPtr rowsIn(const HostResult& result) {
  EXPECT_EQ(result.Code, kDone) << result.Text;
  return result.Data.IsRows() ? result.Data.AsRows() : RowSet::make();
}

}  // namespace tolvex::store
