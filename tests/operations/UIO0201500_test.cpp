#include "operations/UIO0201500.h"

#include <gtest/gtest.h>

#include "framework/param_dictionary.h"
#include "framework/references.h"
#include "operations/document_form.h"
#include "operations/protocol.h"
#include "tests/operations/operation_world.h"

namespace tolvex::test {
namespace {

class Operation : public OperationWorld {
 protected:
  FakeBusinessObject::Call asked(const char* key, const char* parameters) {
    host.store().serve(std::string("Get") + key, table({{"A", FieldType::Text}}));
    EXPECT_EQ(operation->Properties(key, parameters).Code, kDone);
    return host.store().calls.back();
  }
  using Call = FakeBusinessObject::Call;
};

TEST_F(Operation, KeysOfAClassReachTheStoreInTheirOwnWay) {
  EXPECT_EQ(asked("MyFirmAccounts", "'x'"), (Call{"GetMyFirmAccounts", "None"}));
  EXPECT_EQ(asked("TelebankList", ""), (Call{"GetTelebankList", "None"}));
  EXPECT_EQ(asked("Parent", "'O020140012'"), (Call{"GetParent", "'O020140012'"}));
  EXPECT_EQ(asked("DebtsByCredit", "1,'a'"), (Call{"GetDebtsByCredit", "1,'a'"}));
  host.store().serve("parent", table({{"A", FieldType::Text}}));
  EXPECT_EQ(operation->Properties("parent", "").Code, kDone);
  EXPECT_EQ(host.store().calls.back(), (Call{"parent", ""})) << "keys are compared as exact text";
}

TEST_F(Operation, AFailedReadIsShownOnceAndReturned) {
  host.store().failNext(1205, "nutrūko");
  const MethodResult result = operation->Properties("Parent", "'x'");
  EXPECT_EQ(result.Code, 1205);
  EXPECT_EQ(result.Text, "nutrūko");
  ASSERT_EQ(host.dialogs().shown.size(), 1u);
  EXPECT_EQ(host.dialogs().shown[0].icon, Icon::Exclamation);
}

TEST_F(Operation, CurrenciesOfADayDropTheOldOnesFirst) {
  const RowSetPtr first = operation->Properties("CurrencyList", "").Value.AsRows();
  EXPECT_EQ(host.store().calls.back(), (Call{"GetCurrencyList", "'1990.01.01'"}));
  (void)operation->Properties("CurrencyList", "2003.02.09");
  EXPECT_EQ(host.store().calls.back(), (Call{"GetCurrencyList", "'2003.02.09'"}));
  host.store().serve("GetCurrencyList", table({{"Code", FieldType::Text}}));
  const MethodResult none = operation->Properties("CurrencyList", "");
  EXPECT_EQ(none.Code, kRefused);
  EXPECT_EQ(none.Text, "No any currency in DB...");
  EXPECT_TRUE(host.dialogs().shown.empty()) << "this refusal is not the store's";
}

TEST_F(Operation, RatesLeaveTheBaseCurrencyOutAndTakeTheFirstOfACode) {
  host.store().serve(
      "GetCurrencyList",
      table({{"Code", FieldType::Text},
             {"Rate", FieldType::Double},
             {"BaseCurrency", FieldType::Integer}},
            {{"LTL", 1.0, -1}, {"USD", 2.5, 0}, {"USD", 9.9, 0}, {"EUR", 3.4528, 0}}));
  const DictionaryPtr rates = call("GetCurrencyList", {}).Value.AsDictionary();
  EXPECT_EQ(host.store().calls.back(), (Call{"GetCurrencyList", "'1991.01.01'"}));
  EXPECT_EQ(rates->Keys(), (std::vector<std::string>{"USD", "EUR"}));
  EXPECT_EQ(rates->Item("USD"), Variant(2.5));
  host.objects().makers[kOperationKind] = [&] { return operation; };
  operation->OType("O0201504");
  ASSERT_NE(GetCurrencyDictionary(*operation, DateTime::Of(2003, 1, 2)), nullptr);
  EXPECT_EQ(host.store().calls.back(), (Call{"GetCurrencyList", "'2003.01.02'"}));
}

TEST_F(Operation, RatesOfOneCurrencyAreAskedOfItsKind) {
  host.store().serve("DO0002200_GetCurrencyRates", table({{"Code", FieldType::Text}}));
  (void)call("CurrencyRates", {"USD"});
  (void)call("CurrencyRates", {"2003.01.02", "USD"});
  (void)call("CurrencyRates", {"USD", DateTime::Of(2003, 1, 2)});
  EXPECT_EQ(host.store().trace(),
            "DO0002200_GetCurrencyRates 'USD'\n"
            "DO0002200_GetCurrencyRates '2003.01.02','USD'\n"
            "DO0002200_GetCurrencyRates '2003.01.02','USD'\n");
  EXPECT_EQ(call("CurrencyRates", {}).Text, "Method CurrencyRates_0:\r\nKlaidingi parametrai !");
}

TEST_F(Operation, AddresseesAreReadOnce) {
  (void)operation->Properties("AddresseeList", "");
  (void)operation->Properties("AddresseeList", "");
  EXPECT_EQ(host.store().trace(), "GetAddresseeList None\n");
}

TEST_F(Operation, UnknownActionsDoNothing) {
  const MethodResult result = call("Nothing", {1});
  EXPECT_EQ(result.Code, kDone);
  EXPECT_TRUE(result.Value.IsEmpty());
}

TEST_F(Operation, TheProtocolNamesTheCreatorOnce) {
  (void)call("CreateProtocol", {});
  EXPECT_EQ(operation->Fields()["CreatedByUserName"].Text(), "Jonas Jonaitis");
  ASSERT_EQ(operation->Save(nullptr, nullptr).Code, kDone);
  host.user().user = UserRow{8, "OO", "O00014018", "Ona Onaitė"};
  host.clock().moment = DateTime::Of(2003, 3, 1, 8, 0, 0);
  (void)call("CreateProtocol", {});
  (void)call("ShowProtocol", {});
  EXPECT_EQ(texts(), (std::vector<std::string>{"Jonas Jonaitis\r\n2003.02.09 14:30:15\r\n"
                                               "Ona Onaitė\r\n2003.03.01 08:00:00"}));
}

// --- saving
// ----------------------------------------------------------------------------------------

TEST_F(Operation, AFailedSaveOfANewOperationKeepsWhatWasTyped) {
  operation->Fields()["Number"] = "17";
  const std::string first = add("240", "500", 10, triple(1, "O00001001", "Pirma"));
  add("2711", "240", 20);
  (void)call("TestOper", {first});  // leaves a filter that would lose an entry
  const RowSetPtr typed = operation->RsFields();
  BR()["ID"] = 55;  // an identity that the failed attempt gave out
  host.shelf().saves.push_back({1202, "užrakinta"});
  const SaveResult saved = operation->Save(nullptr, nullptr);
  EXPECT_EQ(saved.Code, 1202);
  EXPECT_NE(operation->RsFields(), typed) << "the record is a fresh one";
  EXPECT_EQ(operation->RsFields()->RecordCount(), 1u);
  EXPECT_EQ(operation->Fields()["Number"].Text(), "17");
  ASSERT_EQ(BR().RecordCount(), 2u);
  BR().MoveFirst();
  EXPECT_EQ(BR()["GUID"].Text(), first);
  EXPECT_TRUE(BR()["ID"].IsEmpty());
  EXPECT_EQ(BR()["BRProperties"].Rows()->RecordCount(), 1u);
  EXPECT_EQ(operation->Save(nullptr, nullptr).Code, kDone) << "a second save is possible";
  EXPECT_FALSE(isNew(operation->OID()));
}

TEST_F(Operation, WhenNoFreshRecordIsToBeHadTheTypedOneStays) {
  add("240", "500", 10);
  const RowSetPtr typed = operation->RsFields();
  host.shelf().saves.push_back({1202, "užrakinta"});
  host.shelf().reads.push_back({1205, "nutrūko"});
  EXPECT_EQ(operation->Save(nullptr, nullptr).Code, 1202);
  EXPECT_EQ(operation->RsFields(), typed);
  EXPECT_EQ(BR().RecordCount(), 1u);
}

TEST_F(Operation, AFailedSaveOfAStoredOperationChangesNothing) {
  add("240", "500", 10);
  ASSERT_EQ(operation->Save(nullptr, nullptr).Code, kDone);
  operation->Fields()["Number"] = "18";
  const RowSetPtr typed = operation->RsFields();
  const std::string before = printed();
  host.shelf().saves.push_back({1201, "pakeista"});
  EXPECT_EQ(operation->Save(nullptr, nullptr).Code, 1201);
  EXPECT_EQ(operation->RsFields(), typed);
  EXPECT_EQ(printed(), before);
}

TEST_F(Operation, RequiredKindsOfTheCurrentEntryDoNotTravel) {
  add("240", "500", 10);
  require(1, "O0000100");
  ASSERT_EQ(operation->Save(nullptr, nullptr).Code, kDone);
  EXPECT_EQ(BR()["RequiredAddr"].Rows()->RecordCount(), 0u);
}

}  // namespace
}  // namespace tolvex::test
