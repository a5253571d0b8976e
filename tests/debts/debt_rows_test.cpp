#include "debts/debt_rows.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "framework/rounding.h"
#include "framework/text.h"
#include "tests/support/rows.h"

namespace tolvex::test {
namespace {

const InfluenceAccounts kAccounts{"536", "636"};
const CoverMoney kLt;

constexpr int kOnDebit = -1, kOnCredit = 1;

Debt debt(int sign, double lt, double curr = 0, const char* code = "   ") {
  Debt debt;
  debt.OIDR = "O02015004";
  debt.DateD = DateTime::Of(2004, 1, 10);
  debt.Number = "4";
  debt.InfluenceSign = sign;
  debt.LikutisLt = lt;
  debt.LikutisCurr = curr;
  debt.FCurrencyCode = code;
  return debt;
}

DebtRow rowOf(Debt one, double rate) {
  std::vector<Debt> debts{std::move(one)};
  ComputeInfluence(debts, [&](std::string_view) { return rate; });
  return FillDebtList(debts, kAccounts, kLt, 0).at(0);
}

std::string number(double x) { return plainNumber(roundHalfEven(x, 9)); }

// Rests, what was covered in litas, in the debt's and in the cover's currency, the influence.
std::string shown(const DebtRow& row) {
  return join(
      {number(row.LikutisLt), number(row.LikutisCurr), "paid", number(row.PaymentLt),
       number(row.PaymentSumCurr), number(row.CoverSumCurr), "influence", number(row.influence())},
      " ");
}

TEST(DebtRows, GainsAndLossesOnEitherSide) {
  const struct {
    int sign;
    double lt, curr, rate;
    double influence, atRate;
  } cases[] = {
      {kOnCredit, 2800, 1000, 2.7, 100, 2700},    // owes less
      {kOnCredit, 1620, 600, 2.75, -30, 1650},    // owes more
      {kOnDebit, 100, 40, 2.75, 10, 110},         // is owed more
      {kOnDebit, 110, 40, 2.5, -10, 100},         // is owed less
      {kOnDebit, 100, 40, 0, 0, 100},             // no rate that day
      {kOnDebit, 100, 0, 2.75, 0, 100},           // litas
      {kOnCredit, 50, 1.45, 34.5, -0.03, 50.03},  // an exact half is lifted
  };
  for (const auto& c : cases) {
    const DebtRow row = rowOf(debt(c.sign, c.lt, c.curr, "USD"), c.rate);
    EXPECT_EQ(row.debt.CurrInfluence, c.influence) << c.lt << " at " << c.rate;
    EXPECT_EQ(row.LikutisLt, c.atRate) << c.lt << " at " << c.rate;
  }
}

TEST(DebtRows, WhatASumCovers) {
  const struct {
    const char* name;
    Debt debt;
    double rate;
    CoverMoney money;
    double offered, offeredCurr;
    double taken;
    const char* shown;
  } cases[] = {
      {"litas, all", debt(kOnDebit, 100), 0, kLt, 0, 0, 100, "0 0 paid 100 0 0 influence 0"},
      {"litas, a part", debt(kOnDebit, 100), 0, kLt, 30.5, 0, 30.5,
       "69.5 0 paid 30.5 0 0 influence 0"},
      {"litas, more than there is", debt(kOnDebit, 100), 0, kLt, 300, 0, 100,
       "0 0 paid 100 0 0 influence 0"},
      {"litas for dollars", debt(kOnCredit, 2800, 1000, "USD"), 2.7, kLt, 0, 0, 2700,
       "0 0 paid 2700 1000 1000 influence 100"},
      {"litas for a part of dollars comes back to the cent", debt(kOnCredit, 2800, 1000, "USD"),
       2.75, kLt, 1000, 0, 1000.01, "1749.99 636.36 paid 1000.01 363.64 363.64 influence 50"},
      {"the dollars are said and agree", debt(kOnDebit, 3, 0.87, "EUR"), 3.4528, kLt, 2.97, 0.86,
       2.97, "0.03 0.01 paid 2.97 0.86 0.86 influence 0"},
      {"the dollars are said and do not agree", debt(kOnDebit, 300, 100, "USD"), 3, kLt, 30, 11, 30,
       "270 90 paid 30 10 10 influence 0"},
      {"dollars for dollars",
       debt(kOnCredit, 2800, 1000, "USD"),
       2.7,
       {"USD", 2.7},
       400,
       0,
       400,
       "1620 600 paid 1080 400 400 influence 100"},
      {"euros for dollars, all",
       debt(kOnDebit, 280, 100, "USD"),
       2.8,
       {"EUR", 3.5},
       0,
       0,
       80,
       "0 0 paid 280 100 80 influence 0"},
      {"euros for dollars, a part",
       debt(kOnDebit, 280, 100, "USD"),
       2.8,
       {"EUR", 3.5},
       40,
       0,
       40,
       "140 50 paid 140 50 40 influence 0"},
      {"dollars for litas, one cent off: a cent of the cover is taken back",
       debt(kOnDebit, 100),
       0,
       {"USD", 2.7},
       0,
       0,
       37.03,
       "0 0 paid 99.98 0 37.03 influence -0.02"},
      {"dollars for litas, a cent stays",
       debt(kOnCredit, 100),
       0,
       {"USD", 3},
       0,
       0,
       33.33,
       "0 0 paid 99.99 0 33.33 influence 0.01"},
      {"dollars for a part of litas",
       debt(kOnCredit, 100),
       0,
       {"USD", 3},
       10,
       0,
       10,
       "70 0 paid 30 0 10 influence 0"},
      {"a dollar cover without a rate",
       debt(kOnCredit, 100),
       0,
       {"USD", 0},
       10,
       0,
       0,
       "100 0 paid 0 0 0 influence 0"},
      {"too little for a cent of the currency", debt(kOnDebit, 345, 1, "XAU"), 345, kLt, 1, 0, 0,
       "345 1 paid 0 0 0 influence 0"},
      {"no rate, a sum spent on the list", debt(kOnDebit, 280, 100, "USD"), 0, kLt, 10, 0, 0,
       "280 100 paid 0 0 0 influence 0"},
  };
  for (const auto& c : cases) {
    DebtRow row = rowOf(c.debt, c.rate);
    const Covered covered = CoverRow(row, c.money, c.offered, c.offeredCurr);
    EXPECT_DOUBLE_EQ(covered.taken, c.taken) << c.name;
    EXPECT_EQ(shown(row), c.shown) << c.name;
    EXPECT_EQ(covered.message, "") << c.name;
  }
  DebtRow row = rowOf(debt(kOnDebit, 280, 100, "USD"), 0);
  EXPECT_EQ(CoverRow(row, kLt, 0, 0).message, "Nenurodytas USD kursas !");
}

TEST(DebtRows, ASumIsSpentInOrderAndPostedDifferencesAreLeftOut) {
  std::vector<Debt> debts{debt(kOnCredit, 100), debt(kOnCredit, 70), debt(kOnCredit, 50)};
  Debt loss = debt(kOnCredit, 30), gain = debt(kOnDebit, 30);
  loss.AccountD = "636";
  gain.AccountC = "536";
  debts.insert(debts.begin(), loss);
  debts.push_back(gain);
  // The marked accounts on the other side are debts like any other.
  std::swap(loss.AccountD, loss.AccountC);
  debts.push_back(loss);
  std::string spent;
  for (const DebtRow& row : FillDebtList(debts, kAccounts, kLt, 120.5)) {
    spent += (row.ticked ? "x" : "-") + number(row.PaymentLt) + "/" + number(row.LikutisLt) + " ";
  }
  EXPECT_EQ(spent, "x100/0 x20.5/49.5 -0/50 -0/30 ");
}

TEST(DebtRows, WhatMayNotBeTicked) {
  std::set<std::string> told;
  EXPECT_EQ(CheckDebtRow(rowOf(debt(kOnDebit, 5), 0), told).code, DebtCheck::Good);
  const DebtCheck bad = CheckDebtRow(rowOf(debt(kOnDebit, -5), 0), told);
  EXPECT_EQ(bad.code, DebtCheck::BadRest);
  EXPECT_EQ(bad.message, "2004.01.10 4\r\nKlaidingas likutis !");
  EXPECT_EQ(CheckDebtRow(rowOf(debt(kOnDebit, 5, -2, "USD"), 0), told).code, DebtCheck::BadRest);
  const DebtRow noRate = rowOf(debt(kOnDebit, 5, 2, "USD"), 0);
  EXPECT_EQ(CheckDebtRow(noRate, told).message, "Nenurodytas USD kursas!");
  const DebtCheck again = CheckDebtRow(noRate, told);
  EXPECT_EQ(again.code, DebtCheck::NoRate);
  EXPECT_EQ(again.message, "") << "once for each currency";
  EXPECT_EQ(CheckDebtRow(rowOf(debt(kOnDebit, 5, 2, "EUR"), 0), told).message,
            "Nenurodytas EUR kursas!");
}

TEST(DebtRows, WhichListAnswers) {
  const struct {
    const char* addressee;
    int sign;
    const char* name;
  } cases[] = {{"", 0, "Debts3"},
               {"O000010", 1, "Debts3"},
               {"O0000100", 0, "Debts2"},
               {"O00001001", 0, "Debts1"},
               {"O00001001", 1, "DebtsByDebit"},
               {"O0000100", -1, "DebtsByCredit"}};
  for (const auto& c : cases) {
    EXPECT_EQ(DebtsMethodName(c.addressee, c.sign), c.name) << c.addressee << " " << c.sign;
  }
  EXPECT_EQ(debtsParameters("450", DateTime::Of(2004, 3, 31), "O00001001", -1),
            "'0','450','2004.03.31','O00001001',-1");
}

// --- properties --------------------------------------------------------------------------------

double between(int low, int high, double unit) { return *rc::gen::inRange(low, high) * unit; }
double cents(int limit) { return roundHalfEven(between(1, limit, 0.01), 2); }
double rate(int low, int high) { return roundHalfEven(between(low, high, 0.0001), 4); }

// A debt in the books, as payments and differences leave it.
struct Booked {
  Debt debt;
  double paid = 0, gained = 0;
  void post(const DebtRow& row) {
    const double influence = row.influence();
    gained += influence;
    paid += row.PaymentLt;
    debt.LikutisLt =
        roundHalfEven(debt.LikutisLt - debt.InfluenceSign * influence - row.PaymentLt, 2);
    debt.LikutisCurr = roundHalfEven(debt.LikutisCurr - row.PaymentSumCurr, 2);
  }
  bool closed() const { return debt.LikutisLt == 0 && debt.LikutisCurr == 0; }
};

Booked randomDebt(const char* code, int low, int high) {
  const int sign = *rc::gen::element(kOnDebit, kOnCredit);
  const double curr = cents(50000000);
  return {debt(sign, roundLt(curr * rate(low, high)), curr, code)};
}

void expectClosed(const Booked& booked, double full) {
  RC_ASSERT(booked.debt.LikutisCurr == 0.0);
  RC_ASSERT(booked.debt.LikutisLt == 0.0);
  RC_ASSERT(roundHalfEven(booked.paid + booked.debt.InfluenceSign * booked.gained, 2) == full);
}

RC_GTEST_PROP(DebtProperties, PartsAtAnyRatesThenAFullCoverLeaveNothing, ()) {
  constexpr int kLow = 10200, kHigh = 60000;  // 1.02 to 6
  Booked booked = randomDebt("USD", kLow, kHigh);
  const double full = booked.debt.LikutisLt;
  for (int parts = *rc::gen::inRange(0, 5); parts >= 0 && !booked.closed(); --parts) {
    DebtRow row = rowOf(booked.debt, rate(kLow, kHigh));
    const bool last = parts == 0;
    const CoverMoney money = *rc::gen::element(CoverMoney{}, CoverMoney{"USD", row.PaymentCurrRate},
                                               CoverMoney{"EUR", rate(kLow, kHigh)});
    if (last && row.LikutisLt < 0.01) return;  // less than a cent is no debt in litas
    (void)ApplyCover(row, money, last ? 0 : cents(30000000));
    booked.post(row);
    RC_ASSERT(booked.debt.LikutisLt == row.LikutisLt);
    RC_ASSERT(booked.debt.LikutisCurr == row.LikutisCurr);
  }
  expectClosed(booked, full);
}

RC_GTEST_PROP(DebtProperties, ADebtInLitasPaidInACurrencyClosesToo, ()) {
  const double full = cents(50000000);
  Booked booked{debt(*rc::gen::element(kOnDebit, kOnCredit), full)};
  DebtRow row = rowOf(booked.debt, 0);
  const Covered covered = ApplyCover(row, {"USD", rate(10200, 60000)}, 0);
  if (covered.taken == 0) return;
  booked.post(row);
  expectClosed(booked, full);
}

// A unit worth far less than a litas: the quotient of two decimals cannot name the sum.
RC_GTEST_PROP(DebtProperties, ACheapCurrencyIsClosedByAnExactCover, ()) {
  constexpr int kLow = 10, kHigh = 9000;  // 0.001 to 0.9
  Booked booked = randomDebt("JPY", kLow, kHigh);
  const double full = booked.debt.LikutisLt;
  DebtRow row = rowOf(booked.debt, rate(kLow, kHigh));
  if (ApplyCover(row, kLt, 0).taken == 0) return;
  RC_ASSERT(row.LikutisLt == 0.0);
  RC_ASSERT(leavesCurrency(row) == (row.LikutisCurr != 0));
  if (leavesCurrency(row)) RC_ASSERT(coverExactly(row, kLt).taken > 0);
  booked.post(row);
  expectClosed(booked, full);
}

RC_GTEST_PROP(DebtProperties, AReleasedRowIsAsItWas, ()) {
  DebtRow row = rowOf(randomDebt("USD", 10, 60000).debt, rate(10, 60000));
  const std::string before = shown(row);
  const CoverMoney money = *rc::gen::element(CoverMoney{}, CoverMoney{"EUR", 3.4528});
  (void)ApplyCover(row, money, *rc::gen::element(0.0, cents(30000000)));
  ReleaseCover(row);
  RC_ASSERT(shown(row) == before);
  RC_ASSERT(!row.ticked);
}

TEST(DebtRows, ACheapCurrencyKeepsARestThatIsShownAndCanBeClosed) {
  const struct { double curr, rest; } cases[] = {{1.10, -0.2}, {1.52, 0.22}};
  for (const auto& c : cases) {
    DebtRow row = rowOf(debt(kOnDebit, 0.03, c.curr, "JPY"), 0.023);
    EXPECT_DOUBLE_EQ(ApplyCover(row, kLt, 0).taken, 0.03);
    EXPECT_EQ(row.LikutisLt, 0);
    EXPECT_EQ(row.LikutisCurr, c.rest);
    EXPECT_TRUE(leavesCurrency(row));
    (void)coverExactly(row, kLt);
    EXPECT_EQ(shown(row),
              "0 0 paid 0.03 " + number(c.curr) + " " + number(c.curr) + " influence 0");
    EXPECT_FALSE(leavesCurrency(row));
  }
}

}  // namespace
}  // namespace tolvex::test
