#include <string>
#include <vector>

#include "framework/rounding.h"
#include "operations/screen/currency_sides.h"
#include "operations/screen/operation_rows.h"
#include "operations/screen/vat_marks.h"
#include "tests/operations/screen_fixture.h"

namespace tolvex::test {
namespace {

class EntryEditor : public ScreenTest {
 protected:
  EntryEditor() : object(newOperation()) {
    (*object->RsFields())["DateD"] = DateTime::Of(2003, 2, 9);
    guid = add(*object, "240", "500", 100);
  }
  RowSet& entry() {
    kept = entryOf(*object, guid);
    return *kept;
  }
  std::shared_ptr<UIO0201500> object;
  std::string guid;
  RowSetPtr kept;
};

TEST_F(EntryEditor, ShowsTheEntryAndWritesItOnlyOnSave) {
  auto form = edit(object, guid);
  ui::Input user(*form);
  EXPECT_EQ(form->debit.cmbAccount.text(), "240 Pirkėjų įsiskolinimas");
  EXPECT_EQ(form->focus(), &form->txtSuma);
  DO(user.enter(form->txtSuma, "100*1,21"));
  DO(user.enter(form->txtComment, "Prekės"));
  DO(user.typeCombo(form->credit.cmbAccount, "443"));
  DO(user.focus(form->txtComment));
  EXPECT_EQ(form->txtSuma.text(), "121,00");
  EXPECT_EQ(form->credit.cmbAccount.text(), "443 Skolos tiekėjams");
  EXPECT_EQ(entry()["SumA"].Number(), 100);

  DO(user.click(form->cmdWrite));
  EXPECT_EQ(form->result, kEntrySaved);
  EXPECT_FALSE(form->isOpen());
  EXPECT_EQ(entry()["SumA"].Number(), 121);
  EXPECT_EQ(entry()["Info"].Text(), "Prekės");
  EXPECT_EQ(entry()["AccountC"].Text(), "443");
  EXPECT_TRUE(entry()["VATTariff"].IsNull());

  form = edit(object, guid);
  ui::Input again(*form);
  DO(again.enter(form->txtSuma, "7"));
  DO(again.click(form->cmdExit));
  EXPECT_EQ(form->result, kEntryUnchanged);
  EXPECT_EQ(entry()["SumA"].Number(), 121);
}

TEST_F(EntryEditor, ChecksInOrderAndFocusesWhatToMend) {
  // Each step mends what the one before complained of, so the order of checks is tested too.
  auto form = edit(object, guid);
  ui::Input user(*form);
  const auto expectRefusal = [&](const char* text, const ui::Control& where) {
    DO(user.click(form->cmdWrite));
    EXPECT_EQ(told(), std::vector<std::string>{text});
    EXPECT_EQ(form->focus(), &where) << text;
    EXPECT_TRUE(form->isOpen()) << text;
  };
  DO(user.choose(form->cmbVAT, 1));
  DO(user.typeCombo(form->debit.cmbAccount, "999"));
  DO(user.typeCombo(form->credit.cmbAccount, ""));
  DO(user.enter(form->debit.txtSumCurr, "100"));
  expectRefusal("Nurodykite prekybos operacijos tipą.", form->cmbTradeOperationTypes);
  DO(user.choose(form->cmbTradeOperationTypes, 3));
  expectRefusal("Klaidinga  balansinės sąskaitos reikšmė!", form->debit.cmbAccount);
  DO(user.typeCombo(form->debit.cmbAccount, "240"));
  expectRefusal("Klaidinga  balansinės sąskaitos reikšmė!", form->credit.cmbAccount);
  DO(user.typeCombo(form->credit.cmbAccount, "500"));
  expectRefusal("Nenurodytas valiutos tipas!", form->debit.cmbCurr);
  host.dialogs().answers = {Answer::No};
  DO(user.choose(form->debit.cmbCurr, form->debit.cmbCurr.find("EUR")));
  told();
  expectRefusal("Nenurodytas valiutos kursas!", form->debit.txtRateCurr);
  DO(user.enter(form->debit.txtRateCurr, "3,4528"));
  DO(user.enter(form->txtSuma, "345,29"));
  expectRefusal("Suma Lt neatitinka valiutos kurso!", form->debit.txtSumCurr);
  DO(user.enter(form->txtSuma, "345,28"));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(form->result, kEntrySaved);
  EXPECT_EQ(told(), std::vector<std::string>{});
}

TEST_F(EntryEditor, SumOfZeroPassesOverAccountsButNotCurrencies) {
  auto form = edit(object, guid);
  ui::Input user(*form);
  DO(user.enter(form->txtSuma, "0"));
  DO(user.typeCombo(form->debit.cmbAccount, "999"));
  DO(user.choose(form->cmbVAT, 2));
  DO(user.enter(form->credit.txtSumCurr, "5"));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), std::vector<std::string>{"Nenurodytas valiutos tipas!"});
  DO(user.enter(form->credit.txtSumCurr, ""));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(form->result, kEntrySaved);
}

