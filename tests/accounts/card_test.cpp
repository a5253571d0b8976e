// The card of a node of the chart of accounts, over the fake host.
#include <gtest/gtest.h>

#include "accounts/UI0200400.h"
#include "accounts/UIO0200400.h"
#include "accounts/account_forms.h"
#include "accounts/frmAccountPlan.h"
#include "platform/input.h"
#include "tests/support/fake_host.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

// An act of the user that must be possible.
#define DO(act) EXPECT_EQ(act, "")

using Texts = std::vector<std::string>;

class AccountCard : public testing::Test {
 protected:
  AccountCard() {
    adoptHostContext(nullptr);
    adoptHostContext(&host);
    registerAccountForms(*forms);
    plan->VXS(host);
    host.objects().kinds[kPlanKind] = plan;
    put(kPlanKind, 2, Null{}, "2", "Trumpalaikis turtas", 1, "2");
    put(kPlanKind, 24, 2, "24", "Gautinos sumos", 0, "2*24");
    put(kPlanKind, 240, 24, "240", "Pirkėjų skolos", 0, "2*24*240");
    put(kNewPlanKind, 7, Null{}, "1", "Turtas", 1);
    put(kNewPlanKind, 8, 7, "15", "Skolos", 0);
    serveMarks();
  }
  ~AccountCard() override { adoptHostContext(nullptr); }

  void put(const char* kind, int id, Variant parent, const char* number, const char* name,
           int group, const char* path = "") {
    const RowSetPtr record = emptyRecord(kPlanKind);
    record->AddNew();
    RowSet& row = *record;
    row["ParentID"] = parent;
    row["Account"] = number;
    row["Name"] = name;
    row["Preview"] = name;
    row["Type"] = "D";
    row["GroupFlag"] = group;
    row["OwnCode"] = path;
    (void)host.shelf().put(kind, id, row);
  }

  void serveMarks() {
    for (const std::string plan : {kPlanKind, kNewPlanKind}) {
      host.store().serve(
          "D" + plan + "_GetBRAProperties",
          table({{"Id", FieldType::Integer}, {"Name", FieldType::Text}, {"Code", FieldType::Text}},
                {{1, "Bankas", "2710"}, {3, "Pirkėjai", "240"}, {4, "Kita", "9"}}));
      host.store().serve(
          "D" + plan + "_GetBRASettings",
          table({{"Code", FieldType::Text}, {"Account", FieldType::Text}},
                {{"240", "162"}, {"240", "240"}, {"2710", "2711"}, {"2710", "2712"}}));
    }
  }

  std::shared_ptr<frmAccountPlan> shown(MenuAction action) {
    auto form = action.Value.As<frmAccountPlan>();
    EXPECT_TRUE(form) << "a card was asked for";
    if (!form) return nullptr;
    form->markOpen(true);
    form->opened();
    return form;
  }
  // A new node below another; below nothing a class.
  std::shared_ptr<frmAccountPlan> fresh(const std::string& above = kPlanKind) {
    return shown(plan->ClickMenu(above, "", "1", ""));
  }
  std::shared_ptr<frmAccountPlan> stored(const std::string& reference) {
    EXPECT_TRUE(plan->AddToDeskTopVXObject(reference));
    auto form = std::dynamic_pointer_cast<frmAccountPlan>(host.desktop().forms.back());
    form->markOpen(true);
    form->opened();
    return form;
  }
  void showBothPlans() { (void)plan->ClickMenu(kPlanKind, "", "5", ""); }
  RowSet& record(const std::string& reference) { return *host.shelf().records.at(reference); }
  Texts told() { return host.dialogs().takeTexts(); }
  static Texts ticked(const ui::ListView& list) {
    Texts names;
    for (const ui::Row& row : list.rows())
      if (row.checked) names.push_back(row.cells[0].text);
    return names;
  }

  FakeHost host;
  std::shared_ptr<FormRegistry> forms = std::make_shared<FormRegistry>();
  std::shared_ptr<UI0200400> plan = std::make_shared<UI0200400>(forms);
};

TEST_F(AccountCard, LooksOfEveryLevel) {
  const auto newClass = fresh();
  EXPECT_NO_THROW(newClass->layout());
  expectScreen(*newClass, "frmAccountPlan_new_class");
  expectScreen(*fresh("O020040024"), "frmAccountPlan_new_subaccount");
  showBothPlans();
  expectScreen(*stored("O0200400240"), "frmAccountPlan_stored");
  host.rights().table[kPlanRights] = {1, 0, 0, 0, 0};
  expectScreen(*stored("O020040024"), "frmAccountPlan_readonly");
}

