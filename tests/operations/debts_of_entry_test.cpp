// What a marked entry tells the choice of debts, and what the screen does with the answer.
#include "operations/screen/debts_of_entry.h"

#include "framework/text.h"
#include "tests/operations/screen_fixture.h"

namespace tolvex::test {
namespace {

using Texts = std::vector<std::string>;

class DebtsOfEntry : public ScreenTest {
 protected:
  DebtsOfEntry() {
    tables->methods.add({"Debts", {}, "", [this](UIO0201500& operation, Arguments par) {
                           asked = shown(par);
                           return answer(operation);
                         }});
    tables->forms.add<int>("frmBROperSelect", [](const int&) { return nullptr; });
  }
  static std::string shown(Arguments par) {
    Texts all;
    for (const Variant& value : par) all.push_back(value.Show());
    return join(all, "|");
  }
  // Debit in dollars, credit in euros, a bank before the client.
  static std::string currencyEntry(VXObjectUIO& object) {
    NewEntry entry;
    entry.AccountD = "2711";
    entry.AccountC = "240";
    entry.sums = {.sum = 100,
                  .sign = 1,
                  .code = "USD",
                  .rate = 2.75,
                  .sumCurr2 = 79.65,
                  .code2 = "EUR",
                  .rate2 = 3.452605148};
    addAddressee(entry.addressees, 1, "O00003001", "Bankas A");
    addAddressee(entry.addressees, -1, "O00001003", "UAB Beržas");
    addAddressee(entry.addressees, -1, "O00001004", "UAB Klevas");
    return AddBR(object, entry).Value.AsText();
  }

  std::string asked;
  std::function<MethodResult(UIO0201500&)> answer = [](UIO0201500&) { return done(true); };
};

TEST_F(DebtsOfEntry, SumAndCurrencyOfTheMoneysSide) {
  auto object = newOperation();
  (*object->RsFields())["DateD"] = DateTime::Of(2003, 2, 9);
  const std::string plain = add(*object, "443", "2711", 500);
  const std::string dear = currencyEntry(*object);
  ASSERT_NE(dear, "");
  const auto arguments = [&](const std::string& guid, MoneyGoes way) {
    return shown(debtsArguments(*object, guid, way));
  };
  EXPECT_EQ(arguments(plain, MoneyGoes::Out), "True|443|2711||2003.02.09|500||   |0");
  EXPECT_EQ(arguments(dear, MoneyGoes::In),
            "False|2711|240|O00001003|2003.02.09|100|UAB Beržas|USD|2.75");
  EXPECT_EQ(arguments(dear, MoneyGoes::Out),
            "True|2711|240|O00001003|2003.02.09|79.65|UAB Beržas|EUR|3.452605148");
  EXPECT_EQ(arguments("nobody", MoneyGoes::Out), "");
}

TEST_F(DebtsOfEntry, TheScreenShowsWhatStandsAfterwards) {
  auto object = newOperation();
  auto form = open(object);
  ui::Input user(*form);
  ASSERT_TRUE(form->mnuPayDebts.enabled);
  DO(user.pick(form->mnuPayDebts));
  EXPECT_EQ(told(), Texts{"Pirmiausia pažymėkite įrašą!"});
  (void)add(*object, "443", "2711", 500);
  form = open(object);
  ui::Input second(*form);
  answer = [](UIO0201500&) { return done(); };
  DO(second.pick(form->mnuReceiveDebts));
  EXPECT_EQ(asked.substr(0, 5), "False");
  DO(second.close());
  EXPECT_EQ(told(), Texts{}) << "given up, nothing is to be saved";

  form = open(object);
  ui::Input third(*form);
  answer = [](UIO0201500& operation) {
    (void)add(operation, "443", "2711", 7);
    return refused("Klaidingi parametrai !");
  };
  DO(third.pick(form->mnuPayDebts));
  EXPECT_EQ(told(), Texts{"Klaidingi parametrai !"});
  EXPECT_EQ(form->lvwBRRecords.rows().size(), 2U) << "what was added before the refusal is shown";
}

}  // namespace
}  // namespace tolvex::test