TEST_F(EntryEditor, CurrencyOffersTheRateOfTheDayAndComputesTheSum) {
  auto form = edit(object, guid);
  ui::Input user(*form);
  host.dialogs().answers = {Answer::Yes};
  DO(user.choose(form->debit.cmbCurr, form->debit.cmbCurr.find("EUR")));
  EXPECT_EQ(host.dialogs().shown.at(0).title, std::optional<std::string>(""));
  EXPECT_EQ(told(), std::vector<std::string>{"0,0000 -> 3,4528\r\nPakeisti valiutos kursą ?"});
  DO(user.enter(form->debit.txtSumCurr, "100"));
  DO(user.focus(form->txtComment));
  EXPECT_EQ(form->txtSuma.text(), "345,28");
  EXPECT_EQ(form->debit.txtSumCurr.text(), "100,00");
  DO(user.enter(form->debit.txtRateCurr, "0"));
  DO(user.focus(form->txtComment));
  EXPECT_EQ(form->txtSuma.text(), "345,28") << "without a rate the sum stays";

  DO(user.choose(form->debit.cmbCurr, 0));
  EXPECT_EQ(form->debit.txtRateCurr.text(), "0,0000");
  EXPECT_EQ(form->debit.txtSumCurr.text(), "");
}

TEST_F(EntryEditor, BothSidesInOneCurrencyShareRateAndSum) {
  auto form = edit(object, guid);
  ui::Input user(*form);
  host.dialogs().answers = {Answer::Yes, Answer::No};
  DO(user.choose(form->credit.cmbCurr, form->credit.cmbCurr.find("EUR")));
  DO(user.choose(form->debit.cmbCurr, form->debit.cmbCurr.find("EUR")));
  DO(user.enter(form->credit.txtSumCurr, "100"));
  DO(user.click(form->cmdWrite));
  ASSERT_EQ(form->result, kEntrySaved);
  const CurrencySide debit = currencySide(entry(), 1);
  EXPECT_EQ(debit, currencySide(entry(), -1));
  EXPECT_EQ(debit.sumCurr, 100);
  EXPECT_EQ(debit.rateLtPerUnit, 3.4528);
}

TEST_F(EntryEditor, UntouchedSidesKeepTheirNineDecimalsAndTheirZeroRows) {
  CurrencySide exact{"EUR", 3.452912345, 100};
  writeCurrencySides(entry(), exact, {});
  entry()["SumA"] = roundLt(345.2912345);
  RowSet& rows = *entry()["BRCurrency"].Rows();
  rows.AddNew();
  rows["Sign"] = -1;
  rows["FCurrencyCode"] = "USD";
  auto form = edit(object, guid);
  ui::Input user(*form);
  EXPECT_EQ(form->debit.txtRateCurr.text(), "3,4529");
  DO(user.enter(form->txtComment, "x"));
  DO(user.click(form->cmdWrite));
  ASSERT_EQ(form->result, kEntrySaved);
  EXPECT_EQ(currencySide(entry(), 1), exact);
  EXPECT_EQ(currencySide(entry(), -1).code, "USD");
}

