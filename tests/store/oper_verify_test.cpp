#include <gtest/gtest.h>

#include "host/store/sql.h"
#include "tests/store/oper_books.h"

namespace tolvex::store {
namespace {

// What a fault of the disk or a careless hand may do to the tables, and what names it.
struct Damage {
  const char* name;
  const char* sql;
  const char* check;
  bool mended;  // by Rebuild
};

const Damage kDamages[] = {
    {"a year's turnover", "UPDATE turn_acc SET debit = debit + 1 WHERE period = 2004", "roll-ups",
     true},
    {"a day's turnover is lost", "DELETE FROM turn_acc WHERE period = 20040115", "roll-ups", true},
    {"a turnover of nobody", "INSERT INTO turn_acc SELECT 1, 2004, 2, 'LTL', 5, 0, 0, 0, 1",
     "roll-ups", true},
    {"a client's turnover", "UPDATE turn_dim SET n = n + 1", "roll-ups", true},
    {"an open item's rest", "UPDATE open_item SET rest_lt = rest_lt + 1", "open items", true},
    {"an item marked closed", "UPDATE open_item SET is_open = 1 - is_open", "open items", true},
    {"an item is lost", "DELETE FROM open_item", "open items", true},
    {"an item of nobody",
     "INSERT INTO open_item SELECT account_id, 2, cur, 0, 1, 0, 1, 0, 20040101, 20040101, 1, 1"
     " FROM open_item WHERE item_id = 1 LIMIT 1",
     "open items", true},
    {"the copy of the date", "UPDATE posting SET day = 20040116 WHERE sign = 1", "copies", true},
    {"the copy of the other account", "UPDATE posting SET corr_id = 5 WHERE entry_id = 1", "copies",
     true},
    {"the set of addressees", "UPDATE posting SET dimset_id = 0 WHERE entry_id = 1", "copies",
     true},
    {"the item", "UPDATE posting SET item_id = 2 WHERE entry_id = 1 AND sign = 1", "copies", true},
    {"the members of a set", "DELETE FROM dimset_ref", "copies", true},
    {"the document's client", "UPDATE oper_doc SET client_ref = 'O00001009'", "copies", true},
    {"the document is lost", "DELETE FROM oper_doc", "copies", true},
    {"half an entry", "DELETE FROM posting WHERE entry_id = 1 AND sign = -1", "balance", false},
    {"sides without an entry", "DELETE FROM entry WHERE id = 1", "orphans", false},
    {"entries without their operation", "DELETE FROM oper WHERE id = 1", "orphans", false},
    {"a sum changed behind the books", "UPDATE entry SET sum_lt = sum_lt + 100 WHERE id = 1",
     "roll-ups", true},
};

TEST(Verify, FindsDamageAndRebuildMendsWhatIsDerived) {
  for (const Damage& damage : kDamages) {
    SCOPED_TRACE(damage.name);
    const auto session = memoryBooks();
    savedId(*session,
            {20040115, {{"240", "500", 20, {{1, kFirmA}}}, {"240", "4461", 3.6, {{1, kFirmA}}}}});
    TestOper order{20040120, {{"450", "2711", 7, {{1, kFirmB}}}}, 5, "O0201501"};
    const RowSetPtr record = newOperation(*session, order);
    (*record)["Parameters"] = "tekstas##   ###O000010077";
    ASSERT_EQ(save(*session, *record).Code, kDone);
    Database& db = session->db();
    ASSERT_EQ(findingsText(db), "");

    db.execute("PRAGMA foreign_keys = OFF");
    ASSERT_GT(run(db, damage.sql), 0);
    EXPECT_NE(findingsText(db).find(damage.check), std::string::npos) << findingsText(db);
    if (damage.mended) {
      rebuildBooks(db);
      EXPECT_EQ(findingsText(db), "");
    } else {
      EXPECT_THROW(rebuildBooks(db), BooksError);
    }
  }
}

}  // namespace
}  // namespace tolvex::store
