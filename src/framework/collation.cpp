#include "framework/collation.h"

#include "framework/case_fold.h"
#include "framework/text.h"

namespace tolvex {

namespace {

struct Letter {
  char32_t point;
  char base;  // letters with the same base differ only by `mark`
  char mark;
};

constexpr Letter kMarked[] = {{U'Ą', 'A', 2}, {U'Ę', 'E', 2}, {U'Ė', 'E', 3}, {U'Į', 'I', 2},
                              {U'Y', 'I', 3}, {U'Ų', 'U', 2}, {U'Ū', 'U', 3}};

// Digits and signs stay below the letters, all other alphabets come behind.
constexpr unsigned char kFirstLetter = 0x80;
constexpr char kForeign = '\xFE';

// Two weights a letter, so that Č, Š and Ž find room behind C, S and Z.
char weightOf(char latin, int behind = 0) {
  return static_cast<char>(kFirstLetter + 2 * (latin - 'A') + behind);
}

void append(char32_t point, std::string& base, std::string& marks) {
  for (const Letter& letter : kMarked) {
    if (letter.point == point) {
      base += weightOf(letter.base);
      marks += letter.mark;
      return;
    }
  }
  marks += '\1';
  if (point >= U'A' && point <= U'Z') {
    base += weightOf(static_cast<char>(point));
  } else if (point == U'Č' || point == U'Š' || point == U'Ž') {
    base += weightOf(point == U'Č' ? 'C' : point == U'Š' ? 'S' : 'Z', 1);
  } else if (point < 0x80) {
    base += point == 0 ? '\1' : static_cast<char>(point);
  } else {
    base += kForeign;
    for (int shift = 16; shift >= 0; shift -= 8) base += static_cast<char>(point >> shift & 0xFF);
  }
}

}  // namespace

std::string collationKey(std::string_view text) {
  std::string base, marks;
  base.reserve(2 * text.size() + 1);
  for (std::size_t at = 0; at < text.size();) append(upperPoint(nextPoint(text, at)), base, marks);
  base += '\0';
  return base + marks;
}

int compareLithuanian(std::string_view a, std::string_view b) {
  return collationKey(a).compare(collationKey(b));
}

}  // namespace tolvex
