#include <string>
#include <vector>

#include "operations/screen/balance_list.h"
#include "operations/screen/currency_sides.h"
#include "operations/screen/operation_rows.h"
#include "tests/operations/screen_fixture.h"

namespace tolvex::test {
namespace {

using Texts = std::vector<std::string>;

class OperationScreen : public ScreenTest {
 protected:
  // Lets the next modal entry editor be filled in with two accounts and a sum.
  void willFill(const std::string& debit, const std::string& credit, const std::string& sum,
                ui::MenuItem frmBROperRecord::*way = nullptr) {
    host.screens().users.push_back([=](ui::Form& shown) {
      auto& form = dynamic_cast<frmBROperRecord&>(shown);
      ui::Input user(form);
      DO(user.typeCombo(form.debit.cmbAccount, debit));
      DO(user.typeCombo(form.credit.cmbAccount, credit));
      DO(user.enter(form.txtSuma, sum));
      if (way) {
        DO(user.pick(form.*way));
      } else {
        DO(user.click(form.cmdWrite));
      }
    });
  }
  // A stored operation of two entries, opened.
  std::shared_ptr<frmBROper> stored() {
    auto object = newOperation();
    (*object->RsFields())["DateD"] = DateTime::Of(2003, 2, 9);
    add(*object, "240", "500", 100);
    add(*object, "6001", "2711", 40);
    auto form = open(object);
    ui::Input user(*form);
    DO(user.enter(form->header.txtNumber, "7"));
    DO(user.click(form->cmdWrite));
    EXPECT_EQ(told(), Texts{});
    return form;
  }
  static RowSet& header(frmBROper& form) { return *form.VXObjectUIO->RsFields(); }
};

TEST_F(OperationScreen, NewOperationIsFilledSavedAndNamed) {
  auto form = open(newOperation());
  ui::Input user(*form);
  EXPECT_EQ(form->SOPanel.caption(), " Nauja finansinė operacija");
  EXPECT_EQ(form->header.txtGroup.text(), "Pirkimai");
  EXPECT_EQ(form->header.txtSerija.text(), "PIR");
  EXPECT_EQ(form->header.dtpDate.value()->Text(), "2003.02.09");
  DO(user.close());
  EXPECT_EQ(told(), Texts{}) << "nothing typed, nothing asked";

  form = open(newOperation());
  ui::Input second(*form);
  willFill("240", "500", "100");
  DO(second.insertKey(form->lvwBRRecords));
  ASSERT_EQ(form->lvwBRRecords.rows().size(), 1U);
  EXPECT_EQ(form->lvwBRRecords.rows()[0].mark, ui::Mark::Good);
  DO(second.enter(form->header.txtNumber, "7"));
  DO(second.choose(form->header.cmbVAT, 2));
  DO(second.click(form->cmdWrite));
  EXPECT_EQ(told(), Texts{});
  EXPECT_EQ(form->SOPanel.caption(), " Finansinė operacija");
  EXPECT_EQ(form->title(), "2003.02.09 7");
  EXPECT_EQ(host.desktop().log, Texts{"rename " + form->objectReference() + " 2003.02.09 7"});
  EXPECT_EQ(header(*form)["VATRegisterIndication"].Number(), 2);
  EXPECT_EQ(header(*form)["LockGUID"].Text(), "LOCK");
  EXPECT_EQ(header(*form)["BROperGroupID"].Number(), 3);
  DO(second.close());
  EXPECT_EQ(told(), Texts{});
}

TEST_F(OperationScreen, FailedSaveKeepsAllAndTheSecondSaveWorks) {
  auto form = open(newOperation());
  ui::Input user(*form);
  willFill("240", "500", "100");
  DO(user.click(form->cmdNewEntry));
  DO(user.enter(form->header.txtComment, "Nuoma"));
  host.shelf().saves.push_back({1205, "Saugykla užimta."});
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), Texts{"Saugykla užimta.\r\n\r\nĮrašymas neatliktas !"});
  EXPECT_EQ(form->header.txtComment.text(), "Nuoma");
  EXPECT_TRUE(form->isOpen());
  host.dialogs().answers = {Answer::No};
  EXPECT_NE(user.close(), "");
  EXPECT_EQ(told(), Texts{"Nauja finansinė operacija\r\n\r\nUždaryti be išsaugojimo?"});
  EXPECT_TRUE(form->isOpen());

  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), Texts{});
  EXPECT_EQ(form->lvwBRRecords.rows().size(), 1U);
  EXPECT_EQ(header(*form)["Comment"].Text(), "Nuoma");
}

