#include "host/cards/rate_text.h"

#include <gtest/gtest.h>

#include "framework/text.h"
#include "host/cards/missing_rates.h"
#include "host/cards/working_days.h"

namespace tolvex {
namespace {

const RateTextRules kRules = {{"USD", "EUR", "JPY"}, "", std::nullopt};

// "2004.03.31 USD 2.7654", or the number of a bad line and its fault.
std::string shown(const RateLine& line) {
  if (!line.fault.empty()) return std::to_string(line.number) + ": " + line.fault;
  return line.day.Text() + " " + line.code + " " + plainNumber(line.rate);
}
std::string read(std::string_view text, const RateTextRules& rules = kRules) {
  std::vector<std::string> lines;
  for (const RateLine& line : readRateText(text, rules)) lines.push_back(shown(line));
  return join(lines, "\n");
}

TEST(RateText, TakesWhatOtherProgramsWrite) {
  const struct {
    const char *name, *text, *want;
  } cases[] = {
      {"semicolons and a comma", "2004.03.31;USD;2,7654", "2004.03.31 USD 2.7654"},
      {"tabulators and a point", "2004-03-31\tusd\t2.7654", "2004.03.31 USD 2.7654"},
      {"blanks", "20040331  USD   2,7654  ", "2004.03.31 USD 2.7654"},
      {"commas alone", "2004.03.31,USD,2.7654", "2004.03.31 USD 2.7654"},
      {"a decimal comma among commas", "2004.03.31,USD,2,7654", "2004.03.31 USD 2.7654"},
      {"another order", "USD;2,7654;2004.03.31", "2004.03.31 USD 2.7654"},
      {"for a hundred units", "2004.03.31;JPY;100;2,621", "2004.03.31 JPY 0.02621"},
      {"a heading, blank lines, line ends",
       "\xEF\xBB\xBF"
       "Data;Valiuta;Kursas\r\n\r\n"
       "2004.03.31;USD;2,7\r\n;;\r\n2004.03.31;EUR;3,4528\r\n",
       "2004.03.31 USD 2.7\n2004.03.31 EUR 3.4528"},
      {"nothing", "\n  \n", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(read(c.text), c.want);
  }
}

TEST(RateText, TellsEveryBadLineByItsNumber) {
  EXPECT_EQ(read("2004.03.31;USD;2,7\n"
                 "2004.02.30;USD;2,7\n"
                 "USD;2,7\n"
                 "2004.03.31;2,7\n"
                 "2004.03.31;GBP;4,9\n"
                 "2004.03.31;EUR\n"
                 "2004.03.31;EUR;1;2;3\n"
                 "2004.03.31;EUR;0\n"
                 "2004.03.31;EUR;-3,4\n"
                 "\n"
                 "2004.03.31;EUR;trys\n"
                 "2004.03.31;USD;2,8"),
            "2004.03.31 USD 2.7\n"
            "2: Klaidinga data: 2004.02.30\n"
            "3: Nenurodyta data\n"
            "4: Nenurodyta valiuta\n"
            "5: Nežinoma valiuta: GBP\n"
            "6: Nenurodytas kursas\n"
            "7: Per daug skaičių\n"
            "8: Kursas turi būti didesnis už nulį\n"
            "9: Kursas turi būti didesnis už nulį\n"
            "11: Nesuprantama: trys\n"
            "12: Jau yra 1 eilutėje");
}

TEST(RateText, FillsInTheDayAndTheCurrencyOfTheScreen) {
  EXPECT_EQ(read("2004.03.31 2,7", {{"USD"}, "USD", std::nullopt}), "2004.03.31 USD 2.7");
  EXPECT_EQ(read("usd 2,7", {{"USD"}, "", DateTime::Of(2004, 4, 1)}), "2004.04.01 USD 2.7");
  EXPECT_EQ(read("2004.03.31 EUR 3,4", {{"EUR", "USD"}, "USD", DateTime::Of(2004, 4, 1)}),
            "2004.03.31 EUR 3.4");
}

TEST(WorkingDays, LeaveOutWeekendsAndTheHolidaysOfTheYear) {
  const struct {
    int year;
    unsigned month, day;
    bool works;
  } cases[] = {
      {2004, 3, 31, true},   {2004, 4, 3, false},  {2004, 4, 4, false},  {2004, 2, 16, false},
      {2004, 3, 11, false},  {2004, 4, 12, false}, {2004, 4, 9, true},   {2008, 3, 24, false},
      {2019, 4, 22, false},  {2004, 6, 24, false}, {2002, 6, 24, true},  {2008, 12, 24, true},
      {2009, 12, 24, false}, {2018, 11, 2, true},  {2020, 11, 2, false}, {1969, 12, 31, true},
  };
  for (const auto& c : cases) {
    const DateTime day = DateTime::Of(c.year, c.month, c.day);
    EXPECT_EQ(isWorkingDay(day), c.works) << day.Text();
  }
  std::vector<std::string> days;
  for (const DateTime day : workingDays(DateTime::Of(2004, 4, 8), DateTime::Of(2004, 4, 13)))
    days.push_back(day.Text());
  EXPECT_EQ(join(days, " "), "2004.04.08 2004.04.09 2004.04.13");
}

TEST(MissingRates, AreToldInOneLine) {
  const auto day = [](unsigned number) { return DateTime::Of(2004, 3, number); };
  const std::vector<DayRate> known = {{day(1), "USD", 2.7}, {day(2), "USD", 2.7}};
  const auto told = [&](std::vector<RatedCurrency> currencies, unsigned to) {
    return missingRatesText(known, currencies, day(1), day(to));
  };
  EXPECT_EQ(told({{"USD", "", 0}}, 2), "");
  EXPECT_EQ(told({{"USD", "", 0}, {"EUR", "", 3.4528}}, 4),
            "Trūksta kursų: USD 2004.03.03, 2004.03.04");
  EXPECT_EQ(told({{"USD", "", 0}, {"GBP", "", 0}}, 9),
            "Trūksta kursų: USD 2004.03.03, 2004.03.04, 2004.03.05, 2004.03.08, 2004.03.09; GBP "
            "2004.03.01, 2004.03.02, 2004.03.03, 2004.03.04, 2004.03.05 ir dar 2");
  std::vector<RatedCurrency> many;
  for (const char* code : {"USD", "GBP", "CZK", "DKK", "NOK", "SEK", "PLN", "CHF", "JPY", "CAD"})
    many.push_back({code, "", 0});
  EXPECT_EQ(told(many, 4),
            "Trūksta kursų: USD 2 d., GBP 4 d., CZK 4 d., DKK 4 d., NOK 4 d., SEK 4 d., PLN 4 d., "
            "CHF 4 d. ir dar 2 val.");
}

}  // namespace
}  // namespace tolvex