TEST_F(AccountCard, AClassIsWrittenWithoutANumberZero) {
  const auto form = fresh();
  ui::Input user(*form);
  DO(user.enter(form->txtAccountClass, "a0"));
  EXPECT_EQ(form->txtAccountClass.text(), "0") << "digits only";
  EXPECT_EQ(user.focus(form->txtNameClass), "kept in txtAccountClass");
  DO(user.click(form->cmdEnter));
  EXPECT_EQ(form->txtAccountClass.text(), "") << "cleared without a word";
  EXPECT_EQ(told(), Texts{});
  DO(user.click(form->cmdEnter));
  EXPECT_EQ(told(), Texts{"Nenurodytas sąskaitos numeris"});
  EXPECT_EQ(form->focus(), &form->txtAccountClass);

  DO(user.enter(form->txtAccountClass, "7"));
  DO(user.enter(form->txtNameClass, " Kita "));
  DO(user.click(form->cmdEnter));
  EXPECT_EQ(told(), Texts{"Nenurodytas sąskaitos tipas"});
  EXPECT_EQ(form->focus(), &form->txtTypeClass);
  DO(user.enter(form->txtTypeClass, "k"));
  DO(user.click(form->cmdEnter));
  EXPECT_EQ(told(), Texts{});
  const std::string reference = form->objectReference();
  RowSet& row = record(reference);
  EXPECT_EQ(row["Account"].Text(), "7");
  EXPECT_EQ(row["Name"].Text(), "Kita");
  EXPECT_EQ(row["Type"].Text(), "K");
  EXPECT_EQ(row["GroupFlag"].Number(), 1);
  EXPECT_TRUE(row["ParentID"].IsAbsent());
  EXPECT_EQ(host.desktop().log.back(), "rename " + reference + " 7 Kita");
  EXPECT_EQ(host.tree().log.back(), "redrawNode " + reference);
}

TEST_F(AccountCard, ThePrefixCannotBeTypedAway) {
  const auto form = fresh("O020040024");
  ui::Input user(*form);
  EXPECT_EQ(form->focus(), &form->txtAccount);
  EXPECT_EQ(form->txtAccount.text(), "24");
  EXPECT_EQ(form->txtAccount.caret(), 2);
  DO(user.typeText(form->txtAccount, "2", 1));
  EXPECT_EQ(form->txtAccount.text(), "24");
  EXPECT_EQ(form->txtAccount.caret(), 2);
  EXPECT_TRUE(form->cmdEnter.usable()) << "a change all the same";
  DO(user.enter(form->txtName, "Nauja"));
  DO(user.click(form->cmdEnter));
  EXPECT_EQ(told(), Texts{"Nenurodytas sąskaitos numeris"});
  EXPECT_EQ(form->focus(), &form->txtAccount);
  DO(user.typeText(form->txtAccount, "24b9", 4));
  EXPECT_EQ(form->txtAccount.text(), "249");
  DO(user.click(form->cmdEnter));
  RowSet& row = record(form->objectReference());
  EXPECT_EQ(row["ParentID"].Number(), 24);
  EXPECT_EQ(row["Type"].Text(), "D") << "that of the class";
  EXPECT_TRUE(row["BRAPropertyID"].IsNull());
}

TEST_F(AccountCard, OneMarkAtMost) {
  const auto form = stored("O0200400240");
  ui::Input user(*form);
  EXPECT_EQ(ticked(form->LVProperties), Texts{"Pirkėjai"});
  EXPECT_EQ(form->LVProperties.rows()[1].cells[1].text, "162;240;");
  DO(user.activate(form->LVProperties, 2));
  EXPECT_EQ(ticked(form->LVProperties), Texts{"Kita"});
  DO(user.check(form->LVProperties, 0, true));
  EXPECT_EQ(ticked(form->LVProperties), Texts{"Bankas"});
  DO(user.click(form->cmdEnter));
  EXPECT_EQ(record("O0200400240")["BRAPropertyID"].Number(), 1);

  const auto again = stored("O0200400240");
  ui::Input other(*again);
  DO(other.check(again->LVProperties, 1, false));
  DO(other.click(again->cmdEnter));
  EXPECT_TRUE(record("O0200400240")["BRAPropertyID"].IsNull());
}