TEST_F(OperationScreen, CommentIsCutNotRefused) {
  auto form = open(newOperation());
  ui::Input user(*form);
  std::string longText;
  for (int i = 0; i < 1001; ++i) longText += "ė";
  DO(user.enter(form->header.txtComment, longText));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(header(*form)["Comment"].Text().size(), 2000U);
}

TEST_F(OperationScreen, GroupOfAnotherKindIsToldAndGivesNothing) {
  serveGroup("O0201504");
  auto form = open(newOperation());
  EXPECT_EQ(told(), Texts{"Grupės tipas neatitinka operacijos tipo!"});
  EXPECT_EQ(form->header.txtGroup.text(), "");
  EXPECT_EQ(form->header.txtSerija.text(), "");

  serveGroup("O0201500");
  ui::Input user(*form);
  host.pickers().answers = {Picked{"O02014003", "Pirkimai", true}};
  DO(user.click(form->header.cmdOperGroup));
  EXPECT_EQ(host.pickers().requests.back().prompt, "Pažymėkite norimą grupę");
  EXPECT_EQ(form->header.txtGroup.text(), "Pirkimai");
  EXPECT_EQ(form->header.txtSerija.text(), "PIR");
}

TEST_F(OperationScreen, NumberComesFromTheGroupsCounter) {
  host.store().serve("GetAutoNumber", table({{"AutoNumber", FieldType::Integer},
                                             {"ANMask", FieldType::Text},
                                             {"ANPrefix", FieldType::Text},
                                             {"ANTemplate", FieldType::Text}},
                                            {{12, "Prefix_AutoNumber", "A", "0000"}}));
  serveGroup("O0201500", "Prefix_AutoNumber");
  auto form = open(newOperation());
  ui::Input user(*form);
  EXPECT_EQ(form->header.txtNumber.text(), "A-0012");
  DO(user.enter(form->header.txtNumber, "A-15"));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(header(*form)["AutoNumber"].Number(), 15);
}

TEST_F(OperationScreen, DateMustNotLieBeforeAPointedOperation) {
  auto form = stored();
  ui::Input user(*form);
  const RowSetPtr entries = entriesOf(*form->VXObjectUIO);
  entries->MoveFirst();
  RowSet& properties = *(*entries)["BRProperties"].Rows();
  properties.AddNew();
  properties["Sign"] = 1;
  properties["FOIDR"] = "O0201500900";
  auto pointed = newOperation();
  (*pointed->RsFields())["DateD"] = DateTime::Of(2003, 2, 5);
  host.objects().opened["O0201500900"] = pointed;

  DO(user.date(form->header.dtpDate, DateTime::Of(2003, 2, 4)));
  EXPECT_EQ(told(), Texts{"Data neatitinka esančių nuorodų datoms!"});
  EXPECT_EQ(form->header.dtpDate.value()->Text(), "2003.02.09");
  host.dialogs().answers = {Answer::No};
  DO(user.date(form->header.dtpDate, DateTime::Of(2003, 2, 5)));
  EXPECT_EQ(told(), Texts{"Pakeisti įrašų datas į operacijos datą?"});
  EXPECT_EQ(header(*form)["DateD"].Value().AsDate().Text(), "2003.02.05");
  EXPECT_EQ(form->lvwBRRecords.rows()[0].cells[0].text, "2003.02.09");
}

TEST_F(OperationScreen, RedatedEntriesTakeTheirCurrencyRowsAlong) {
  auto form = stored();
  ui::Input user(*form);
  const RowSetPtr entries = entriesOf(*form->VXObjectUIO);
  entries->MoveFirst();
  writeCurrencySides(*entries, {"EUR", 3.4528, 28.96}, {});
  form->VXObjectUIO->RsFields()->AcceptChanges();
  host.dialogs().answers = {Answer::Yes};
  DO(user.date(form->header.dtpDate, DateTime::Of(2003, 3, 1)));
  for (const ui::Row& row : form->lvwBRRecords.rows()) {
    EXPECT_EQ(row.cells[0].text, "2003.03.01");
  }
  entries->MoveFirst();
  RowSet& side = *(*entries)["BRCurrency"].Rows();
  side.MoveFirst();
  EXPECT_EQ(side.State(), RowState::Changed);
  EXPECT_EQ(side["SumCurr"].Number(), 28.96);
}