TEST_F(EntryEditor, TradeKindsStandInTwoFields) {
  struct Case {
    int index, type, sign;
  };
  for (const Case& c :
       {Case{0, 0, 1}, Case{1, 1, 1}, Case{2, 1, -1}, Case{3, 2, 1}, Case{4, 2, -1}}) {
    auto form = edit(object, guid);
    ui::Input user(*form);
    form->cmbTradeOperationTypes.index = -1;
    DO(user.choose(form->cmbTradeOperationTypes, c.index));
    DO(user.click(form->cmdWrite));
    ASSERT_EQ(form->result, kEntrySaved) << c.index;
    EXPECT_EQ(entry()["TradeOperationType"].Number(), c.type);
    EXPECT_EQ(entry()["RestoringSign"].Number(), c.sign);
    EXPECT_EQ(edit(object, guid)->cmbTradeOperationTypes.index(), c.index);
  }
  entry()["RestoringSign"] = Variant(Null{});
  EXPECT_EQ(tradeIndex(tradeMarksOf(entry())), 3) << "an absent sign reads as 1";
}

TEST_F(EntryEditor, VatTariffCountsOnlyWithItsFlag) {
  auto form = edit(object, guid);
  ui::Input user(*form);
  DO(user.choose(form->cmbTradeOperationTypes, 1));
  EXPECT_FALSE(form->chkVATFlag.usable());
  DO(user.choose(form->cmbVAT, 2));
  DO(user.check(form->chkVATFlag, true));
  DO(user.typeCombo(form->cmbVATTariff, "9,00"));
  DO(user.click(form->cmdWrite));
  ASSERT_EQ(form->result, kEntrySaved);
  EXPECT_EQ(entry()["VATIndication"].Number(), 2);
  EXPECT_EQ(entry()["VATFlag"].Number(), 1);
  EXPECT_EQ(entry()["VATTariff"].Number(), 9);
}

TEST_F(EntryEditor, AddresseesAreRewrittenRowByRow) {
  RowSet& required = *entry()["RequiredAddr"].Rows();
  required.AddNew();
  required["FOID"] = "O0000100";
  required["Sign"] = 1;
  auto form = edit(object, guid);
  ui::Input user(*form);
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), std::vector<std::string>{"Nenurodyti būtini adresatai!"});
  EXPECT_EQ(form->focus(), &form->debit.lvwAddress);

  host.pickers().answers = {Picked{"O000010012", "UAB Upė"}};
  DO(user.activate(form->debit.lvwAddress, 0));
  EXPECT_EQ(host.pickers().requests.back().kinds, std::vector<std::string>{"O0000100"});
  host.pickers().answers = {Picked{"O00014025", std::string(900, 'x')}};
  DO(user.insertKey(form->credit.lvwAddress));
  DO(user.click(form->cmdWrite));
  ASSERT_EQ(form->result, kEntrySaved);
  RowSet& rows = *entry()["BRProperties"].Rows();
  ASSERT_EQ(rows.RecordCount(), 2U);
  rows.MoveFirst();
  EXPECT_EQ(rows["FOIDR"].Text(), "O000010012");
  EXPECT_EQ(rows["BRGUID"].Text(), guid);
  rows.MoveNext();
  EXPECT_EQ(rows["Sign"].Number(), -1);
  EXPECT_EQ(rows["ShowString"].Text().size(), 800U);

  form = edit(object, guid);
  ui::Input again(*form);
  DO(again.select(form->credit.lvwAddress, 0));
  DO(again.deleteKey(form->credit.lvwAddress));
  DO(again.click(form->cmdWrite));
  EXPECT_EQ(entry()["BRProperties"].Rows()->RecordCount(), 1U);
}