TEST_F(AccountCard, AMarkThatCouldNotBeReadIsKept) {
  record("O0200400240")["BRAPropertyID"] = 3;
  for (const int failing : {1, 2}) {
    host.store().failCall(failing, 1299, "Ryšys nutrūko");
    const auto form = stored("O0200400240");
    EXPECT_EQ(told(), Texts{"Ryšys nutrūko"});
    EXPECT_TRUE(form->LVProperties.rows().empty());
    ui::Input user(*form);
    DO(user.enter(form->txtName, "Pirkėjai " + std::to_string(failing)));
    DO(user.click(form->cmdEnter));
    EXPECT_EQ(record("O0200400240")["BRAPropertyID"].Number(), 3);
  }
}

TEST_F(AccountCard, WhatWasNotReadWholeIsOnlyLookedAt) {
  showBothPlans();
  record("O0200400240")["NewID"] = 8;
  // The node itself, its parent, the parent again on the way to the class, the class, the
  // counterpart.
  for (const std::size_t failing : {1, 2, 3, 4}) {
    host.shelf().reads.assign(failing, {});
    host.shelf().reads.push_back({1299, "Ryšys nutrūko"});
    const auto form = stored("O0200400240");
    EXPECT_EQ(told(), Texts{"Ryšys nutrūko"}) << failing;
    EXPECT_TRUE(form->txtName.readOnly()) << failing;
    host.shelf().reads.clear();
  }
  const auto form = stored("O0200400240");
  EXPECT_FALSE(form->txtName.readOnly());
  EXPECT_EQ(form->txtNewAcc.text(), "15 Skolos");
}

TEST_F(AccountCard, RefusalsOfTheStoreKeepWhatWasTyped) {
  struct Case {
    int code;
    const char* text;
    bool redraws;
  };
  constexpr Case kCases[] = {{547, "BRAProperty nebeegzistuoja!", false},
                             {3604, "Tokia sąskaita jau egzistuoja!", false},
                             {1, "Aukštesnio lygio sąskaita nebeegzistuoja!", true},
                             {32, "Redaguojama sąskaita nebeegzistuoja!", true},
                             {1204, "Saugyklos tekstas", false}};
  const auto form = fresh("O020040024");
  ui::Input user(*form);
  DO(user.enter(form->txtAccount, "249"));
  DO(user.enter(form->txtName, "Nauja"));
  for (const Case& c : kCases) {
    host.shelf().saves = {{c.code, "Saugyklos tekstas"}};
    host.tree().log.clear();
    DO(user.click(form->cmdEnter));
    ASSERT_EQ(host.dialogs().shown.size(), 1u);
    EXPECT_EQ(host.dialogs().shown[0].icon, Icon::Stop);
    EXPECT_EQ(told(), Texts{std::string("Klaida!\r\n\r\n") + c.text});
    EXPECT_EQ(host.tree().log, c.redraws ? Texts{"redraw O0200400"} : Texts{});
    EXPECT_TRUE(form->cmdEnter.usable()) << c.code;
    EXPECT_EQ(form->txtAccount.text(), "249");
  }
  DO(user.click(form->cmdEnter));
  EXPECT_FALSE(form->cmdEnter.usable());
  EXPECT_EQ(record(form->objectReference())["Account"].Text(), "249");
}

TEST_F(AccountCard, ABrotherFollowsAStoredNode) {
  const auto form = stored("O0200400240");
  ui::Input user(*form);
  DO(user.enter(form->txtName, "Skolos"));
  EXPECT_FALSE(form->SSCNew.usable());
  DO(user.click(form->cmdEnter));
  host.shelf().reads = {{1299, "Ryšys nutrūko"}};
  DO(user.click(form->SSCNew));
  EXPECT_EQ(told(), Texts{"Ryšys nutrūko"});
  EXPECT_EQ(form->objectReference(), "O0200400240") << "still the stored one";

  DO(user.click(form->SSCNew));
  EXPECT_EQ(form->title(), "Nauja subsąskaita");
  EXPECT_EQ(form->objectReference(), "");
  EXPECT_EQ(form->txtAccount.text(), "24");
  EXPECT_EQ(form->txtName.text(), "");
  EXPECT_EQ(ticked(form->LVProperties), Texts{});
  EXPECT_EQ(form->focus(), &form->txtAccount);
  DO(user.enter(form->txtAccount, "241"));
  DO(user.enter(form->txtName, "Kitos"));
  DO(user.click(form->cmdEnter));
  EXPECT_EQ(record(form->objectReference())["ParentID"].Number(), 24);
  EXPECT_EQ(record("O0200400240")["Account"].Text(), "240");

  const auto top = stored("O02004002");
  ui::Input above(*top);
  DO(above.click(top->SSCNew));
  DO(above.enter(top->txtAccountClass, "3"));
  DO(above.enter(top->txtNameClass, "Kapitalas"));
  DO(above.enter(top->txtTypeClass, "K"));
  DO(above.click(top->cmdEnter));
  EXPECT_EQ(record(top->objectReference())["GroupFlag"].Number(), 1) << "a class is a group";
}