TEST_F(OperationScreen, FreeEntryLeftUnsavedIsTakenBack) {
  auto form = stored();
  ui::Input user(*form);
  host.screens().users.push_back([](ui::Form& shown) {
    auto& editor = dynamic_cast<frmBROperRecord&>(shown);
    EXPECT_EQ(editor.debit.cmbAccount.text(), "?");
    EXPECT_EQ(editor.focus(), &editor.debit.cmbAccount);
    ui::Input act(editor);
    DO(act.click(editor.cmdExit));
  });
  DO(user.pick(form->entryMenu.mnuFreeTemplate));
  EXPECT_EQ(form->lvwBRRecords.rows().size(), 2U);

  // An entry that was there before stays when its editor is left.
  host.screens().users.push_back([](ui::Form& shown) {
    ui::Input act(shown);
    DO(act.click(*shown.find("cmdExit")));
  });
  DO(user.activate(form->lvwBRRecords, 1));
  EXPECT_EQ(form->lvwBRRecords.rows().size(), 2U);
}

TEST_F(OperationScreen, EditorMaySaveTheOperationAndStartTheNext) {
  auto form = open(newOperation());
  ui::Input user(*form);
  host.objects().makers["O0201500"] = [this] { return newOperation(); };
  willFill("240", "500", "100", &frmBROperRecord::mnuSaveOperAndNew);
  DO(user.click(form->cmdNewEntry));
  EXPECT_EQ(told(), Texts{});
  EXPECT_EQ(host.shelf().saveCount, 1);
  EXPECT_EQ(form->SOPanel.caption(), " Nauja finansinė operacija");
  EXPECT_TRUE(form->lvwBRRecords.rows().empty());
  EXPECT_EQ(header(*form)["BROperGroupID"].Number(), 3);
}

TEST_F(OperationScreen, NewEntryStartsWithTheMarksOfTheLast) {
  auto form = open(newOperation());
  ui::Input user(*form);
  willFill("240", "500", "100");
  DO(user.click(form->cmdNewEntry));
  host.screens().users.push_back([](ui::Form& shown) {
    auto& editor = dynamic_cast<frmBROperRecord&>(shown);
    ui::Input act(editor);
    DO(act.choose(editor.cmbTradeOperationTypes, 4));
    DO(act.click(editor.cmdWrite));
  });
  DO(user.activate(form->lvwBRRecords, 0));
  host.screens().users.push_back([](ui::Form& shown) {
    EXPECT_EQ(dynamic_cast<frmBROperRecord&>(shown).cmbTradeOperationTypes.index(), 4);
  });
  DO(user.click(form->cmdNewEntry));
}

TEST_F(OperationScreen, DeletesEntriesAfterAQuestion) {
  auto form = stored();
  ui::Input user(*form);
  host.dialogs().answers = {Answer::No, Answer::Yes, Answer::Yes};
  DO(user.deleteKey(form->lvwBRRecords));
  EXPECT_EQ(form->lvwBRRecords.rows().size(), 2U);
  EXPECT_EQ(host.dialogs().shown.back().preset, Answer::No);
  DO(user.deleteKey(form->lvwBRRecords));
  ASSERT_EQ(form->lvwBRRecords.rows().size(), 1U);
  EXPECT_EQ(form->lvwBRRecords.rows()[0].cells[1].text, "6001");
  DO(user.pick(form->entryMenu.mnuDeleteAll));
  EXPECT_TRUE(form->lvwBRRecords.rows().empty());
  EXPECT_TRUE(form->SOPanel.enabled()) << "no longer busy";
}

TEST_F(OperationScreen, DeletesTheStoredOperationByRightClick) {
  auto form = stored();
  ui::Input user(*form);
  host.dialogs().answers = {Answer::Cancel, Answer::Ok, Answer::Ok};
  DO(user.rightClick(form->SSCClose));
  EXPECT_TRUE(form->isOpen());
  EXPECT_EQ(told().at(0).rfind("Ar tikrai norite panaikinti?\r\n", 0), 0U);
  host.shelf().deletes.push_back(kNoRight);
  DO(user.rightClick(form->SSCClose));
  EXPECT_TRUE(form->isOpen());
  DO(user.rightClick(form->SSCClose));
  EXPECT_FALSE(form->isOpen());
}

