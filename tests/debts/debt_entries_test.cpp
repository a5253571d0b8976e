// Entries from a selection of debts: what every kind of selected line becomes, where a refusal
// leaves the operation, and what the selection is asked.
#include "debts/debt_entries.h"

#include "debts/debt_selection.h"
#include "debts/operation_select.h"
#include "framework/text.h"
#include "tests/operations/operation_world.h"
#include "tests/support/rows.h"

namespace tolvex::test {
namespace {

// One line of a selection, a litas debt of 100,00 on the credit of its account unless a case says
// otherwise.
struct Line {
  std::string OIDR = "O02015005";
  double PaymentSum = 100;
  double PaymentSumCurr = 0;
  std::string PaymentCurrCode = "   ";
  double PaymentCurrRate = 0;
  double DebtSumCurr = 0, DebtCurrRate = 0;
  std::string DebtCurrCode = "   ";
  int DebtSign = 1;
  double ExtSum = 0;
  std::string AddrOIDR = "O00001003", AddrName = "UAB Beržas";
  std::string Acc536 = "536", Acc636 = "636";
};

RowSetPtr selection(const std::vector<Line>& lines) {
  const RowSetPtr rows = RowSet::make(kSelectedOperations);
  for (const Line& line : lines) {
    RowSet& row = *rows;
    row.AddNew();
    row["OIDR"] = line.OIDR;
    row["Comment"] = "2003.01.10 7";
    row["PaymentSum"] = line.PaymentSum;
    row["PaymentSumCurr"] = line.PaymentSumCurr;
    row["PaymentCurrCode"] = line.PaymentCurrCode;
    row["PaymentCurrRate"] = line.PaymentCurrRate;
    row["DebtSumCurr"] = line.DebtSumCurr;
    row["DebtCurrRate"] = line.DebtCurrRate;
    row["DebtCurrCode"] = line.DebtCurrCode;
    row["DebtSign"] = line.DebtSign;
    row["ExtSum"] = line.ExtSum;
    row["AddrOIDR"] = line.AddrOIDR;
    row["AddrName"] = line.AddrName;
    row["Acc536"] = line.Acc536;
    row["Acc636"] = line.Acc636;
    row.Update();
  }
  return rows;
}

// What an entry says, in one line: "443-2711 345.28; 1 USD 100 3.4528; 1 O02015005 -1 O00001003".
std::string shown(RowSet& BR) {
  const auto sides = [](RowSet& rows, auto one) {
    std::vector<std::string> all;
    ForEachRow(rows, [&](RowSet& row) { all.push_back(one(row)); });
    return join(all, " ");
  };
  const auto number = [](Field field) { return plainNumber(field.Number()); };
  std::string text = std::string(BR["AccountD"].Text()) + "-" + std::string(BR["AccountC"].Text()) +
                     " " + number(BR["SumA"]);
  const std::string currencies = sides(*BR["BRCurrency"].Rows(), [&](RowSet& row) {
    return number(row["Sign"]) + " " + std::string(row["FCurrencyCode"].Text()) + " " +
           number(row["SumCurr"]) + " " + number(row["RateCurr"]);
  });
  const std::string addressees = sides(*BR["BRProperties"].Rows(), [&](RowSet& row) {
    return number(row["Sign"]) + " " + std::string(row["FOIDR"].Text());
  });
  if (!currencies.empty()) text += "; " + currencies;
  return text + "; " + addressees;
}

class DebtEntries : public OperationWorld {
 protected:
  DebtEntries() {
    addDebtMethods(tables->methods);
    serveAddressees({{"O00001003", "UAB Beržas"}});
  }

  void serveAddressees(const std::vector<std::pair<std::string, std::string>>& addressees) {
    host.store().serve("GetBRPropertiesByAcc", [addressees](const std::string&) {
      const RowSetPtr rows = table({{"FOIDR", FieldType::Text}, {"ShowString", FieldType::Text}});
      for (const auto& [reference, name] : addressees) {
        rows->LoadRow();
        (*rows)["FOIDR"] = reference;
        (*rows)["ShowString"] = name;
      }
      return HostResult{kDone, "", Variant(rows)};
    });
  }

