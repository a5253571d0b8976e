// The rules of a group's card that need no screen: what a number is composed of, and the settings
// that each kind of documents begins with.
#include <gtest/gtest.h>

#include "framework/text.h"
#include "operations/group_parameters.h"
#include "operations/number_text.h"
#include "operations/screen/parameter_text.h"

namespace tolvex::test {
namespace {

TEST(NumberTexts, AreComposedByTheMask) {
  const struct {
    const char* name;
    NumberText text;
    std::string want;
  } kCases[] = {
      {"date and counter", {7, "Date_AutoNumber", "", "0000", ""}, "030209-0007"},
      {"wider than its template",
       {123, "Prefix_UserPrefix_AutoNumber", "A", "00", "JJ"},
       "A-JJ-123"},
      {"nobody's",
       {1, "UserPrefix_AutoNumber", "", "", kUnknownUser},
       std::string(kUnknownUser) + "-1"},
      {"any order", {5, "AutoNumber_Prefix", "B", "999", ""}, "005-B"},
      {"an empty prefix keeps its place", {5, "Prefix_AutoNumber", "", "", ""}, "-5"},
      {"a keyword nobody knows", {5, "Year_AutoNumber", "", "00", ""}, "05"},
      {"no parts", {5, "", "A", "00", "JJ"}, ""},
      {"as wide as letters that are two bytes each", {1, "AutoNumber", "", "ąčę", ""}, "001"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(c.text.compose(DateTime::Of(2003, 2, 9)), c.want);
  }
}

TEST(NumberTexts, PartsStandInTheOrderOfTheMask) {
  const auto shown = [](std::string_view mask) {
    std::vector<std::string> texts;
    for (const MaskPart& part : partsOf(mask)) {
      texts.push_back((part.used ? "+" : "-") + std::string(part.part.keyword));
    }
    return join(texts, " ");
  };
  EXPECT_EQ(shown(""), "-Date -UserPrefix -AutoNumber -Prefix");
  EXPECT_EQ(shown("Prefix_AutoNumber"), "+Prefix +AutoNumber -Date -UserPrefix");
  EXPECT_EQ(shown("AutoNumber_x_AutoNumber_Date"), "+AutoNumber +Date -UserPrefix -Prefix");
}

TEST(GroupParameters, EachKindBeginsWithItsOwn) {
  constexpr const char* kAccount = "O00005003";
  const struct {
    const char *name, *kind, *before;
    bool byAccount;
    const char* want;
  } kCases[] = {
      {"payment order", "O0201501", "", false, "O00005003####y#0"},
      {"receipt, by account", "O0201502", "", true, "O00005003####y#1"},
      {"another account stays", "O0201501", "O00005009###1#m#0", false, "O00005009###1#m#0"},
      {"the flag alone changes", "O0201501", "O00005009###1#m#0", true, "O00005009###1#m#1"},
      {"a print variant is a set flag", "O0201501", "O00005009####y#2", true, "O00005009####y#2"},
      {"a short text grows", "O0201502", "O00005009", true, "O00005009#####1"},
      {"a short text that need not grow", "O0201502", "O00005009", false, "O00005009"},
      {"expense order", "O0201503", "", true, "####4###"},
      {"income order", "O0201504", "", false, "####4###"},
      {"income order with a signer", "O0201504", "Ona#####35#17#1", false, "Ona#####35#17#1"},
      {"advance report", "O0201505", "", false, "255#255#453#450"},
      {"advance report with accounts", "O0201505", "450#453#", false, "450#453#"},
      {"trade", "O1000100", "1", true, "1"},
      {"trade, none", "O1000100", "", true, ""},
      {"operation with a tool", "O0201500", "Skolų dengimas", false, "Skolų dengimas"},
      {"operation", "O0201500", "", true, ""},
      {"closing", "O0201506", "", false, ""},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(groupParameters(c.kind, c.before, kAccount, c.byAccount), c.want);
  }
  EXPECT_TRUE(numbersByAccount("O0201502", "a####y#2"));
  EXPECT_FALSE(numbersByAccount("O0201502", "a####y"));
  EXPECT_FALSE(numbersByAccount("O0201504", "#####35#17#1")) << "a margin is no flag";
}

TEST(ParameterTexts, KeepWhatTheirReaderDoesNotKnow) {
  ParameterText text("a##c#7,5#12# 3 ");
  EXPECT_EQ(text[0], "a");
  EXPECT_EQ(text[1], "");
  EXPECT_EQ(text[9], "");
  EXPECT_EQ(text.number(0), 0);
  EXPECT_EQ(text.number(3), 0) << "not a whole number";
  EXPECT_EQ(text.number(4), 12);
  EXPECT_EQ(text.number(5), 3);
  text.set(1, "b");
  EXPECT_EQ(text.str(), "a#b#c#7,5#12# 3 ");
  text.set(7, "h");
  EXPECT_EQ(text.str(), "a#b#c#7,5#12# 3 ##h");
  EXPECT_EQ(ParameterText("").str(), "");
  EXPECT_EQ(ParameterText("x;y", ';')[1], "y");
}

}  // namespace
}  // namespace tolvex::test
