// Lines of templates with what they require, and the entries that they make.
#include "operations/template_rules.h"

#include "operations/entry_rules.h"
#include "tests/operations/operation_world.h"
#include "tests/support/rows.h"

namespace tolvex::test {
namespace {

class TemplateEntriesMade : public OperationWorld {
 protected:
  static constexpr ColumnSpec kRequired[] = {{"GUID", FieldType::Text},
                                             {"FOID", FieldType::Text, 8},
                                             {"FOIDR", FieldType::Text},
                                             {"Sign", FieldType::SmallInt}};
  // One line with that factor, which requires a firm on the debit side.
  void serveLine(double factor, const char* fixed = nullptr) {
    const RowSetPtr lines = table({{"ID", FieldType::Integer},
                                   {"AccountD", FieldType::Text},
                                   {"AccountC", FieldType::Text},
                                   {"Factor", FieldType::Double},
                                   nestedColumn("RequiredAddr", kRequired)},
                                  {{11, "240", "500", factor}});
    const RowSetPtr required = (*lines)["RequiredAddr"].Rows();
    required->LoadRow();
    (*required)["FOID"] = "O0000100";
    (*required)["Sign"] = 1;
    if (fixed) (*required)["FOIDR"] = fixed;
    host.store().serve("GetTemplateAccAndAddr", lines);
  }
  MethodResult addTemplate(double sum, const Variant::Array& addressees = {}) {
    return call("AddTemplate", {33, sum, Variant(addressees)});
  }
};

TEST_F(TemplateEntriesMade, TheFactorSharesTheSumToTheCent) {
  const struct {
    double factor, sum, entry;
  } kCases[] = {
      {0.5, 100.01, 50.01},  // a half cent is lifted
      {0.5, 100.03, 50.02},
      {0.5, 0.01, 0.01},
      {1, 100.01, 100.01},
      {0.18, 1000, 180},
      {0.18, 0.01, 0},
      {1.18, 84.75, 100.01},
      {0.05, 33.3, 1.67},
      {2, 50.005, 100.02},
      {0, 100, 0},
      {1.0 / 3, 100, 33.33},
      {0.5, 99999999.99, 50000000},
  };
  for (const auto& c : kCases) {
    serveLine(c.factor);
    ASSERT_EQ(addTemplate(c.sum).Code, kDone);
    BR().MoveLast();
    EXPECT_EQ(BR()["SumA"].Number(), c.entry) << c.factor << " of " << c.sum;
  }
}

TEST_F(TemplateEntriesMade, AFixedAddresseeIsAttachedUnlessAnotherWasGiven) {
  host.pickers().known["O00001003"] = {"O00001003", "UAB Pirkėjas", false};
  const struct {
    const char* name;
    const char* fixed;
    Variant::Array given;
    const char* references;
  } kCases[] = {
      {"fixed", "O00001003", {}, "O00001003"},
      {"the caller's of that kind and side goes first", "O00001003",
       triple(1, "O00001002", "UAB Tiekėjas"), "O00001002"},
      {"on the other side it is another", "O00001003", triple(-1, "O00001002", "UAB Tiekėjas"),
       "O00001002 O00001003"},
      {"one that is gone is left to the user", "O00001009", {}, ""},
      {"not fixed", nullptr, {}, ""},
  };
  for (const auto& c : kCases) {
    serveLine(1, c.fixed);
    ASSERT_EQ(addTemplate(10, c.given).Code, kDone);
    BR().MoveLast();
    EXPECT_EQ(column(*BR()["BRProperties"].Rows(), "FOIDR"), c.references) << c.name;
  }
  BR().MoveFirst();
  EXPECT_EQ(column(*BR()["BRProperties"].Rows(), "ShowString"), "UAB Pirkėjas");
}

// An account that the template leaves open stops the operation until the user has chosen one.
TEST_F(TemplateEntriesMade, AnOpenAccountFailsTheTest) {
  add("*", "500", 5);
  EXPECT_TRUE(
      call("TestOper", {}).Text.starts_with("Klaidinga  balansinės sąskaitos reikšmė!\r\n"));
}

class TemplateLines : public testing::Test {
 protected:
  TemplateLines() { record->AddNew(); }
  std::string required() { return column(*(*record)["BRTemplateAddr"].Rows(), "FOID"); }
  RowSetPtr record = emptyRecord("O0201600");
};

TEST_F(TemplateLines, ALineComesBackAsItWasWritten) {
  const TemplateLine first{"g1", "240", "*", 0.5, {{"O0000100", 1, "O00001003"}}};
  const TemplateLine second{"g2", "0", "500", 1, {{"O0000100", 1, ""}, {"O0000100", -1, ""}}};
  writeTemplateLine(*record, first);
  writeTemplateLine(*record, second);
  const TemplateLine read = templateLine(*record, "g1");
  EXPECT_EQ(read.accountD + read.accountC, "240*");
  EXPECT_EQ(read.factor, 0.5);
  EXPECT_EQ(read.required, first.required);
  EXPECT_EQ(templateLine(*record, "g2").required, second.required);
  EXPECT_TRUE(templateLine(*record, "g3").guid.empty());
  EXPECT_EQ(templateLine(*record, "").factor, 1);
}

TEST_F(TemplateLines, WhatALineRequiresFollowsTheTicks) {
  writeTemplateLine(*record, {"g1", "240", "500", 1, {{"O0000100", 1, ""}, {"O0001401", -1, ""}}});
  writeTemplateLine(*record, {"g2", "240", "500", 1, {{"O0000300", 1, ""}}});
  record->AcceptChanges();
  // The same again changes nothing but what was asked for.
  writeTemplateLine(*record, {"g1", "240", "500", 1, {{"O0000100", 1, ""}, {"O0001401", -1, ""}}});
  EXPECT_FALSE((*record)["BRTemplateAddr"].Rows()->HasChanges());
  writeTemplateLine(*record,
                    {"g1", "2711", "500", 2, {{"O0001401", 1, ""}, {"O0000100", 1, "O00001003"}}});
  EXPECT_EQ(required(), "O0000100 O0000300 O0001401") << "kind and side count together";
  EXPECT_EQ(templateLine(*record, "g1").required,
            (std::vector<RequiredAddressee>{{"O0000100", 1, "O00001003"}, {"O0001401", 1, ""}}));
  writeTemplateLine(*record, {"g1", "2711", "500", 2, {{"O0000100", 1, ""}}});
  EXPECT_EQ(templateLine(*record, "g1").required,
            (std::vector<RequiredAddressee>{{"O0000100", 1, ""}}))
      << "no longer fixed";
  EXPECT_EQ((*record)["BRTemplateAcc"].Rows()->RecordCount(), 2U);
}

TEST_F(TemplateLines, ALineGoesWithWhatItRequires) {
  writeTemplateLine(*record, {"g1", "240", "500", 1, {{"O0000100", 1, ""}}});
  writeTemplateLine(*record, {"g2", "240", "500", 1, {{"O0000300", 1, ""}}});
  EXPECT_TRUE(removeTemplateLine(*record, "g1"));
  EXPECT_FALSE(removeTemplateLine(*record, "g1"));
  EXPECT_EQ(required(), "O0000300");
  EXPECT_EQ(column(*(*record)["BRTemplateAcc"].Rows(), "GUID"), "g2");
}

}  // namespace
}  // namespace tolvex::test
