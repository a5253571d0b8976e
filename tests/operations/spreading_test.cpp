// Entries spread over months: dates and sums as a table, totals as a property, the record after it.
#include "operations/spreading.h"

#include <gtest/gtest.h>
// after the test framework that it reports to
#include <rapidcheck/gtest.h>

#include <cmath>
#include <sstream>

#include "framework/conversions.h"
#include "framework/rounding.h"
#include "operations/spread_entry.h"
#include "tests/operations/operation_world.h"

namespace tolvex::test {
namespace {

std::string number(double value) {
  std::ostringstream text;
  text.precision(12);
  text << value;
  return text.str();
}

std::string shown(const std::vector<SpreadPart>& parts) {
  std::string text;
  for (const SpreadPart& part : parts) {
    text += part.date.Text() + " " + number(part.sumLt);
    for (const SpreadSide* side : {&part.debit, &part.credit}) {
      if (side->counts()) text += " " + number(side->sumCurr) + "*" + number(side->rate);
    }
    text += "; ";
  }
  return text;
}

SpreadTerms period(double sum, int months, int day) { return {sum, true, months, day}; }
SpreadTerms monthly(double sum, int months, int day) { return {sum, false, months, day}; }
SpreadTerms lastDays(double sum, int months) { return {sum, true, months, 0, true}; }

struct Case {
  const char* what;
  DateTime date;
  SpreadTerms terms;
  const char* parts;
};
const Case kCases[] = {
    {"thirds end in the greater", DateTime::Of(2003, 2, 9), period(100, 3, 9),
     "2003.02.09 33.33; 2003.03.09 33.33; 2003.04.09 33.34; "},
    {"two thirds end in the smaller", DateTime::Of(2003, 2, 9), period(200, 3, 9),
     "2003.02.09 66.67; 2003.03.09 66.67; 2003.04.09 66.66; "},
    {"a half cent goes up", DateTime::Of(2003, 1, 1), period(0.25, 2, 1),
     "2003.01.01 0.13; 2003.02.01 0.12; "},
    {"day 31 in shorter months", DateTime::Of(2003, 3, 31), monthly(5, 3, 31),
     "2003.03.31 5; 2003.04.30 5; 2003.05.31 5; "},
    {"day 30 over a leap February and a new year", DateTime::Of(2003, 12, 5), monthly(1, 4, 30),
     "2003.12.30 1; 2004.01.30 1; 2004.02.29 1; 2004.03.30 1; "},
    {"the first date is clipped as well", DateTime::Of(2003, 2, 9), monthly(1, 2, 31),
     "2003.02.28 1; 2003.03.31 1; "},
    {"last days", DateTime::Of(2003, 1, 15), lastDays(30, 3),
     "2003.01.31 10; 2003.02.28 10; 2003.03.31 10; "},
    {"one month", DateTime::Of(2003, 1, 15), period(30, 1, 5), "2003.01.05 30; "},
    {"too little for so many", DateTime::Of(2003, 1, 1), period(0.05, 10, 1), ""},
    {"no months", DateTime::Of(2003, 1, 1), period(10, 0, 1), ""},
    {"too many months", DateTime::Of(2003, 1, 1), monthly(10, 601, 1), ""},
    {"no day", DateTime::Of(2003, 1, 1), period(10, 2, 0), ""},
    {"no such day", DateTime::Of(2003, 1, 1), period(10, 2, 32), ""},
    {"nothing to spread", DateTime::Of(2003, 1, 1), period(0, 2, 1), ""},
};

TEST(Spreading, DatesAndSums) {
  for (const Case& one : kCases) {
    EXPECT_EQ(shown(spread({one.date, one.terms.sum, {}, {}}, one.terms)), one.parts) << one.what;
  }
}

TEST(Spreading, CurrenciesFollow) {
  const DateTime date = DateTime::Of(2003, 1, 5);
  const SpreadSide euros{3.4528, 100}, dollars{2.7, 127.88};
  EXPECT_EQ(shown(spread({date, 345.28, euros, {}}, period(345.28, 3, 5))),
            "2003.01.05 115.08 33.33*3.4528; 2003.02.05 115.08 33.33*3.4528; "
            "2003.03.05 115.12 33.34*3.4528; ");
  EXPECT_EQ(shown(spread({date, 345.28, {}, dollars}, monthly(345.28, 2, 5))),
            "2003.01.05 345.28 127.88*2.7; 2003.02.05 345.28 127.88*2.7; ");
  EXPECT_EQ(shown(spread({date, 345.28, euros, euros}, period(345.28, 2, 5))),
            "2003.01.05 172.64 50*3.4528 50*3.4528; 2003.02.05 172.64 50*3.4528 50*3.4528; ");
}

// Whatever the sums, months and rates: nothing is lost or made, and every part passes the test of
// sums against rates.
RC_GTEST_PROP(Spreading, APeriodKeepsItsTotals, ()) {
  const auto whole = [](int most) { return 1 + *rc::gen::inRange(0, most); };
  const auto near = [](double a, double b) { return std::abs(a - b) < 0.00005; };
  SpreadEntry entry;
  entry.date = DateTime::Of(2003, 1, 31);
  entry.debit = {whole(100000) / 10000.0, whole(9000000) / 100.0};
  entry.sumLt = roundLt(entry.debit.rate * entry.debit.sumCurr);
  if (*rc::gen::inRange(0, 2) == 1) entry.credit = {entry.sumLt / 7, 7};
  const SpreadTerms terms = period(entry.sumLt, whole(36), 31);
  RC_PRE(entry.sumLt > 0);
  const std::vector<SpreadPart> parts = spread(entry, terms);
  RC_PRE(!parts.empty());
  double sumLt = 0, debit = 0, credit = 0;
  for (const SpreadPart& part : parts) {
    sumLt += part.sumLt;
    debit += part.debit.sumCurr;
    credit += part.credit.sumCurr;
    for (const SpreadSide* side : {&part.debit, &part.credit}) {
      if (side->counts()) RC_ASSERT(roundLt(side->sumCurr * side->rate) == part.sumLt);
    }
  }
  RC_ASSERT(near(sumLt, entry.sumLt));
  RC_ASSERT(near(debit, entry.debit.sumCurr));
  RC_ASSERT(near(credit, entry.credit.sumCurr));
}

class SpreadEntryTest : public OperationWorld {};

TEST_F(SpreadEntryTest, EveryPartHasAccountsAddresseesCurrenciesAndPassesItsTest) {
  NewEntry first;
  first.AccountD = "240";
  first.AccountC = "500";
  first.Info = "Nuoma";
  first.sums = {100, 1, "EUR", 3.4528, 0, "", 0};
  first.addressees = triple(1, "O00001001", "UAB Alfa");
  first.date = "2003.01.31";
  const std::string guid = AddBR(*operation, first).Value.AsText();
  SpreadTerms terms = period(345.28, 3, 31);
  EXPECT_EQ(SpreadOverMonths(*operation, "nėra", terms).Code, kRefused);
  terms.withComment = true;
  ASSERT_EQ(SpreadOverMonths(*operation, guid, terms).Value.AsInt(), 3);

  std::string text;
  ForEachRow(BR(), [&](RowSet& entry) {
    RowSet& currency = *entry["BRCurrency"].Rows();
    RowSet& addressee = *entry["BRProperties"].Rows();
    currency.MoveFirst();
    addressee.MoveFirst();
    text += entry["DateD"].Value().AsDate().Text() + " " + number(entry["SumA"].Number()) + " " +
            number(currency["SumCurr"].Number()) + " " + std::string(addressee["FOIDR"].Text()) +
            " " + std::string(entry["Info"].Text()) + "; ";
  });
  EXPECT_EQ(text,
            "2003.01.31 115.08 33.33 O00001001 Nuoma; 2003.02.28 115.08 33.33 O00001001 Nuoma; "
            "2003.03.31 115.12 33.34 O00001001 Nuoma; ");
  EXPECT_EQ(call("TestOper", {}).Code, kDone) << "every entry passes";
}

TEST_F(SpreadEntryTest, ARefusalLeavesTheEntryAsItWas) {
  const std::string guid = add("240", "500", 0.05);
  const std::string before = printed();
  EXPECT_EQ(SpreadOverMonths(*operation, guid, period(0.05, 10, 1)).Code, kRefused);
  EXPECT_EQ(printed(), before);
}

}  // namespace
}  // namespace tolvex::test
