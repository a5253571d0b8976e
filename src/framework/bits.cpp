#include "framework/bits.h"

namespace tolvex {

namespace {

constexpr std::uint64_t bit(std::size_t place) { return std::uint64_t{1} << place % 64; }
std::size_t lowest(std::uint64_t word) { return static_cast<std::size_t>(std::countr_zero(word)); }
std::size_t highest(std::uint64_t word) {
  return 63 - static_cast<std::size_t>(std::countl_zero(word));
}
// Bits at and above the place, bits at and below it.
std::uint64_t from(std::size_t place) { return ~std::uint64_t{0} << place % 64; }
std::uint64_t upTo(std::size_t place) { return ~std::uint64_t{0} >> (63 - place % 64); }

}  // namespace

void Bits::grow(std::size_t size) {
  size_ = size;
  words_.resize((size + 63) / 64);
  summary_.resize((words_.size() + 63) / 64);
}

void Bits::clear() {
  for (std::size_t i = 0; i < summary_.size(); ++i) {
    for (std::uint64_t used = summary_[i]; used != 0; used &= used - 1) {
      words_[i * 64 + lowest(used)] = 0;
    }
    summary_[i] = 0;
  }
  count_ = 0;
}

void Bits::set(std::size_t place, bool visible) {
  std::uint64_t& word = words_[place / 64];
  count_ += visible;
  count_ -= test(place);
  if (visible) {
    word |= bit(place);
    summary_[place / 64 / 64] |= bit(place / 64);
  } else {
    word &= ~bit(place);
    if (word == 0) summary_[place / 64 / 64] &= ~bit(place / 64);
  }
}

void Bits::setWord(std::size_t index, std::uint64_t word) {
  count_ += static_cast<std::size_t>(std::popcount(word));
  if (words_[index] != 0) count_ -= static_cast<std::size_t>(std::popcount(words_[index]));
  words_[index] = word;
  if (word != 0) {
    summary_[index / 64] |= bit(index);
  } else {
    summary_[index / 64] &= ~bit(index);
  }
}

std::size_t Bits::next(std::size_t place) const {
  if (place >= size_) return kNone;
  std::size_t index = place / 64;
  if (const std::uint64_t rest = words_[index] & from(place)) return index * 64 + lowest(rest);
  if (++index >= words_.size()) return kNone;
  std::size_t group = index / 64;
  std::uint64_t used = summary_[group] & from(index);
  while (used == 0) {
    if (++group >= summary_.size()) return kNone;
    used = summary_[group];
  }
  index = group * 64 + lowest(used);
  return index * 64 + lowest(words_[index]);
}

std::size_t Bits::previous(std::size_t place) const {
  if (size_ == 0) return kNone;
  if (place >= size_) place = size_ - 1;
  std::size_t index = place / 64;
  if (const std::uint64_t rest = words_[index] & upTo(place)) return index * 64 + highest(rest);
  if (index-- == 0) return kNone;
  std::size_t group = index / 64;
  std::uint64_t used = summary_[group] & upTo(index);
  while (used == 0) {
    if (group-- == 0) return kNone;
    used = summary_[group];
  }
  index = group * 64 + highest(used);
  return index * 64 + highest(words_[index]);
}

}  // namespace tolvex
