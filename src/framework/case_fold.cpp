#include "framework/case_fold.h"

#include <array>

namespace tolvex {

namespace {

constexpr char32_t kFirstMapped = 0x80;
constexpr char32_t kEndMapped = 0x460;

constexpr char32_t upperOf(char32_t c) {
  if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return c - 0x20;
  if (c == 0xFF) return 0x178;
  const bool lowerIsOdd =
      (c >= 0x100 && c <= 0x12F) || (c >= 0x132 && c <= 0x137) || (c >= 0x14A && c <= 0x177);
  if (lowerIsOdd) return c - (c & 1);
  const bool lowerIsEven = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  if (lowerIsEven) return c - 1 + (c & 1);
  if (c >= 0x430 && c <= 0x44F) return c - 0x20;
  if (c >= 0x450 && c <= 0x45F) return c - 0x50;
  return c;
}

constexpr auto kUpper = [] {
  std::array<std::uint16_t, kEndMapped - kFirstMapped> table{};
  for (char32_t c = kFirstMapped; c < kEndMapped; ++c) {
    table[c - kFirstMapped] = static_cast<std::uint16_t>(upperOf(c));
  }
  return table;
}();

bool isTail(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

}  // namespace

char32_t upperPoint(char32_t point) {
  if (point >= U'a' && point <= U'z') return point - 0x20;
  if (point < kFirstMapped || point >= kEndMapped) return point;
  return kUpper[point - kFirstMapped];
}

void foldCase(std::string_view text, char* out) {
  const char* in = text.data();
  const std::size_t size = text.size();
  std::size_t i = 0;
  while (i < size) {
    if (i + 8 <= size) {
      const std::uint64_t word = loadWord(in + i);
      if (isAsciiWord(word)) {
        const std::uint64_t folded = upperWord(word);
        std::memcpy(out + i, &folded, sizeof folded);
        i += 8;
        continue;
      }
    }
    const auto lead = static_cast<unsigned char>(in[i]);
    if ((lead & 0xE0) == 0xC0 && i + 1 < size && isTail(in[i + 1])) {
      const auto tail = static_cast<unsigned char>(in[i + 1]);
      const char32_t point = upperPoint(static_cast<char32_t>((lead & 0x1F) << 6 | (tail & 0x3F)));
      out[i] = static_cast<char>(0xC0 | (point >> 6));
      out[i + 1] = static_cast<char>(0x80 | (point & 0x3F));
      i += 2;
    } else {
      out[i] = lead >= 'a' && lead <= 'z' ? static_cast<char>(lead - 0x20) : in[i];
      ++i;
    }
  }
}

char32_t nextPoint(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  const int tails = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
  if (tails == 0) return lead;
  char32_t point = lead & (0x3Fu >> tails);
  for (int i = 0; i < tails; ++i) {
    if (at >= text.size() || !isTail(text[at])) return lead;
    point = point << 6 | (static_cast<unsigned char>(text[at++]) & 0x3Fu);
  }
  return point;
}

}  // namespace tolvex
