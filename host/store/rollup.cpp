#include "host/store/rollup.h"

namespace tolvex::store {

namespace {

constexpr std::string_view kAddToAccount =
    "INSERT INTO turn_acc (account_id, period, corr_id, cur, debit, credit, debit_cur, credit_cur,"
    " n) VALUES ($1,$2,$3,$4,$5,$6,$7,$8,$9) ON CONFLICT (account_id, period, corr_id, cur)"
    " DO UPDATE SET debit = turn_acc.debit + excluded.debit,"
    " credit = turn_acc.credit + excluded.credit,"
    " debit_cur = turn_acc.debit_cur + excluded.debit_cur,"
    " credit_cur = turn_acc.credit_cur + excluded.credit_cur, n = turn_acc.n + excluded.n";
constexpr std::string_view kAddToSet =
    "INSERT INTO turn_dim (account_id, period, corr_id, cur, debit, credit, debit_cur, credit_cur,"
    " n, dimset_id) VALUES ($1,$2,$3,$4,$5,$6,$7,$8,$9,$10)"
    " ON CONFLICT (account_id, period, dimset_id, corr_id, cur)"
    " DO UPDATE SET debit = turn_dim.debit + excluded.debit,"
    " credit = turn_dim.credit + excluded.credit,"
    " debit_cur = turn_dim.debit_cur + excluded.debit_cur,"
    " credit_cur = turn_dim.credit_cur + excluded.credit_cur, n = turn_dim.n + excluded.n";
constexpr std::string_view kDropFromAccount =
    "DELETE FROM turn_acc WHERE account_id = $1 AND period = $2 AND corr_id = $3 AND cur = $4"
    " AND n = 0";
constexpr std::string_view kDropFromSet =
    "DELETE FROM turn_dim WHERE account_id = $1 AND period = $2 AND corr_id = $3 AND cur = $4"
    " AND dimset_id = $5 AND n = 0";

void dropEmpty(Database& db, const TurnKey& key) {
  auto drop = db.prepare(key.dimset != 0 ? kDropFromSet : kDropFromAccount);
  drop->bind(1, key.account).bind(2, key.period).bind(3, key.corr).bind(4, key.cur);
  if (key.dimset != 0) drop->bind(5, key.dimset);
  drop->run();
}

}  // namespace

Turn& Turn::operator+=(const Turn& other) {
  debit += other.debit;
  credit += other.credit;
  debitCur += other.debitCur;
  creditCur += other.creditCur;
  n += other.n;
  return *this;
}

void Rollup::add(const EntryRow& entry, int weight) {
  for (const int sign : {1, -1}) {
    const SideRow& side = entry.side(sign);
    Turn turn;
    (sign == 1 ? turn.debit : turn.credit) = weight * entry.sumLt;
    (sign == 1 ? turn.debitCur : turn.creditCur) = weight * side.sumCur;
    turn.n = weight;
    const int corr = entry.side(-sign).accountId;
    const int year = entry.day / 10000, month = entry.day / 100;
    for (const int period : {year, month, entry.day}) {
      accounts_[{side.accountId, period, 0, corr, side.cur}] += turn;
    }
    if (side.dimsetId == 0) continue;
    for (const int period : {year, month}) {
      sets_[{side.accountId, period, side.dimsetId, corr, side.cur}] += turn;
    }
  }
}

void addTurn(Database& db, const TurnKey& key, const Turn& turn) {
  auto insert = db.prepare(key.dimset != 0 ? kAddToSet : kAddToAccount);
  insert->bind(1, key.account).bind(2, key.period).bind(3, key.corr).bind(4, key.cur);
  insert->bind(5, turn.debit).bind(6, turn.credit).bind(7, turn.debitCur);
  insert->bind(8, turn.creditCur).bind(9, turn.n);
  if (key.dimset != 0) insert->bind(10, key.dimset);
  insert->run();
}

void Rollup::apply(Database& db) const {
  for (const auto* turns : {&accounts_, &sets_}) {
    for (const auto& [key, turn] : *turns) {
      if (turn == Turn{}) continue;
      addTurn(db, key, turn);
      if (turn.n < 0) dropEmpty(db, key);
    }
  }
}

}  // namespace tolvex::store