TEST_F(AccountCard, CancelTakesChangesBack) {
  const auto form = fresh("O020040024");
  ui::Input user(*form);
  DO(user.enter(form->txtName, "Nauja"));
  host.dialogs().answers = {Answer::No};
  EXPECT_FALSE(form->mayClose());
  EXPECT_EQ(host.dialogs().shown[0].title, "Norvanta");
  EXPECT_EQ(told(), Texts{"Nauja subsąskaita\r\n\r\nUždaryti be išsaugojimo?"});
  DO(user.click(form->cmdCancel));
  EXPECT_EQ(form->txtName.text(), "");
  EXPECT_EQ(form->txtAccount.text(), "24") << "still below its parent";
  EXPECT_TRUE(form->mayClose());
}

TEST_F(AccountCard, TheCounterpartIsDroppedPickedAndCleared) {
  EXPECT_FALSE(stored("O020040024")->txtNewAcc.shown()) << "one plan is shown";
  showBothPlans();
  EXPECT_FALSE(stored("O02004002")->txtNewAcc.shown()) << "a class has none";
  EXPECT_FALSE(stored("O02004018")->txtNewAcc.shown()) << "a node of the new plan itself";

  const auto form = stored("O020040024");
  ui::Input user(*form);
  EXPECT_NE(user.drop(form->SOPanel, "O0200400240"), "") << "of the same plan";
  EXPECT_NE(user.drop(form->SOPanel, "O0200401"), "") << "the plan itself";
  DO(user.drop(form->SOPanel, "O02004017"));
  EXPECT_EQ(form->txtNewAcc.text(), "") << "a group is ignored";
  EXPECT_FALSE(form->cmdEnter.usable());
  DO(user.drop(form->SOPanel, "O02004018"));
  EXPECT_EQ(form->txtNewAcc.text(), "15 Skolos");
  DO(user.click(form->cmdEnter));
  EXPECT_EQ(record("O020040024")["NewID"].Number(), 8);

  host.pickers().answers = {std::nullopt, Picked{"O02004017", "Turtas", true}, Picked{}};
  DO(user.click(form->cmdNewAcc));
  EXPECT_EQ(host.pickers().requests.back().kinds, Texts{kNewPlanKind});
  EXPECT_EQ(host.pickers().requests.back().prompt, "Pasirinkite atitinkamą sąskaitą");
  EXPECT_EQ(host.pickers().requests.back().current, "O02004018");
  DO(user.click(form->cmdNewAcc));
  EXPECT_EQ(form->txtNewAcc.text(), "15 Skolos") << "cancelled, then a group";
  EXPECT_FALSE(form->cmdEnter.usable());
  DO(user.click(form->cmdNewAcc));
  EXPECT_EQ(form->txtNewAcc.text(), "");
  DO(user.click(form->cmdEnter));
  EXPECT_TRUE(record("O020040024")["NewID"].IsNull());
}

TEST_F(AccountCard, ThePlanIsPrinted) {
  host.shelf().lists[kPlanKind] = table({{"OIDR", FieldType::Text},
                                         {"Account", FieldType::Text},
                                         {"Name", FieldType::Text},
                                         {"Type", FieldType::Text},
                                         {"GroupFlag", FieldType::Integer}},
                                        {{"O02004002", "2", "Turtas", "D", 1}});
  (void)plan->ClickMenu(kPlanKind, "", "3", "");
  EXPECT_EQ(host.shelf().listCalls.back(), (Texts{kPlanKind, "'All'", "", ""}));
  EXPECT_EQ(host.reports().log, Texts{"show ActRepAccPlan excel"});
  EXPECT_NE(dump(host.reports().shown[0]).find("|*2 | Turtas | "), std::string::npos);
}

}  // namespace
}  // namespace tolvex::test