TEST_F(OperationScreen, ShownOnlyWithoutTheRightInPreviewAndModally) {
  auto form = stored();
  host.rights().table["CBROperRights3"] = {1, 0, 0, 1, 0};
  const auto object = form->VXObjectUIO;
  for (const bool modal : {false, true}) {
    auto shown = open(object, modal);
    EXPECT_TRUE(shown->readOnly);
    for (const ui::Control* c : std::initializer_list<const ui::Control*>{
             &shown->cmdWrite, &shown->header.dtpDate, &shown->cmdNewEntry,
             &shown->header.cmdOperGroup, &shown->entryMenu.mnuBRDelete,
             &shown->entryMenu.mnuFreeTemplate}) {
      EXPECT_FALSE(c->usable()) << c->name;
    }
    EXPECT_EQ(shown->SSCClose.visible(), !modal);
    EXPECT_EQ(shown->SSCNew.usable(), !modal) << "the right to create is a right of its own";
  }
}

TEST_F(OperationScreen, ModalOverAnotherScreenLeavesItsObjectAlone) {
  auto object = newOperation();
  (*object->RsFields())["DateD"] = DateTime::Of(2003, 1, 2);
  add(*object, "240", "500", 100);
  auto form = open(object, true);
  EXPECT_EQ(form->header.dtpDate.value()->Text(), "2003.01.02");
  ui::Input user(*form);
  DO(user.click(form->cmdCancel));
  EXPECT_FALSE(form->isOpen());
  EXPECT_EQ(entriesOf(*object)->RecordCount(), 1U);
}

// A tool that adds one entry and tells the screen below, as covers and exchanges do.
class AddingTool final : public ui::Form {
 public:
  explicit AddingTool(const OperationToolRequest& request)
      : Form(request.host, "frmDebtsCover"), request_(request) {}
  const char* picture() const override { return "cmdOK\n"; }
  void opened() override {
    comment = (*request_.operation->RsFields())["Comment"].Text();
    NewEntry entry;
    entry.AccountD = "240";
    entry.AccountC = "500";
    entry.sums.sum = 5;
    ASSERT_EQ(AddBR(*request_.operation, entry).Code, kDone);
    request_.link.setDate(DateTime::Of(2003, 1, 5));
    request_.link.setComment("Skolų dengimas - UAB Pirkėjas");
    request_.link.refreshEntries();
  }
  ui::Button cmdOK{this, "cmdOK", "Gerai"};
  static inline std::string comment;  // of the record when the tool opened

 private:
  OperationToolRequest request_;
};

TEST_F(OperationScreen, ToolsWorkOnWhatWasTypedAndTellTheScreenBelow) {
  EXPECT_FALSE(open(newOperation())->mnuDebtsCover.enabled()) << "no such tool yet";
  tables->forms.add<OperationToolRequest>("frmDebtsCover", [](const OperationToolRequest& asked) {
    return std::make_shared<AddingTool>(asked);
  });
  auto form = open(newOperation());
  ui::Input user(*form);
  DO(user.enter(form->header.txtComment, "Užskaita"));
  host.screens().users.push_back([](ui::Form&) {});
  DO(user.pick(form->mnuDebtsCover));
  EXPECT_EQ(AddingTool::comment, "Užskaita");
  EXPECT_EQ(form->lvwBRRecords.rows().size(), 1U);
  EXPECT_EQ(form->header.dtpDate.value()->Text(), "2003.01.05");
  EXPECT_EQ(form->header.txtComment.text(), "Skolų dengimas - UAB Pirkėjas");
  host.dialogs().answers.push_back(Answer::No);
  EXPECT_NE(user.close(), "") << "what a tool added is not lost without a question";
}

TEST_F(OperationScreen, BalanceIsDebitsLessCreditsByAccount) {
  auto object = newOperation();
  add(*object, "240", "500", 0.1);
  add(*object, "240", "0", 0.2);
  add(*object, "6001", "240", 0.3);
  const std::vector<AccountBalance> balances = operationBalance(*entriesOf(*object));
  ASSERT_EQ(balances.size(), 3U);
  EXPECT_EQ(balances[0].account, "240");
  EXPECT_EQ(balances[0].balanceLt(), 0);
  EXPECT_EQ(balances[1].balanceLt(), -0.1);
  auto form = open(object);
  EXPECT_EQ(form->lvwBRBalance.rows().back().cells[1].text, "Iš viso");
  EXPECT_EQ(form->lblTotals.caption(), "Įrašų: 3     Suma: 0,60 Lt");
}

}  // namespace
}  // namespace tolvex::test