  static DebtsRequest expense() {
    DebtsRequest request;
    request.byExpense = true;
    request.AccountD = "443";
    request.AccountC = "2711";
    request.code = "   ";
    return request;
  }
  static DebtsRequest income() {
    DebtsRequest request = expense();
    request.byExpense = false;
    request.AccountD = "2711";
    request.AccountC = "240";
    return request;
  }

  MethodResult put(const DebtsRequest& request, const std::vector<Line>& lines) {
    return addDebtEntries(*operation, request, *selection(lines));
  }
  std::vector<std::string> entries() {
    std::vector<std::string> all;
    ForEachRow(BR(), [&](RowSet& row) { all.push_back(shown(row)); });
    return all;
  }
};

using Texts = std::vector<std::string>;

// The entries that one line makes, on an expense of account 443 or an income on 240.
struct LineCase {
  const char* name;
  bool byExpense;
  Line line;
  Texts entries;
};

TEST_F(DebtEntries, OfOneLine) {
  const LineCase cases[] = {
      {"a litas debt paid in litas",
       true,
       {},
       {"443-2711 100; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"a buyer's debt paid in litas",
       false,
       {.DebtSign = -1},
       {"2711-240 100; -1 O02015005 -1 O00001003 1 O00001003"}},
      {"a line without an operation behind it", true, {.OIDR = ""}, {"443-2711 100; "}},
      {"a reference that names a kind only", true, {.OIDR = "O0201500"}, {"443-2711 100; "}},
      {"a loss goes before the payment, on the debt's other side",
       true,
       {.ExtSum = -3.5},
       {"636-443 3.5; -1 O02015005 -1 O00001003",
        "443-2711 100; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"a gain stands on the side of the payment",
       true,
       {.ExtSum = 3.5},
       {"443-536 3.5; 1 O02015005 1 O00001003",
        "443-2711 100; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"a gain on a buyer's debt",
       false,
       {.DebtSign = -1, .ExtSum = 2},
       {"240-536 2; 1 O02015005 1 O00001003",
        "2711-240 100; -1 O02015005 -1 O00001003 1 O00001003"}},
      {"a loss on a buyer's debt",
       false,
       {.DebtSign = -1, .ExtSum = -2},
       {"636-240 2; -1 O02015005 -1 O00001003",
        "2711-240 100; -1 O02015005 -1 O00001003 1 O00001003"}},
      {"a difference alone",
       true,
       {.PaymentSum = 0, .ExtSum = 1.25},
       {"443-536 1.25; 1 O02015005 1 O00001003"}},
      {"the debt's value at its own rate stands above the paid litas",
       true,
       {.PaymentSum = 300, .DebtSumCurr = 100, .DebtCurrRate = 3.4528, .DebtCurrCode = "EUR"},
       {"443-2711 345.28; 1 EUR 100 3.4528; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"a difference on a currency debt names its currency and moves none of it",
       true,
       {.DebtSumCurr = 100, .DebtCurrRate = 2.7, .DebtCurrCode = "USD", .ExtSum = 10},
       {"443-536 10; 1 USD 0 0; 1 O02015005 1 O00001003",
        "443-2711 270; 1 USD 100 2.7; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"one currency on both sides",
       true,
       {.PaymentSumCurr = 100,
        .PaymentCurrCode = "USD",
        .PaymentCurrRate = 2.7,
        .DebtSumCurr = 100,
        .DebtCurrRate = 2.7,
        .DebtCurrCode = "USD"},
       {"443-2711 270; 1 USD 100 2.7 -1 USD 100 2.7; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"a litas debt paid in a currency at its rate",
       true,
       {.PaymentSum = 345.28,
        .PaymentSumCurr = 100,
        .PaymentCurrCode = "EUR",
        .PaymentCurrRate = 3.4528},
       {"443-2711 345.28; -1 EUR 100 3.4528; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"the rate gives way to the litas",
       true,
       {.PaymentSum = 345.29,
        .PaymentSumCurr = 100,
        .PaymentCurrCode = "EUR",
        .PaymentCurrRate = 3.4528},
       {"443-2711 345.29; -1 EUR 100 3.4529; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"the rate gives way to nine decimals",
       true,
       {.PaymentSum = 100,
        .PaymentSumCurr = 29,
        .PaymentCurrCode = "EUR",
        .PaymentCurrRate = 3.4528},
       {"443-2711 100; -1 EUR 28.96 3.453038674; 1 O02015005 1 O00001003 -1 O00001003"}},
      // 0,33 at 0,03 is eleven units; 10,9 of them come to the same cents, and stay as given.
      {"the given sum stays when it comes to the litas",
       true,
       {.PaymentSum = 0.33,
        .PaymentSumCurr = 10.9,
        .PaymentCurrCode = "RUB",
        .PaymentCurrRate = 0.03},
       {"443-2711 0.33; -1 RUB 10.9 0.03; 1 O02015005 1 O00001003 -1 O00001003"}},
      {"a currency payment without a rate is marked and counts as litas",
       true,
       {.PaymentSumCurr = 29, .PaymentCurrCode = "EUR"},
       {"443-2711 100; -1 EUR 0 0; 1 O02015005 1 O00001003 -1 O00001003"}},
  };
  for (const LineCase& c : cases) {
    SCOPED_TRACE(c.name);
    (void)call("DeleteBR", {""});
    const MethodResult result = put(c.byExpense ? expense() : income(), {c.line});
    EXPECT_EQ(result.Text, "");
    EXPECT_TRUE(result.Value == Variant(true));
    EXPECT_EQ(entries(), c.entries);
  }
}

TEST_F(DebtEntries, WhatTheDocumentsRateLeaves) {
  const auto paidInEuros = [](int sign, double debtRate) {
    return Line{.PaymentSumCurr = 100,
                .PaymentCurrCode = "EUR",
                .PaymentCurrRate = debtRate,
                .DebtSumCurr = 100,
                .DebtCurrRate = debtRate,
                .DebtCurrCode = "EUR",
                .DebtSign = sign};
  };
  const struct {
    const char* name;
    bool byExpense;
    double documentRate, debtRate;
    const char* rest;  // the last entry, or "" for none
  } cases[] = {
      {"an expense worth more", true, 3.5, 3.4, "2711-536 10; 1 EUR 0 0; -1 O00001003"},
      {"an expense worth less", true, 3.3, 3.4, "636-2711 10; -1 EUR 0 0; 1 O00001003"},
      {"an income worth more", false, 3.5, 3.4, "636-2711 10; -1 EUR 0 0; 1 O00001003"},
      {"an income worth less", false, 3.3, 3.4, "2711-536 10; 1 EUR 0 0; -1 O00001003"},
      {"the same rate", true, 3.4, 3.4, ""},
      {"a document without a rate", true, 0, 3.4, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    (void)call("DeleteBR", {""});
    DebtsRequest request = c.byExpense ? expense() : income();
    request.code = "EUR";
    request.rateLtPerUnit = c.documentRate;
    EXPECT_EQ(put(request, {paidInEuros(c.byExpense ? 1 : -1, c.debtRate)}).Code, kDone);
    const Texts made = entries();
    ASSERT_EQ(made.size(), *c.rest ? 2U : 1U);
    EXPECT_TRUE(*c.rest == 0 || made.back() == c.rest) << made.back();
  }
}

TEST_F(DebtEntries, TheRestIsOfAllLinesForTheFirstPartyOnTheLastAccounts) {
  DebtsRequest request = expense();
  request.code = "EUR";
  request.rateLtPerUnit = 3.5;
  Line first{
      .PaymentSum = 34, .PaymentSumCurr = 10, .PaymentCurrCode = "EUR", .PaymentCurrRate = 3.4};
  Line second = first;
  second.AddrOIDR = "O00001009";
  second.Acc536 = "5361";
  EXPECT_EQ(put(request, {first, second}).Code, kDone);
  EXPECT_EQ(entries().back(), "2711-5361 2; 1 EUR 0 0; -1 O00001003");
  EXPECT_EQ(entries().size(), 3U);
}

TEST_F(DebtEntries, PointersTakeOneAddresseeOfAKind) {
  serveAddressees({{"O00001003", "UAB Beržas"},
                   {"O00001004", "UAB Klevas"},
                   {"O00014017", "Jonas Jonaitis"},
                   {"O02001009", "Skyrius"},
                   {"O020150077", "operacija"}});
  EXPECT_EQ(put(expense(), {{}}).Code, kDone);
  // The department is no party: it stays on the debt's side.
  EXPECT_EQ(entries(), Texts{"443-2711 100; 1 O02015005 1 O00001003 1 O00014017 1 O02001009"
                             " -1 O00001003 -1 O00014017"});
  EXPECT_EQ(host.store().calls.back().parameters, "'O02015005','443','O00001003',-1");

  serveAddressees({});
  EXPECT_EQ(put(expense(), {{}}).Code, kDone);
  EXPECT_EQ(entries(), Texts{"443-2711 100; 1 O02015005"}) << "a debt of nobody";
}

TEST_F(DebtEntries, NothingChangesWhenAddresseesCannotBeRead) {
  (void)add("443", "2711", 4);
  const auto expectNothing = [&] {
    const MethodResult result = put(expense(), {{.OIDR = ""}, {}});
    EXPECT_NE(result.Code, kDone);
    EXPECT_EQ(result.Text, "Nepavyko perskaityti skolos adresatų !");
    EXPECT_TRUE(result.Value.IsEmpty());
    EXPECT_EQ(column(BR(), "SumA"), "4");
  };
  host.store().failNext(1299, "Duomenų bazės klaida!");
  expectNothing();
  EXPECT_EQ(texts(), Texts{"Duomenų bazės klaida!"});
  host.store().serve("GetBRPropertiesByAcc", [](const std::string&) -> HostResult {
    throw std::runtime_error("ryšys nutrūko");
  });
  expectNothing();
}

TEST_F(DebtEntries, AnEarlierSelectionGoesFirst) {
  const auto earlier = [&] {
    (void)call("DeleteBR", {""});
    (void)add("443", "2711", 1, triple(1, "O00001003", "UAB Beržas"));
    (void)add("443", "2711", 2, triple(1, "O00001004", "UAB Klevas"));
    (void)add("450", "2711", 3, triple(1, "O00001003", "UAB Beržas"));
    (void)add("443", "2711", 4);  // the marked entry, without addressees
  };
  const auto sums = [&] { return column(BR(), "SumA"); };
  earlier();
  EXPECT_EQ(put(expense(), {{}}).Code, kDone);
  EXPECT_EQ(sums(), "2 3 100") << "of this client, and the one without addressees";
  earlier();
  DebtsRequest whole = expense();
  whole.clearWholeAccount = true;
  EXPECT_EQ(put(whole, {{}}).Code, kDone);
  EXPECT_EQ(sums(), "3 100");
}

TEST_F(DebtEntries, StopsAtTheFirstRefusal) {
  Line bad{.PaymentSum = 50, .ExtSum = 7};
  bad.Acc536 = "";
  const MethodResult refusedEntry = put(expense(), {{}, bad, {}});
  EXPECT_EQ(refusedEntry.Code, kRefused);
  EXPECT_TRUE(refusedEntry.Value.IsEmpty());
  EXPECT_EQ(column(BR(), "SumA"), "100") << "what was added stays";
  EXPECT_EQ(texts(), Texts{});

  // A cent at a rate of hundreds is no sum of that currency.
  const RowSetPtr tiny = selection({{.PaymentSum = 0.01,
                                     .PaymentSumCurr = 0.01,
                                     .PaymentCurrCode = "XAU",
                                     .PaymentCurrRate = 1000}});
  tiny->MoveFirst();
  try {
    (void)debtPayment(*tiny);
    ADD_FAILURE() << "a sum that is none";
  } catch (const RowSetError& error) {
    EXPECT_STREQ(error.what(), "Mokama suma nesiekia XAU cento!");
  }
}

// Stands in for the screen: notes the parameters and answers with a selection.
class Choice final : public ui::Form {
 public:
  Choice(const OperationSelectRequest& request, std::string& asked, RowSetPtr answer)
      : Form(request.host, kOperationSelect) {
    asked = dump(*request.parameters);
    request.selected = std::move(answer);
  }
  const char* picture() const override { return ""; }
};

class DebtsCall : public DebtEntries {
 protected:
  DebtsCall() {
    host.store().serve("GetSelectParameters", [](const std::string&) {
      return HostResult{
          kDone, "",
          Variant(rowsOf("OIDR|FOIDR|DateD:date|Comment|Info|PaymentSum:double|"
                         "PaymentSumCurr:double|PaymentCurrCode|PaymentCurrRate:double|"
                         "AccountD|AccountC"))};
    });
    tables->forms.add<OperationSelectRequest>(
        kOperationSelect, [this](const OperationSelectRequest& request) {
          return std::make_shared<Choice>(request, asked, answer);
        });
    for (int i = 0; i < 8; ++i) host.screens().users.push_back([](ui::Form&) {});
  }
  std::string parametersOf(const char* key, std::vector<Variant> par) {
    last = call(key, std::move(par));
    return asked.substr(asked.find('\n') + 1);
  }
  std::string asked;
  RowSetPtr answer;
  MethodResult last;
};

TEST_F(DebtsCall, CrossesTheSides) {
  const DateTime date = DateTime::Of(2003, 2, 9);
  operation->OIDR("O020150042");
  EXPECT_EQ(parametersOf("Debts",
                         {true, "443", "2711", "O00001003", date, 500.0, "UAB Beržas", "   ", 0.0}),
            "O020150042|O00001003|2003.02.09|UAB Beržas|~|500|~|   |0|~|443\n");
  EXPECT_EQ(last.Code, kDone);
  EXPECT_TRUE(last.Value.IsEmpty()) << "given up";
  EXPECT_EQ(parametersOf("Debts", {false, "2711", "240", "O00001003", date, 100.0, "UAB Beržas",
                                   "USD", 2.75, true}),
            "O020150042|O00001003|2003.02.09|UAB Beržas|~|~|100|USD|2.75|240|~\n");
  EXPECT_EQ(parametersOf("Debts", {false, "2711", "240", "", "2003.02.10", 0.0}),
            "O020150042||2003.02.10||~|0|~|   |0|240|~\n");
  EXPECT_EQ(parametersOf("BROperSelect", {"240", "", "O00001003", date}),
            "O020150042|O00001003|2003.02.09|||~|~|~|~|240|\n");
}

TEST_F(DebtsCall, AnswersOnlyWhenEntriesWereMade) {
  const std::vector<Variant> par = {true, "443", "2711", "O00001003", "2003.02.09", 0.0};
  answer = RowSet::make(kSelectedOperations);
  EXPECT_TRUE(call("Debts", par).Value.IsEmpty());
  (void)add("443", "2711", 4);
  EXPECT_TRUE(call("Debts", par).Value.IsEmpty());
  EXPECT_EQ(column(BR(), "SumA"), "4") << "nothing chosen takes nothing away";
  answer = selection({{}});
  EXPECT_TRUE(call("Debts", par).Value == Variant(true));
  EXPECT_EQ(column(BR(), "SumA"), "100");
  const MethodResult chosen = call("BROperSelect", {"", "443", "", "2003.02.09"});
  EXPECT_EQ(chosen.Value.AsRows(), answer);
  host.store().failNext(1299, "Duomenų bazės klaida!");
  const MethodResult failed = call("Debts", par);
  EXPECT_EQ(failed.Code, 1299);
  EXPECT_TRUE(failed.Told);
  EXPECT_EQ(texts(), Texts{"Duomenų bazės klaida!"});
}

}  // namespace
}  // namespace tolvex::test
