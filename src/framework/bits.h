// Bits: the places of a view that are visible, with their count.
//
// One bit a place and, above it, one bit for each word that has any: the next visible place is a
// few word operations away, also when one place in a million is visible.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tolvex {

class Bits {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::size_t size() const { return size_; }
  std::size_t count() const { return count_; }

  // Grows to `size` places; new ones are not visible.
  void grow(std::size_t size);
  void clear();  // costs the words in use, not the size

  bool test(std::size_t place) const { return words_[place / 64] >> place % 64 & 1; }
  void set(std::size_t place, bool visible);
  // All 64 places of one word at once.
  void setWord(std::size_t index, std::uint64_t word);

  // The first visible place at or after `place`, the last at or before it; kNone at the end.
  std::size_t next(std::size_t place) const;
  std::size_t previous(std::size_t place) const;

 private:
  std::vector<std::uint64_t> words_;
  std::vector<std::uint64_t> summary_;
  std::size_t size_ = 0;
  std::size_t count_ = 0;
};

}  // namespace tolvex
