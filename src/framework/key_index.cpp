#include "framework/key_index.h"

namespace tolvex {

KeyIndex::KeyIndex(const Symbol* column, std::uint32_t rows, Symbol symbols)
    : heads_(symbols, kEnd), links_(rows) {
  for (std::uint32_t row = 0; row < rows; ++row) push(row, column[row]);
}

void KeyIndex::push(std::uint32_t row, Symbol symbol) {
  if (symbol >= heads_.size()) heads_.resize(std::size_t{symbol} + 1, kEnd);
  const std::uint32_t head = heads_[symbol];
  links_[row] = {head, kEnd};
  if (head != kEnd) links_[head].previous = row;
  heads_[symbol] = row;
}

void KeyIndex::add(std::uint32_t row, Symbol symbol) {
  if (row >= links_.size()) links_.resize(std::size_t{row} + 1);
  push(row, symbol);
}

void KeyIndex::move(std::uint32_t row, Symbol from, Symbol to) {
  const Link link = links_[row];
  if (link.previous == kEnd) {
    heads_[from] = link.next;
  } else {
    links_[link.previous].next = link.next;
  }
  if (link.next != kEnd) links_[link.next].previous = link.previous;
  push(row, to);
}

std::size_t KeyIndex::bytes() const {
  return heads_.capacity() * sizeof(heads_[0]) + links_.capacity() * sizeof(Link);
}

}  // namespace tolvex
