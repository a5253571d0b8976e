#include "accounts/plan_rules.h"

#include <gtest/gtest.h>

#include "accounts/plan_report.h"
#include "tests/support/fake_objects.h"

namespace tolvex::test {
namespace {

std::shared_ptr<VXObjectUIO> node(Variant parent) {
  auto made = std::make_shared<FakeInnerUIO>(std::make_shared<Shelf>(), "O0200400");
  made->Fields()["ParentID"] = parent;
  return made;
}

TEST(PlanRules, LevelsFollowFromWhatStandsAbove) {
  const auto top = node(Null{}), zero = node(0), second = node(2);
  struct Case {
    std::shared_ptr<VXObjectUIO> node, parent;
    NodeLevel want;
    const char *fresh, *stored;
  };
  const Case cases[] = {
      {top, nullptr, NodeLevel::Class, "Nauja klasė", "Klasė"},
      {zero, nullptr, NodeLevel::Class, "Nauja klasė", "Klasė"},
      {second, top, NodeLevel::Account, "Nauja sąskaita", "Sąskaita"},
      {second, zero, NodeLevel::Account, "Nauja sąskaita", "Sąskaita"},
      {second, nullptr, NodeLevel::Account, "Nauja sąskaita", "Sąskaita"},
      {node(24), second, NodeLevel::Subaccount, "Nauja subsąskaita", "Subsąskaita"}};
  for (const Case& c : cases) {
    const NodeLevel level = levelOf(*c.node, c.parent.get());
    EXPECT_EQ(level, c.want);
    EXPECT_STREQ(nodeCaption(level, true), c.fresh);
    EXPECT_STREQ(nodeCaption(level, false), c.stored);
  }
}

TEST(PlanRules, Typing) {
  const std::pair<const char*, const char*> types[] = {
      {"", ""}, {"k", "K"}, {"K", "K"}, {"d", "D"}, {"x", "D"}, {"ą", "D"}, {"DK", "D"}};
  for (const auto& [typed, want] : types) EXPECT_EQ(accountTypeOf(typed), want) << typed;

  const std::pair<const char*, const char*> numbers[] = {
      {"24", "24"}, {"240", "240"}, {"2", "24"}, {"", "24"}, {"124", "24"}};
  for (const auto& [typed, want] : numbers) EXPECT_EQ(behindPrefix(typed, "24"), want) << typed;

  for (const char* number : {"0", "00"}) EXPECT_TRUE(isReservedClass(number));
  for (const char* number : {"", "1", "000", "01"}) EXPECT_FALSE(isReservedClass(number));
}

TEST(PlanRules, WhatIsMissingIsToldInOrder) {
  const auto told = [](NodeTexts node, const char* parent) {
    const auto complaint = checkNode(node, parent);
    return std::string(complaint ? complaint->text : "");
  };
  const std::string number = "Nenurodytas sąskaitos numeris";
  EXPECT_EQ(told({"", "", ""}, ""), number);
  EXPECT_EQ(told({"24", "a", "D"}, "24"), number) << "no longer than the parent's";
  EXPECT_EQ(told({"240", "", ""}, "24"), "Nenurodytas sąskaitos pavadinimas");
  EXPECT_EQ(told({"240", "a", ""}, "24"), "Nenurodytas sąskaitos tipas");
  EXPECT_EQ(told({"240", "a", "D"}, "24"), "");
  EXPECT_EQ(told({"1", "a", "D"}, ""), "");
}

TEST(PlanReport, GroupsAreBoldAndHaveNoType) {
  const RowSetPtr nodes = table({{"Account", FieldType::Text},
                                 {"Name", FieldType::Text},
                                 {"Type", FieldType::Text},
                                 {"GroupFlag", FieldType::Integer}},
                                {{"2", "Trumpalaikis turtas", "D", 1},
                                 {"240", "Pirkėjų skolos", "D", 0},
                                 {"4430", "Skolos", "K", 0}});
  const ReportDocument plan = planReport(*nodes);
  EXPECT_EQ(dump(plan),
            "Sąskaitų planas\n"
            "Sąskaitų planas\n"
            "| Sąskaita | Pavadinimas | Tipas\n"
            "|*2 | Trumpalaikis turtas | \n"
            "| 240 | Pirkėjų skolos | D\n"
            "| 4430 | Skolos | K\n");
  EXPECT_EQ(plan.layout, "ActRepAccPlan");
  EXPECT_EQ(plan.exportStem, "Saskaita");
}

}  // namespace
}  // namespace tolvex::test
