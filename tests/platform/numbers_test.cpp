#include "platform/numbers.h"

#include <gtest/gtest.h>

#include <limits>

#include "framework/date_time.h"
#include "platform/input.h"

namespace tolvex {
namespace {

struct ShownCase {
  const char* name;
  double value;
  int decimals;
  const char* grouped;
  const char* plain;
};

const ShownCase kShown[] = {
    {"half goes away from zero though the double lies below", 2.675, 2, "2,68", "2,68"},
    {"half goes away from zero on an even digit", 0.125, 2, "0,13", "0,13"},
    {"negative half mirrors", -1234.565, 2, "-1_234,57", "-1234,57"},
    {"just below the half stays down", 2.6749, 2, "2,67", "2,67"},
    {"rate with four decimals", 3.45285, 4, "3,4529", "3,4529"},
    {"nines carry into a new digit", 999999.995, 2, "1_000_000,00", "1000000,00"},
    {"nines below one carry", 0.995, 2, "1,00", "1,00"},
    {"small half", 0.005, 2, "0,01", "0,01"},
    {"less than a half is zero without a sign", -0.004, 2, "0,00", "0,00"},
    {"negative zero", -0.0, 2, "0,00", "0,00"},
    {"far below the last decimal", 1e-30, 2, "0,00", "0,00"},
    {"no decimals, no mark", 1234.5, 0, "1_235", "1235"},
    {"sum of tenths shows no dust", 0.1 + 0.2, 2, "0,30", "0,30"},
    {"dust below a cent", 0.1 + 0.2 - 0.3, 2, "0,00", "0,00"},
    {"fifteen digits and no more", 1234567890123.456, 2, "1_234_567_890_123,46",
     "1234567890123,46"},
    {"more digits than a double holds", 1e18, 2, "1_000_000_000_000_000_000,00",
     "1000000000000000000,00"},
    {"three digits are not parted", 999, 2, "999,00", "999,00"},
};

TEST(Numbers, ShownWithDecimals) {
  NumberFormat format;
  format.group = "_";
  for (const auto& c : kShown) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(formatNumber(c.value, c.decimals, format), c.grouped);
    EXPECT_EQ(formatNumber(c.value, c.decimals, format, false), c.plain);
  }
}

TEST(Numbers, ShownWithoutFormat) {
  const std::pair<double, const char*> cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {3.4528, "3,4528"},
      {1e-9, "0,000000001"},
      {-12.5, "-12,5"},
      {0.1 + 0.2, "0,3"},
      {1e14, "100000000000000"},
      {1.5e15, "1,5E+15"},
      {123456789.125, "123456789,125"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(shortNumber(value), text);
}

struct ReadCase {
  const char* text;
  bool numeric;
  double value;
};

const ReadCase kRead[] = {
    {"1500,5", true, 1500.5},
    {"1500.5", true, 1500.5},
    {"1\xC2\xA0"
     "234 567,89",
     true, 1234567.89},
    {" 12 ", true, 12},
    {"-3", true, -3},
    {"+3", true, 3},
    {",5", true, 0.5},
    {"5,", true, 5},
    {"1E+15", true, 1e15},
    {"", false, 0},
    {" ", false, 0},
    {"1,2,3", false, 0},
    {"12a", false, 0},
    {"-", false, 0},
    {"inf", false, 0},
    {"nan", false, 0},
    {"--1", false, 0},
    {"1e999", false, 0},
};

TEST(Numbers, ReadAsTyped) {
  for (const auto& c : kRead) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(isNumeric(c.text), c.numeric);
    EXPECT_EQ(TextToDouble(c.text), c.value);
  }
}

TEST(Numbers, WhatIsShownReadsBack) {
  for (const double value : {0.01, -0.01, 1234.56, -9876543.21, 123456789012.34}) {
    EXPECT_EQ(TextToDouble(formatNumber(value, 2)), value);
    EXPECT_EQ(TextToDouble(shortNumber(value)), value);
  }
}

TEST(Numbers, SumBoxCounts) {
  const std::pair<const char*, double> good[] = {
      {"100*1,21", 121}, {"(50+25)/3", 25},   {"2+3*4", 14}, {"10-2-3", 5}, {"-(2+3)", -5},
      {"8/4/2", 1},      {"1 000 + 1", 1001}, {"2*-3", -6},  {"0*-1", 0},   {"1500,5", 1500.5},
  };
  for (const auto& [text, value] : good) {
    SCOPED_TRACE(text);
    double result = -77;
    EXPECT_TRUE(evaluateSum(text, result));
    EXPECT_DOUBLE_EQ(result, value);
  }
  const std::string deep(1000, '(');
  for (const std::string& text : {std::string("1/0"), std::string("(1+2"), std::string("1+"),
                                  std::string("2x3"), std::string(""), std::string("1 2)"), deep}) {
    SCOPED_TRACE(text);
    double result = -77;
    EXPECT_FALSE(evaluateSum(text, result));
    EXPECT_EQ(result, -77) << "a refused text leaves the value";
  }
}

struct TypedCase {
  const char* text;
  const char* want;
};

const TypedCase kTyped[] = {
    {"2004.02.10", "2004.02.10"},
    {"20040210", "2004.02.10"},
    {"2004-02-10", "2004.02.10"},
    {"5", "2008.02.05"},
    {"05", "2008.02.05"},
    {"29", "2008.02.29"},
    {"30", ""},
    {"5.3", "2008.03.05"},
    {"5 3", "2008.03.05"},
    {"31.4", ""},
    {"5.13", ""},
    {"0", ""},
    {"t", "2009.07.01"},
    {"T", "2009.07.01"},
    {"20040230", ""},
    {"2004.13.01", ""},
    {"", ""},
    {"labas", ""},
    {"5.3.7", ""},
    {" 5 ", "2008.02.05"},
    {"99999999", ""},
};

TEST(TypedDates, AsAccountantsTypeThem) {
  const DateTime base = DateTime::Of(2008, 2, 14);
  const DateTime today = DateTime::Of(2009, 7, 1, 15, 30);
  for (const auto& c : kTyped) {
    SCOPED_TRACE(c.text);
    const auto date = ui::readTypedDate(c.text, base, today);
    EXPECT_EQ(date ? date->Text() : "", c.want);
    if (date) {
      EXPECT_EQ(*date, date->Date());
    }
  }
}

}  // namespace
}  // namespace tolvex
