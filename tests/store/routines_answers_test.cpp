// Routines over the demo company, whose figures are worked out by hand: each engine must give them.
#include <gtest/gtest.h>

#include <set>

#include "framework/text.h"
#include "host/store/demo.h"
#include "host/store/routines.h"
#include "tests/store/oper_books.h"
#include "tests/store/routine_answers.h"

namespace tolvex::store {
namespace {

struct Ask {
  const char *name, *kind, *method, *parameters, *columns, *want;
};

class Answers : public ::testing::TestWithParam<Store> {
 protected:
  void SetUp() override {
    if (GetParam() == Store::Postgres)
      place_ = OperPlace::postgres();
    else
      place_ = std::make_unique<OperPlace>(GetParam());
    if (!place_) GTEST_SKIP() << "no PostgreSQL server for tests";
    session_ = place_->open();
    fillDemo(*session_);
  }
  void TearDown() override {
    session_.reset();
    place_.reset();
  }
  template <std::size_t N>
  void expectAll(const Ask (&table)[N]) {
    for (const Ask& ask : table) {
      SCOPED_TRACE(ask.name);
      EXPECT_EQ(answerText(*session_, ask.kind, ask.method, ask.parameters, ask.columns), ask.want)
          << ask.method << "(" << ask.parameters << ")";
    }
  }
  std::unique_ptr<OperPlace> place_;
  std::unique_ptr<Session> session_;
};

constexpr const char* kOper = "O0201500";
constexpr const char* kItem = "OIDR,SumA,LikutisLt,LikutisCurr,FCurrencyCode,InfluenceSign";

constexpr Ask kBalances[] = {
    {"the trial balance at the end of the quarter", kOper, "GetAccountsTotal", "'2004.03.31',''",
     "Account,SumA,AccType",
     "0|0|D\n204|32600|D\n240|1360|D\n2441|180|D\n255|300|D\n2711|47090|D\n2721|1700|D\n"
     "301|82000|K\n4461|360|K\n450|0|K\n500|2000|K\n536|100|K\n600|1200|D\n636|30|D"},
    {"within a month and before most of it", kOper, "GetAccountsTotal", "'2004.01.12'",
     "Account,SumA", "0|0\n204|33800\n2441|180\n2711|50000\n2721|2000\n301|82000\n450|3980"},
    {"before the first entry", kOper, "GetAccountsTotal", "'2003.12.30',''", "Account,SumA", ""},
    {"of one firm", "O0200500", "GetAccountsTotal", "'2004.02.28','O00001002'", "Account,SumA",
     "2711|-500\n450|2300"},
    {"of a kind of addressee", kOper, "GetAccountsTotal", "'2004.03.31','O0001401'", "Account,SumA",
     "255|300"},
    {"one account, by currency", kOper, "GetAccountTotal", "'450','2004.02.28','O00001002',-1",
     "LikutisLt,LikutisCurr,FCurrencyCode", "680|0|   \n1620|600|USD"},
    {"a rest of nothing gives no row", kOper, "GetAccountTotal", "'450','2004.03.31','',-1",
     "LikutisLt", ""},
    {"an account that is none", kOper, "GetAccountTotal", "'999','2004.03.31','',1", "LikutisLt",
     ""},
    {"the start of a day, with what stands below", "O0200500", "GetAccountRest",
     "'27','2004.02.05',''", "RestLt,CurrCode,RestCurr", "51700|LTL|0"},
    {"a turnover", "O0200500", "GetAccountsTurnover", "'2004.01.15','2004.01.31','',''",
     "Account,SumA", "204|-1200\n240|2360\n4461|360\n500|2000\n600|1200"},
    {"a turnover without the closing account", "O0200500", "GetAccountsTurnover",
     "'2003.12.01','2004.01.10','30',''", "Account,SumA",
     "0|-82000\n204|33800\n2441|180\n"
     "2711|50000\n2721|2000\n301|82000\n450|3980"},
    {"a client on accounts with a mark", "O0000100", "GetSaldoByAccountCode", "3,'240'", "Saldo",
     "1360"},
    {"a client on accounts below a number", "O0000100", "GetSaldoByAccountCode", "'O00001003','24'",
     "Saldo", "1360"},
};

TEST_P(Answers, Balances) { expectAll(kBalances); }

constexpr Ask kDebts[] = {
    {"an invoice before its payments", kOper, "GetDebts1", "'0','450','2004.01.31','O00001002',-1",
     kItem, "O02015001|1180|1180|0|   |1\nO02015004|2800|2800|1000|USD|1"},
    {"paid in part, asked of a later day", kOper, "GetDebts1",
     "'0','450','2004.02.28','O00001002',-1", kItem,
     "O02015001|1180|680|0|   |1\nO02015004|2800|1620|600|USD|1"},
    {"paid wholly", kOper, "GetDebts1", "'0','450','2004.03.31','O00001002',-1", kItem, ""},
    {"the other side of the account is empty", kOper, "GetDebts1",
     "'0','450','2004.02.28','O00001002',1", kItem, ""},
    {"a buyer's", kOper, "GetDebts1", "'0','240','2004.03.31','O00001003',1", kItem,
     "O02015008|2360|1360|0|   |-1"},
    {"its document, accounts, rate and debtor", kOper, "GetDebts3", "'0','450','2004.02.28','',-1",
     "FOIDR,OType,DateD,Number,AccountD,AccountC,RateCurr,AddrOIDR,AddrName",
     "O02015001|O0201500|2004.01.10|P-0001|204|450|0|O00001002|UAB Tiekėjas\n"
     "O02015004|O0201500|2004.01.10|P-0002|204|450|2.8|O00001002|UAB Tiekėjas"},
    {"of a kind", kOper, "GetDebts2", "'0','450','2004.02.28','O0000100',-1", "OIDR",
     "O02015001\nO02015004"},
    {"of a kind that has none", kOper, "GetDebts2", "'0','450','2004.02.28','O0001402',-1", "OIDR",
     ""},
    {"of a group, by id and by reference", kOper, "GetDebts3", "'3','450','2004.02.28','',-1",
     "OIDR", "O02015001\nO02015004"},
    {"of another group", kOper, "GetDebts3", "'O02014004','450','2004.02.28','',-1", "OIDR", ""},
    {"of another group by its id", kOper, "GetDebts3", "'4','450','2004.02.28','',-1", "OIDR", ""},
    {"the side of the name wins", kOper, "GetDebtsByCredit", "'0','450','2004.02.28','',1", "OIDR",
     "O02015001\nO02015004"},
    {"on an account whose items are not kept", kOper, "GetDebtsByDebit",
     "'0','2721','2004.03.31',''", "OIDR,LikutisLt,InfluenceSign", "O02015007|2000|-1"},
    {"one firm's list without a firm", kOper, "GetDebts1", "'0','450','2004.02.28','',-1", "OIDR",
     "1207 GetDebts1: ''"},
    {"whom to cover", kOper, "GetCoverFirms", "'450',-1,'',0,'O0000100','2004.02.28'",
     "ShowString,FOIDR,Sum1,Sum2", "UAB Tiekėjas|O00001002|2300|0"},
    {"nobody on both accounts", kOper, "GetCoverFirms", "'450',-1,'240',1,'O0000100','2004.02.28'",
     "FOIDR", ""},
    {"an invoice by its number", kOper, "GetBROpersByNumber", "'S-0001',1",
     "ClientName,FOIDR,OIDR,SumA", "UAB Pirkėjas|O00001003|O02015008|2360"},
    {"an invoice that is paid", kOper, "GetBROpersByNumber", "'P-0001',-1", "OIDR", ""},
    {"an advance", kOper, "GetAdvanceOverExpenses", "'O00014013'",
     "OIDR,FOIDR,AccountD,FullSum,RestSum,DebtCurrCode,InfluenceSign,SortOrder",
     "O020150010|O020150310|255|300|300|   |-1|1"},
    {"an advance before it was given", kOper, "GetAdvanceOverExpenses",
     "'O00014013','255','2004.01.31'", "OIDR", ""},
    {"the advance stands", kOper, "CheckAdvance", "'10','255'", "OIDR,RestSum,RestSumCurr,CurrCode",
     "O020150010|300|0|   "},
    {"a paid invoice stands with nothing left", kOper, "CheckAdvance", "'O02015001','450'",
     "RestSum", "0"},
    {"an advance that is gone", kOper, "CheckAdvance", "'99','255'", "OIDR", ""},
    {"differences by operations, seen by totals", kOper, "GetCheckInfluenceType",
     "'450','2004.03.31','636',1", "OIDR,SumA", "O02015006|30"},
    {"none by totals, seen by operations", kOper, "GetCheckInfluenceType",
     "'450','2004.03.31','636',0", "OIDR", ""},
    {"the newest up to a day", kOper, "GetCheckInfluenceType", "'450','2004.02.28','636',1",
     "OIDR,SumA", "O02015005|100"},
};

TEST_P(Answers, Debts) { expectAll(kDebts); }

constexpr Ask kReferences[] = {
    {"entries that point at an invoice", kOper, "GetRelatedBR", "'O02015004','O02015004'",
     "OIDR,FOIDR,DateD,AccountD,AccountC,SumA,CurrCodeD,SumCurrD,Sign",
     "O02015005|O02015015|2004.02.10|450|536|100|USD|0|1\n"
     "O02015005|O02015015|2004.02.10|450|2711|1080|USD|400|1\n"
     "O02015006|O02015016|2004.03.10|636|450|30|   |0|-1\n"
     "O02015006|O02015016|2004.03.10|450|2711|1650|USD|600|1"},
    {"payments of an invoice on the account", kOper, "GetPaymentPreview", "'O02015001','450'",
     "OIDR,SumA,CurrCode", "O02015002|500|   \nO02015003|680|   "},
    {"addressees of a side", kOper, "GetBRPropertiesByAcc", "'O02015001','450','',-1",
     "FOIDR,ShowString,Sign", "O00001002|UAB Tiekėjas|-1"},
    {"never a pointer", kOper, "GetBRPropertiesByAcc", "'O02015002','450','',1", "FOIDR",
     "O00001002"},
    {"an addressee that is not there", kOper, "GetBRPropertiesByAcc",
     "'O02015002','450','O00001003',1", "FOIDR", ""},
    {"the client of a pointer", kOper, "CheckBRPointerClient", "'O02015001','O00001002','450'",
     "OIDR", "O02015001"},
    {"another client", kOper, "CheckBRPointerClient", "'O02015001','O00001003','450'", "OIDR", ""},
    {"nobody there to contradict", kOper, "CheckBRPointerClient", "'O02015007','O00001003','2711'",
     "OIDR", "O02015007"},
    {"a pointer at nothing", kOper, "CheckBRPointerClient", "'O020150099','O00001003','2711'",
     "OIDR", ""},
    {"addressees by account", kOper, "GetBROperAddressees", "'O02015008'", "FOIDR,Sign,Account",
     "O00001003|1|240"},
    {"the protocol", kOper, "GetBROperLog", "'O02015001'", "Date,User,Action",
     "2004.03.31 12:00:00|Administratorius|C"},
    {"the group of a group reference", kOper, "GetParent", "O02014003", "OIDR,Name",
     "O02014003|Pirkimai"},
    {"the group of an operation", kOper, "GetParent", "'O02015008'", "Name", "Pardavimai"},
    {"a group by id", kOper, "GetParent", "4", "Name", "Pardavimai"},
    {"above the root", "O0201400", "GetParent", "0", "Name", ""},
    {"an account above", "O0200400", "GetParent", "1", "Account", "1"},
    {"search in comments without case", kOper, "GetBROperSelect",
     "'2004.01.01','2004.12.31',0,'UAB TIEKĖJAS, usd'", "OIDR,SumA", "O02015004|2800"},
    {"orders wait for trade", kOper, "GetOrder_BROpers", "'0','2004.01.01','O00001003',0", "OIDR",
     ""},
};

TEST_P(Answers, References) { expectAll(kReferences); }

constexpr Ask kLists[] = {
    {"rates of a day: stored, fixed", kOper, "GetCurrencyList", "'2004.02.12'",
     "Code,Rate,BaseCurrency", "LTL|0|1\nEUR|3.4528|0\nUSD|2.7|0"},
    {"never an older rate", kOper, "GetCurrencyList", "'2004.12.31'", "Code,Rate",
     "LTL|0\nEUR|3.4528\nUSD|0"},
    {"rates of a journal", "O0200500", "GetCurrencyRates", "'2004.02.12','USD'", "Code,Rate,Date",
     "USD|2.7|2004.02.12"},
    {"rates of a period", "O0200500", "GetCurrencyRates", "'2004.02.09','2004.02.10','USD'",
     "Rate,Date", "2.8|2004.02.09\n2.7|2004.02.10"},
    {"a rate of today", "O0002200", "DO0002200_GetCurrencyRates", "'USD'", "Rate", "2.75"},
    {"the base currency by blanks", kOper, "GetCurrencyByCode", "'   '", "Code", "LTL"},
    {"own accounts, the main one first", kOper, "GetMyFirmAccounts", "None",
     "OIDR,AccOIDR,Preview,MainAccountFlag",
     "O00003001|O00005001|Bankas A, LT037010000000000001|1\n"
     "O00003001|O00005002|Bankas A, LT737010000000000002|0\n"
     "O00003002|O00005003|Bankas B, LT297020000000000003|0"},
    {"accounts of a client, reference bare", kOper, "GetClientAccounts", "O00001003",
     "AccountNumber,SWIFT", "LT897010000000000005|BNKALT2X"},
    {"the account last paid to", kOper, "GetClientLastAccount", "'O00001002'", "AccOIDR",
     "O00005004"},
    {"the newest payment order", kOper, "GetLastPaymentOrder", "'O00001002'", "OIDR,DateD",
     "O02015006|2004.03.10"},
    {"the bank of an account", kOper, "GetBankByAccount", "'O00005004'", "OIDR,Name",
     "O00003002|Bankas B"},
    {"branches by the firm's code", kOper, "GetFirmChildrens", "'130000007'", "OIDR,Name",
     "O00001004|UAB Pirkėjo filialas"},
    {"branches by reference", kOper, "GetFirmChildrens", "'O00001003'", "Code", "130000014"},
    {"no branches of nobody", kOper, "GetFirmChildrens", "''", "OIDR", ""},
    {"who has a code", kOper, "DO0201500_GetFirmsAndUsers", "None", "OIDR",
     "O00001001\nO00001002\nO00001003\nO00001004\nO00001005"},
    {"kinds of addressees", kOper, "GetAddresseeList", "None", "FOID",
     "O0000100\nO0001402\nO0001401\nO0000300\nO0000500\nO0201500\nO0001601\nO0000200"},
    {"kinds that may be required", "O0201600", "GetEnabledAddressee", "None", "FOID",
     "O0000100\nO0001402\nO0001401\nO0000300\nO0000500\nO0201500\nO0001601"},
    {"tariffs", "O0001629", "DO0001629_GetVATtariffs", "None", "Value", "18\n5\n0"},
    {"marked accounts of a code", "O0201400", "GetPresetAccounts", "'2720'", "Account,Name",
     "2721|Kasa litais\n2722|Kasa EUR\n2723|Kasa USD"},
    {"one account", kOper, "GetAccount", "'450'", "Account,Type,GroupFlag", "450|K|0"},
    {"the account of opening balances", kOper, "GetAccount", "'0'", "ID,Name",
     "0|Pradiniai likučiai"},
    {"lines of a template with what they require", kOper, "GetTemplateAccAndAddr", "O020160021",
     "AccountD,AccountC,Factor", "240|500|1\n240|4461|0.18"},
    {"a template that is gone", kOper, "GetTemplateAccAndAddr", "'O020160099'", "ID",
     "16 Objektas panaikintas!"},
    {"templates of a group", "O0201400", "GetTemplateList", "4,'K'",
     "ParentCode,OwnCode,GroupFlag,AccPreview",
     "K4|K31|0|450-2711\nK4|K32|0|2711-240\nK4|K33|0|*-2711"},
    {"templates of the group of a template", "O0201400", "GetTemplateList", "31,'K'", "OwnCode",
     "K31\nK32\nK33"},
    {"instalments", "O0201701", "DO0201701_GetItemsList", "'O02017013'", "Days,Percent",
     "0|30\n30|70"},
    {"comments that begin so", kOper, "GetCommentList", "'UŽ',1,'O0201500'", "Name",
     "Už paslaugas\nUž prekes"},
    {"documents in no register", "O0200500", "GetNotInRegisterDocuments",
     "'2004.01.01','2004.03.31','','PURCHASE'", "DocOIDR,Number,SumA,VATSum",
     "O02015001|P-0001|1000|180"},
    {"of the groups below one", "O0200500", "GetNotInRegisterDocuments",
     "'2004.01.01','2004.03.31','O02014004','PURCHASE'", "DocOIDR", ""},
    {"the register is empty", "O0200500", "GetVATRegister", "'2004.01.01','2004.03.31',1", "OIDR",
     ""},
};

TEST_P(Answers, Lists) { expectAll(kLists); }

TEST_P(Answers, CountEntriesOnBothSidesOnce) {
  savedId(*session_, {.entries = {{.debit = "450", .credit = "450", .sum = 10}}});
  const std::string nodes =
      "\n" + answerText(*session_, "O0200400", "GetConvertingTable", "None", "PreviewO,cn");
  EXPECT_NE(nodes.find("\n450 Skolos tiekėjams už prekes ir paslaugas|10\n"), std::string::npos)
      << nodes;
  EXPECT_EQ(answerText(*session_, "O0200400", "GetAccountPlan", "None", "OIDR"),
            answerText(*session_, "O0200400", "GetConvertingTable", "None", "OIDR"));
}

TEST_P(Answers, ADayRateIsStoredOnceAndRefusedWhenItIsNone) {
  const char* const kRates = "O0002200";
  const auto save = [&](const std::string& parameters) {
    return session_->call(kRates, "SaveDayRate", parameters).Code;
  };
  EXPECT_EQ(save("'USD','2004.05.03',2.81"), kDone);
  EXPECT_EQ(save("'USD','2004.05.03',2.82"), kDone);
  EXPECT_EQ(save("'GBP','2004.05.03',2.82"), kReferred);
  EXPECT_EQ(save("'LTL','2004.05.03',1"), kRuleBroken);
  EXPECT_EQ(save("'USD','2004.05.03',0"), kRuleBroken);
  EXPECT_EQ(answerText(*session_, kRates, "GetCurrencyRates", "'2004.05.03','USD'", "Rate"),
            "2.82");
}

TEST_P(Answers, CommentsAndSettingsAreKept) {
  const std::string id = answerText(*session_, kOper, "SaveComment", "0,'Žyma','O0201500'", "ID");
  EXPECT_EQ(answerText(*session_, kOper, "SaveComment", id + ",'Žymė','O0201500'", "ID"), id);
  EXPECT_EQ(answerText(*session_, kOper, "GetCommentList", "'žym',1,'O0201500'", "ID,Name"),
            id + "|Žymė");
  EXPECT_EQ(answerText(*session_, kOper, "DeleteComment", id, "ID"), id);
  EXPECT_EQ(session_->call(kOper, "DeleteComment", id).Code, kObjectGone);
  EXPECT_EQ(session_->call(kOper, "SaveComment", id + ",'a','O0201500'").Code, kEditedGone);

  EXPECT_EQ(answerText(*session_, kOper, "DebtsCoverParameters", "None", "Value"), "");
  EXPECT_EQ(answerText(*session_, kOper, "DebtsCoverParameters", "'450 D - 240 K#a'", "Value"),
            "450 D - 240 K#a");
  EXPECT_EQ(answerText(*session_, kOper, "DebtsCoverParameters", "None", "Value"),
            "450 D - 240 K#a");
  EXPECT_EQ(answerText(*session_, kOper, "CurrencyRecalculateParameters", "None", "Value"), "");
}

TEST_P(Answers, TheNextNumberIsOfferedByGroupAndYear) {
  const auto next = [&](const char* parameters) {
    return answerText(*session_, kOper, "GetAutoNumber", parameters,
                      "AutoNumber,ANMask,ANPrefix,ANTemplate");
  };
  EXPECT_EQ(next("3,1,'AD',1,'2004.03.01'"), "3|Prefix_AutoNumber|P|0000");
  EXPECT_EQ(next("3,1,'AD',0,''"), "3|Prefix_AutoNumber|P|0000");
  EXPECT_EQ(next("3,1,'AD',1,'2005.01.01'"), "1|Prefix_AutoNumber|P|0000");
  EXPECT_EQ(next("1,1,'AD',1,'2004.03.01'").substr(0, 1), "0") << "the root numbers nothing";
  EXPECT_EQ(answerText(*session_, kOper, "GetBROperMaxNumber", "5", "MaxNumber"), "4");
  EXPECT_EQ(answerText(*session_, kOper, "GetNumber", "5", "Number"), "5");
  EXPECT_EQ(answerText(*session_, kOper, "GetNumber", "3", "Number"), "1") << "P-0001 is no number";
}

// What was spent beyond an advance is no rest of it.
TEST_P(Answers, AnOverspentAdvanceHasARestBelowZero) {
  const int report = savedId(
      *session_, {20040301, {{"240", "255", 350, {{-1, "O00014013"}, {-1, "O020150010"}}}}});
  EXPECT_EQ(answerText(*session_, kOper, "CheckAdvance", "'10','255'", "RestSum"), "-50");
  EXPECT_EQ(answerText(*session_, kOper, "GetAdvanceOverExpenses", "'O00014013','255'",
                       "OIDR,RestSum,InfluenceSign"),
            "O020150010|50|1");
  EXPECT_EQ(session_->erase(kOper, operRef(report)).Code, kDone);
  EXPECT_EQ(answerText(*session_, kOper, "CheckAdvance", "'10','255'", "RestSum"), "300");
}

// A prepayment and an invoice, then a cover that points at both: the invoice keeps what is left.
TEST_P(Answers, ACoverClosesBothItems) {
  const int paid =
      savedId(*session_, {.day = 20040401, .entries = {{"450", "2711", 300, {{1, kFirmB}}}}});
  const int invoice =
      savedId(*session_, {.day = 20040402, .entries = {{"204", "450", 500, {{-1, kFirmB}}}}});
  const auto debts = [&](const char* day, int side) {
    return answerText(*session_, kOper, "GetDebts1",
                      "'0','450','" + std::string(day) + "','O000010077'," + std::to_string(side),
                      "OIDR,LikutisLt");
  };
  EXPECT_EQ(debts("2004.04.30", 1), operRef(paid) + "|300");
  EXPECT_EQ(debts("2004.04.30", -1), operRef(invoice) + "|500");
  const int cover = savedId(
      *session_, {.day = 20040410,
                  .entries = {{"450", "450", 300, {{1, operRef(invoice)}, {-1, operRef(paid)}}}}});
  EXPECT_EQ(debts("2004.04.30", 1), "");
  EXPECT_EQ(debts("2004.04.30", -1), operRef(invoice) + "|200");
  EXPECT_EQ(debts("2004.04.09", 1), operRef(paid) + "|300") << "the day before the cover";
  EXPECT_EQ(debts("2004.04.09", -1), operRef(invoice) + "|500");
  ASSERT_EQ(session_->erase(kOper, operRef(cover)).Code, kDone);
  EXPECT_EQ(debts("2004.04.30", -1), operRef(invoice) + "|500") << "a deleted cover opens it again";
}

// Rent of a quarter, of which one month was written off with a pointer.
TEST_P(Answers, CoversInFutureJoinEachSourceWithItsCovers) {
  const int rent = savedId(*session_, {.day = 20040401, .entries = {{"291", "2711", 300}}});
  const int other = savedId(*session_, {.day = 20040402, .entries = {{"291", "2711", 50}}});
  const int cover = savedId(*session_, {.day = 20040430,
                                        .entries = {{"6123", "291", 100, {{1, operRef(rent)}}},
                                                    {"6123", "291", 50, {{-1, operRef(other)}}}}});
  const auto covers = [&](int only) {
    return answerText(*session_, kOper, "GetCoversInFuture",
                      "'2004.04.01','2004.04.30','291',1," + std::to_string(only),
                      "OIDR,DateD,SumA,RelatedOIDR,BRDate,BRSumA,AccountD,AccountC");
  };
  const std::string first =
      operRef(rent) + "|2004.04.01|300|" + operRef(cover) + "|2004.04.30|100|6123|291";
  EXPECT_EQ(covers(1), first) << "the one that is spread wholly is left out";
  EXPECT_EQ(covers(0), first + "\n" + operRef(other) + "|2004.04.02|50|" + operRef(cover) +
                           "|2004.04.30|50|6123|291");
}

TOLVEX_ALL_STORES(Answers);

// Every routine refuses one argument too many and a wrong type by its own name, before any work.
TEST(RoutineTable, EveryRoutineIsStrict) {
  auto session = memoryBooks();
  for (const Routine& routine : routineTable()) {
    if (routine.parameters == "*") continue;
    const std::string kind =
        routine.kinds == "*" ? "O0201500" : std::string(routine.kinds.substr(0, 8));
    SCOPED_TRACE(kind + " " + std::string(routine.name));
    std::string all;
    for (const char declared : routine.parameters) {
      const char type = static_cast<char>(declared | 0x20);
      all += std::string(all.empty() ? "" : ",") + (type == 'n' || type == 'i' ? "1"
                                                    : type == 'd'              ? "'2004.01.01'"
                                                                               : "'1'");
    }
    const auto refused = [&](const std::string& parameters) {
      const HostResult result = session->call(kind, std::string(routine.name), parameters);
      EXPECT_EQ(result.Code, kWrongParameters) << parameters;
      EXPECT_NE(result.Text.find(routine.name), std::string::npos) << result.Text;
    };
    refused(all.empty() ? "1" : all + ",1");
    for (std::size_t i = 0; i < routine.parameters.size(); ++i) {
      const char type = static_cast<char>(routine.parameters[i] | 0x20);
      if (type == 'r') continue;  // takes texts and whole numbers alike
      std::vector<std::string> parts = split(all, ',');
      parts[i] = type == 't' ? "5" : "'x'";
      refused(join(parts, ","));
    }
  }
}

TEST(RoutineTable, EveryNameIsAnsweredOncePerKindAndOthersAreUnknown) {
  auto session = memoryBooks();
  std::set<std::pair<std::string, std::string>> seen;
  for (const Routine& routine : routineTable())
    for (const std::string& kind : split(routine.kinds, ' '))
      EXPECT_TRUE(seen.emplace(kind, upper(routine.name)).second) << kind << " " << routine.name;
  for (const char* name : {"GetDebts4", "CurrencyRates", "DO0201500_GetNothing", "Number"})
    EXPECT_EQ(session->call("O0201500", name, "None").Code, kUnknownRoutine) << name;
  EXPECT_EQ(session->call("O0201504", "getaccountlist", "None").Code, kDone)
      << "narrow kinds share the routines of their family, in any case";
}

}  // namespace
}  // namespace tolvex::store
