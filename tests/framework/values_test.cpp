// Numbers, texts, dates, parameters and dictionaries: the small values under every record.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>

#include "framework/case_fold.h"
#include "framework/param_dictionary.h"
#include "framework/parameters.h"
#include "framework/results.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "framework/text_pool.h"

namespace tolvex {
namespace {

TEST(Rounding, HalfToEvenOnTheScaledDouble) {
  const struct {
    const char* what;
    double x;
    int n;
    double want;
  } cases[] = {
      {"0.125", 0.125, 2, 0.12},
      {"0.375", 0.375, 2, 0.38},
      {"held below the half, scaled exactly on it", 2.675, 2, 2.68},
      {"to even", 2.665, 2, 2.66},
      {"1.005", 1.005, 2, 1.00},
      {"1.005 lifted", 1.005 + 0.00001, 2, 1.01},
      {"50.005", 50.005, 2, 50.00},
      {"50.005 lifted", 50.005 + 0.00001, 2, 50.01},
      {"the lift is not mirrored", -50.005 + 0.00001, 2, -50.00},
      {"0.1 x 3.4499", 0.1 * 3.4499 + 0.00001, 2, 0.34},
      {"0.3 x 0.0833", 0.3 * 0.0833 + 0.00001, 2, 0.02},
      {"rate of a cross sum", 345.29 / 100, 9, 3.4529},
      {"inverse rate", 100 / 3.4528, 9, 28.962001854},
      {"nine decimals", 0.0000000015, 9, 2e-09},
      {"10.5 lifted", 10.5 + 0.00001, 0, 11},
      {"1234.5", 1234.5, 0, 1234},
      {"1235.5", 1235.5, 0, 1236},
      {"2.5 x 567", 2.5 * 567, 0, 1418},
      {"small lift stays", 345.28495 + 0.00001, 2, 345.28},
      {"greater lift goes over", 345.28495 + 0.0001, 2, 345.29},
      {"8.345", 8.345, 2, 8.35},
      {"hundredths of a fraction", (2.29 - 2) * 100, 0, 29},
      {"held just below", (1.15 - 1) * 100, 0, 15},
      {"no contraction of product and sum", 302.55 * 0.0098 + 0.00001, 2, 2.97},
      {"787.13 x 0.7230", 787.13 * 0.7230 + 0.00001, 2, 569.09},
      {"even rule seen in a product", 687.09 * 2.3110 + 0.00001, 2, 1587.86},
      {"249.88 x 3.6671", 249.88 * 3.6671 + 0.00001, 2, 916.33},
      {"550 x 2.9187", 550.00 * 2.9187 + 0.00001, 2, 1605.29},
      {"too large for cents", 1e17, 2, 1e17},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    volatile double x = c.x;
    EXPECT_EQ(roundHalfEven(x, c.n), c.want);
  }
  EXPECT_FALSE(std::signbit(roundHalfEven(-0.001, 2)));
  EXPECT_TRUE(std::isnan(roundHalfEven(std::nan(""), 2)));
  EXPECT_EQ(roundLt(50.005), 50.01);
  EXPECT_EQ(roundLt(-50.005), -50.00);
}

RC_GTEST_PROP(Rounding, CentsAreTheDoublesThatTheirTextGives, ()) {
  const auto cents = *rc::gen::inRange<std::int64_t>(-100'000'000'000, 100'000'000'000);
  double parsed = 0;
  const double value = static_cast<double>(cents) / 100;
  RC_ASSERT(parsePlainNumber(plainNumber(value), parsed));
  RC_ASSERT(parsed == value);
  RC_ASSERT(roundHalfEven(value, 2) == value);
}

TEST(Text, CountsCharactersNotBytes) {
  EXPECT_EQ(length("šąžė €"), 6u);
  EXPECT_EQ(left("šąžė", 2), "šą");
  EXPECT_EQ(left("ab", 9), "ab");
  EXPECT_EQ(mid("šąžė", 2, 2), "ąž");
  EXPECT_EQ(mid("šąžė", 4), "ė");
  EXPECT_EQ(mid("šą", 5), "");
  EXPECT_EQ(trim("  a\t "), "a\t");
  EXPECT_EQ(trim("   "), "");
  EXPECT_EQ(split(";a;", ';'), (std::vector<std::string>{"", "a", ""}));
  EXPECT_EQ(replaceAll("a;b;;", ";", "@|@"), "a@|@b@|@@|@");
}

TEST(Text, FoldsCaseByLetters) {
  EXPECT_EQ(upper("ąčęėįšųūž-ĄČĘĖĮŠŲŪŽ"), "ĄČĘĖĮŠŲŪŽ-ĄČĘĖĮŠŲŪŽ");
  EXPECT_EQ(upper("[abcxyz]{@`} 0123456789 straße ÷ àþÿ ŉ ı ĸ ſ ńź жёџя €"),
            "[ABCXYZ]{@`} 0123456789 STRAßE ÷ ÀÞŸ ŉ ı ĸ ſ ŃŹ ЖЁЏЯ €");
  EXPECT_TRUE(equalNoCase("uab „Šilas“", "UAB „ŠILAS“"));
  EXPECT_FALSE(equalNoCase("Čia", "cia"));
  EXPECT_TRUE(startsWithNoCase("Žemė", "žE"));
  EXPECT_FALSE(startsWithNoCase("Ž", "žemė"));
  EXPECT_TRUE(containsNoCase("Gauta iš Žemės", "IŠ ž"));
}

TEST(Text, OrdersAsTheLithuanianAlphabet) {
  const char* ordered[] = {"",  " x", "1", "10", "2",    "A",  "ab",  "Ąb", "ac", "b",
                           "c", "cz", "č", "d",  "e",    "ę",  "ė",   "es", "ės", "f",
                           "g", "h",  "i", "Į",  "y",    "ik", "yk",  "il", "j",  "k",
                           "q", "r",  "s", "sz", "Šaka", "t",  "u",   "Ų",  "ū",  "usnis",
                           "v", "w",  "x", "z",  "zz",   "ž",  "ŽŽŽ", "äb", "жук"};
  for (std::size_t i = 0; i < std::size(ordered); ++i) {
    for (std::size_t j = 0; j < std::size(ordered); ++j) {
      const int order = compareLithuanian(ordered[i], ordered[j]);
      EXPECT_EQ(order < 0, i < j) << ordered[i] << " / " << ordered[j];
      EXPECT_EQ(order > 0, i > j) << ordered[i] << " / " << ordered[j];
    }
  }
  EXPECT_EQ(compareLithuanian("šilas", "ŠILAS"), 0);
}

TEST(Text, PlainNumbers) {
  const struct {
    double value;
    const char* text;
  } cases[] = {{0, "0"},           {-0.0, "0"},          {100.5, "100.5"},
               {-3, "-3"},         {0.1, "0.1"},         {1e14, "100000000000000"},
               {3.4528, "3.4528"}, {0.00001, "0.00001"}, {1e15, "1e+15"}};
  for (const auto& c : cases) {
    EXPECT_EQ(plainNumber(c.value), c.text);
    double back = -1;
    EXPECT_TRUE(parsePlainNumber(c.text, back));
    EXPECT_EQ(back, c.value);
  }
  double none;
  for (const char* bad :
       {"", "-", "1,5", " 1", "1 ", "0x1p3", "nan", "inf", "-inf", "+1", "1e", "1.2.3"}) {
    EXPECT_FALSE(parsePlainNumber(bad, none)) << bad;
  }
}

TEST(TextPool, KeepsSpellingsApartAndTogether) {
  TextPool pool;
  const Symbol lower = pool.intern("šilas ir kiti žodžiai");
  const Symbol capital = pool.intern("Šilas ir kiti žodžiai");
  const Symbol upperCase = pool.intern("ŠILAS IR KITI ŽODŽIAI");
  EXPECT_NE(lower, capital);
  EXPECT_EQ(pool.intern("Šilas ir kiti žodžiai"), capital);
  EXPECT_EQ(pool.findNoCase("šilas IR kiti ŽODŽIAI"), lower);
  std::vector<Symbol> ring{lower};
  for (Symbol s = pool.nextSpelling(lower); s != lower; s = pool.nextSpelling(s)) ring.push_back(s);
  std::sort(ring.begin(), ring.end());
  EXPECT_EQ(ring, (std::vector<Symbol>{lower, capital, upperCase}));
  EXPECT_EQ(pool.findNoCase("silas ir kiti žodžiai"), kEmptyText);
  const std::string_view held = pool.text(pool.intern(""));
  const std::string_view first = pool.text(lower);
  for (int i = 0; i < 5000; ++i) pool.intern("text " + std::to_string(i));
  EXPECT_EQ(first, "šilas ir kiti žodžiai") << "texts never move";
  EXPECT_EQ(held, "");
  for (int i = 0; i < 5000; ++i) {
    ASSERT_EQ(pool.text(pool.findNoCase("TEXT " + std::to_string(i))), "text " + std::to_string(i));
  }
}

TEST(DateTime, ReadsAndWrites) {
  for (const char* text : {"1990.01.01", "2000.02.29", "1969.12.31", "2004.12.31"}) {
    EXPECT_EQ(DateTime::Parse(text)->Text(), text);
    EXPECT_EQ(DateTime::FromDayNumber(DateTime::Parse(text)->DayNumber()), *DateTime::Parse(text));
  }
  EXPECT_EQ(DateTime::Parse("2004-02-09 07:08")->LongText(), "2004.02.09 07:08:00");
  EXPECT_EQ(DateTime::Parse("1969.12.31 23:59:59")->Date().Text(), "1969.12.31");
  EXPECT_EQ(DateTime::Of(2004, 2, 28).AddDays(2).Text(), "2004.03.01");
  EXPECT_LT(DateTime::Of(2004, 2, 9), DateTime::Of(2004, 2, 9, 0, 0, 1));
  for (const char* bad : {"", "2004", "2004.2.9", "2003.02.29", "2004.13.01", "2004.00.01",
                          "2004.02-09", "2004.02.09 ", "2004.02.09 24:00", "2004.02.09 10",
                          "2004.02.09 10:00:61", "2004.02.09 10:00x", "04.02.09"}) {
    EXPECT_FALSE(DateTime::Parse(bad)) << bad;
  }
  EXPECT_THROW(DateTime::Of(2003, 2, 29), RowSetError);
}

TEST(Parameters, BuildTheArgumentList) {
  EXPECT_EQ(Parameters().str(), "None");
  EXPECT_EQ(Parameters()
                .date(DateTime::Of(2003, 1, 1))
                .text("")
                .number(-1)
                .number(100.5)
                .text("O'Neil")
                .bare("x")
                .str(),
            "'2003.01.01','',-1,100.5,'O'Neil',x");
}

TEST(Variant, ComparesAndConverts) {
  EXPECT_EQ(Variant(1), Variant(1.0));
  EXPECT_FALSE(Variant(true) == Variant(1));
  EXPECT_FALSE(Variant() == Variant(Null{}));
  EXPECT_EQ(Variant(Variant::Array{1, "a"}), Variant(Variant::Array{1.0, "a"}));
  EXPECT_EQ(Variant(2.5).AsInt(), 2);
  EXPECT_THROW(Variant(3e9).AsInt(), RowSetError);
  EXPECT_THROW(Variant("1").AsInt(), RowSetError);
  EXPECT_THROW(Variant().AsText(), RowSetError);
  EXPECT_EQ(Variant(DateTime::Of(2004, 2, 9, 1)).Show(), "2004.02.09 01:00:00");
}

RC_GTEST_PROP(ParamDictionary, EqualsAList, ()) {
  ParamDictionary dictionary;
  std::vector<std::pair<std::string, int>> model;
  const auto find = [&](const std::string& key) {
    return std::find_if(model.begin(), model.end(), [&](auto& e) { return e.first == key; });
  };
  const int steps = *rc::gen::inRange(0, 300);
  for (int i = 0; i < steps; ++i) {
    const std::string key = std::to_string(*rc::gen::inRange(0, 40));
    const auto known = find(key);
    switch (*rc::gen::inRange(0, 4)) {
      case 0:
        if (known != model.end()) {
          RC_ASSERT_THROWS_AS(dictionary.Add(key, i), RowSetError);
        } else {
          dictionary.Add(key, i);
          model.emplace_back(key, i);
        }
        break;
      case 1:
        dictionary.SetItem(key, i);
        if (known != model.end()) {
          known->second = i;
        } else {
          model.emplace_back(key, i);
        }
        break;
      case 2:
        if (known == model.end()) {
          RC_ASSERT_THROWS_AS(dictionary.Remove(key), RowSetError);
        } else {
          dictionary.Remove(key);
          model.erase(known);
        }
        break;
      default:
        RC_ASSERT(dictionary.Exists(key) == (known != model.end()));
        if (known != model.end()) RC_ASSERT(dictionary.Item(key) == Variant(known->second));
    }
  }
  std::vector<std::string> keys;
  std::vector<Variant> items;
  for (const auto& [key, value] : model) {
    keys.push_back(key);
    items.push_back(value);
  }
  RC_ASSERT(dictionary.Count() == model.size());
  RC_ASSERT(dictionary.Keys() == keys);
  RC_ASSERT(dictionary.Items() == items);
}

}  // namespace
}  // namespace tolvex
