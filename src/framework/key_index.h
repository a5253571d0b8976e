// KeyIndex: the rows of one text column, chained by text.
#pragma once

#include <cstdint>
#include <vector>

#include "framework/text_pool.h"

namespace tolvex {

class KeyIndex {
 public:
  static constexpr std::uint32_t kEnd = 0xFFFFFFFF;

  KeyIndex(const Symbol* column, std::uint32_t rows, Symbol symbols);

  void add(std::uint32_t row, Symbol symbol);
  void move(std::uint32_t row, Symbol from, Symbol to);

  // Rows with exactly this spelling, in no order, dead ones included.
  std::uint32_t first(Symbol symbol) const {
    return symbol < heads_.size() ? heads_[symbol] : kEnd;
  }
  std::uint32_t next(std::uint32_t row) const { return links_[row].next; }
  std::size_t bytes() const;

 private:
  struct Link {
    std::uint32_t next, previous;
  };
  void push(std::uint32_t row, Symbol symbol);

  std::vector<std::uint32_t> heads_;  // by symbol
  std::vector<Link> links_;           // by row
};

}  // namespace tolvex
