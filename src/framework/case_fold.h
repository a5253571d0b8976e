// Case folding of UTF-8 text to upper case: Basic Latin, Latin-1, Latin Extended-A, Cyrillic.
//
// Every pair keeps its byte length, so folded and original text have the same size, and folded
// texts compare by bytes exactly as by code points.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace tolvex {

inline std::uint64_t loadWord(const char* bytes) {
  std::uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

inline std::uint64_t loadHalfWord(const char* bytes) {
  std::uint32_t half;
  std::memcpy(&half, bytes, sizeof half);
  return half;
}

inline bool isAsciiWord(std::uint64_t word) { return (word & 0x8080808080808080u) == 0; }

// Upper case of eight bytes at once; bytes above 0x7F stay.
inline std::uint64_t upperWord(std::uint64_t word) {
  const std::uint64_t low = word & 0x7F7F7F7F7F7F7F7Fu;
  const std::uint64_t fromA = low + 0x1F1F1F1F1F1F1F1Fu;   // high bit: at least 'a'
  const std::uint64_t aboveZ = low + 0x0505050505050505u;  // high bit: above 'z'
  const std::uint64_t lower = fromA & ~aboveZ & ~word & 0x8080808080808080u;
  return word ^ (lower >> 2);
}

// Upper case of one code point; itself when it has none of the same length.
char32_t upperPoint(char32_t point);

// Writes the folded text to `out`, which has room for text.size() bytes.
void foldCase(std::string_view text, char* out);

// A folded copy that stays on the stack while it is short.
class Folded {
 public:
  explicit Folded(std::string_view text) : size_(text.size()) {
    if (size_ > sizeof near_) far_.resize(size_);
    foldCase(text, data());
  }
  Folded(const Folded&) = delete;
  Folded& operator=(const Folded&) = delete;
  std::string_view view() const { return {size_ > sizeof near_ ? far_.data() : near_, size_}; }

 private:
  char* data() { return size_ > sizeof near_ ? far_.data() : near_; }

  std::size_t size_;
  char near_[120];
  std::string far_;
};

// One code point of valid UTF-8 at `at`, which moves behind it; a stray byte counts as itself.
char32_t nextPoint(std::string_view text, std::size_t& at);

}  // namespace tolvex
