// Books on a server: what its roles may do, and books whose making was cut short.
#include "host/store/guid.h"
#include "host/store/server_roles.h"
#include "host/store/sql.h"
#include "tests/store/oper_books.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

class Server : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::getenv("TOLVEX_TEST_PG")) GTEST_SKIP() << "TOLVEX_TEST_PG names no server";
    place_ = std::make_unique<TestPlace>(Store::Postgres);
  }
  static std::string refusal(const std::function<void()>& act) {
    try {
      act();
    } catch (const std::exception& error) {
      return error.what();
    }
    return "";
  }
  const std::string& url() const { return place_->url(); }

 private:
  std::unique_ptr<TestPlace> place_;
};

// A role that is not the owner of the books; it goes with the object.
class Worker {
 public:
  explicit Worker(const std::string& owner) : owner_(owner) {
    for (char& letter : name_) {
      if (letter == '-') letter = '_';
    }
    const auto db = Database::open(owner_, {});
    db->execute("CREATE ROLE \"" + name_ + "\" LOGIN");
    grantWork(*db, name_);
  }
  ~Worker() {
    const auto db = Database::open(owner_, {});
    db->execute("DROP OWNED BY \"" + name_ + "\"");
    db->execute("DROP ROLE \"" + name_ + "\"");
  }
  Worker(const Worker&) = delete;
  std::string url() const { return owner_ + "&user=" + name_; }

 private:
  const std::string owner_;
  std::string name_ = "Ona " + newGuid();
};

TEST_F(Server, AWorkerDoesEverythingButRewriteTheProtocols) {
  createBooks(url(), {});
  const Worker worker(url());
  const auto session = openBooks(worker.url(), "admin", "");
  ASSERT_NE(textFrom(session->db(), "SELECT current_user"), "tolvex");
  const int id = savedId(*session, {20040115, {{"2711", "500", 100}}});
  const RowSetPtr again = loaded(*session, id);
  (*again)["Comment"] = "kitas";
  EXPECT_EQ(save(*session, *again).Code, kDone);
  RowSetPtr user = rowsIn(session->create("O0000800", ""));
  (*user)["Login"] = "ona";
  (*user)["Name"] = "Ona";
  (*user)["RoleID"] = Variant(3);
  EXPECT_EQ(session->save("O0000800", "", *user, nullptr, nullptr).Code, kDone);
  EXPECT_EQ(session->erase("O0201500", operRef(id)).Code, kDone);
  EXPECT_EQ(findingsText(session->db()), "");

  for (const char* table : {"oper_log", "admin_log", "record_log"}) {
    for (const char* act : {"UPDATE %s SET user_name = 'kitas'", "DELETE FROM %s", "TRUNCATE %s",
                            "DROP TABLE %s", "ALTER TABLE %s ADD COLUMN x INTEGER"}) {
      std::string sql = act;
      sql.replace(sql.find("%s"), 2, table);
      EXPECT_NE(refusal([&] { session->db().execute(sql); }), "") << sql;
    }
  }
  EXPECT_EQ(integerFrom(session->db(), "SELECT COUNT(*) FROM oper_log"), 3);
}

TEST_F(Server, OnlyTheOwnerRestores) {
  const TestFolder folder;
  const std::string file = folder.path("kopija");
  createBooks(url(), {});
  const auto owner = openBooks(url(), "admin", "");
  savedId(*owner, {20040115, {{"2711", "500", 100}}});
  backupBooks(owner->db(), file);
  const Worker worker(url());
  const auto session = openBooks(worker.url(), "admin", "");
  const std::string told = refusal([&] { restoreBooks(session->db(), file); });
  EXPECT_NE(told.find("savininkas"), std::string::npos) << told;
  EXPECT_EQ(integerFrom(owner->db(), "SELECT COUNT(*) FROM oper_log"), 1);
  EXPECT_EQ(findingsText(owner->db()), "");
}

TEST_F(Server, BooksCutShortAreNotOpenedButMadeAnew) {
  NewBooks what;
  what.demoCompany = true;
  what.operations = 200;
  what.progress = [](std::string_view, double share) -> bool {
    if (share > 0) throw std::runtime_error("cut short");
    return true;
  };
  EXPECT_EQ(refusal([&] { createBooks(url(), what); }), "cut short");
  const std::string told = refusal([&] { (void)openBooks(url(), "admin", ""); });
  EXPECT_NE(told.find("nutrauktas"), std::string::npos) << told;
  what.operations = 20;
  what.progress = {};
  EXPECT_EQ(refusal([&] { createBooks(url(), what); }), "");
  const auto session = openBooks(url(), "admin", "");
  EXPECT_EQ(findingsText(session->db()), "");
  const std::string again = refusal([&] { createBooks(url(), {}); });
  EXPECT_NE(again.find("jau yra"), std::string::npos)
      << "whole books are never replaced: " << again;
}

TEST_F(Server, BooksThatSomebodyElseIsMakingAreLeftAlone) {
  const auto other = Database::open(url(), {});
  ASSERT_TRUE(anyRow(
      *other, "SELECT 1 WHERE pg_try_advisory_lock(1414288985, hashtext(current_schema()))"));
  const std::string told = refusal([&] { createBooks(url(), {}); });
  EXPECT_NE(told.find("kuria kita programa"), std::string::npos) << told;
}

}  // namespace
}  // namespace tolvex::store
