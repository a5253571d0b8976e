#include "host/store/full_sum.h"

#include <vector>

#include "host/store/merge_accounts.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

// What account.track_items says: 0 not matched, 1 matched as every such account is, and
constexpr int kAskedFor = 2;  // because a group asks

template <class... Values>
std::vector<int> accountsWhere(Database& db, std::string_view condition, const Values&... values) {
  std::vector<int> accounts;
  auto rows = bound(db, "SELECT id FROM account WHERE " + std::string(condition) + " ORDER BY id",
                    values...);
  while (rows->step()) accounts.push_back(rows->whole(0));
  return accounts;
}

}  // namespace

void createFullSums(Database& db, std::string_view markCode) {
  const auto mark = integerFrom(db, "SELECT id FROM account_mark WHERE code = $1", markCode);
  if (!mark) throw Refusal(kReferred, "Nurodytas sąskaitos požymis neegzistuoja!");
  for (const int account : accountsWhere(db, "plan = 0 AND mark_id = $1", *mark)) {
    // Written first: whoever saves entries of the account waits from here on.
    run(db,
        "UPDATE account SET track_items = CASE track_items WHEN 0 THEN $2 ELSE track_items END"
        " WHERE id = $1",
        account, kAskedFor);
    rebuildItems(db, account, {});
  }
}

void dropUnaskedSums(Database& db) {
  const std::vector<int> unasked =
      accountsWhere(db,
                    "track_items = $1 AND NOT EXISTS (SELECT 1 FROM oper_group g"
                    " JOIN account_mark m ON m.code = g.account_code WHERE m.id = account.mark_id)",
                    kAskedFor);
  for (const int account : unasked) {
    run(db, "UPDATE account SET track_items = 0 WHERE id = $1", account);
    run(db, "DELETE FROM open_item WHERE account_id = $1", account);
    run(db, "UPDATE posting SET item_id = NULL WHERE account_id = $1", account);
  }
}

}  // namespace tolvex::store