TEST_F(EntryEditor, RefusesGroupsAndTheOperationItself) {
  host.store().serve("GetBankByAccount", table({{"AccountNumber", FieldType::Text},
                                                {"OIDR", FieldType::Text},
                                                {"Name", FieldType::Text}},
                                               {{"LT01", "O00003007", "Bankas"}}));
  object->OID("O02015005");
  object->OIDR("O02015005");
  auto form = edit(object, guid, false, 0, "O0201500O0000500O0000300");
  ui::Input user(*form);
  ui::ListView& list = form->debit.lvwAddress;
  host.pickers().answers = {Picked{"O00003001", "Bankai", true}};
  DO(user.click(form->debit.cmdAddressee));
  EXPECT_EQ(told(),
            std::vector<std::string>{"Grupės pasirinkti negalima. Pasirinkite adresato reikšmę."});
  host.pickers().answers = {Picked{"O02015005", "pati"}};
  DO(user.click(form->debit.cmdAddressee));
  EXPECT_EQ(told(), std::vector<std::string>{"Esama operacija negali būti adresatu!"});
  EXPECT_TRUE(list.rows().empty());
  EXPECT_EQ(host.pickers().requests.back().kinds,
            (std::vector<std::string>{"O0000300", "O0000500", "O0201500"}));

  host.pickers().answers = {Picked{"O00003001", "Senas"}, Picked{"O00005004", "sąskaita"}};
  DO(user.click(form->debit.cmdAddressee));
  DO(user.click(form->debit.cmdAddressee));
  ASSERT_EQ(list.rows().size(), 2U);
  EXPECT_EQ(list.rows()[0].cells[1].text, "Bankas") << "the bank follows its account";
  EXPECT_EQ(list.rows()[1].cells[1].text, "LT01");
}

TEST_F(EntryEditor, PointerMustFitTheClient) {
  RowSet& rows = *entry()["BRProperties"].Rows();
  for (const char* reference : {"O02015009", "O000010012"}) {
    rows.AddNew();
    rows["Sign"] = 1;
    rows["FOIDR"] = reference;
  }
  host.store().serve("DO0201500_CheckBRPointerClient", table({{"OIDR", FieldType::Text}}));
  auto form = edit(object, guid);
  ui::Input user(*form);
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), std::vector<std::string>{"Adresatas nuorodoje nesutampa su įrašo adresatu!"});
  EXPECT_EQ(host.store().calls.back().parameters, "'O02015009','O000010012','240'");
  EXPECT_TRUE(form->isOpen());
}

TEST_F(EntryEditor, WalksTheEntriesAndAsksAboutUnsavedInput) {
  const std::string second = add(*object, "443", "2711", 7);
  auto form = edit(object, guid, false, 1);
  ui::Input user(*form);
  EXPECT_FALSE(form->cmdPrevious.usable());
  DO(user.enter(form->txtSuma, "5"));
  host.dialogs().answers = {Answer::No, Answer::Yes};
  DO(user.click(form->cmdNext));
  EXPECT_EQ(told(), std::vector<std::string>{"Palikti be išsaugojimo ?"});
  EXPECT_EQ(form->txtSuma.text(), "5,00");
  DO(user.click(form->cmdNext));
  told();
  EXPECT_EQ(form->txtSuma.text(), "7,00");
  DO(user.click(form->cmdPrevious));
  EXPECT_EQ(told(), std::vector<std::string>{}) << "nothing was typed into the second";
  EXPECT_EQ(form->txtSuma.text(), "100,00");
}

TEST_F(EntryEditor, ReadOnlyLocksEveryInputAndTemplatesLockTheirAccounts) {
  auto form = edit(object, guid, true);
  EXPECT_FALSE(form->cmdWrite.visible());
  for (const ui::Control* c : std::initializer_list<const ui::Control*>{
           &form->debit.cmbAccount, &form->credit.cmbCurr, &form->dtpDate, &form->cmbVAT}) {
    EXPECT_FALSE(c->enabled()) << c->name;
  }
  EXPECT_TRUE(form->txtSuma.readOnly());

  entry()["BRTemplateAccID"] = 4;
  entry()["AccountC"] = "*";
  form = edit(object, guid);
  EXPECT_FALSE(form->debit.cmbAccount.enabled());
  EXPECT_TRUE(form->credit.cmbAccount.enabled()) << "the template leaves this one open";
  EXPECT_EQ(form->focus(), &form->credit.cmbAccount);
}

TEST_F(EntryEditor, OpeningBalanceHasNoAccountOnOneSide) {
  auto form = edit(object, guid);
  ui::Input user(*form);
  EXPECT_EQ(form->credit.cmbAccount.items().front().text, "0 Pradiniai likučiai");
  DO(user.typeCombo(form->credit.cmbAccount, "0"));
  DO(user.pick(form->mnuSaveOperAndNew));
  EXPECT_EQ(form->result, kSaveOperationAndNew);
  EXPECT_EQ(entry()["AccountC"].Text(), "0");
}

}  // namespace
}  // namespace tolvex::test
