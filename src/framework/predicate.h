// Predicate: a compiled filter, tested on one row or on many at once.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "framework/table.h"

namespace tolvex {

enum class Compare : std::uint8_t {
  Equal,
  NotEqual,
  Less,
  Greater,
  LessOrEqual,
  GreaterOrEqual,
  Like,
};

// A pattern with % and * for any run of characters, compared without case.
class Pattern {
 public:
  explicit Pattern(std::string_view pattern);
  bool matches(std::string_view text) const;

 private:
  std::vector<std::string> pieces_;  // folded; between two pieces stands anything
};

struct Condition {
  int column;
  Compare compare;
  bool startsGroup;  // the groups are joined by OR, the conditions of one group by AND
  bool isText;
  double number = 0;   // number, Boolean and date columns
  std::string text{};  // text columns: as written for Equal and NotEqual, else folded or pattern

  // Bound to a pool: any one spelling of the text, kEmptyText when the pool has none.
  Symbol symbol = kEmptyText;
  bool oneSpelling = true;
  // Answers for texts already tested: 0 open, 1 no, 2 yes. By symbol; only in long scans.
  std::vector<std::uint8_t> known{};
  std::vector<Pattern> pattern{};  // one when compare is Like
};

class Predicate {
 public:
  static constexpr std::size_t kBlockWords = 64;

  Predicate() = default;
  explicit Predicate(std::vector<Condition> conditions) : conditions_(std::move(conditions)) {}

  bool empty() const { return conditions_.empty(); }
  const std::vector<Condition>& conditions() const { return conditions_; }
  bool reads(int column) const;

  // Finds the symbols of its texts; needed again when the pool has grown.
  void bind(const Table& table);
  bool test(const Table& table, std::uint32_t row);
  // Sets the bits of the rows first .. first + 64 * words - 1 that pass; `first` is a multiple of
  // 64, words at most kBlockWords. Dead rows may be set.
  void scan(const Table& table, std::uint32_t first, std::size_t words, std::uint64_t* out);
  // False: all rows must be scanned. True: only `rows` can pass (and must still be tested).
  bool candidates(Table& table, std::vector<std::uint32_t>& rows) const;

 private:
  std::size_t groupEnd(std::size_t begin) const;
  bool neverPasses(std::size_t begin, std::size_t end) const;
  void scanGroup(const Table& table, std::size_t begin, std::size_t end, std::uint32_t first,
                 std::uint32_t rows, std::uint64_t* mask);

  std::vector<Condition> conditions_;
};

// Throws RowSetError: BadFilter for a text outside the grammar, UnknownColumn for a wrong name.
Predicate parseFilter(std::string_view filter, const Schema& schema);

}  // namespace tolvex
