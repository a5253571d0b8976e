#include <gtest/gtest.h>

#include "accounts/UI0200400.h"
#include "accounts/UIO0200400.h"
#include "tests/support/fake_host.h"

namespace tolvex::test {
namespace {

class Plan : public testing::Test {
 protected:
  Plan() {
    adoptHostContext(&host);
    plan->VXS(host);
    host.objects().kinds[kPlanKind] = plan;
  }
  ~Plan() override { adoptHostContext(nullptr); }

  std::string putNode(const char* kind, int id, Variant parent, const char* account,
                      const char* path = "") {
    const RowSetPtr record = emptyRecord(kPlanKind);
    record->AddNew();
    (*record)["ParentID"] = parent;
    (*record)["Account"] = account;
    (*record)["Name"] = std::string("Vardas ") + account;
    (*record)["OwnCode"] = path;
    return host.shelf().put(kind, id, *record);
  }
  // "id caption" of each entry, "-" before a disabled one, "*" before a ticked one.
  std::vector<std::string> menu(const char* id, const char* kind) {
    std::vector<std::string> shown;
    for (const MenuEntry& entry : plan->GetMenu(id, kind, "")) {
      shown.push_back((entry.enabled ? "" : "-") + std::string(entry.checked ? "*" : "") +
                      entry.id);
    }
    return shown;
  }
  using Texts = std::vector<std::string>;

