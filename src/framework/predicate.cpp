#include "framework/predicate.h"

#include <algorithm>

#include "framework/case_fold.h"
#include "framework/text.h"

namespace tolvex {

namespace {

// One bit each. A plain array, half a word of it: in this form compilers make wide instructions of
// the loops below.
#define TOLVEX_FOUR_BITS(i) 1u << (i), 2u << (i), 4u << (i), 8u << (i)
constexpr std::uint32_t kBit[32] = {
    TOLVEX_FOUR_BITS(0),  TOLVEX_FOUR_BITS(4),  TOLVEX_FOUR_BITS(8),  TOLVEX_FOUR_BITS(12),
    TOLVEX_FOUR_BITS(16), TOLVEX_FOUR_BITS(20), TOLVEX_FOUR_BITS(24), TOLVEX_FOUR_BITS(28)};
#undef TOLVEX_FOUR_BITS

template <class Cell, class Test>
std::uint64_t maskOf(const Cell* cells, Test test) {
  std::uint32_t low = 0, high = 0;
  for (std::size_t i = 0; i < 32; ++i) low |= test(cells[i]) ? kBit[i] : 0u;
  for (std::size_t i = 0; i < 32; ++i) high |= test(cells[32 + i]) ? kBit[i] : 0u;
  return std::uint64_t{high} << 32 | low;
}

// Narrows `mask`, word by word, to the rows that pass; words already empty are skipped.
template <class Cell, class Test>
void narrow(const Cell* cells, std::uint32_t rows, std::uint64_t* mask, Test test) {
  const std::size_t whole = rows / 64;
  for (std::size_t w = 0; w < whole; ++w) {
    if (mask[w] != 0) mask[w] &= maskOf(cells + w * 64, test);
  }
  if (rows % 64 == 0) return;
  std::uint64_t word = 0;
  for (std::size_t i = 0; i < rows % 64; ++i) {
    word |= std::uint64_t{test(cells[whole * 64 + i])} << i;
  }
  mask[whole] &= word;
}

// Calls `use` with the test of a number condition. Not-equal is less-or-greater, so that it too is
// false for the absent states.
template <class Use>
auto withNumberTest(const Condition& condition, Use use) {
  const double v = condition.number;
  switch (condition.compare) {
    case Compare::Equal:
      return use([v](double x) { return x == v; });
    case Compare::NotEqual:
      return use([v](double x) { return static_cast<bool>((x < v) | (x > v)); });
    case Compare::Less:
      return use([v](double x) { return x < v; });
    case Compare::Greater:
      return use([v](double x) { return x > v; });
    case Compare::LessOrEqual:
      return use([v](double x) { return x <= v; });
    default:
      return use([v](double x) { return x >= v; });
  }
}

// Whether a text begins with a folded one; mostly told by the first letters.
bool beginsWith(std::string_view text, std::string_view folded) {
  for (std::size_t i = 0; i < folded.size(); ++i) {
    const char c = text[i];
    if (static_cast<unsigned char>(c) >= 0x80) {
      return Folded(text.substr(i, folded.size() - i)).view() == folded.substr(i);
    }
    if ((c >= 'a' && c <= 'z' ? c - 0x20 : c) != folded[i]) return false;
  }
  return true;
}

bool isOrdered(int order, Compare compare) {
  switch (compare) {
    case Compare::Less:
      return order < 0;
    case Compare::Greater:
      return order > 0;
    case Compare::LessOrEqual:
      return order <= 0;
    default:
      return order >= 0;
  }
}

bool textPasses(const Condition& condition, std::string_view text) {
  if (condition.compare == Compare::Like) return condition.pattern[0].matches(text);
  return isOrdered(Folded(text).view().compare(condition.text), condition.compare);
}

bool textPassesOnce(Condition& condition, const TextPool& pool, Symbol symbol) {
  if (symbol < kFirstText) return false;
  if (symbol >= condition.known.size()) return textPasses(condition, pool.text(symbol));
  std::uint8_t& known = condition.known[symbol];
  if (known == 0) known = textPasses(condition, pool.text(symbol)) ? 2 : 1;
  return known == 2;
}

// The answers are read without a branch, but for words with a text that was not tested yet.
void narrowByText(Condition& condition, const TextPool& pool, const Symbol* cells,
                  std::uint32_t rows, std::uint64_t* mask) {
  if (condition.known.size() < pool.end()) {
    narrow(cells, rows, mask, [&](Symbol x) { return textPassesOnce(condition, pool, x); });
    return;
  }
  std::uint8_t* const known = condition.known.data();
  known[kEmptyText] = known[kNullText] = 1;
  for (std::uint32_t first = 0; first < rows; first += 64) {
    const std::uint32_t count = std::min(rows - first, 64u);
    std::uint64_t passing = 0;
    bool allKnown = true;
    for (std::uint32_t i = 0; i < count; ++i) {
      const std::uint64_t answer = known[cells[first + i]];
      passing |= answer / 2 << i;
      allKnown &= answer != 0;
    }
    for (std::uint32_t i = 0; !allKnown && i < count; ++i) {
      std::uint8_t& answer = known[cells[first + i]];
      if (answer == 0) answer = textPasses(condition, pool.text(cells[first + i])) ? 2 : 1;
      passing |= std::uint64_t{answer} / 2 << i;
    }
    mask[first / 64] &= passing;
  }
}

bool isSpelling(const Condition& condition, const TextPool& pool, Symbol symbol) {
  if (condition.symbol == kEmptyText) return false;
  Symbol spelling = condition.symbol;
  do {
    if (spelling == symbol) return true;
    spelling = pool.nextSpelling(spelling);
  } while (spelling != condition.symbol);
  return false;
}

bool isEquality(const Condition& condition) {
  return condition.compare == Compare::Equal || condition.compare == Compare::NotEqual;
}

void narrowEquality(const Condition& condition, const TextPool& pool, const Symbol* cells,
                    std::uint32_t rows, std::uint64_t* mask) {
  const bool wanted = condition.compare == Compare::Equal;
  if (condition.symbol == kEmptyText) {
    if (wanted) std::fill_n(mask, (rows + 63) / 64, 0);
  } else if (condition.oneSpelling) {
    const Symbol s = condition.symbol;
    if (wanted) {
      narrow(cells, rows, mask, [s](Symbol x) { return x == s; });
    } else {
      narrow(cells, rows, mask, [s](Symbol x) { return x != s; });
    }
  } else {
    narrow(cells, rows, mask, [&](Symbol x) { return isSpelling(condition, pool, x) == wanted; });
  }
}

}  // namespace

Pattern::Pattern(std::string_view pattern) {
  for (;;) {
    const std::size_t end = pattern.find_first_of("%*");
    pieces_.push_back(upper(pattern.substr(0, end)));
    if (end == std::string_view::npos) return;
    pattern.remove_prefix(end + 1);
  }
}

bool Pattern::matches(std::string_view text) const {
  const std::string& front = pieces_.front();
  const std::string& back = pieces_.back();
  if (text.size() < front.size() + back.size()) return false;
  if (!beginsWith(text, front)) return false;
  text.remove_prefix(front.size());
  if (pieces_.size() == 2 && back.empty()) return true;
  const Folded folded(text);
  std::string_view rest = folded.view();
  if (rest.substr(rest.size() - back.size()) != back) return false;
  rest.remove_suffix(back.size());
  for (std::size_t i = 1; i + 1 < pieces_.size(); ++i) {
    const std::size_t found = rest.find(pieces_[i]);
    if (found == std::string_view::npos) return false;
    rest.remove_prefix(found + pieces_[i].size());
  }
  return true;
}

bool Predicate::reads(int column) const {
  for (const Condition& condition : conditions_) {
    if (condition.column == column) return true;
  }
  return false;
}

void Predicate::bind(const Table& table) {
  const TextPool& pool = table.pool();
  for (Condition& condition : conditions_) {
    if (!condition.isText) continue;
    if (isEquality(condition)) {
      condition.symbol = pool.findNoCase(condition.text);
      condition.oneSpelling =
          condition.symbol == kEmptyText || pool.nextSpelling(condition.symbol) == condition.symbol;
    } else if (table.size() >= pool.end() / 8) {
      condition.known.resize(pool.end());
    }
  }
}

bool Predicate::test(const Table& table, std::uint32_t row) {
  bool passes = true;
  for (Condition& condition : conditions_) {
    if (condition.startsGroup) {
      if (&condition != conditions_.data() && passes) return true;
      passes = true;
    }
    if (!passes) continue;
    const Column& column = table.schema()[std::size_t(condition.column)];
    if (!condition.isText) {
      const double x = table.numbers(column)[row];
      passes = withNumberTest(condition, [x](auto test) { return test(x); });
    } else if (isEquality(condition)) {
      passes = isSpelling(condition, table.pool(), table.symbols(column)[row]) ==
               (condition.compare == Compare::Equal);
    } else {
      passes = textPassesOnce(condition, table.pool(), table.symbols(column)[row]);
    }
  }
  return passes;
}

std::size_t Predicate::groupEnd(std::size_t begin) const {
  std::size_t end = begin + 1;
  while (end < conditions_.size() && !conditions_[end].startsGroup) ++end;
  return end;
}

// A group that wants a text which the pool has never seen.
bool Predicate::neverPasses(std::size_t begin, std::size_t end) const {
  for (std::size_t i = begin; i < end; ++i) {
    const Condition& c = conditions_[i];
    if (c.isText && c.compare == Compare::Equal && c.symbol == kEmptyText) return true;
  }
  return false;
}

void Predicate::scanGroup(const Table& table, std::size_t begin, std::size_t end,
                          std::uint32_t first, std::uint32_t rows, std::uint64_t* mask) {
  for (std::size_t i = begin; i < end; ++i) {
    Condition& condition = conditions_[i];
    const Column& column = table.schema()[std::size_t(condition.column)];
    if (!condition.isText) {
      const double* cells = table.numbers(column) + first;
      withNumberTest(condition, [&](auto test) { narrow(cells, rows, mask, test); });
    } else if (isEquality(condition)) {
      narrowEquality(condition, table.pool(), table.symbols(column) + first, rows, mask);
    } else {
      narrowByText(condition, table.pool(), table.symbols(column) + first, rows, mask);
    }
  }
}

void Predicate::scan(const Table& table, std::uint32_t first, std::size_t words,
                     std::uint64_t* out) {
  const auto rows =
      static_cast<std::uint32_t>(std::min<std::size_t>(words * 64, table.size() - first));
  std::uint64_t all[kBlockWords];
  std::fill_n(all, words, ~std::uint64_t{0});
  if (rows % 64 != 0) all[words - 1] >>= 64 - rows % 64;
  std::fill_n(out, words, 0);
  for (std::size_t begin = 0; begin < conditions_.size();) {
    const std::size_t end = groupEnd(begin);
    if (!neverPasses(begin, end)) {
      std::uint64_t mask[kBlockWords];
      std::copy_n(all, words, mask);
      scanGroup(table, begin, end, first, rows, mask);
      for (std::size_t w = 0; w < words; ++w) out[w] |= mask[w];
    }
    begin = end;
  }
}

bool Predicate::candidates(Table& table, std::vector<std::uint32_t>& rows) const {
  for (std::size_t begin = 0; begin < conditions_.size();) {
    const std::size_t end = groupEnd(begin);
    if (!neverPasses(begin, end)) {
      std::size_t key = begin;
      while (key < end &&
             !(conditions_[key].isText && conditions_[key].compare == Compare::Equal)) {
        ++key;
      }
      const KeyIndex* index = key < end ? table.indexFor(conditions_[key].column) : nullptr;
      if (index == nullptr) return false;
      Symbol spelling = conditions_[key].symbol;
      do {
        for (std::uint32_t row = index->first(spelling); row != KeyIndex::kEnd;
             row = index->next(row)) {
          rows.push_back(row);
        }
        spelling = table.pool().nextSpelling(spelling);
      } while (spelling != conditions_[key].symbol);
    }
    begin = end;
  }
  return true;
}

}  // namespace tolvex
