#include "host/report/parts.h"

#include <gtest/gtest.h>

namespace tolvex::test {
namespace {

TEST(Parts, NumbersAreReadAsListsShowThem) {
  struct Case {
    const char* text;
    std::optional<double> want;
  };
  const Case cases[] = {
      {"1 234,50", 1234.5},
      {"1\u00A0234\u00A0567,89", 1234567.89},
      {"1\u202F234", 1234},
      {"-0,01", -0.01},
      {"\u22125", -5},
      {"3.4528", 3.4528},
      {"0", 0},
      {"999 999 999 999,99", 999999999999.99},
      {"123456789012345", 123456789012345},
      {"1234567890123456", std::nullopt},  // a double would change its last digit
      {"", std::nullopt},
      {"-", std::nullopt},
      {",5", std::nullopt},
      {"5,", std::nullopt},
      {"1,2,3", std::nullopt},
      {"5-", std::nullopt},
      {"1e5", std::nullopt},
      {"12 Lt", std::nullopt},
      {"KPO 1", std::nullopt},
      {"007", std::nullopt},
      {"0,07", 0.07},
  };
  for (const Case& one : cases) EXPECT_EQ(report::numberIn(one.text), one.want) << one.text;
}

TEST(Parts, DaysAreWholeDaysOnly) {
  EXPECT_EQ(report::dayIn("2004.03.31"), DateTime::Of(2004, 3, 31));
  for (const char* text : {"2004.02.30", "2004-03-31", "2004.03", "2004.03.31 10:00", "", "kovas"})
    EXPECT_EQ(report::dayIn(text), std::nullopt) << text;
}

TEST(Parts, FootersFallIntoPieces) {
  std::string got;
  for (const report::FooterPiece& piece : report::footerPieces("{page} psl. iš {pages} {pag}"))
    got += piece.kind == report::FooterPiece::Words  ? "[" + piece.words + "]"
           : piece.kind == report::FooterPiece::Page ? "<page>"
                                                     : "<pages>";
  EXPECT_EQ(got, "<page>[ psl. iš ]<pages>[ {pag}]");
}

}  // namespace
}  // namespace tolvex::test
