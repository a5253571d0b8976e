#include "host/cards/sum_words.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <sstream>

#include "framework/text.h"

namespace tolvex {
namespace {

const MoneyNames kLitas = {{"litas", "litai", "litų"}, {"centas", "centai", "centų"}};
const MoneyNames kKrona = {{"Čekijos krona", "Čekijos kronos", "Čekijos kronų"},
                           {"haleris", "haleriai", "halerių"}};
const MoneyNames kPound = {{"svaras sterlingų", "svarai sterlingų", "svarų sterlingų"},
                           {"pensas", "pensai", "pensų"}};
const MoneyNames kRouble = {{"rublis", "rubliai", "rublių"}, {"kapeika", "kapeikos", "kapeikų"}};
const MoneyNames kYen = {{"jena", "jenos", "jenų"}, {}};

struct Case {
  double sum;
  const char* words;
};

TEST(SumByWords, UnitsFollowTheLastFigures) {
  const Case cases[] = {
      {0, "Nulis litų 00 centų"},
      {0.01, "Nulis litų 01 centas"},
      {1, "Vienas litas 00 centų"},
      {2.02, "Du litai 02 centai"},
      {9.09, "Devyni litai 09 centai"},
      {10.10, "Dešimt litų 10 centų"},
      {11.11, "Vienuolika litų 11 centų"},
      {12.12, "Dvylika litų 12 centų"},
      {19.19, "Devyniolika litų 19 centų"},
      {20.20, "Dvidešimt litų 20 centų"},
      {21.21, "Dvidešimt vienas litas 21 centas"},
      {34.35, "Trisdešimt keturi litai 35 centai"},
      {90.99, "Devyniasdešimt litų 99 centai"},
      {100, "Vienas šimtas litų 00 centų"},
      {101, "Vienas šimtas vienas litas 00 centų"},
      {111, "Vienas šimtas vienuolika litų 00 centų"},
      {122, "Vienas šimtas dvidešimt du litai 00 centų"},
      {516.50, "Penki šimtai šešiolika litų 50 centų"},
      {1000, "Vienas tūkstantis litų 00 centų"},
      {1200.05, "Vienas tūkstantis du šimtai litų 05 centai"},
      {2001, "Du tūkstančiai vienas litas 00 centų"},
      {10000, "Dešimt tūkstančių litų 00 centų"},
      {11011, "Vienuolika tūkstančių vienuolika litų 00 centų"},
      {21000, "Dvidešimt vienas tūkstantis litų 00 centų"},
      {101001, "Vienas šimtas vienas tūkstantis vienas litas 00 centų"},
      {718718.18,
       "Septyni šimtai aštuoniolika tūkstančių septyni šimtai aštuoniolika litų 18 centų"},
      {1e6, "Vienas milijonas litų 00 centų"},
      {2e6 + 1, "Du milijonai vienas litas 00 centų"},
      {15e6, "Penkiolika milijonų litų 00 centų"},
      {1e9, "Vienas milijardas litų 00 centų"},
      {3e9 + 4e3, "Trys milijardai keturi tūkstančiai litų 00 centų"},
      {30e9, "Trisdešimt milijardų litų 00 centų"},
      {999999999999.99,
       "Devyni šimtai devyniasdešimt devyni milijardai devyni šimtai devyniasdešimt devyni "
       "milijonai devyni šimtai devyniasdešimt devyni tūkstančiai devyni šimtai devyniasdešimt "
       "devyni litai 99 centai"},
  };
  for (const Case& c : cases) EXPECT_EQ(sumByWords(c.sum, kLitas), c.words) << c.sum;
}

TEST(SumByWords, WhatIsCountedGivesTheGender) {
  const struct {
    const MoneyNames& names;
    double sum;
    SmallUnits small;
    const char* words;
  } cases[] = {
      {kKrona, 1.01, SmallUnits::InWords, "Viena Čekijos krona vienas haleris"},
      {kKrona, 22.22, SmallUnits::InWords, "Dvidešimt dvi Čekijos kronos dvidešimt du haleriai"},
      {kKrona, 2002, SmallUnits::InFigures, "Du tūkstančiai dvi Čekijos kronos 00 halerių"},
      {kPound, 1, SmallUnits::InFigures, "Vienas svaras sterlingų 00 pensų"},
      {kRouble, 31.31, SmallUnits::InWords, "Trisdešimt vienas rublis trisdešimt viena kapeika"},
      {kRouble, 4.09, SmallUnits::InWords, "Keturi rubliai devynios kapeikos"},
      {kYen, 8, SmallUnits::InFigures, "Aštuonios jenos"},
      {kYen, 6.5, SmallUnits::InWords, "Šešios jenos 50/100"},
      {kLitas, 0.3, SmallUnits::InWords, "Nulis litų trisdešimt centų"},
      {kLitas, 5, SmallUnits::InWords, "Penki litai nulis centų"},
  };
  for (const auto& c : cases) EXPECT_EQ(sumByWords(c.sum, c.names, c.small), c.words) << c.sum;
}

TEST(SumByWords, RoundsAndKnowsItsBounds) {
  EXPECT_EQ(sumByWords(-5.5, kLitas), "Minus penki litai 50 centų");
  EXPECT_EQ(sumByWords(-0.004, kLitas), "Nulis litų 00 centų");
  EXPECT_EQ(sumByWords(1.999, kLitas), "Du litai 00 centų");
  EXPECT_EQ(sumByWords(0.1 + 0.2, kLitas), "Nulis litų 30 centų");
  EXPECT_FALSE(sumByWords(1e12, kLitas));
  EXPECT_FALSE(sumByWords(-1e12, kLitas));
  EXPECT_FALSE(sumByWords(999999999999.996, kLitas));
  EXPECT_FALSE(sumByWords(std::numeric_limits<double>::infinity(), kLitas));
  EXPECT_FALSE(sumByWords(std::numeric_limits<double>::quiet_NaN(), kLitas));
}

// Reads the words back, knowing only the dictionary: a value for each word, groups that multiply.
std::optional<std::int64_t> readBack(const std::string& text) {
  static const std::map<std::string, std::int64_t> values = {
      {"nulis", 0},          {"vienas", 1},           {"du", 2},
      {"trys", 3},           {"keturi", 4},           {"penki", 5},
      {"šeši", 6},           {"septyni", 7},          {"aštuoni", 8},
      {"devyni", 9},         {"dešimt", 10},          {"vienuolika", 11},
      {"dvylika", 12},       {"trylika", 13},         {"keturiolika", 14},
      {"penkiolika", 15},    {"šešiolika", 16},       {"septyniolika", 17},
      {"aštuoniolika", 18},  {"devyniolika", 19},     {"dvidešimt", 20},
      {"trisdešimt", 30},    {"keturiasdešimt", 40},  {"penkiasdešimt", 50},
      {"šešiasdešimt", 60},  {"septyniasdešimt", 70}, {"aštuoniasdešimt", 80},
      {"devyniasdešimt", 90}};
  std::int64_t whole = 0, group = 0, last = 0;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (word.starts_with("lit")) break;
    if (const auto found = values.find(word); found != values.end()) {
      last = found->second;
      group += last;
    } else if (word.starts_with("šimt")) {
      group += last * 99;
    } else {
      const std::int64_t size = word.starts_with("tūkst")      ? 1000
                                : word.starts_with("milijon")  ? 1000000
                                : word.starts_with("milijard") ? 1000000000
                                                               : 0;
      if (size == 0) return std::nullopt;
      whole += group * size;
      group = 0;
    }
  }
  return whole + group;
}

RC_GTEST_PROP(SumByWords, ReadsBackAsTheSameSum, ()) {
  // As many small numbers as large ones.
  const auto digits = *rc::gen::inRange(1, 15);
  std::int64_t bound = 1;
  for (int i = 0; i < digits; ++i) bound *= 10;
  const auto hundredths = *rc::gen::inRange<std::int64_t>(0, bound);
  const auto text = sumByWords(static_cast<double>(hundredths) / 100, kLitas);
  RC_ASSERT(text.has_value());
  // The first letter is a capital; which one does not matter to the reader.
  static const std::map<std::string, std::string> small = {{"V", "v"}, {"D", "d"}, {"T", "t"},
                                                           {"K", "k"}, {"P", "p"}, {"Š", "š"},
                                                           {"S", "s"}, {"A", "a"}, {"N", "n"}};
  const auto first = small.find(left(*text, 1));
  RC_ASSERT(first != small.end());
  RC_ASSERT(readBack(first->second + mid(*text, 2)) == hundredths / 100);
  const auto figures = text->find_last_of(' ') - 2;
  RC_ASSERT(text->substr(figures, 2) == std::to_string(100 + hundredths % 100).substr(1));
}

}  // namespace
}  // namespace tolvex
