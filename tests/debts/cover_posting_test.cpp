#include "debts/cover_posting.h"

#include "debts/new_covers.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "tests/operations/operation_world.h"

namespace tolvex::test {
namespace {

const InfluenceAccounts kAccounts{"500", "6001"};
const DateTime kDay = DateTime::Of(2004, 3, 31);

// A ticked row as a cover in litas leaves it.
DebtRow row(int number, int sign, double bookedLt, double curr = 0, const char* code = "   ",
            double rate = 0, double sum = 0) {
  Debt debt;
  debt.OIDR = "O0201500" + std::to_string(number);
  debt.DateD = DateTime::Of(2004, 1, static_cast<unsigned>(number));
  debt.Number = "N" + std::to_string(number);
  debt.InfluenceSign = sign;
  debt.LikutisLt = bookedLt;
  debt.LikutisCurr = curr;
  debt.FCurrencyCode = code;
  std::vector<Debt> debts{debt};
  ComputeInfluence(debts, [&](std::string_view) { return rate; });
  DebtRow made = FillDebtList(debts, kAccounts, {}, 0).at(0);
  (void)ApplyCover(made, {}, sum);
  return made;
}

class CoverPostingTest : public OperationWorld {
 protected:
  CoverPostingTest() {
    host.store().serve("GetBRPropertiesByAcc",
                       table({{"FOIDR", FieldType::Text}, {"ShowString", FieldType::Text}},
                             {{"O00001001", "UAB A"}}));
  }
  MethodResult post(std::vector<DebtRow> primary, std::vector<DebtRow> secondary,
                    bool primaryOnCredit = true, bool dateOfDebts = false) {
    return postTicked(primary, secondary, primaryOnCredit, dateOfDebts);
  }
  MethodResult postTicked(std::vector<DebtRow>& primary, std::vector<DebtRow>& secondary,
                          bool primaryOnCredit = true, bool dateOfDebts = false) {
    const int sign = primaryOnCredit ? 1 : -1;
    return PostCover(*operation, {{"450", "O00001001", sign, &primary},
                                  {"240", "O00001001", -sign, &secondary},
                                  kAccounts,
                                  kDay,
                                  dateOfDebts});
  }
  // "450-240 100 (1 USD 2.7 37.04): 1 O02015001, -1 O02015002; ", an entry a line. The addressees,
  // the same everywhere, are left out.
  std::string entries() {
    std::string text;
    ForEachRow(*BR().Clone(), [&](RowSet& entry) {
      text += std::string(entry["AccountD"].Text()) + "-" + std::string(entry["AccountC"].Text()) +
              " " + plainNumber(entry["SumA"].Number());
      ForEachRow(*entry["BRCurrency"].Rows(), [&](RowSet& side) {
        text += " (" + plainNumber(side["Sign"].Number()) + " " +
                std::string(side["FCurrencyCode"].Text()) + " " +
                plainNumber(side["RateCurr"].Number()) + " " +
                plainNumber(side["SumCurr"].Number()) + ")";
      });
      text += ":";
      ForEachRow(*entry["BRProperties"].Rows(), [&](RowSet& pointer) {
        if (!pointer["FOIDR"].Text().starts_with("O0201500")) return;
        text += " " + plainNumber(pointer["Sign"].Number()) + "/" +
                std::string(pointer["FOIDR"].Text().substr(8));
      });
      text += "\n";
    });
    return text;
  }
};

TEST_F(CoverPostingTest, RowsAreSetOffInTheirOrder) {
  const std::vector<DebtRow> credit{row(1, 1, 100), row(2, 1, 70)};
  const std::vector<DebtRow> debit{row(3, -1, 30), row(4, -1, 140)};
  EXPECT_EQ(post(credit, debit).Code, kDone);
  EXPECT_EQ(entries(),
            "450-240 30: 1/1 -1/3\n"
            "450-240 70: 1/1 -1/4\n"
            "450-240 70: 1/2 -1/4\n");
  EXPECT_EQ(BR()["DateD"].Value().Show(), "2004.03.31");
}

TEST_F(CoverPostingTest, AnItemOnTheDebitIsClosedByACredit) {
  EXPECT_EQ(post({row(1, -1, 100)}, {row(2, 1, 40)}, false, true).Code, kDone);
  EXPECT_EQ(entries(), "240-450 40: -1/1 1/2\n");
  EXPECT_EQ(BR()["DateD"].Value().Show(), "2004.01.02") << "the later of both debts";
}

TEST_F(CoverPostingTest, DifferencesStandOnTheSideOfTheDebt) {
  // Owed 2800 and worth 2700: a gain on the side of the payment. The claim lost 5 of 275.
  EXPECT_EQ(post({row(1, 1, 2800, 1000, "USD", 2.7)}, {row(2, -1, 275, 100, "EUR", 2.7)}).Code,
            kDone);
  EXPECT_EQ(entries(),
            "450-500 100 (1 USD 0 0): 1/1 -1/1\n"
            "6001-240 5 (-1 EUR 0 0): -1/2 1/2\n"
            "450-240 270 (-1 EUR 2.7 100) (1 USD 2.7 100): 1/1 -1/2\n");
}

TEST_F(CoverPostingTest, ALossOnTheCreditPointsFromTheOtherSide) {
  EXPECT_EQ(post({row(1, 1, 270, 100, "USD", 2.75)}, {row(2, -1, 275)}).Code, kDone);
  EXPECT_EQ(entries(),
            "6001-450 5 (-1 USD 0 0): -1/1 1/1\n"
            "450-240 275 (1 USD 2.75 100): 1/1 -1/2\n");
}

TEST_F(CoverPostingTest, TheLastPartTakesWhatIsLeftOfTheCurrency) {
  // 100 / 3.4528 in three parts: the rates of the parts give way, the dollars add up.
  EXPECT_EQ(post({row(1, 1, 345.28, 100, "USD", 3.4528)},
                 {row(2, -1, 100), row(3, -1, 100), row(4, -1, 145.28)})
                .Code,
            kDone);
  EXPECT_EQ(entries(),
            "450-240 100 (1 USD 3.453038674 28.96): 1/1 -1/2\n"
            "450-240 100 (1 USD 3.453038674 28.96): 1/1 -1/3\n"
            "450-240 145.28 (1 USD 3.452471483 42.08): 1/1 -1/4\n");
}

TEST_F(CoverPostingTest, CurrencyThatEndsBeforeItsLitasLeavesNoRest) {
  // One cent of a dear unit is 5.10; 5.00 take it whole, and the last 0.10 are a gain.
  EXPECT_EQ(post({row(1, 1, 510, 0.01, "XAU", 510)}, {row(2, -1, 5)}).Code, kDone);
  EXPECT_EQ(entries(),
            "450-500 504.9 (1 XAU 0 0): 1/1 -1/1\n"
            "450-240 5 (1 XAU 500 0.01): 1/1 -1/2\n"
            "450-500 0.1 (1 XAU 0 0): 1/1 -1/1\n");
}

TEST_F(CoverPostingTest, ARefusalStopsWhereItIs) {
  std::vector<DebtRow> credit{row(1, 1, 5), row(2, 1, 10, 4, "USD", 2.7)};
  std::vector<DebtRow> debit{row(3, -1, 5), row(4, -1, 20)};
  const InfluenceAccounts none;
  const MethodResult refused =
      PostCover(*operation, {{"450", "", 1, &credit}, {"240", "", -1, &debit}, none, kDay, false});
  EXPECT_EQ(refused.Code, kRefused);
  EXPECT_EQ(entries(), "450-240 5: 1/1 -1/3\n") << "what was made stays";
}

// Rests, what is ticked still, the difference that is not in the books.
std::string left(const std::vector<DebtRow>& rows) {
  std::string text;
  for (const DebtRow& one : rows) {
    text += (one.ticked ? "x " : "- ") + plainNumber(one.LikutisLt) + " " +
            plainNumber(one.LikutisCurr) + " paid " + plainNumber(one.PaymentLt) + " " +
            plainNumber(one.PaymentSumCurr) + " " + plainNumber(one.CoverSumCurr) + " influence " +
            plainNumber(one.influence()) + "\n";
  }
  return text;
}

// What is left of each debt that is not closed.
std::string restsOf(const std::vector<Debt>& debts) {
  std::string text;
  for (const Debt& debt : debts) {
    if (debt.LikutisLt == 0 && debt.LikutisCurr == 0) continue;
    text += debt.Number + " " + plainNumber(debt.LikutisLt) + " " + plainNumber(debt.LikutisCurr) +
            "\n";
  }
  return text;
}

std::vector<Debt> debtsOf(const std::vector<DebtRow>& rows) {
  std::vector<Debt> debts;
  for (const DebtRow& row : rows) debts.push_back(row.debt);
  return debts;
}

// What the new entries of the operation leave of debts.
std::string restsBy(RowSet& BR, const char* account, std::vector<Debt> debts) {
  takeOffNewCovers(debts, account, BR);
  return restsOf(debts);
}

TEST_F(CoverPostingTest, ACoverThatWasRefusedAnywhereGoesOnWhereItStopped) {
  int untilRefusal = 0;
  tables->methods.add({"AddBR", {}, "", [&](UIO0201500& o, Arguments par) {
                         if (--untilRefusal == 0) return refused("Ne dabar");
                         return AddBR(o, NewEntry::from(par));
                       }});
  // Parts of either side, both kinds of differences, a rate that gives way, litas without currency.
  const std::vector<DebtRow> credit{row(1, 1, 2800, 1000, "USD", 2.7), row(2, 1, 345.28),
                                    row(3, 1, 510, 0.01, "XAU", 510)};
  const std::vector<DebtRow> debit{row(4, -1, 300, 100, "USD", 3.4528), row(5, -1, 2700),
                                   row(6, -1, 5)};
  std::string undisturbed, closed;
  int entriesMade = 0;
  for (int n = 0; n <= entriesMade; ++n) {
    operation = std::make_shared<UIO0201500>(tables);
    ASSERT_EQ(operation->Read().Code, kDone);
    std::vector<DebtRow> primary = credit, secondary = debit;
    untilRefusal = n;
    if (n > 0) {
      ASSERT_EQ(postTicked(primary, secondary).Code, kRefused) << n;
      ASSERT_EQ(BR().Clone()->RecordCount(), static_cast<std::size_t>(n - 1));
      EXPECT_EQ(restsBy(BR(), "450", debtsOf(credit)), restsOf(debtsOf(primary))) << n;
      EXPECT_EQ(restsBy(BR(), "240", debtsOf(debit)), restsOf(debtsOf(secondary))) << n;
    }
    untilRefusal = 0;
    ASSERT_EQ(postTicked(primary, secondary).Code, kDone);
    if (n == 0) {
      undisturbed = entries();
      closed = left(primary) + left(secondary);
      entriesMade = static_cast<int>(BR().Clone()->RecordCount());
    }
    EXPECT_EQ(entries(), undisturbed) << "refused at entry " << n;
    EXPECT_EQ(left(primary) + left(secondary), closed) << "refused at entry " << n;
  }
  EXPECT_EQ(entriesMade, 8);
  EXPECT_EQ(closed.find('x'), std::string::npos) << closed;
}

TEST_F(CoverPostingTest, WhatIsPostedIsNotGivenBack) {
  std::vector<DebtRow> credit{row(1, 1, 2800, 1000, "USD", 2.7, 1890)};
  std::vector<DebtRow> debit{row(2, -1, 1080)};
  EXPECT_EQ(postTicked(credit, debit).Code, kDone);
  EXPECT_EQ(left(credit), "x 810 300 paid 810 300 300 influence 0\n");
  EXPECT_EQ(left(debit), "- 0 0 paid 0 0 0 influence 0\n");
  ReleaseCover(credit[0]);
  EXPECT_EQ(left(credit), "- 1620 600 paid 0 0 0 influence 0\n");
  EXPECT_EQ(credit[0].debt.LikutisLt, 1620) << "as the books will have it";
  EXPECT_EQ(credit[0].debt.LikutisCurr, 600);
}

TEST_F(CoverPostingTest, ANewCoverIsTakenOffTheDebtOfItsCurrencyAndAddressee) {
  EXPECT_EQ(post({row(1, 1, 2800, 1000, "USD", 2.7, 1080)}, {row(2, -1, 1080)}).Code, kDone);
  Debt dollars = row(1, 1, 2800, 1000, "USD", 2.7).debt;
  Debt litas = row(1, 1, 5000).debt;
  Debt another = dollars;
  dollars.AddrOIDR = "O00001001";
  another.AddrOIDR = "O00001002";
  another.Number = "B";
  EXPECT_EQ(restsBy(BR(), "450", {litas, another, dollars}),
            "N1 5000 0\nB 2800 1000\nN1 1620 600\n");
  EXPECT_EQ(restsBy(BR(), "451", {dollars}), "N1 2800 1000\n") << "of another account";
  BR().AcceptChanges();
  EXPECT_EQ(restsBy(BR(), "450", {dollars}), "N1 2800 1000\n") << "the store knows it now";
}

TEST_F(CoverPostingTest, ADebtWhoseAddresseesCannotBeReadIsNotCovered) {
  host.store().serve("GetBRPropertiesByAcc", [](const std::string&) {
    return HostResult{kDone, "", {}};
  });
  EXPECT_EQ(post({row(1, 1, 100)}, {row(2, -1, 40)}).Code, kRefused);
  EXPECT_EQ(entries(), "");
}

TEST_F(CoverPostingTest, APartWithoutARateOfItsOwnIsRefused) {
  // Nine decimals do not bring so many units back to the cent.
  const DebtRow many = row(1, 1, 2.7e8, 1e8, "USD", 2.7);
  const MethodResult refused = post({many}, {row(2, -1, 77777777.77), row(3, -1, 1.8e8)});
  EXPECT_EQ(refused.Code, kRefused);
  EXPECT_EQ(refused.Text, "Suma Lt neatitinka valiutos kurso!");
}

TEST_F(CoverPostingTest, NothingIsPostedForNothing) {
  EXPECT_EQ(PostInfluence(*operation, kAccounts, {"450", {}, 1, "USD", kDay, 0}).Code, kDone);
  EXPECT_EQ(post({row(1, 1, 100)}, {}).Code, kDone);
  EXPECT_EQ(entries(), "");
}

TEST(CoverComment, GrowsWhileItFits) {
  EXPECT_EQ(coverComment("Sena", true, "UAB A", "UAB A"), "Skolų dengimas - UAB A");
  EXPECT_EQ(coverComment("", true, "UAB A", "UAB B"), "Skolų dengimas - UAB A - UAB B");
  EXPECT_EQ(coverComment("X", false, "UAB Ą", "UAB Ą"), "X, UAB Ą");
  const std::string full(993, 'x');
  EXPECT_EQ(length(coverComment(full, false, "UAB Ą", "UAB Ą")), 1000U);
  EXPECT_EQ(coverComment(full + "x", false, "UAB Ą", "UAB Ą"), full + "x");
}

}  // namespace
}  // namespace tolvex::test
