// The workspace: which screens are open, what they are called, how they close, what reaches the
// user when something fails.
#include "host/objects/workspace.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/objects/inner_uio.h"
#include "host/objects/list_report.h"
#include "host/store/sql.h"
#include "platform/input.h"
#include "tests/support/program_test.h"

namespace tolvex {
namespace {

class Card final : public ui::Form {
 public:
  Card(HostContext& host, std::string reference)
      : Form(host, "frmCard"), reference_(std::move(reference)) {}
  const char* picture() const override { return "txtName\n"; }
  std::string objectReference() const override { return reference_; }
  bool mayClose() override { return agrees; }
  void opened() override {
    if (closesAtOnce) close();
    if (fails) throw std::runtime_error("lost");
  }
  bool agrees = true, closesAtOnce = false, fails = false;
  ui::TextBox txtName{this, "txtName"};

 private:
  std::string reference_;
};

class WorkspaceTest : public test::ProgramTest {
 protected:
  std::shared_ptr<Card> card(const char* reference) {
    return std::make_shared<Card>(host(), reference);
  }
};

TEST_F(WorkspaceTest, OneScreenAnObjectWhateverItsReferenceIsCalled) {
  const auto first = card("O02015005"), other = card("O02015006");
  host().screens().show(first);
  host().screens().show(other);
  EXPECT_EQ(workspace_->current(), other.get());
  host().screens().show(card("O02015045"));  // the same operation by its document's kind
  EXPECT_EQ(workspace_->screens().size(), 2u);
  EXPECT_EQ(workspace_->current(), first.get());
  host().desktop().rename("O02015045", "2004.03.31 1");
  EXPECT_EQ(first->title(), "2004.03.31 1");
}

TEST_F(WorkspaceTest, KindsWithCodesAlikeAreOthers) {
  for (const char* reference : {"O00014011", "O00014021", "O00016011", "O00016291"})
    host().screens().show(card(reference));
  EXPECT_EQ(workspace_->screens().size(), 4u);
}

TEST_F(WorkspaceTest, NewScreensWithoutAReferenceAreNeverTheSame) {
  host().screens().show(card(""));
  host().screens().show(card(""));
  EXPECT_EQ(workspace_->screens().size(), 2u);
}

TEST_F(WorkspaceTest, ClosingAsksAndEndsOutsideOfTheHandler) {
  const auto first = card("O02015005"), other = card("O02015006");
  host().screens().show(first);
  host().screens().show(other);
  other->agrees = false;
  EXPECT_FALSE(workspace_->close(*other));
  EXPECT_FALSE(workspace_->closeAll());
  EXPECT_TRUE(first->isOpen());
  other->agrees = true;
  EXPECT_TRUE(workspace_->close(*other));
  EXPECT_EQ(workspace_->screens().size(), 2u) << "it may be inside its own handler still";
  workspace_->idle();
  EXPECT_EQ(workspace_->screens().size(), 1u);
  EXPECT_EQ(workspace_->current(), first.get());
  EXPECT_TRUE(workspace_->closeAll());
  EXPECT_EQ(workspace_->current(), &workspace_->list());
}

TEST_F(WorkspaceTest, AScreenThatGivesUpWhileOpeningLeavesNothing) {
  const auto form = card("O02015005");
  form->closesAtOnce = true;
  host().screens().show(form);
  EXPECT_TRUE(workspace_->screens().empty());
  EXPECT_EQ(workspace_->current(), &workspace_->list());
}

TEST_F(WorkspaceTest, WhatAHandlerThrowsIsTold) {
  const std::string why =
      workspace_->gesture([]() -> std::string { throw RowSetError(RowSetError::BadFilter, "x"); });
  EXPECT_EQ(why, "failed: x");
  EXPECT_EQ(boxes_, std::vector<std::string>{"Klaida!\r\nx"});
}

TEST_F(WorkspaceTest, AScreenThatFailsWhileOpeningIsNotLeftBehind) {
  const auto broken = card("O02015005");
  broken->fails = true;
  const auto act = [&] {
    host().screens().show(broken);
    return std::string();
  };
  EXPECT_EQ(workspace_->gesture(act), "failed: lost");
  EXPECT_FALSE(broken->isOpen());
  EXPECT_TRUE(workspace_->screens().empty());
  const auto sound = card("O02015005");  // the object can be opened again
  host().screens().show(sound);
  EXPECT_EQ(workspace_->current(), sound.get());
}

TEST_F(WorkspaceTest, AnyBoxInterruptsTheActBehindIt) {
  const auto form = card("O02015005");
  ui::Button save{form.get(), "cmdSave"};
  bool saved = false;
  form->txtName.onLeave = [&] {
    Message box;
    box.text = "Bloga reikšmė!";
    host().dialogs().message(box);
  };
  save.onClick = [&] { saved = true; };
  form->setFocus(form->txtName);
  EXPECT_EQ(ui::Input(*form).click(save), "dropped: a message was shown");
  EXPECT_FALSE(saved);
}

TEST_F(WorkspaceTest, AListThatCannotBeReadDoesNotShowTheOneBefore) {
  auto& tree = dynamic_cast<ui::TreeView&>(*workspace_->tree().find("tvwLayout"));
  auto& list = dynamic_cast<ui::ListView&>(*workspace_->list().find("lvwObjects"));
  const std::string full = tree.current();  // groups of documents, as after every start
  for (int call = 1; call <= 4; ++call) {   // the list itself is one of the first calls
    tree.current = full;
    tree.onChange();
    ASSERT_FALSE(list.rows().empty());
    program_->faults().arm(call, 1299, "lost");
    tree.current = std::string("O02014002");  // a group without documents
    tree.onChange();
    EXPECT_TRUE(list.rows().empty()) << call;
    program_->faults().arm(0, kDone, "");
  }
}

TEST_F(WorkspaceTest, WorkPutOffWaitsForTheBoxAboveIt) {
  const auto form = card("O02015005");
  host().screens().show(form);
  bool done = false, doneUnderBox = false;
  form->later([&] { done = true; });
  stage_.setDriver(
      [&] {
        doneUnderBox = done;
        return false;
      },
      [this] { workspace_->idle(); });
  warn(host(), "box");
  EXPECT_FALSE(doneUnderBox);
  workspace_->idle();
  EXPECT_TRUE(done);
}

TEST_F(WorkspaceTest, ListsFollowWhatIsSavedElsewhere) {
  auto& tree = dynamic_cast<ui::TreeView&>(*workspace_->tree().find("tvwLayout"));
  tree.current = std::string("O02014002");
  tree.onChange();
  auto& list = dynamic_cast<ui::ListView&>(*workspace_->list().find("lvwObjects"));
  const std::size_t before = list.rows().size();
  const auto operation = host().objects().create("O0201500");
  operation->Fields()["DateD"].SetValue(DateTime::Of(2004, 3, 31));
  operation->Fields()["BROperGroupID"].SetValue(2);
  ASSERT_EQ(operation->Methods("AddBR", {"2721", "500", 5.0, Variant::Array{}}).Code, kDone);
  ASSERT_EQ(operation->Save(nullptr, nullptr).Code, kDone);
  workspace_->idle();
  EXPECT_EQ(list.rows().size(), before + 1);
}

TEST_F(WorkspaceTest, ALongListStandsWithItsFirstPageAndIsReadOn) {
  store::run(program_->session().db(),
             "INSERT INTO oper (otype, group_id, day, number) WITH RECURSIVE n (i) AS (SELECT 1"
             " UNION ALL SELECT i + 1 FROM n WHERE i < 6000)"
             " SELECT 'O0201500', 2, 20040301, 'N' || CAST(i AS VARCHAR(9)) FROM n");
  const auto whole = static_cast<std::size_t>(*store::integerFrom(
      program_->session().db(), "SELECT COUNT(*) FROM oper WHERE group_id = 2 AND day > 20030401"));
  auto& tree = dynamic_cast<ui::TreeView&>(*workspace_->tree().find("tvwLayout"));
  auto& list = dynamic_cast<ui::ListView&>(*workspace_->list().find("lvwObjects"));
  auto& find = dynamic_cast<ui::TextBox&>(*workspace_->list().find("txtFind"));
  const auto open = [&] {
    tree.current = std::string("O02014002");
    tree.onChange();
  };
  open();
  EXPECT_LT(list.rows().size(), whole / 2);
  list.current = 7;
  const std::string key = list.currentRow()->key;
  while (workspace_->idle()) {
  }
  EXPECT_EQ(list.rows().size(), whole);
  ASSERT_NE(list.currentRow(), nullptr);
  EXPECT_EQ(list.currentRow()->key, key);

  open();
  find.text = "N6000";
  find.onChange();
  EXPECT_EQ(list.rows().size(), 1u) << "a row of the last page";

  // Another node in between: what was left of the first list does not follow.
  open();
  tree.current = std::string("O02014003");
  tree.onChange();
  const std::size_t other = list.rows().size();
  while (workspace_->idle()) {
  }
  EXPECT_EQ(list.rows().size(), other);
}

TEST_F(WorkspaceTest, ALongListFollowsChangesWithoutBeingReadAnew) {
  auto& db = program_->session().db();
  store::run(db,
             "INSERT INTO oper (otype, group_id, day, number) WITH RECURSIVE n (i) AS (SELECT 1"
             " UNION ALL SELECT i + 1 FROM n WHERE i < 6000)"
             " SELECT 'O0201500', 2, 20040301, 'N' || CAST(i AS VARCHAR(9)) FROM n");
  auto& tree = dynamic_cast<ui::TreeView&>(*workspace_->tree().find("tvwLayout"));
  auto& list = dynamic_cast<ui::ListView&>(*workspace_->list().find("lvwObjects"));
  const auto readAll = [&] {
    while (workspace_->idle()) {
    }
  };
  tree.current = std::string("O02014002");
  tree.onChange();
  readAll();
  list.current = 3000;
  const std::string here = list.currentRow()->key, next = list.rows()[3001].key;

  const auto listsAsked = [&] {
    const auto& calls = program_->trace().calls();
    return std::count_if(calls.begin(), calls.end(),
                         [](const StoreCall& call) { return call.what == "list"; });
  };
  const auto operation = host().objects().open(here);
  operation->Fields()["Comment"] = "kitas tekstas";
  ASSERT_EQ(operation->Save(nullptr, nullptr).Code, kDone);
  program_->trace().clear();
  readAll();
  EXPECT_EQ(listsAsked(), 1) << "one row";
  EXPECT_EQ(list.currentRow()->key, here);
  EXPECT_EQ(list.currentRow()->cells[2].text, "kitas tekstas");

  ASSERT_EQ(host().objects().kind("O0201500")->DeleteVXObject(here), kDeleted);
  readAll();
  EXPECT_EQ(list.find(here), -1);
  EXPECT_EQ(list.currentRow()->key, next) << "the next one is current in its place";

  // Somebody else adds, changes and deletes; the list is read again.
  store::run(db, "DELETE FROM oper WHERE number IN ('N10', 'N11', 'N5999')");
  store::run(db, "UPDATE oper SET number = 'M300' WHERE number = 'N300'");
  store::run(db,
             "INSERT INTO oper (otype, group_id, day, number) VALUES"
             " ('O0201500', 2, 20040302, 'N7000')");
  workspace_->refresh();
  readAll();
  EXPECT_EQ(list.currentRow()->key, next);
  const std::vector<ui::Row> followed = list.rows();
  tree.onChange();
  readAll();
  EXPECT_TRUE(followed == list.rows());
}

TEST_F(WorkspaceTest, WorkPutOffIsDoneEvenIfOtherWorkFails) {
  const auto form = card("O02015005"), other = card("O02015006");
  host().screens().show(form);
  host().screens().show(other);
  std::string done;
  form->later([] { throw std::runtime_error("lost"); });
  form->later([&] { done += "a"; });
  other->later([&] { done += "b"; });
  form->later([&] { form->close(); });
  workspace_->idle();
  EXPECT_EQ(done, "ab");
  EXPECT_EQ(workspace_->screens().size(), 1u);
  EXPECT_EQ(boxes_, std::vector<std::string>{"Klaida!\r\nlost"});
}

TEST_F(WorkspaceTest, ABranchThatCouldNotBeReadOpensAgain) {
  auto& tree = dynamic_cast<ui::TreeView&>(*workspace_->tree().find("tvwLayout"));
  const auto below = [&] {
    std::size_t count = 0;
    for (const ui::TreeNode& node : tree.nodes()) count += node.parent == "O0200400" ? 1 : 0;
    return count;
  };
  ui::Input user(workspace_->tree());
  program_->faults().arm(1, 1299, "lost");
  (void)user.expand(tree, "O0200400", true);
  EXPECT_FALSE(tree.find("O0200400")->expanded);
  EXPECT_EQ(below(), 1u);
  (void)user.expand(tree, "O0200400", true);
  EXPECT_GT(below(), 5u);
  EXPECT_TRUE(tree.find("O0200400")->expanded);
  EXPECT_EQ(boxes_, std::vector<std::string>{"lost"});
}

TEST_F(WorkspaceTest, WhatTheServicesCannotAskIsToldOnceUntilTheStoreAnswers) {
  const auto failing = [this](const char* component) {
    host().rights().addComponent("", "");  // what is known is forgotten
    program_->faults().arm(1, 1205, "busy");
    EXPECT_EQ(host().rights().of(component).view, 0);
  };
  failing("CFirms");
  failing("CBanks");
  program_->faults().arm(1, 1205, "busy");
  EXPECT_EQ(host().settings().get("Tolvex", "Variants", "none"), "none");
  EXPECT_EQ(boxes_, std::vector<std::string>{"busy"});
  EXPECT_EQ(host().rights().of("CFirms").view, 1) << "asked again";
  failing("CPerson");
  EXPECT_EQ(boxes_.size(), 2u);
}

TEST_F(WorkspaceTest, AnObjectThatCouldNotBeMadeIsTold) {
  for (const char* kind : {"O0201500", "O0200400", "O0000100", "O0000500"}) {
    program_->faults().arm(1, 1205, "busy");
    EXPECT_EQ(host().objects().create(kind), nullptr) << kind;
  }
  EXPECT_EQ(boxes_, std::vector<std::string>(4, "busy"));
}

TEST_F(WorkspaceTest, ALongListIsPrintedWholeOrNotAtAll) {
  store::run(program_->session().db(),
             "INSERT INTO oper (otype, group_id, day, number) WITH RECURSIVE n (i) AS (SELECT 1"
             " UNION ALL SELECT i + 1 FROM n WHERE i < 6000)"
             " SELECT 'O0201500', 2, 20040301, 'N' || CAST(i AS VARCHAR(9)) FROM n");
  auto& tree = dynamic_cast<ui::TreeView&>(*workspace_->tree().find("tvwLayout"));
  auto& list = dynamic_cast<ui::ListView&>(*workspace_->list().find("lvwObjects"));
  tree.current = std::string("O02014002");
  tree.onChange();
  const std::size_t first = list.rows().size();
  ASSERT_LT(first, 6000u);
  program_->faults().arm(4, 1299, "Ryšys nutrūko.");
  printList(list);
  EXPECT_EQ(stage_.lastReport(), nullptr) << "a part of a list looks like the whole on paper";
  EXPECT_EQ(boxes_.size(), 1u);
  EXPECT_GT(list.rows().size(), first) << "what could be read is shown";
  printList(list);
  ASSERT_NE(stage_.lastReport(), nullptr);
  const auto& table = std::get<ReportTable>(stage_.lastReport()->body.back());
  EXPECT_GE(table.rows.size(), 6000u);
  EXPECT_EQ(table.rows.size(), list.rows().size());
  EXPECT_EQ(boxes_.size(), 1u);
}

TEST_F(WorkspaceTest, AnEmptyListIsNotPrinted) {
  auto& list = dynamic_cast<ui::ListView&>(*workspace_->list().find("lvwObjects"));
  list.setRows({});
  printList(list);
  exportList(list);
  EXPECT_EQ(stage_.lastReport(), nullptr);
}

TEST_F(WorkspaceTest, AReportBeginsWithThePageThatTheUserChoseForItsLayout) {
  const auto shown = [&](const char* layout, const char* title) {
    ReportDocument document;
    document.layout = layout;
    document.title = title;
    host().reports().show(document, true);
    return stage_.lastReport()->page;
  };
  ReportDocument chosen;
  chosen.layout = "list";
  chosen.title = "Įmonės";
  chosen.page.landscape = true;
  chosen.page.bottomMm = 7.5F;
  host().reports().keepPage(chosen);
  EXPECT_TRUE(shown("list", "Įmonės").landscape);
  EXPECT_EQ(shown("list", "Įmonės").bottomMm, 7.5F);
  EXPECT_FALSE(shown("list", "Bankai").landscape) << "another list has other columns";
  chosen.layout = "ActRepAccPlan";
  host().reports().keepPage(chosen);
  EXPECT_TRUE(shown("ActRepAccPlan", "Planas").landscape) << "a title may hold dates";
  for (const char* damaged : {"1 900 0 0 0", "1 10", "x", "1 -5 0 0 0"}) {
    host().settings().set("ReportPages", "ActRepAccPlan", damaged);
    EXPECT_FALSE(shown("ActRepAccPlan", "").landscape) << damaged;
  }
}

TEST_F(WorkspaceTest, RightsAreAskedOnceUntilTheyMayHaveChanged) {
  (void)host().rights().of("CFirms");
  const int before = program_->faults().calls();
  EXPECT_EQ(host().rights().of("CFirms").view, 1);
  EXPECT_EQ(program_->faults().calls(), before);
  host().rights().addComponent("CBROperRights99", "x");
  (void)host().rights().of("CFirms");
  EXPECT_EQ(program_->faults().calls(), before + 1);
}

TEST_F(WorkspaceTest, AnObjectKeepsItsRecordWhenTheStoreFails) {
  InnerUIO object(host(), program_->trace(), "O0000300", nullptr);
  object.OID("O00003001");
  ASSERT_EQ(object.Read().Code, kDone);
  const std::string name(object.Fields()["Name"].Text());
  object.Fields()["Name"] = "Kitas bankas";
  program_->faults().arm(1, 1299, "lost");
  EXPECT_EQ(object.Save(nullptr, nullptr).Code, 1299);
  EXPECT_EQ(object.Fields()["Name"].Text(), "Kitas bankas");
  object.CancelUpdate();
  EXPECT_EQ(object.Fields()["Name"].Text(), name);
}

TEST_F(WorkspaceTest, OtherScreensCloseTogetherOrNotAtAll) {
  const auto stays = card("O02015005"), first = card("O02015006"), second = card("O02015007");
  for (const auto& form : {stays, first, second}) host().screens().show(form);
  second->agrees = false;
  EXPECT_FALSE(host().screens().closeOthers(*stays));
  workspace_->idle();
  EXPECT_EQ(workspace_->screens().size(), 3u);
  EXPECT_EQ(workspace_->current(), second.get());
  second->agrees = true;
  EXPECT_TRUE(host().screens().closeOthers(*stays));
  workspace_->idle();
  EXPECT_EQ(workspace_->screens().size(), 1u);
}

TEST_F(WorkspaceTest, BooksThatAnotherClientChangedAreOfferedToBeOpenedAgain) {
  Answer reply = Answer::No;
  stage_.setDriver(
      [&] {
        const Message* box = stage_.openMessage();
        if (!box) return false;
        boxes_.push_back(box->text);
        stage_.answer(box->buttons == Buttons::YesNo ? reply : Answer::Ok);
        return true;
      },
      [this] { workspace_->idle(); });
  host().screens().show(card("O02015005"));
  const auto other = store::openBooks(books_.place(), "admin", "");
  store::run(other->db(), "UPDATE store_meta SET value = '99' WHERE name = 'epoch'");
  const std::string question =
      "Duomenų bazė pakeista, atidarykite iš naujo!\r\n\r\nAtidaryti dabar? Neįrašyti pakeitimai "
      "bus prarasti.";
  const auto asked = [&] { return std::count(boxes_.begin(), boxes_.end(), question); };

  EXPECT_EQ(host().objects().open("O00001001"), nullptr);
  workspace_->idle();
  workspace_->idle();
  EXPECT_EQ(asked(), 1) << "once for each refusal";
  EXPECT_EQ(workspace_->screens().size(), 1u) << "what was typed can still be read";
  reply = Answer::Yes;
  EXPECT_EQ(host().objects().open("O00001001"), nullptr);
  workspace_->idle();
  EXPECT_EQ(asked(), 2);
  EXPECT_TRUE(workspace_->screens().empty());
  EXPECT_NE(host().objects().open("O00001001"), nullptr);
  workspace_->idle();
  EXPECT_EQ(asked(), 2);
}

}  // namespace
}  // namespace tolvex
