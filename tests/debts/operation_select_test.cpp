// The selection of debts: what is asked, how a payment is split, what the screen answers.
#include "debts/operation_select.h"

#include "debts/debt_selection.h"
#include "debts/frmBROperSelect.h"
#include "debts/frmBROperSelect_ChangeRate.h"
#include "debts/frmBROperSelect_Find.h"
#include "framework/rounding.h"
#include "framework/text.h"
#include "tests/operations/screen_fixture.h"
#include "tests/support/rows.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

using Texts = std::vector<std::string>;

const DateTime kToday = DateTime::Of(2003, 2, 9);

RowSetPtr parameterRow(std::string_view cells) {
  return rowsOf(
      "OIDR|FOIDR|Comment|DateD:date|CurrRateDate:date|PaymentCurrCode|PaymentSum:double|"
      "PaymentSumCurr:double|PaymentCurrRate:double|AccountD|AccountC\n" +
      std::string(cells));
}

TEST(SelectionParameters, AreReadOnce) {
  const struct {
    const char* name;
    const char* cells;  // dates are set below
    bool dated;
    const char* want;  // account, side, free, date, rate date, money, sum
  } cases[] = {
      {"an expense in litas", "O02015005|O00001003|UAB Beržas|~|~|   |500|~|~|~|443", true,
       "443 C given 2003.02.20 2003.02.01  0 500"},
      {"an income in dollars", "~|O00001003|~|~|~|USD|~|100|2.75|240|~", true,
       "240 D given 2003.02.20 2003.02.01 USD 2.75 100"},
      {"the litas of a payment in dollars do not count", "~|~|~|~|~|USD|275|~|2.75|240|~", true,
       "240 D given 2003.02.20 2003.02.01 USD 2.75 0"},
      {"any account of the credit", "~|~|~|~|~|   |~|~|~|~|*", false,
       "* C free 2003.02.09 2003.02.01  0 0"},
      {"nothing said", "~|~|~|~|~|~|~|~|~|~|~", false, " D free 2003.02.09 2003.02.01  0 0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const RowSetPtr row = parameterRow(c.cells);
    if (c.dated) (*row)["DateD"] = DateTime::Of(2003, 2, 20);
    const SelectionAsked asked = readSelectParameters(*row, kToday);
    EXPECT_EQ(asked.account + (asked.onDebit ? " D " : " C ") +
                  (asked.accountFree() ? "free " : "given ") + asked.date.Text() + " " +
                  asked.rateDate.Text() + " " + trim(asked.money.code) + " " +
                  plainNumber(asked.money.rate) + " " + plainNumber(asked.sum),
              std::string(c.want));
  }
  const RowSetPtr row = parameterRow("~|~|~|~|~|   |~|~|~|240|~");
  (*row)["CurrRateDate"] = DateTime::Of(2003, 1, 31);
  EXPECT_EQ(readSelectParameters(*row, kToday).rateDate.Text(), "2003.01.31");
}

Debt debt(double restLt, double restCurr = 0, const std::string& code = "   ", double rate = 0) {
  Debt debt;
  debt.OIDR = "O02015005";
  debt.DateD = DateTime::Of(2003, 1, 10);
  debt.Number = "7";
  debt.Comment = "Prekės";
  debt.InfluenceSign = 1;
  debt.SumA = debt.LikutisLt = restLt;
  debt.SumCurr = debt.LikutisCurr = restCurr;
  debt.FCurrencyCode = code;
  debt.RateCurr = rate;
  return debt;
}

std::string answered(const std::vector<DebtRow>& rows, const CoverMoney& money) {
  std::string text;
  ForEachRow(*selectedOperations(rows, money, {"536", "636"}), [&](RowSet& row) {
    const auto number = [&](const char* column) { return plainNumber(row[column].Number()); };
    text += number("PaymentSum") + " | " + number("PaymentSumCurr") + " " +
            std::string(row["PaymentCurrCode"].Text()) + " " + number("PaymentCurrRate") + " | " +
            number("DebtSumCurr") + " " + std::string(row["DebtCurrCode"].Text()) + " " +
            number("DebtCurrRate") + " | " + number("ExtSum") + "; ";
  });
  return text;
}

// How one payment is split over debts, and what each line says of it.
TEST(SelectionSplit, TakesTheRowsInTheirOrder) {
  const RateOf rates = [](std::string_view code) {
    return code == "USD" ? 2.7 : code == "EUR" ? 3.4528 : 0.0;
  };
  const CoverMoney litas, dollars{"USD", 2.7};
  const struct {
    const char* name;
    std::vector<Debt> debts;
    CoverMoney money;
    double sum;
    const char* want;
    double left;
  } cases[] = {
      {"part of the second row",
       {debt(100), debt(50), debt(30)},
       litas,
       120,
       "100 | 0     0 | 0     0 | 0; 20 | 0     0 | 0     0 | 0; ",
       0},
      {"more than all", {debt(100)}, litas, 120, "100 | 0     0 | 0     0 | 0; ", 20},
      {"a debt in dollars, booked at 2,80, paid in litas",
       {debt(280, 100, "USD", 2.8)},
       litas,
       270,
       "270 | 0     0 | 100 USD 2.7 | 10; ",
       0},
      {"the same paid in dollars",
       {debt(280, 100, "USD", 2.8)},
       dollars,
       40,
       "108 | 40 USD 2.7 | 40 USD 2.7 | 10; ",
       0},
      {"a litas debt paid in dollars",
       {debt(270)},
       dollars,
       100,
       "270 | 100 USD 2.7 | 0     0 | 0; ",
       0},
      {"a debt in euros paid in dollars",
       {debt(345.28, 100, "EUR", 3.4528)},
       dollars,
       200,
       "345.28 | 127.88 USD 2.7 | 100 EUR 3.4528 | 0; ",
       72.12},
      {"a debt whose rate is not known stays out",
       {debt(10, 5, "NOK", 2), debt(30)},
       litas,
       30,
       "30 | 0     0 | 0     0 | 0; ",
       0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<Debt> debts = c.debts;
    ComputeInfluence(debts, rates);
    const std::vector<DebtRow> rows = FillDebtList(debts, {"536", "636"}, c.money, c.sum);
    EXPECT_EQ(answered(rows, c.money), std::string(c.want));
    double left = c.sum;
    for (const DebtRow& row : rows) left -= row.taken();
    EXPECT_DOUBLE_EQ(roundHalfEven(left, 2), c.left);
  }
}

TEST(TradeOperations, ArePaidLikeDebts) {
  const char* columns =
      "OIDR|DateD:date|Number|Comment|SumA:double|SumCurr:double|CurrCode|SumRest:double|"
      "SumRestCurr:double|RestCurrCode|CurrRate:double\n";
  const RowSetPtr rows = rowsOf(std::string(columns) +
                                "O10001001|~|U-1|Užsakymas|100|~|~|30|~|~|~\n"
                                "O10001002|~|U-2||270|100|USD|81|30|USD|2.7");
  const auto rests = [&](ListedOperations listed) {
    std::string text;
    for (const Debt& d : readTradeOperations(*rows, listed, 1))
      text += plainNumber(d.LikutisLt) + " " + plainNumber(d.LikutisCurr) + d.FCurrencyCode + "; ";
    return text;
  };
  EXPECT_EQ(rests(ListedOperations::Orders), "30 0   ; 81 30USD; ");
  EXPECT_EQ(rests(ListedOperations::Offers), "70 0   ; 189 70USD; ");
}

// --- the screen ---------------------------------------------------------------------------------

constexpr const char* kDebtRows =
    "OIDR|FOIDR|DateD:date|Number|Comment|Info|AccountD|AccountC|InfluenceSign:int|SumA:double|"
    "SumCurr:double|LikutisLt:double|LikutisCurr:double|FCurrencyCode|RateCurr:double|AddrOIDR|"
    "AddrName\n"
    "O02015005|O02015005|~|S-1|Prekės||240|443|1|1180|~|680|~|   |~|O00001003|UAB Beržas\n"
    "O02015006|O02015006|~|S-2|||240|443|1|275|100|275|100|USD|2.75|O00001003|UAB Beržas\n"
    "O02015007|O02015007|~|S-3|||240|443|1|50|10|50|10|NOK|5|O00001003|UAB Beržas";

class SelectionScreen : public ScreenTest {
 protected:
  SelectionScreen() {
    registerSelectionForms(tables->forms);
    serveMarks({{"536", "500"}, {"636", "6001"}});
    serveDebts(kDebtRows);
  }
  void serveMarks(std::initializer_list<std::pair<const char*, const char*>> marks) {
    const RowSetPtr rows = table({{"Code", FieldType::Text}, {"Account", FieldType::Text}});
    for (const auto& [code, account] : marks) {
      rows->AddNew();
      (*rows)["Code"] = code;
      (*rows)["Account"] = account;
    }
    host.store().serve("GetPresetAccounts", rows);
  }
  void serveDebts(std::string_view text) {
    const RowSetPtr rows = rowsOf(text);
    int day = 10;
    ForEachRow(*rows, [&](RowSet& row) { row["DateD"] = DateTime::Of(2003, 1, day++); });
    for (const char* routine : {"GetDebts3", "GetDebtsByCredit", "GetDebtsByDebit"})
      host.store().serve(routine, rows);
  }

  std::shared_ptr<frmBROperSelect> select(std::string_view cells, const char* kind = "O0201500") {
    const RowSetPtr row = parameterRow(cells);
    (*row)["DateD"] = DateTime::Of(2003, 2, 20);
    object = newOperation();
    object->OType(kind);
    answer = nullptr;
    auto form =
        std::make_shared<frmBROperSelect>(OperationSelectRequest{host, object, row, answer});
    form->markOpen(true);
    form->opened();
    return form;
  }
  std::string asked(const std::string& routine) {
    std::string text;
    for (const auto& call : host.store().calls)
      if (call.method == routine) text += call.parameters + "; ";
    host.store().calls.clear();
    return text;
  }
  static Texts ticked(const frmBROperSelect& form) {
    Texts all;
    for (const ui::Row& row : form.lvwBROper.rows())
      if (row.checked) all.push_back(row.cells[6].text + "/" + row.cells[7].text);
    return all;
  }

  std::shared_ptr<UIO0201500> object;
  RowSetPtr answer;
};

constexpr const char* kPaysLitas = "~|O00001003|UAB Beržas|~|~|   |700|~|~|~|443";
constexpr const char* kPaysDollars = "~|O00001003|UAB Beržas|~|~|USD|~|50|2.8|~|443";
constexpr const char* kPaysAny = "~|O00001003|UAB Beržas|~|~|   |~|~|~|~|443";
constexpr const char* kPaysOnAny = "~|~|~|~|~|   |~|~|~|~|*";

TEST_F(SelectionScreen, SplitsTheSumAtOnceAndAnswers) {
  auto form = select(kPaysLitas);
  EXPECT_NO_THROW(form->layout());
  EXPECT_EQ(told(), Texts{});
  EXPECT_EQ(asked("GetDebtsByCredit"), "'0','443','2003.02.20','O00001003',-1; ");
  expectScreen(*form, "frmBROperSelect_litas");
  EXPECT_FALSE(form->cmbAcc.enabled);
  EXPECT_EQ(ticked(*form), (Texts{"680,00/ ", "19,99/7,27"})) << "7,27 dollars are worth 19,99";
  EXPECT_EQ(form->txtSkolaLt.text(), "1\u00a0005,00");
  ui::Input user(*form);
  DO(user.check(form->lvwBROper, 1, false));
  EXPECT_EQ(form->lblTotals.caption(), "Pažymėta: 1     Apmokama: 680,00 Lt     Lieka: 20,00 Lt");
  DO(user.check(form->lvwBROper, 2, true));
  EXPECT_EQ(told(), Texts{"Nenurodytas NOK kursas!"});
  EXPECT_EQ(ticked(*form), Texts{"680,00/ "});
  DO(user.click(form->cmdOK));
  EXPECT_FALSE(form->isOpen());
  ASSERT_TRUE(answer);
  EXPECT_EQ(column(*answer, "Comment"), "2003.01.10 S-1 Prekės");
  EXPECT_EQ(column(*answer, "Acc536") + " " + column(*answer, "Acc636"), "500 6001");
  EXPECT_EQ(column(*answer, "DebtSign"), "1");
}

TEST_F(SelectionScreen, TicksSpendWhatIsLeft) {
  auto form = select(kPaysLitas);
  ui::Input user(*form);
  DO(user.pick(form->mnuDrop));
  DO(user.check(form->lvwBROper, 1, true));
  DO(user.check(form->lvwBROper, 0, true));
  EXPECT_EQ(ticked(*form), (Texts{"425,00/ ", "275,00/100,00"})) << "the rest of 700";
  DO(user.check(form->lvwBROper, 1, false));
  DO(user.check(form->lvwBROper, 0, false));
  DO(user.check(form->lvwBROper, 0, true));
  DO(user.enter(form->txtPaymentLt, "680"));
  user.leave();
  EXPECT_EQ(ticked(*form), Texts{"680,00/ "});
  DO(user.check(form->lvwBROper, 1, true));
  EXPECT_EQ(ticked(*form), Texts{"680,00/ "}) << "nothing is left";
}

TEST_F(SelectionScreen, ATypedSumIsSplitAnew) {
  auto form = select(kPaysAny);
  ui::Input user(*form);
  EXPECT_EQ(ticked(*form), Texts{});
  EXPECT_FALSE(form->cmdOK.enabled);
  DO(user.check(form->lvwBROper, 0, true));
  EXPECT_EQ(ticked(*form), Texts{"680,00/ "}) << "all of it, as no sum is fixed";
  DO(user.enter(form->txtPaymentLt, "600+180"));
  user.leave();
  EXPECT_EQ(form->txtPaymentLt.text(), "780,00");
  EXPECT_EQ(ticked(*form), (Texts{"680,00/ ", "99,99/36,36"}));
  DO(user.enter(form->txtPaymentLt, ""));
  user.leave();
  EXPECT_EQ(ticked(*form), Texts{});
  DO(user.pick(form->mnuAll));
  EXPECT_EQ(told(), Texts{"Nenurodytas NOK kursas!"});
  EXPECT_EQ(ticked(*form), (Texts{"680,00/ ", "275,00/100,00"}));
  DO(user.pick(form->mnuDrop));
  EXPECT_EQ(ticked(*form), Texts{});
  DO(user.close());
  EXPECT_EQ(answer, nullptr);
}

TEST_F(SelectionScreen, ASumForOneRow) {
  auto form = select(kPaysLitas);
  ui::Input user(*form);
  const auto enter = [&](int row, const char* box, const char* sum) {
    host.screens().users.push_back([box, sum](ui::Form& shown) {
      ui::Input act(shown);
      DO(act.enter(*shown.find<ui::TextBox>(box), sum));
      DO(act.click(*shown.find<ui::Button>("cmdOK")));
    });
    DO(user.activate(form->lvwBROper, row));
  };
  enter(0, "txtSumLt", "100,50");
  EXPECT_EQ(ticked(*form), (Texts{"100,50/ ", "19,99/7,27"}));
  enter(1, "txtSumCurr", "60");
  EXPECT_EQ(ticked(*form), (Texts{"100,50/ ", "165,00/60,00"})) << "in the debt's own currency";
  enter(0, "txtSumLt", "600");
  EXPECT_EQ(told(), Texts{"Suma didesnė už likusią mokėjimo sumą!"});
  EXPECT_EQ(ticked(*form), (Texts{"100,50/ ", "165,00/60,00"})) << "all stays as it was";
  DO(user.activate(form->lvwBROper, 2));
  EXPECT_EQ(told(), Texts{"Nenurodytas NOK kursas!"});
}

TEST_F(SelectionScreen, OfACurrencyPaymentItsOwnSumIsAsked) {
  auto form = select(kPaysDollars);
  ui::Input user(*form);
  const auto enter = [&](int row, const char* sum) {
    host.screens().users.push_back([sum](ui::Form& shown) {
      ui::Input act(shown);
      EXPECT_EQ(shown.find("txtSumCurr")->caption(), "Suma, USD");
      DO(act.enter(*shown.find<ui::TextBox>("txtSumCurr"), sum));
      DO(act.click(*shown.find<ui::Button>("cmdOK")));
    });
    DO(user.activate(form->lvwBROper, row));
  };
  enter(0, "20");
  EXPECT_EQ(ticked(*form), Texts{"56,00/ "});
  enter(1, "31");
  EXPECT_EQ(told(), Texts{"Suma didesnė už likusią mokėjimo sumą!"});
  enter(1, "20+10");
  EXPECT_EQ(ticked(*form), (Texts{"56,00/ ", "84,00/30,00"}));
}

// 11,40 at 0,03 are 34 cents, and 34 cents are 11,33: seven hundredths would stay for ever.
TEST_F(SelectionScreen, WhatLitasCannotCoverIsOfferedInItsOwnCurrency) {
  serveDebts(
      "OIDR|FOIDR|DateD:date|Number|Comment|Info|AccountD|AccountC|InfluenceSign:int|SumA:double|"
      "SumCurr:double|LikutisLt:double|LikutisCurr:double|FCurrencyCode|RateCurr:double|AddrOIDR|"
      "AddrName\n"
      "O02015007|O02015007|~|S-3|||240|443|1|0.34|11.4|0.34|11.4|NOK|0.03|O00001003|UAB Beržas");
  host.store().serve("GetCurrencyList", rowsOf("Code|Rate:double|BaseCurrency:int\nNOK|0.03|0"));
  auto form = select(kPaysAny);
  ui::Input user(*form);
  form->menuRow.onPopup();
  EXPECT_FALSE(form->mnuExact.enabled);
  DO(user.check(form->lvwBROper, 0, true));
  EXPECT_EQ(ticked(*form), Texts{"0,34/11,33"});
  EXPECT_EQ(form->lvwBROper.rows()[0].mark, ui::Mark::Bad);
  EXPECT_EQ(form->lblTotals.caption(),
            "Litais nepadengta 0,07 NOK (S-3): eilutės meniu „Padengti visą valiutos likutį“");
  form->menuRow.onPopup();
  DO(user.pick(form->mnuExact));
  EXPECT_EQ(ticked(*form), Texts{"0,34/11,40"});
  EXPECT_EQ(form->lvwBROper.rows()[0].mark, ui::Mark::None);
  EXPECT_EQ(form->lblTotals.caption(), "Pažymėta: 1     Apmokama: 0,34 Lt");
  DO(user.click(form->cmdOK));
  EXPECT_EQ((*answer)["DebtSumCurr"].Number(), 11.4);
  EXPECT_EQ((*answer)["ExtSum"].Number(), 0);
}

TEST_F(SelectionScreen, APaymentInACurrencyCountsAtItsOwnRate) {
  auto form = select(kPaysDollars);
  expectScreen(*form, "frmBROperSelect_currency");
  EXPECT_EQ(form->txtPaymentLt.text(), "140,00");
  EXPECT_EQ(form->lvwBROper.rows()[1].cells[9].text, "2,8000") << "not the day's 2,75";
  ui::Input user(*form);
  DO(user.check(form->lvwBROper, 0, false));
  DO(user.check(form->lvwBROper, 1, true));
  EXPECT_EQ(ticked(*form), Texts{"140,00/50,00"});
  DO(user.click(form->cmdOK));
  EXPECT_EQ(column(*answer, "ExtSum"), "-5") << "275 litas are worth 280 now";
  EXPECT_EQ(column(*answer, "DebtCurrRatePrimary"), "2.75");
}

TEST_F(SelectionScreen, ARateIsGivenByHandOrByADay) {
  auto form = select(kPaysAny);
  ui::Input user(*form);
  const auto give = [&](int row, auto act) {
    DO(user.select(form->lvwBROper, row));
    host.screens().users.push_back([act](ui::Form& shown) {
      auto& dialog = dynamic_cast<frmBROperSelect_ChangeRate&>(shown);
      ui::Input inDialog(dialog);
      act(dialog, inDialog);
    });
    DO(user.pick(form->mnuRates));
  };
  give(2, [&](frmBROperSelect_ChangeRate& dialog, ui::Input& act) {
    EXPECT_EQ(dialog.title(), "NOK kursas");
    EXPECT_EQ(dialog.dtpDate.value()->Text(), "2003.02.01");
    DO(act.click(dialog.cmdOK));
    EXPECT_TRUE(dialog.isOpen());
    DO(act.enter(dialog.txtRate, "4,5"));
    expectScreen(dialog, "frmBROperSelect_ChangeRate");
    DO(act.click(dialog.cmdOK));
  });
  EXPECT_EQ(told(), Texts{"Nenurodytas valiutos kursas!"});
  EXPECT_EQ(form->lvwBROper.rows()[2].cells[9].text, "4,5000");
  EXPECT_EQ(form->lvwBROper.rows()[2].cells[10].text, "5,00") << "fifty litas are worth 45";
  EXPECT_EQ(form->lvwBROper.current(), 2);
  give(1, [](frmBROperSelect_ChangeRate& dialog, ui::Input& act) {
    EXPECT_EQ(dialog.txtRate.text(), "2,7500");
    DO(act.enter(dialog.txtRate, "9"));
    DO(act.date(dialog.dtpDate, DateTime::Of(2003, 2, 3)));
    EXPECT_EQ(dialog.txtRate.text(), "2,7500") << "that of the day";
    DO(act.click(dialog.cmdCancel));
  });
  EXPECT_EQ(form->lvwBROper.rows()[1].cells[9].text, "2,7500");
  DO(user.select(form->lvwBROper, 1));
  form->menuRow.onPopup();
  EXPECT_EQ(form->mnuSum.caption(), "USD sumos įvedimas");
  EXPECT_EQ(form->mnuRates.caption(), "USD kursų žinynas");
  DO(user.select(form->lvwBROper, 0));
  form->menuRow.onPopup();
  EXPECT_EQ(form->mnuSum.caption(), "Sumos įvedimas");
  EXPECT_FALSE(form->mnuRates.enabled);
}

TEST_F(SelectionScreen, AFreeAccountAndOtherParties) {
  auto form = select(kPaysOnAny);
  EXPECT_EQ(asked("GetDebts3"), "");
  EXPECT_TRUE(form->optCred.on());
  ui::Input user(*form);
  DO(user.click(form->cmdGo));
  EXPECT_EQ(told(), Texts{"Neužduota sąskaita !"});
  DO(user.typeCombo(form->cmbAcc, "240"));
  DO(user.choose(form->optDeb));
  DO(user.click(form->cmdGo));
  EXPECT_EQ(asked("GetDebts3"), "'0','240','2003.02.20','',1; ");
  EXPECT_FALSE(form->chkByFirmChildrens.enabled) << "nobody has no branches";
  host.pickers().answers.push_back(Picked{"O00001003", "UAB Beržas", false});
  DO(user.pick(form->mnuFirm));
  EXPECT_EQ(host.pickers().requests.back().kinds, Texts{"O0000100"});
  host.store().serve("DO0201500_GetFirmChildrens",
                     table({{"OIDR", FieldType::Text}}, {{"O00001004"}, {"O00001005"}}));
  DO(user.check(form->chkByFirmChildrens, true));
  host.pickers().answers.push_back(Picked{"O02014009", "Pardavimai", false});
  DO(user.click(form->cmdOperGroup));
  EXPECT_EQ(host.pickers().requests.back().prompt, "Pažymėkite norimą grupę");
  DO(user.click(form->cmdGo));
  EXPECT_EQ(form->lvwBROper.rows().size(), 9U);
  EXPECT_EQ(form->lvwBROper.rows()[1].cells[0].text, "2003.01.10") << "the oldest first";
  EXPECT_EQ(asked("GetDebtsByDebit"),
            "'O02014009','240','2003.02.20','O00001003',1; "
            "'O02014009','240','2003.02.20','O00001004',1; "
            "'O02014009','240','2003.02.20','O00001005',1; ");
  host.store().failNext(1299, "Duomenų bazės klaida!");
  DO(user.click(form->cmdGo));
  EXPECT_EQ(told(), Texts{"Duomenų bazės klaida!"});
  EXPECT_EQ(form->lvwBROper.rows().size(), 9U) << "it is still the answer to what is asked";
  host.store().serve("GetDebtsByDebit", [](const std::string&) -> HostResult {
    throw std::runtime_error("ryšys nutrūko");
  });
  DO(user.check(form->chkByFirmChildrens, false));
  EXPECT_EQ(form->lvwBROper.rows().size(), 0U) << "of another question";
  DO(user.click(form->cmdGo));
  EXPECT_EQ(told(), Texts{"Klaida!\r\nryšys nutrūko"});
}

TEST_F(SelectionScreen, FindsThePartyByADocument) {
  const auto found = [](std::initializer_list<std::pair<const char*, const char*>> parties) {
    const RowSetPtr rows = rowsOf("ClientName|FOIDR|OIDR|DateD:date|Number|SumA:double");
    for (const auto& [name, reference] : parties) {
      rows->AddNew();
      (*rows)["ClientName"] = name;
      (*rows)["FOIDR"] = reference;
      (*rows)["OIDR"] = "O02015006";
      (*rows)["Number"] = "S-1";
      (*rows)["SumA"] = 680.0;
    }
    return rows;
  };
  auto form = select(kPaysAny);
  ui::Input user(*form);
  const auto find = [&] {
    host.dialogs().inputs.push_back("S-1");
    DO(user.pick(form->mnuFind));
  };
  const char* const routine = "DO0201500_GetBROpersByNumber";
  host.store().serve(routine, found({{"UAB Klevas", "O00001004"}}));
  find();
  EXPECT_EQ(host.dialogs().inputsShown.back(),
            (Texts{"Dokumento numeris:", "Dokumento paieška", ""}));
  EXPECT_EQ(asked(routine), "'S-1',-1; ");
  EXPECT_EQ(form->txtAddr.text() + " " + form->txtAddr.tag, "UAB Klevas O00001004");
  EXPECT_EQ(form->lvwBROper.current(), 1) << "the document itself";
  host.store().serve(routine, found({{"UAB Klevas", "O00001004"}, {"UAB Uosis", "O00001008"}}));
  host.screens().users.push_back([](ui::Form& shown) {
    auto& choice = dynamic_cast<frmBROperSelect_Find&>(shown);
    expectScreen(choice, "frmBROperSelect_Find");
    DO(ui::Input(choice).activate(choice.lvwFound, 1));
  });
  find();
  EXPECT_EQ(form->txtAddr.text(), "UAB Uosis");
  host.store().serve(routine, found({}));
  find();
  EXPECT_EQ(told(), Texts{"Neapmokėto dokumento tokiu numeriu nėra!"});
  host.store().failNext(1299, "Duomenų bazės klaida!");
  find();
  EXPECT_EQ(told(), Texts{"Klaida!\r\nDO0201500_GetBROpersByNumber:\r\nDuomenų bazės klaida!"});
  EXPECT_EQ(form->txtAddr.text(), "UAB Uosis");
}

TEST_F(SelectionScreen, OrdersAndOffersOfTheTrade) {
  const RowSetPtr rows = rowsOf(
      "OIDR|DateD:date|Number|Comment|SumA:double|SumCurr:double|CurrCode|SumRest:double|"
      "SumRestCurr:double|RestCurrCode|CurrRate:double\n"
      "O10001001|~|U-1|Užsakymas|100|~|~|30|~|~|~");
  (*rows)["DateD"] = kToday;
  for (const char* routine : {"GetOrder_BROpers", "GetOffer_BROpers"})
    host.store().serve(routine, rows);
  const struct {
    const char *kind, *routine, *caption;
    double paid;
  } cases[] = {{"O0201501", "GetOrder_BROpers", "Likutis, Lt", 30},
               {"O0201503", "GetOrder_BROpers", "Likutis, Lt", 30},
               {"O0201502", "GetOffer_BROpers", "Apmokėta, Lt", 70},
               {"O0201504", "GetOffer_BROpers", "Apmokėta, Lt", 70}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.kind);
    auto form = select(kPaysAny, c.kind);
    ui::Input user(*form);
    EXPECT_FALSE(form->dtpDate.enabled);
    DO(user.choose(form->optTradeDocOpers));
    DO(user.date(form->dtpDate, DateTime::Of(2003, 1, 1)));
    DO(user.click(form->cmdGo));
    EXPECT_EQ(asked(c.routine), "'0','2003.01.01','O00001003',-1; ");
    EXPECT_EQ(form->lvwBROper.columns[5].caption, c.caption);
    EXPECT_EQ(form->lvwBROper.rows()[0].cells[5].text, "30,00");
    DO(user.check(form->lvwBROper, 0, true));
    DO(user.click(form->cmdOK));
    EXPECT_EQ((*answer)["PaymentSum"].Number(), c.paid);
    EXPECT_EQ((*answer)["AddrOIDR"].Text(), "O00001003");
  }
}

TEST_F(SelectionScreen, OpensWithoutAMarkInThePlan) {
  serveMarks({{"536", "500"}});
  auto form = select(kPaysLitas);
  EXPECT_EQ(told(),
            Texts{"Sąskaitų žinyne nepažymėta valiutos kursų pasikeitimo įtakos sąskaita!"});
  EXPECT_TRUE(form->isOpen());
}

}  // namespace
}  // namespace tolvex::test