  FakeHost host;
  std::shared_ptr<FormRegistry> forms = std::make_shared<FormRegistry>();
  std::shared_ptr<UI0200400> plan = std::make_shared<UI0200400>(forms);
};

struct PlanScreen final : ui::Form {
  explicit PlanScreen(const ObjectFormRequest& request)
      : Form(request.host, "frmAccountPlan"), node(request.object) {}
  const char* picture() const override { return ""; }
  std::shared_ptr<VXObjectUIO> node;
};

TEST_F(Plan, MenuFollowsPlaceAndRights) {
  EXPECT_EQ(menu("O0200400", ""), (Texts{"1", "3", "5", "-6", "4", "-", "8", "-"}));
  EXPECT_EQ(menu("O02004001", "Class"), (Texts{"0", "1", "-", "7", "4", "-", "8", "-"}));
  EXPECT_EQ(menu("O02004001", "Item"), (Texts{"0", "1", "2", "-", "7", "4", "-", "8", "-"}));
  EXPECT_EQ(plan->GetMenu("O02004001", "Item", "")[1].caption, "&Nauja subsąskaita");
  host.rights().table["CAccountPlanRights"] = {1, 0, 0, 0, 0};
  EXPECT_EQ(menu("O0200400", ""), (Texts{"4", "-", "8", "-"}));
  EXPECT_EQ(menu("O02004001", "Item"), (Texts{"0", "4", "-", "8", "-"}));
}

TEST_F(Plan, TheNewPlanHasNoChoiceOfPlans) {
  plan->OID("O0200401");
  EXPECT_EQ(menu("O0200401", ""), (Texts{"1", "3", "-6", "4", "-", "8", "-"}));
}

TEST_F(Plan, WhatIsOfTheOtherPlanIsDoneByThatPlan) {
  const auto next = std::make_shared<UI0200400>(forms);
  next->VXS(host);
  next->OID(kNewPlanKind);
  host.objects().kinds[kNewPlanKind] = next;
  for (const char* root : {"O0200400", "O0200401"})
    EXPECT_EQ(menu(root, "Root").size(), root == std::string(kPlanKind) ? 8u : 7u) << root;
  EXPECT_EQ(menu("O02004017", "Class"), (Texts{"0", "1", "-", "7", "4", "-", "8", "-"}));

  forms->add<ObjectFormRequest>("frmAccountPlan", [](const ObjectFormRequest& request) {
    return std::make_shared<PlanScreen>(request);
  });
  const auto newClass = plan->ClickMenu(kNewPlanKind, "Root", "1", "").Value.As<PlanScreen>()->node;
  EXPECT_EQ(newClass->UI()->OID(), kNewPlanKind);
  ASSERT_EQ(newClass->Save(nullptr, nullptr).Code, kDone);
  EXPECT_EQ(newClass->OID().substr(0, 8), kNewPlanKind);
  const auto below =
      plan->ClickMenu(newClass->OID(), "Class", "1", "").Value.As<PlanScreen>()->node;
  EXPECT_EQ(below->Fields()["ParentID"].Number(), newClass->Fields()["ID"].Number());

  forms->add<ObjectFormRequest>("frmAccountNewPlan", [](const ObjectFormRequest& request) {
    return std::make_shared<PlanScreen>(request);
  });
  host.objects().makers[kPlanKind] = [] { return std::make_shared<UIO0200400>(); };
  const auto conversion = plan->ClickMenu(kNewPlanKind, "Root", "6", "").Value.As<PlanScreen>();
  ASSERT_TRUE(conversion);
  EXPECT_EQ(conversion->node->OType(), kPlanKind) << "begun from either plan";
}

TEST_F(Plan, TheModeIsFlippedAndGoesOutWithTheList) {
  host.shelf().lists[kPlanKind] = table({{"OIDR", FieldType::Text}});
  (void)plan->ClickMenu("O0200400", "", "5", "");
  EXPECT_EQ(menu("O0200400", "")[2], "*5");
  (void)plan->GetVXObjectList("", "x", "y");
  EXPECT_EQ(host.shelf().listCalls.back(), (Texts{"O0200400", "FULL", "", ""}));
  (void)plan->GetVXObjectList("'All'", "", "");
  EXPECT_EQ(host.shelf().listCalls.back(), (Texts{"O0200400", "'All'", "", ""}));
  (void)plan->ClickMenu("O0200400", "", "5", "");
  host.dialogs().filters = {"Account like '2%'", ""};
  EXPECT_EQ(plan->ClickMenu("O0200400", "", "4", "").Action, MenuAction::ShowRows);
  EXPECT_EQ(host.shelf().listCalls.back(), (Texts{"O0200400", "'','Account like '2%''", "", ""}));
  EXPECT_EQ(plan->ClickMenu("O0200400", "", "70S2", "").Action, MenuAction::Nothing);
  EXPECT_EQ(host.tree().log, (Texts{"redraw O0200400", "redraw O0200400"}));
}

TEST_F(Plan, ANewNodeLiesBelowTheClickedOne) {
  forms->add<ObjectFormRequest>("frmAccountPlan", [](const ObjectFormRequest& request) {
    return std::make_shared<PlanScreen>(request);
  });
  const std::string above = putNode(kPlanKind, 24, Null{}, "24");
  const auto account = plan->ClickMenu(above, "Class", "1", "").Value.As<PlanScreen>()->node;
  EXPECT_EQ(account->Fields()["ParentID"].Number(), 24);
  const auto newClass = plan->ClickMenu("O0200400", "", "1", "").Value.As<PlanScreen>()->node;
  EXPECT_TRUE(newClass->Fields()["ParentID"].IsAbsent());
  EXPECT_EQ(newClass->Fields()["GroupFlag"].Number(), 1);
  EXPECT_EQ(plan->ClickMenu("O020040099", "Item", "1", "").Action, MenuAction::Nothing);
  EXPECT_EQ(host.dialogs().shown.back().text, "Sąskaita panaikinta!");
  EXPECT_EQ(host.dialogs().shown.back().title, "Norvanta");
}

TEST_F(Plan, ANodeThatCannotBeReadIsTold) {
  const std::string node = putNode(kPlanKind, 24, Null{}, "24");
  host.shelf().reads = {{1299, "Ryšys nutrūko"}};
  EXPECT_FALSE(plan->AddToDeskTopVXObject(node));
  EXPECT_EQ(host.dialogs().takeTexts(), Texts{"Ryšys nutrūko"});
  EXPECT_FALSE(plan->AddToDeskTopVXObject("O020040099"));
  EXPECT_EQ(host.dialogs().takeTexts(), Texts{"Sąskaita panaikinta!"});
}

TEST_F(Plan, MovingDownWarnsFirst) {
  const std::string node = putNode(kPlanKind, 24, Null{}, "24");
  host.dialogs().answers = {Answer::Cancel, Answer::Ok, Answer::Ok};
  (void)plan->ClickMenu(node, "Item", "2", "");
  EXPECT_TRUE(host.store().calls.empty());
  host.store().serve("MoveAccountDown", [](const std::string&) { return HostResult{}; });
  (void)plan->ClickMenu(node, "Item", "2", "");
  EXPECT_EQ(host.store().trace(), "MoveAccountDown '24'\n");
  host.store().failNext(32, "Sąskaitos nebėra.");
  (void)plan->ClickMenu(node, "Item", "2", "");
  EXPECT_EQ(host.dialogs().shown.back().text, "Sąskaitos nebėra.");
  EXPECT_EQ(host.tree().log.size(), 1u) << "redrawn only after it was done";
}

TEST_F(Plan, ObjectsAboveANode) {
  (void)putNode(kPlanKind, 2, Null{}, "2", "2");
  (void)putNode(kPlanKind, 24, 2, "24", "2*24");
  const auto node = plan->GetVXObject(putNode(kPlanKind, 241, 24, "241", "2*24*241"));
  const auto account = [&](const char* key) {
    const auto object = node->Properties(key, "").Value.As<VXObjectUIO>();
    return object ? std::string(object->Fields()["Account"].Text()) : "none";
  };
  EXPECT_EQ(account("parent"), "24");
  EXPECT_EQ(account("CLASS"), "2");
  const auto top = plan->GetVXObject("O02004002");
  EXPECT_TRUE(top->Properties("Parent", "").Value.IsEmpty());
  EXPECT_TRUE(top->Properties("Class", "").Value.IsEmpty());
}

TEST_F(Plan, ACounterpartThatIsGoneIsForgotten) {
  const auto node = plan->GetVXObject(putNode(kPlanKind, 24, Null{}, "24"));
  EXPECT_EQ(node->Properties("NewAccount", "").Value, Variant(""));
  (void)putNode(kNewPlanKind, 7, Null{}, "2410");
  node->Fields()["NewID"] = 7;
  EXPECT_EQ(node->Properties("newaccount", "").Value, Variant("2410 Vardas 2410"));
  host.shelf().records.erase("O02004017");
  EXPECT_EQ(node->Properties("NewAccount", "").Value, Variant(""));
  EXPECT_TRUE(node->Fields()["NewID"].IsNull());
}

TEST_F(Plan, OtherNamesGoToTheStoreOfTheNodesOwnPlan) {
  const auto node = plan->GetVXObject(putNode(kPlanKind, 24, Null{}, "24"));
  host.store().serve("DO0200400_GetBRASettings", table({{"Code", FieldType::Text}}));
  EXPECT_TRUE(node->Properties("BRASettings", "None").Value.IsRows());
  const auto newPlan = plan->GetVXObject(putNode(kNewPlanKind, 7, Null{}, "24"));
  EXPECT_EQ(newPlan->Properties("BRAProperties", "None").Code, 1206);
  EXPECT_EQ(host.store().calls.back().method, "DO0200401_GetBRAProperties");
  EXPECT_EQ(node->Methods("Convert").Code, 1206);
  EXPECT_EQ(host.store().calls.back().parameters, "");
  (void)node->Methods("BackUpDB", {"'Convert'"});
  EXPECT_EQ(host.store().calls.back().parameters, "'Convert'") << "quoted by the caller already";
  EXPECT_EQ(host.dialogs().takeTexts().size(), 3u) << "each failure is shown";
}

}  // namespace
}  // namespace tolvex::test
