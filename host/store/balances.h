// Balances and turnovers of accounts at any date, read from the roll-ups.
//
// A period is taken as whole years, then whole months, then days, so that the cost of a balance
// does not grow with the books: days come from the roll-ups as well where no addressee is asked,
// and from the few postings of the addressee within the month where one is.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/database.h"

namespace tolvex::store {

inline constexpr int kFirstDay = 19000101;  // nothing is entered on an earlier one
inline constexpr int kNoLimit = 99991231;

// Whose postings count: everybody's, those with any addressee of a kind (a text of eight
// characters), those with one addressee (a longer text). A shorter text asks for everybody.
class AddresseeFilter {
 public:
  enum class Asks { Everybody, Kind, One };
  AddresseeFilter() = default;
  explicit AddresseeFilter(std::string_view text);
  Asks asks() const { return asks_; }
  const std::string& text() const { return text_; }
  bool matches(std::string_view reference) const;

 private:
  Asks asks_ = Asks::Everybody;
  std::string text_;
};

// Both sides of an account in one currency; currency sums in 1/10000, 0 for the base currency.
struct Turnover {
  int accountId = 0;
  std::string currency;
  std::int64_t debit = 0, credit = 0, debitCur = 0, creditCur = 0;
  std::int64_t lt() const { return debit - credit; }
  std::int64_t cur() const { return debitCur - creditCur; }
};

struct BalanceQuery {
  int from = kFirstDay;  // from the beginning: the turnover is the rest at the end of `to`
  int to = kNoLimit;     // both days included
  std::optional<int> account;
  std::vector<int> without;  // entries whose other account is one of these are left out
  AddresseeFilter addressee;
};

// By account and currency; accounts and currencies without a posting in the period give no row.
std::vector<Turnover> turnovers(Database& db, const BalanceQuery& query);

// The pieces of a period that the roll-ups hold: numbers yyyy, yyyymm and yyyymmdd, each range
// inclusive, in order of time. Together they cover every day of the period once.
struct PeriodRange {
  int from = 0, to = 0;
  bool days() const { return from > 999999; }
};
std::vector<PeriodRange> periodRanges(int from, int to);

}  // namespace tolvex::store
