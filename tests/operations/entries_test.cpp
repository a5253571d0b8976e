#include "operations/entries.h"

#include <gtest/gtest.h>

#include "framework/text.h"
#include "operations/entry_editor.h"
#include "operations/entry_rules.h"
#include "operations/entry_tests.h"
#include "tests/operations/operation_world.h"

namespace tolvex::test {
namespace {

class Entries : public OperationWorld {};

std::vector<Variant> fullCall(double sum, int sign, const char* code, double rate, double sum2 = 0,
                              const char* code2 = "", double rate2 = 0) {
  return {"240", "500", sum, Variant(Variant::Array{}), sign, code, rate, sum2, code2, rate2};
}

// The currency rows of the last entry: "1 USD 100 3.4528; …".
std::string currencies(RowSet& BR) {
  std::string text;
  const RowSetPtr rows = BR["BRCurrency"].Rows();
  ForEachRow(*rows, [&](RowSet& row) {
    if (!text.empty()) text += "; ";
    text += join({plainNumber(row["Sign"].Number()), std::string(row["FCurrencyCode"].Text()),
                  plainNumber(row["SumCurr"].Number()), plainNumber(row["RateCurr"].Number())},
                 " ");
  });
  return text;
}

TEST_F(Entries, AddBRSumsAndCurrencySides) {
  const struct {
    const char* name;
    std::vector<Variant> par;
    double SumA;
    const char* currencies;
  } kCases[] = {
      {"litas", fullCall(10.555, 0, "", 0), 10.56, ""},
      {"first currency", fullCall(100, 1, "USD", 3.4528), 345.28, "1 USD 100 3.4528"},
      {"the product is lifted over its half", fullCall(1, 1, "USD", 1.005), 1.01, "1 USD 1 1.005"},
      {"the second's product too", fullCall(0, 1, "", 0, 1, "USD", 1.005), 1.01, "-1 USD 1 1.005"},
      {"first on the credit", fullCall(100, -1, "USD", 3.4528), 345.28, "-1 USD 100 3.4528"},
      {"second takes the other side", fullCall(0, 1, "", 0, 100, "EUR", 3.4528), 345.28,
       "-1 EUR 100 3.4528"},
      {"two currencies", fullCall(100, 1, "USD", 2, 50, "EUR", 4), 200, "1 USD 100 2; -1 EUR 50 4"},
      {"no sign: one currency on both sides", fullCall(100, 0, "USD", 3), 300,
       "1 USD 100 3; -1 USD 100 3"},
      {"no sign: the second when there is no first", fullCall(0, 0, "", 0, 10, "EUR", 3), 30,
       "1 EUR 10 3; -1 EUR 10 3"},
      {"litas by name have no row", fullCall(100, 1, "LTL", 1), 100, ""},
      {"blanks have no row", fullCall(100, 1, "   ", 2), 200, ""},
      {"a code without rate makes a row of zeros", fullCall(5, 1, "USD", 0), 5, "1 USD 0 0"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const MethodResult result = call("AddBR", c.par);
    ASSERT_EQ(result.Code, kDone) << result.Text;
    EXPECT_EQ(BR()["GUID"].Text(), result.Value.AsText());
    EXPECT_EQ(BR()["SumA"].Number(), c.SumA);
    EXPECT_EQ(currencies(BR()), c.currencies);
  }
}

// In the order of the tests: each row would fail the next one as well.
TEST_F(Entries, AddBRRefusalsChangeNothing) {
  const Variant::Array four = {1, "O00001001", "x", 2};
  const auto with = [](std::vector<Variant> par, const Variant::Array& list) {
    par[3] = Variant(list);
    return par;
  };
  const struct {
    const char* name;
    std::vector<Variant> par;
    const char* want;
  } kCases[] = {
      {"number of arguments", {"240", "500", 1.0}, "Method AddBR_0:\r\nKlaidingi parametrai !"},
      {"a sign that is none", with(fullCall(100, 2, "USD", 2, 50, "EUR", 5), four),
       "Method AddBR_1:\r\nKlaidingi parametrai !\r\n'240','500'\r\n'100','2','USD'\r\n"
       "'50','5','EUR'\r\n'2'"},
      {"a sum without code", with(fullCall(0.5, 0, "", 3.4528), four),
       "Method AddBR_1:\r\nKlaidingi parametrai !\r\n'240','500'\r\n'0,5','3,4528',''\r\n"
       "'0','0',''\r\n'0'"},
      {"a rate without sum", with(fullCall(10, 0, "", 0, 0, "EUR", 3), four),
       "Method AddBR_1:\r\nKlaidingi parametrai !\r\n'240','500'\r\n'0','0',''\r\n"
       "'0','3','EUR'\r\n'0'"},
      {"addressees", with(fullCall(100, 1, "USD", 2, 50, "EUR", 5), four),
       "Method AddBR_2:\r\nKlaidingi parametrai !\r\nn=3"},
      {"two currencies", fullCall(100, 1, "USD", 2, 50, "EUR", 5),
       "Nesutampa dviejų valiutų litinė išraiška !"},
  };
  add("240", "500", 7);
  const std::string before = printed();
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const MethodResult result = call("AddBR", c.par);
    EXPECT_EQ(result.Code, kRefused);
    EXPECT_EQ(result.Text, c.want);
    EXPECT_EQ(printed(), before);
  }
  std::vector<Variant> noAccount = fullCall(1, 0, "", 0);
  noAccount[1] = "";
  EXPECT_EQ(call("AddBR", noAccount).Value, Variant(""));
  EXPECT_EQ(printed(), before);
}

TEST_F(Entries, AddBRKeepsWhatItIsGiven) {
  NewEntry entry;
  entry.AccountD = "240";
  entry.AccountC = "500";
  entry.sums.sum = 1;
  std::string longText;
  for (int i = 0; i < 801; ++i) longText += "ž";
  addAddressee(entry.addressees, 1, "O000010015", longText);
  addAddressee(entry.addressees, 0, "O000010016", "no side");
  addAddressee(entry.addressees, -1, "O0000100", "a bare kind");
  entry.date = "2003.01.31";
  entry.FGUID = "F";
  entry.trade = {2, 0, -1};
  ASSERT_EQ(call("AddBR", entry.arguments()).Code, kDone);
  EXPECT_EQ(BR()["DateD"].Value(), Variant(DateTime::Of(2003, 1, 31)));
  EXPECT_EQ(BR()["FGUID"].Text(), "F");
  EXPECT_EQ(BR()["VATTariff"].Value(), Variant(0.0)) << "a tariff of zero is a tariff";
  EXPECT_EQ(BR()["RestoringSign"].Number(), -1);
  const RowSetPtr addressees = BR()["BRProperties"].Rows();
  ASSERT_EQ(addressees->RecordCount(), 1u);
  addressees->MoveFirst();
  EXPECT_EQ(length((*addressees)["ShowString"].Text()), 800u);

  ASSERT_EQ(call("AddBR", {"240", "500", 1.0, Variant(Variant::Array{Variant(1)})}).Code, kDone)
      << "a list of one element holds no addressee";
  EXPECT_TRUE(BR()["VATTariff"].IsNull());
  EXPECT_TRUE(BR()["FGUID"].IsEmpty());
  EXPECT_EQ(BR()["DateD"].Value(), Variant(host.clock().today())) << "the operation had no date";
  EXPECT_EQ(operation->Fields()["DateD"].Value(), Variant(host.clock().today()));
}

TEST_F(Entries, AnUnreadableDateIsAFaultBeforeTheFirstWrite) {
  const std::string before = printed();
  NewEntry entry;
  entry.AccountD = entry.AccountC = "240";
  entry.date = "vakar";
  const MethodResult result = call("AddBR", entry.arguments());
  EXPECT_EQ(result.Code, RowSetError::TypeMismatch);
  EXPECT_TRUE(result.Text.starts_with("Klaida!\r\n"));
  EXPECT_EQ(printed(), before);
}

TEST_F(Entries, NewEntrySaysItsPositionsOnce) {
  NewEntry entry;
  entry.AccountD = "240";
  EXPECT_EQ(entry.arguments().size(), 4u);
  entry.sums.rate = 2;
  EXPECT_EQ(entry.arguments().size(), 7u);
  entry.sums.sumCurr2 = 2;
  EXPECT_EQ(entry.arguments().size(), 10u);
  entry.date = "2003.01.01";
  EXPECT_EQ(entry.arguments().size(), 13u);
  entry.trade.RestoringSign = -1;
  const std::vector<Variant> all = entry.arguments();
  ASSERT_EQ(all.size(), 17u);
  EXPECT_EQ(NewEntry::from(all).arguments(), all);
}

RowSetPtr templateLines() {
  const RowSetPtr lines = table({{"ID", FieldType::Integer},
                                 {"AccountD", FieldType::Text},
                                 {"AccountC", FieldType::Text},
                                 {"Factor", FieldType::Double},
                                 nestedColumn("RequiredAddr", kRequiredAddr)},
                                {{11, "240", "500", 1.0}, {12, "240", "443", 0.5}});
  const RowSetPtr required = (*lines)["RequiredAddr"].Rows();
  required->LoadRow();
  (*required)["FOID"] = "O0000100";
  (*required)["Sign"] = 1;
  return lines;
}

TEST_F(Entries, AddTemplateSharesTheSumOut) {
  host.store().serve("GetTemplateAccAndAddr", templateLines());
  TemplateEntries entries;
  entries.BRTemplateID = 33;
  entries.sums = {100.01, 0, "USD", 1, 0, "", 0};
  ASSERT_EQ(call("AddTemplate", entries.arguments()).Value, Variant(true));
  EXPECT_EQ(host.store().calls.back(),
            (FakeBusinessObject::Call{"GetTemplateAccAndAddr", "'O020160033'"}));
  ASSERT_EQ(BR().RecordCount(), 2u);
  BR().MoveFirst();
  EXPECT_EQ(BR()["SumA"].Number(), 100.01);
  EXPECT_EQ(BR()["BRTemplateAccID"].Number(), 11);
  EXPECT_EQ(currencies(BR()), "1 USD 100.01 1") << "without a sign the first is the debit side";
  EXPECT_EQ(BR()["RequiredAddr"].Rows()->RecordCount(), 1u);
  BR().MoveNext();
  EXPECT_EQ(BR()["SumA"].Number(), 50.01) << "half of 100,01 is lifted over the half cent";
  EXPECT_EQ(BR()["RequiredAddr"].Rows()->RecordCount(), 0u);
}

TEST_F(Entries, AddTemplateRefusalsChangeNothing) {
  const std::string before = printed();
  EXPECT_EQ(call("AddTemplate", {0, 1.0, Variant(Variant::Array{})}).Text,
            "Method AddTemplate_1:\r\nKlaidingi parametrai !\r\n'0'\r\n'0','0',''\r\n'0','0',''"
            "\r\n'0'");
  EXPECT_EQ(call("AddTemplate", {1, 1.0, Variant(Variant::Array{1, 2})}).Text,
            "Method AddTemplate_2:\r\nKlaidingi parametrai !\r\nn=1");
  host.store().failNext(1205, "nutrūko");
  EXPECT_EQ(call("AddTemplate", {1, 1.0, Variant(Variant::Array{})}).Code, 1205);
  EXPECT_EQ(texts(), std::vector<std::string>{"nutrūko"}) << "told once, by the read";
  EXPECT_EQ(printed(), before);
}

TEST_F(Entries, CreateBRNeitherRoundsNorTests) {
  EXPECT_EQ(call("CreateBR", {"2003.01.01", 1.0, "240"}).Text,
            "Not set parameter for CreateBR method !");
  EXPECT_EQ(BR().RecordCount(), 0u);
  EXPECT_EQ(call("CreateBR", {"2003.01.01", 1.005, "?", "?", "info"}).Value, Variant(true));
  EXPECT_EQ(BR()["SumA"].Number(), 1.005);
  EXPECT_TRUE(BR()["BRTemplateAccID"].IsNull());
  EXPECT_EQ(BR()["Info"].Text(), "info");
  EXPECT_TRUE(BR()["Tag"].IsEmpty());
}

TEST_F(Entries, DeleteBRCases) {
  const struct {
    const char* name;
    std::vector<Variant> par;
    const char* left;  // debit accounts of what is left
  } kCases[] = {
      {"all", {""}, ""},
      {"all, whatever the sign", {"", 5}, ""},
      {"by debit account", {"240", 1}, "2711 450"},
      {"by credit account", {"240", -1}, "240 240 450"},
      {"by either", {"240", 0}, "450"},
      {"an unknown GUID", {"G9"}, "240 240 2711 450"},
      // The second 240 has another client and stays; the first one has no addressee and goes.
      {"by account and addressee", {"240", 1, "O00001001"}, "240 2711 450"},
      {"the addressee of the other side", {"240", -1, "O00001002"}, "240 240 2711 450"},
      {"on any side with sign 0", {"240", 0, "O00001002"}, "2711 450"},
      {"a short reference does not restrict", {"240", 1, "O0000100"}, "2711 450"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    (void)call("DeleteBR", {""});
    add("240", "500", 10);
    add("240", "500", 20, triple(1, "O00001002", "Kitas"));
    add("2711", "240", 30, triple(-1, "O00001003", "Trečias"));
    add("450", "2711", 0);
    (void)call("TestOper", {BR()["GUID"].Value()});  // leaves a filter
    EXPECT_EQ(call("DeleteBR", c.par).Value, Variant(true));
    EXPECT_EQ(BR().Filter(), "");
    std::vector<std::string> left;
    ForEachRow(BR(), [&](RowSet& row) { left.emplace_back(row["AccountD"].Text()); });
    EXPECT_EQ(join(left, " "), c.left);
  }
}

TEST_F(Entries, DeleteBRRefusals) {
  EXPECT_EQ(call("DeleteBR", {"240", 5}).Code, kDone) << "without entries nothing is looked at";
  const std::string guid = add("240", "500", 10);
  (void)call("TestOper", {guid});
  const std::string before = printed();
  const MethodResult wrong = call("DeleteBR", {"240", 5});
  EXPECT_EQ(wrong.Text, "DeleteBR : Klaidingi parametrai !");
  EXPECT_EQ(wrong.Value, Variant(false));
  EXPECT_EQ(call("DeleteBR", {}).Text, "Method CurrencyRates_0:\r\nKlaidingi parametrai !");
  EXPECT_EQ(printed(), before);
}

TEST_F(Entries, SetBRAddresseeReplacesWithinKindAndSide) {
  add("240", "500", 1);
  require(1, "O0000100");
  const auto shown = [&] { return AddresseeKeyString(*BR()["BRProperties"].Rows()); };
  SetBRAddressee(&BR(), 1, "O00014011", "Darbuotojas", true);
  EXPECT_EQ(shown(), "") << "not asked for";
  SetBRAddressee(&BR(), 1, "O00001001", " Pirma ", true);
  SetBRAddressee(&BR(), -1, "O00001005", "Kredito", true);
  EXPECT_EQ(shown(), "DO00001001#Pirma");
  SetBRAddressee(&BR(), 1, "O00001002", "Antra", false);
  SetBRAddressee(&BR(), -1, "O00001005", "Kredito", false);
  SetBRAddressee(&BR(), 0, "O00001006", "Be pusės", false);
  EXPECT_EQ(shown(), "DO00001002#Antra#CO00001005#Kredito");
  EXPECT_EQ(BR()["BRProperties"].Rows()->RecordCount(), 2u);
}

TEST_F(Entries, AddresseeKeyStringPassesOverOperations) {
  Variant::Array list;
  addAddressee(list, 1, "O02015007", "Operacija");
  addAddressee(list, -1, "O00014021", "Jonas");
  addAddressee(list, -1, "O00014022", "Petras");
  add("240", "500", 1, list);
  EXPECT_EQ(AddresseeKeyString(*BR()["BRProperties"].Rows()), "CO00014021#Jonas");
}

// --- tests of entries
// ------------------------------------------------------------------------------

TEST_F(Entries, TestOperTellsTheFirstFailureWithItsEntry) {
  add("240", "500", 1);
  const std::string bad = add("240", "9", 1234.5);
  const MethodResult loose = call("TestOper", {});
  EXPECT_EQ(loose.Code, kFailedTest);
  EXPECT_EQ(loose.Text,
            "Klaidinga  balansinės sąskaitos reikšmė!\r\n240 9 1\xC2\xA0"
            "234,50");
  EXPECT_TRUE(loose.Value.IsEmpty());
  EXPECT_EQ(BR()["GUID"].Text(), bad) << "the cursor stands on the failing entry";
  EXPECT_EQ(call("TestOper", {bad, true}).Code, kRefused);
  EXPECT_EQ(BR().RecordCount(), 1u) << "the filter stays";
  EXPECT_EQ(call("TestOper", {""}).Code, kFailedTest) << "an empty GUID counts as none given";
  BR().SetFilter("SumA = 1");
  EXPECT_EQ(call("TestOper", {}).Value, Variant(true));
}

TEST_F(Entries, TestAccountAsksTheStoreOnceAndNeverForZero) {
  EXPECT_EQ(call("TestAccount", {"0"}).Value, Variant(true));
  EXPECT_TRUE(host.store().calls.empty());
  EXPECT_EQ(call("TestAccount", {"240"}).Value, Variant(true));
  EXPECT_EQ(call("TestAccount", {"24"}).Value, Variant(false));
  EXPECT_EQ(host.store().calls.size(), 1u);
  EXPECT_EQ(call("TestAccount", {}).Text, "Not set parameter for TestAccount method !");
}

TEST_F(Entries, AFailedReadOfAccountsIsPassedOnAndNotRepeated) {
  add("240", "500", 1);
  host.store().failNext(1205, "nutrūko");
  EXPECT_EQ(call("TestOper", {}).Code, 1205);
  EXPECT_EQ(call("TestOper", {}).Code, kFailedTest) << "the empty list is kept";
  EXPECT_EQ(host.store().calls.size(), 1u);
}

TEST_F(Entries, TheListAgreesWithTheSingleTestAndLeavesTheCursor) {
  NewEntry foreign;
  foreign.AccountD = "240";
  foreign.AccountC = "500";
  foreign.sums = {100, 1, "USD", 3.4528, 0, "", 0};
  addAddressee(foreign.addressees, 1, "O02015009", "2003.01.01 5");
  ASSERT_EQ(call("AddBR", foreign.arguments()).Code, kDone);
  const std::string bad = add("?", "?", 0);
  (void)call("TestOper", {bad});
  const std::vector<EntryLine> lines = TestAllEntries(*operation);
  EXPECT_EQ(BR()["GUID"].Text(), bad);
  EXPECT_EQ(BR().RecordCount(), 1u);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].code, kDone);
  EXPECT_EQ(lines[0].sum, "345,28");
  EXPECT_EQ(lines[0].currencyD, "100,00 USD");
  EXPECT_EQ(lines[0].currencyC, "");
  EXPECT_EQ(lines[0].pointer, "2003.01.01 5");
  EXPECT_EQ(lines[1].code, kRefused);
  EXPECT_EQ(lines[1].hint, "Klaidinga sumos reikšmė!\r\n? ? 0,00");
}

// --- the editor
// --------------------------------------------------------------------------------------

class FakeEditor final : public ui::Form {
 public:
  explicit FakeEditor(HostContext& host) : Form(host, kEntryEditor) {}
  const char* picture() const override { return ""; }
};

TEST_F(Entries, ShowBRDecidesWhatTheEditorMay) {
  std::vector<EntryEditorRequest> requests;
  tables->forms.add<EntryEditorRequest>(kEntryEditor, [&](const EntryEditorRequest& request) {
    requests.push_back(request);
    return std::make_shared<FakeEditor>(request.host);
  });
  const std::string guid = add("240", "500", 1);
  const std::string free = "O0201500O0000500O0000300O0000100O0001402O0001401";
  const struct {
    const char* name;
    const char *OIDR, *FOIDR;
    std::vector<Variant> further;
    bool readOnly;
    std::string allowed;
  } kCases[] = {
      {"plain", "", "", {}, false, ""},
      {"read-only operation", "O02015005", "O02015005", {true}, true, ""},
      {"read-only document", "O02015005", "O02015045", {true}, true, free},
      {"false restricts nothing", "O02015005", "O02015045", {false}, false, ""},
      {"list on a new operation", "", "", {"O0000100"}, false, "O0000100"},
      {"list on a stored operation", "O02015005", "O02015005", {"O0000100"}, false, "O0000100"},
      {"list on a document", "O02015005", "O02015045", {"O0000100"}, true, "O0000100"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    operation->Fields()["OIDR"] = c.OIDR;
    operation->Fields()["FOIDR"] = c.FOIDR;
    host.screens().users.push_back([](ui::Form& form) { form.result = kSaveOperation; });
    std::vector<Variant> par = {guid};
    par.insert(par.end(), c.further.begin(), c.further.end());
    EXPECT_EQ(call("ShowBR", par).Value, Variant(kSaveOperation));
    EXPECT_EQ(requests.back().readOnly, c.readOnly);
    EXPECT_EQ(requests.back().allowed, c.allowed);
    EXPECT_TRUE(requests.back().mayChange);
  }
  operation->Preview(true);
  host.screens().users.push_back([](ui::Form&) {});
  EXPECT_EQ(call("ShowBR", {guid, false, false, 1}).Value, Variant(0));
  EXPECT_TRUE(requests.back().readOnly);
  EXPECT_FALSE(requests.back().mayChange);
  EXPECT_EQ(requests.back().mode, 1);
  EXPECT_EQ(call("ShowBR", {}).Text, "ShowBR: nėra parametrų !");
  EXPECT_EQ(call("ShowBR", {"G77"}).Text, "ShowBR: nėra įrašo !");
}

}  // namespace
}  // namespace tolvex::test
