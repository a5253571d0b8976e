#include "host/store/move_account.h"

#include <vector>

#include "host/store/account_texts.h"
#include "host/store/record_log.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr std::size_t kLongestNumber = 20;

struct Account {
  int plan = 0;
  std::string code, name;
};

Account readAccount(Database& db, int id) {
  auto row =
      bound(db, "SELECT plan, code, name, group_flag FROM account WHERE id = $1 AND plan >= 0", id);
  if (!row->step()) refuseEditedGone();
  if (row->integer(3) != 0) {
    refuseRule("Sąskaita " + std::string(row->text(1)) +
               " yra grupė: įrašų joje nėra, pervesti nėra ko!");
  }
  return {row->whole(0), std::string(row->text(1)), std::string(row->text(2))};
}

// One digit more, from 1 on and 0 last; when all ten are taken, two digits.
std::string freeNumberBelow(Database& db, const Account& account) {
  std::vector<std::string> endings;
  for (const char digit : std::string("1234567890")) endings.emplace_back(1, digit);
  for (int number = 0; number < 100; ++number)
    endings.push_back({static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)});
  for (const std::string& ending : endings) {
    const std::string code = account.code + ending;
    if (code.size() > kLongestNumber) break;
    if (!anyRow(db, "SELECT 1 FROM account WHERE plan = $1 AND code = $2", account.plan, code))
      return code;
  }
  refuseRule("Sąskaita " + account.code + " nebeturi laisvo subsąskaitos numerio!");
}

int insertBelow(Database& db, int above, const std::string& code) {
  const int id = insertedId(
      db,
      "INSERT INTO account (plan, parent_id, code, name, type, group_flag, mark_id, new_id,"
      " track_items) SELECT plan, id, $2, name, type, 0, mark_id, new_id, track_items FROM account"
      " WHERE id = $1 RETURNING id",
      above, code);
  const std::string path = textFrom(db, "SELECT path FROM account WHERE id = $1", above);
  run(db, "UPDATE account SET path = $2 WHERE id = $1", id, path + "*" + std::to_string(id));
  run(db,
      "UPDATE account SET mark_id = NULL, new_id = NULL, row_version = row_version + 1"
      " WHERE id = $1",
      above);
  run(db, "UPDATE account SET new_id = $2 WHERE new_id = $1", above, id);
  run(db,
      "INSERT INTO account_lock (account_id, day_high, day_low, user_id)"
      " SELECT $2, day_high, day_low, user_id FROM account_lock WHERE account_id = $1",
      above, id);
  return id;
}

// The other side of an entry keeps a copy of the account, and so do its turnovers.
void movePostings(Database& db, int from, int to) {
  run(db,
      "UPDATE oper SET row_version = row_version + 1"
      " WHERE id IN (SELECT oper_id FROM posting WHERE account_id = $1)",
      from);
  run(db, "UPDATE posting SET account_id = $2 WHERE account_id = $1", from, to);
  run(db,
      "UPDATE posting SET corr_id = $2 WHERE corr_id = $1"
      " AND entry_id IN (SELECT entry_id FROM posting WHERE account_id = $2)",
      from, to);
}

void moveTurnovers(Database& db, int from, int to) {
  for (const std::string table : {"turn_acc", "turn_dim"}) {
    run(db, "UPDATE " + table + " SET account_id = $2 WHERE account_id = $1", from, to);
    run(db,
        "UPDATE " + table +
            " SET corr_id = $2 WHERE corr_id = $1 AND (account_id = $2"
            " OR account_id IN (SELECT corr_id FROM turn_acc WHERE account_id = $2))",
        from, to);
  }
}

}  // namespace

std::string moveAccountDown(Session& session, int accountId) {
  Database& db = session.db();
  const Account account = readAccount(db, accountId);
  const std::string code = freeNumberBelow(db, account);
  const int below = insertBelow(db, accountId, code);
  movePostings(db, accountId, below);
  moveTurnovers(db, accountId, below);
  run(db, "UPDATE open_item SET account_id = $2 WHERE account_id = $1", accountId, below);
  for (const std::string side : {"account_d", "account_c"})
    run(db, "UPDATE template_line SET " + side + " = $2 WHERE " + side + " = $1", accountId, below);
  if (account.plan == 0) rewriteAccountTexts(db, {{account.code, {code, account.name}}});
  const std::string_view kind = account.plan == 0 ? "O0200400" : "O0200401";
  writeRecordLog(session, Action::Create, {kind, below, account.name, "Account: " + code});
  writeRecordLog(session, Action::Update,
                 {kind, accountId, account.name, "MoveAccountDown: " + code});
  return code;
}

}  // namespace tolvex::store
