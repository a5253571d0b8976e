#include "host/store/merge_accounts.h"

#include "host/store/books.h"
#include "host/store/dimset.h"
#include "host/store/items.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

std::vector<int> monthsOf(Database& db, int account) {
  std::vector<int> months;
  auto rows = bound(db,
                    "SELECT DISTINCT period FROM turn_acc WHERE account_id = $1"
                    " AND period BETWEEN 100000 AND 999999 ORDER BY period",
                    account);
  while (rows->step()) months.push_back(rows->whole(0));
  return months;
}

// The other side of an entry keeps a copy of the account.
void movePostings(Database& db, const Merge& merge, int month) {
  const int from = month * 100, to = month * 100 + 99;
  run(db,
      "UPDATE posting SET corr_id = $2 WHERE corr_id = $1 AND entry_id IN"
      " (SELECT entry_id FROM posting WHERE account_id = $1 AND day BETWEEN $3 AND $4)",
      merge.from, merge.to, from, to);
  run(db, "UPDATE posting SET account_id = $2 WHERE account_id = $1 AND day BETWEEN $3 AND $4",
      merge.from, merge.to, from, to);
}

// Rows of a table of turnovers that meet `where` (on $1, the account that goes) are added to those
// of the account that stays ($2).
void moveTurns(Database& db, const std::string& table, const std::string& account,
               const std::string& corr, const std::string& where, const Merge& merge) {
  const std::string set = table == "turn_dim" ? "dimset_id, " : "";
  std::string add;
  for (const std::string sum : {"debit", "credit", "debit_cur", "credit_cur", "n"}) {
    add += (add.empty() ? "" : ", ") + sum + " = " + table + "." + sum + " + excluded." + sum;
  }
  run(db,
      "INSERT INTO " + table + " (account_id, period, " + set +
          "corr_id, cur, debit, credit, debit_cur, credit_cur, n) SELECT " + account +
          ", period, " + set + corr + ", cur, debit, credit, debit_cur, credit_cur, n FROM " +
          table + " WHERE " + where + " ON CONFLICT (account_id, period, " + set +
          "corr_id, cur) DO UPDATE SET " + add,
      merge.from, merge.to);
  run(db, "DELETE FROM " + table + " WHERE " + where, merge.from);
}

void moveTurnovers(Database& db, const Merge& merge) {
  // Whose turnovers name the account: those that its own name.
  const std::string corresponding =
      "corr_id = $1 AND account_id IN (SELECT corr_id FROM turn_acc WHERE account_id = $1)";
  for (const std::string table : {"turn_dim", "turn_acc"}) {
    moveTurns(db, table, "account_id", "CAST($2 AS INTEGER)", corresponding, merge);
    moveTurns(db, table, "CAST($2 AS INTEGER)", "corr_id", "account_id = $1", merge);
  }
}

}  // namespace

void mergeAccounts(Database& db, const std::vector<Merge>& merges, const Progress& progress) {
  double done = 0;
  for (const Merge& merge : merges) {
    const std::vector<int> months = monthsOf(db, merge.from);
    for (const int month : months) {
      goOn(progress, "Įrašai perkeliami į naują planą",
           (done += 1.0 / static_cast<double>(months.size())) / static_cast<double>(merges.size()));
      movePostings(db, merge, month);
    }
    moveTurnovers(db, merge);
    for (const std::string side : {"account_d", "account_c"}) {
      run(db, "UPDATE template_line SET " + side + " = $2 WHERE " + side + " = $1", merge.from,
          merge.to);
    }
  }
}

void rebuildItems(Database& db, int accountId, const std::vector<Merge>& merges) {
  constexpr const char* kDrop = "DELETE FROM open_item WHERE account_id = $1";
  run(db, kDrop, accountId);
  for (const Merge& merge : merges) {
    if (merge.to == accountId) run(db, kDrop, merge.from);
  }
  run(db,
      "UPDATE posting SET item_id = COALESCE((SELECT r.points_to FROM entry_ref r"
      " WHERE r.entry_id = posting.entry_id AND r.sign = posting.sign AND r.role = $2"
      " ORDER BY r.id LIMIT 1), oper_id) WHERE account_id = $1 AND item_id IS NULL",
      accountId, static_cast<int>(kOwnOperation));
  DimsetRefs refs(db);
  const auto share = [&refs](int a, int b) { return refs.shareAddressee(a, b); };
  std::vector<int> items;
  {
    auto rows = bound(db, "SELECT DISTINCT item_id FROM posting WHERE account_id = $1", accountId);
    while (rows->step()) items.push_back(rows->whole(0));
  }
  for (const int item : items) {
    insertItem(db, accountId, item, itemRows(item, readItem(db, accountId, item), share));
  }
}

}  // namespace tolvex::store
