// Parameter texts and the table of routines.
#include "host/store/routines.h"

#include <gtest/gtest.h>

#include "framework/text.h"

namespace tolvex::store {
namespace {

// t"…" a text, n"…" a number, parted by blanks.
std::string shown(const std::vector<Argument>& arguments) {
  std::vector<std::string> parts;
  for (const Argument& argument : arguments) {
    const char* letter = argument.kind() == Argument::Kind::Number ? "n" : "t";
    parts.push_back(argument.absent() ? "-" : letter + ("[" + argument.str() + "]"));
  }
  return join(parts, " ");
}

std::string parsed(std::string_view text) {
  try {
    return shown(parseParameters(text));
  } catch (const Refusal& refusal) {
    return std::to_string(refusal.code);
  }
}

struct ParseCase {
  const char *name, *text, *want;
};
constexpr ParseCase kParses[] = {
    {"the word for no arguments", "None", ""},
    {"nothing", "", ""},
    {"blanks", "   ", ""},
    {"a text that is the word", "'None'", "t[None]"},
    {"texts and numbers", "'0','450','2004.02.28','',-1", "t[0] t[450] t[2004.02.28] t[] n[-1]"},
    {"an apostrophe inside", "'UAB 'Rytas' ir ko','x'", "t[UAB 'Rytas' ir ko] t[x]"},
    {"a filter with quoted values", "'','Name = 'abc' And Code = 'd''",
     "t[] t[Name = 'abc' And Code = 'd']"},
    {"a comma inside a text", "',12,15,','2004.01.01'", "t[,12,15,] t[2004.01.01]"},
    {"a bare reference is a text", "O020140012", "t[O020140012]"},
    {"a bare decimal is a number", "2.75", "n[2.75]"},
    {"blanks around arguments", " 'a' , 5 ", "t[a] n[5]"},
    {"an argument left out between commas", "1,,2", "n[1] t[] n[2]"},
    {"a text without its end", "'abc", "1207"},
};

TEST(Parameters, Parse) {
  for (const ParseCase& c : kParses) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(parsed(c.text), c.want);
  }
}

std::string fitted(std::string_view declared, std::string_view text) {
  const Routine routine{"O0201500", "GetX", declared, false, nullptr};
  try {
    return shown(argumentsFor(routine, "O0201500", text));
  } catch (const Refusal& refusal) {
    return std::to_string(refusal.code);
  }
}

struct FitCase {
  const char *name, *declared, *text, *want;
};
constexpr FitCase kFits[] = {
    {"too few", "tn", "'a'", "1207"},
    {"too many", "t", "'a','b'", "1207"},
    {"a number for a text", "t", "5", "1207"},
    {"a text for a number", "n", "'5'", "1207"},
    {"a fraction for a whole number", "i", "1.5", "1207"},
    {"a whole number too large for an id", "i", "4000000000", "1207"},
    {"an unreadable date", "d", "'2004.13.01'", "1207"},
    {"a date with the other mark and a time", "d", "'2004-02-28 10:15:00'",
     "t[2004-02-28 10:15:00]"},
    {"an empty date", "d", "''", "t[]"},
    {"a reference by id", "r", "12", "n[12]"},
    {"a reference bare", "r", "O020140012", "t[O020140012]"},
    {"optional ones left out", "tTn", "'a'", "t[a] - -"},
    {"optional ones given", "tTn", "'a','b',2", "t[a] t[b] n[2]"},
    {"any number", "*", "1,'a',2,'b'", "n[1] t[a] n[2] t[b]"},
};

TEST(Parameters, FitTheDeclaration) {
  for (const FitCase& c : kFits) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(fitted(c.declared, c.text), c.want);
  }
}

TEST(Parameters, ADayIsReadWithoutItsTime) {
  EXPECT_EQ(parseParameters("'2004.02.28 23:59:59'")[0].day(), 20040228);
  EXPECT_EQ(parseParameters("'9999.12.31'")[0].day(), 99991231);
  EXPECT_EQ(parseParameters("''")[0].day(), 0);
}

TEST(Routines, KindsShareTheTableOfTheirFamily) {
  const std::pair<const char*, const char*> cases[] = {
      {"O0201504", "O0201500"}, {"O0201507", "O0201507"}, {"O0200500", "O0200500"},
      {"O0200511", "O0200500"}, {"O0200401", "O0200400"}, {"O0201701", "O0201700"},
      {"O0000100", "O0000100"}};
  for (const auto& [kind, family] : cases) EXPECT_EQ(familyOf(kind), family) << kind;
}

TEST(Routines, NamesAreFoundWithoutRegardToCase) {
  ASSERT_NE(findRoutine("o0000100", "getmyfirm"), nullptr);
  EXPECT_EQ(findRoutine("O0000300", "GetMyFirm"), nullptr);
  EXPECT_NE(findRoutine("O0201504", "GETRIGHTS"), nullptr);
  EXPECT_EQ(findRoutine("O0201504", "GetRight"), nullptr);
}

}  // namespace
}  // namespace tolvex::store
