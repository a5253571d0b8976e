#include "host/cards/sum_words.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "framework/rounding.h"
#include "framework/text.h"

namespace tolvex {
namespace {

enum class Gender { Masculine, Feminine };

constexpr std::array<const char*, 10> kMasculine = {
    "", "vienas", "du", "trys", "keturi", "penki", "šeši", "septyni", "aštuoni", "devyni"};
constexpr std::array<const char*, 10> kFeminine = {"",          "viena",   "dvi",    "trys",
                                                   "keturios",  "penkios", "šešios", "septynios",
                                                   "aštuonios", "devynios"};
constexpr std::array<const char*, 10> kTeens = {
    "dešimt",     "vienuolika", "dvylika",      "trylika",      "keturiolika",
    "penkiolika", "šešiolika",  "septyniolika", "aštuoniolika", "devyniolika"};
constexpr std::array<const char*, 10> kTens = {"",
                                               "",
                                               "dvidešimt",
                                               "trisdešimt",
                                               "keturiasdešimt",
                                               "penkiasdešimt",
                                               "šešiasdešimt",
                                               "septyniasdešimt",
                                               "aštuoniasdešimt",
                                               "devyniasdešimt"};

struct Group {
  std::int64_t size;
  UnitNames names;
};
const std::array<Group, 3>& groups() {
  static const std::array<Group, 3> all = {{
      {1'000'000'000, {"milijardas", "milijardai", "milijardų"}},
      {1'000'000, {"milijonas", "milijonai", "milijonų"}},
      {1'000, {"tūkstantis", "tūkstančiai", "tūkstančių"}},
  }};
  return all;
}

// The last two figures decide: 1, 21, 101 one; 2 to 9, 22 two; 0, 10 to 20, 111 many.
const std::string& nameFor(std::int64_t count, const UnitNames& names) {
  const auto last = count % 10;
  if (last == 0 || (count % 100 > 10 && count % 100 < 20)) return names.many;
  return last == 1 ? names.one : names.two;
}

bool endsWithOneOf(std::string_view word, std::initializer_list<std::string_view> endings) {
  for (const std::string_view ending : endings)
    if (word.ends_with(ending)) return true;
  return false;
}

Gender genderOf(const UnitNames& names) {
  const std::vector<std::string> words = split(names.one, ' ');
  for (auto word = words.rbegin(); word != words.rend(); ++word) {
    if (endsWithOneOf(*word, {"as", "is", "ys", "us"})) return Gender::Masculine;
    if (endsWithOneOf(*word, {"a", "ė"})) return Gender::Feminine;
  }
  return Gender::Masculine;
}

using Words = std::vector<std::string>;

void append(Words& words, std::string word) {
  if (!word.empty()) words.push_back(std::move(word));
}

void appendBelowThousand(Words& words, std::int64_t number, Gender gender) {
  const auto digit = [](std::int64_t value) { return static_cast<std::size_t>(value); };
  if (const auto hundreds = number / 100; hundreds > 0) {
    append(words, kMasculine[digit(hundreds)]);
    append(words, hundreds == 1 ? "šimtas" : "šimtai");
  }
  const auto rest = number % 100;
  if (rest >= 10 && rest < 20) return append(words, kTeens[digit(rest - 10)]);
  append(words, kTens[digit(rest / 10)]);
  append(words, (gender == Gender::Feminine ? kFeminine : kMasculine)[digit(rest % 10)]);
}

void appendCounted(Words& words, std::int64_t count, const UnitNames& names) {
  if (count == 0) append(words, "nulis");
  auto rest = count;
  for (const Group& group : groups()) {
    if (const auto inGroup = rest / group.size; inGroup > 0) {
      appendBelowThousand(words, inGroup, Gender::Masculine);
      append(words, nameFor(inGroup, group.names));
    }
    rest %= group.size;
  }
  appendBelowThousand(words, rest, genderOf(names));
  append(words, nameFor(count, names));
}

void appendSmall(Words& words, std::int64_t count, const UnitNames& names, SmallUnits how) {
  const std::string figures = (count < 10 ? "0" : "") + std::to_string(count);
  if (names.one.empty()) {
    if (count > 0) append(words, figures + "/100");
  } else if (how == SmallUnits::InWords) {
    appendCounted(words, count, names);
  } else {
    append(words, figures);
    append(words, nameFor(count, names));
  }
}

}  // namespace

std::optional<std::string> sumByWords(double sum, const MoneyNames& names, SmallUnits small) {
  const double rounded = roundHalfEven(std::fabs(sum), 2);
  if (!(rounded <= kGreatestInWords)) return std::nullopt;
  const auto hundredths = static_cast<std::int64_t>(std::llround(rounded * 100));
  Words words;
  if (sum < 0 && hundredths > 0) append(words, "minus");
  appendCounted(words, hundredths / 100, names.unit);
  appendSmall(words, hundredths % 100, names.small, small);
  const std::string text = join(words, " ");
  return upper(left(text, 1)) + mid(text, 2);
}

}  // namespace tolvex
