#include "framework/bits.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace tolvex {
namespace {

TEST(Bits, WalksBothWaysLikeASet) {
  std::mt19937 random(20040209);
  for (const std::size_t size : {1u, 63u, 64u, 65u, 4096u, 4097u, 300000u}) {
    SCOPED_TRACE(size);
    Bits bits;
    bits.grow(size);
    std::set<std::size_t> want;
    for (int i = 0; i < 400; ++i) {
      // Sparse and crowded at once: half of the places lie in the first few words.
      const std::size_t place = random() % (i % 2 == 0 ? size : std::min<std::size_t>(size, 200));
      const bool visible = random() % 3 != 0;
      bits.set(place, visible);
      if (visible) {
        want.insert(place);
      } else {
        want.erase(place);
      }
    }
    ASSERT_EQ(bits.count(), want.size());
    for (int i = 0; i < 400; ++i) {
      const std::size_t place = random() % (size + 2);
      const auto after = want.lower_bound(place);
      ASSERT_EQ(bits.next(place), after == want.end() ? Bits::kNone : *after);
      const auto above = want.upper_bound(place);
      ASSERT_EQ(bits.previous(place), above == want.begin() ? Bits::kNone : *std::prev(above));
    }
    bits.grow(size + 1000);
    EXPECT_EQ(bits.count(), want.size());
    bits.clear();
    EXPECT_EQ(bits.count(), 0u);
    EXPECT_EQ(bits.next(0), Bits::kNone);
    EXPECT_EQ(bits.previous(size), Bits::kNone);
  }
}

TEST(Bits, CountsWholeWords) {
  Bits bits;
  EXPECT_EQ(bits.next(0), Bits::kNone);
  EXPECT_EQ(bits.previous(0), Bits::kNone);
  bits.grow(130);
  bits.setWord(1, 0x8000000000000001u);
  bits.setWord(1, 0x8000000000000000u);
  bits.setWord(0, 0);
  EXPECT_EQ(bits.count(), 1u);
  EXPECT_EQ(bits.next(0), 127u);
  EXPECT_EQ(bits.previous(129), 127u);
}

}  // namespace
}  // namespace tolvex
