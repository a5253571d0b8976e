// Roll-ups: turnovers by account and period, kept in the transaction that posts the entry, so that
// a balance costs the same in old books as in new ones.
//
// turn_acc has a row for each account, other account, currency and period: a year, a month and a
// day. turn_dim has years and months, by set of addressees; postings without addressees are not in
// it: they are what is left of turn_acc.
#pragma once

#include <compare>
#include <cstdint>
#include <map>
#include <string>

#include "host/store/oper_rows.h"

namespace tolvex::store {

struct TurnKey {
  int account = 0, period = 0, dimset = 0, corr = 0;  // period: yyyy, yyyymm or yyyymmdd
  std::string cur;
  auto operator<=>(const TurnKey&) const = default;
};

struct Turn {
  std::int64_t debit = 0, credit = 0, debitCur = 0, creditCur = 0;
  std::int64_t n = 0;
  bool operator==(const Turn&) const = default;
  Turn& operator+=(const Turn& other);
};

// Turnovers to be added to the stored ones: of entries that come with weight 1, of those that go
// with weight -1.
class Rollup {
 public:
  void add(const EntryRow& entry, int weight);
  void apply(Database& db) const;  // in key order, so that two savers never wait in a circle

 private:
  std::map<TurnKey, Turn> accounts_, sets_;
};

// Adds to a row of turn_acc (dimset 0) or turn_dim, made when absent.
void addTurn(Database& db, const TurnKey& key, const Turn& turn);

}  // namespace tolvex::store
