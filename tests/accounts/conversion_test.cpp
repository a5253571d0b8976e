// The screen of the conversion to the new plan, over the fake host.
#include <gtest/gtest.h>

#include "accounts/UI0200400.h"
#include "accounts/UIO0200400.h"
#include "accounts/account_forms.h"
#include "accounts/conversion_rows.h"
#include "accounts/frmAccountNewPlan.h"
#include "framework/object_contract.h"
#include "framework/references.h"
#include "platform/input.h"
#include "tests/support/fake_host.h"

namespace tolvex::test {
namespace {

#define DO(act) EXPECT_EQ(act, "")

using Texts = std::vector<std::string>;

struct NodeRow {
  int id, parent, group, entries, counterpart;  // 0: none
};

RowSetPtr convertingTable(const std::vector<NodeRow>& nodes) {
  const RowSetPtr rows = table({{"OIDR", FieldType::Text},
                                {"PreviewO", FieldType::Text},
                                {"ParentID", FieldType::Integer},
                                {"GroupFlag", FieldType::Integer},
                                {"cn", FieldType::Integer},
                                {"NewID", FieldType::Integer},
                                {"PreviewN", FieldType::Text}});
  for (const NodeRow& node : nodes) {
    rows->LoadRow();
    RowSet& row = *rows;
    row["OIDR"] = refOf(kPlanKind, node.id);
    row["PreviewO"] = std::to_string(node.id) + " Sena";
    row["ParentID"] = node.parent != 0 ? Variant(node.parent) : Variant(Null{});
    row["GroupFlag"] = node.group;
    row["cn"] = node.entries;
    row["NewID"] = node.counterpart != 0 ? Variant(node.counterpart) : Variant(Null{});
    row["PreviewN"] =
        node.counterpart != 0 ? std::to_string(node.counterpart) + " Nauja" : std::string();
  }
  return rows;
}

TEST(ConversionRows, ABranchWithEntriesNeedsCounterparts) {
  struct Case {
    const char* name;
    std::vector<NodeRow> nodes;
    std::string marks;  // a letter a row: b bad
    bool may;
  };
  const Case kCases[] = {
      {"no entries", {{1, 0, 1, 0, 0}, {11, 1, 0, 0, 0}}, "..", true},
      {"an account with entries", {{1, 0, 1, 0, 0}, {11, 1, 0, 3, 0}}, ".b", false},
      {"which has one", {{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}}, "..", true},
      {"all below it as well",
       {{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}, {111, 11, 0, 0, 0}},
       "..b",
       false},
      {"not what stands beside it",
       {{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}, {111, 11, 0, 0, 8}, {12, 1, 0, 0, 0}},
       "....",
       true},
      {"nor what stands above",
       {{1, 0, 1, 0, 0}, {11, 1, 0, 0, 0}, {111, 11, 0, 3, 7}, {12, 1, 0, 0, 0}},
       "....",
       true},
      {"nor the next class",
       {{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}, {2, 0, 1, 0, 0}, {21, 2, 0, 0, 0}},
       "....",
       true},
      {"a mark in a marked branch ends with the outer one",
       {{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}, {111, 11, 0, 2, 8}, {112, 11, 0, 0, 0}},
       "...b",
       false},
      {"a group needs none", {{1, 0, 1, 0, 0}, {11, 1, 1, 3, 0}, {111, 11, 0, 0, 0}}, "...", true},
      {"nor does a class that nobody called a group", {{1, 0, 0, 3, 0}}, ".", true},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    const ConversionList list = conversionList(*convertingTable(c.nodes));
    std::string marks;
    for (const ui::Row& row : list.rows) marks += row.mark == ui::Mark::Bad ? 'b' : '.';
    EXPECT_EQ(marks, c.marks);
    EXPECT_EQ(list.mayConvert, c.may);
  }
}

TEST(ConversionRows, TheSummaryTellsWhatIsMissing) {
  const RowSetPtr preview =
      table({{"Accounts", FieldType::Integer},
             {"Targets", FieldType::Integer},
             {"Entries", FieldType::Double},
             {"Turnover", FieldType::Double},
             {"Mapped", FieldType::Double},
             {"Missing", FieldType::Integer},
             {"FirstMissing", FieldType::Text}},
            {{12, 9, 1000000.0, 2500.5, 2500.5, 0, ""}, {1, 1, 3.0, 2500.5, 0.5, 2, "162"}});
  preview->MoveFirst();
  EXPECT_EQ(conversionSummary(*preview, {}),
            "Įrašų 1\u00A0000\u00A0000, sąskaitų 12 → 9. Apyvarta 2\u00A0500,50 Lt → "
            "2\u00A0500,50 Lt.");
  EXPECT_EQ(conversionMissing(*preview), "");
  preview->MoveNext();
  EXPECT_EQ(conversionSummary(*preview, {}),
            "Įrašų 3, sąskaitų 1 → 1. Apyvarta 2\u00A0500,50 Lt → 0,50 Lt.");
  EXPECT_EQ(conversionMissing(*preview), "Naudojamų sąskaitų be atitikmens: 2, pirmoji 162.");
}

class ConversionScreen : public testing::Test {
 protected:
  ConversionScreen() {
    adoptHostContext(nullptr);
    adoptHostContext(&host);
    registerAccountForms(*forms);
    plan->VXS(host);
    newPlan->VXS(host);
    newPlan->OID(kNewPlanKind);
    host.objects().kinds[kPlanKind] = plan;
    host.objects().kinds[kNewPlanKind] = newPlan;
    host.objects().makers[kPlanKind] = [this] { return plan->GetVXObject(""); };
    host.objects().makers[kNewPlanKind] = [this] { return newPlan->GetVXObject(""); };
    put(kPlanKind, 11, "11", 0);
    put(kNewPlanKind, 7, "7", 0);
    put(kNewPlanKind, 9, "9", 1);
    newPlanHas(true);
    serve({{1, 0, 1, 0, 0}, {11, 1, 0, 3, 0}, {12, 1, 0, 0, 0}});
  }
  ~ConversionScreen() override { adoptHostContext(nullptr); }

  void put(const char* kind, int id, const char* number, int group) {
    const RowSetPtr record = emptyRecord(kPlanKind);
    record->AddNew();
    (*record)["ID"] = id;
    (*record)["Account"] = number;
    (*record)["Preview"] = "Nauja";
    (*record)["GroupFlag"] = group;
    (void)host.shelf().put(kind, id, *record);
  }
  void newPlanHas(bool group) {
    host.shelf().lists[kPlanKind] =  // generic lists are kept by family
        table({{"OIDR", FieldType::Text}, {"GroupFlag", FieldType::Integer}},
              {{"O02004019", group ? 1 : 0}});
  }
  void serve(const std::vector<NodeRow>& nodes) {
    host.store().serve("DO0200400_GetConvertingTable", convertingTable(nodes));
    host.store().serve("DO0200400_GetConvertingPreview", table({{"Accounts", FieldType::Integer}}));
    serveCopies({});
  }
  void serveCopies(const Texts& names) {
    const RowSetPtr copies = table({{"Name", FieldType::Text}});
    for (const std::string& name : names) {
      copies->LoadRow();
      (*copies)["Name"] = name;
    }
    host.store().serve("DO0200400_GetBackups", copies);
  }
  void answer(const char* routine, std::int32_t code = kDone, const char* text = "") {
    host.store().serve(routine, [=, this](const std::string& parameters) {
      done.push_back(std::string(routine) + " " + parameters);
      return HostResult{code, text, {}};
    });
  }
  std::shared_ptr<frmAccountNewPlan> open() {
    auto form = plan->ClickMenu(kPlanKind, "", "6", "").Value.As<frmAccountNewPlan>();
    EXPECT_TRUE(form);
    form->markOpen(true);
    form->opened();
    return form;
  }
  struct Told {
    std::string text;
    Icon icon;
    bool operator==(const Told&) const = default;
  };
  std::vector<Told> told() {
    std::vector<Told> boxes;
    for (const Message& message : host.dialogs().shown)
      boxes.push_back({message.text, message.icon});
    host.dialogs().shown.clear();
    return boxes;
  }

  FakeHost host;
  std::shared_ptr<FormRegistry> forms = std::make_shared<FormRegistry>();
  std::shared_ptr<UI0200400> plan = std::make_shared<UI0200400>(forms);
  std::shared_ptr<UI0200400> newPlan = std::make_shared<UI0200400>(forms);
  Texts done;  // works of the store on the whole books, in order
};

TEST_F(ConversionScreen, AnEmptyNewPlanBeginsWithTheFirstClass) {
  newPlanHas(false);
  host.store().serve(
      "DO0200400_GetAccountPlan",
      table({{"Account", FieldType::Text}, {"Name", FieldType::Text}, {"Type", FieldType::Text}},
            {{"1", "Ilgalaikis turtas", "D"}, {"11", "Nematerialusis turtas", "D"}}));
  const int before = host.shelf().saveCount;
  (void)open();
  EXPECT_EQ(host.shelf().saveCount, before + 1);
  bool found = false;
  for (const auto& [reference, record] : host.shelf().records) {
    found |= reference.starts_with(kNewPlanKind) && (*record)["Account"].Text() == "1" &&
             (*record)["GroupFlag"].Number() == 1;
  }
  EXPECT_TRUE(found);
  newPlanHas(true);
  (void)open();
  EXPECT_EQ(host.shelf().saveCount, before + 1) << "a plan that has a group is left alone";
}

TEST_F(ConversionScreen, ACounterpartIsDroppedPickedAndCleared) {
  const auto form = open();
  EXPECT_FALSE(form->cmdConvert.usable());
  ui::Input input(*form);
  DO(input.select(form->lsvCovert, 1));
  EXPECT_NE(input.drop(form->lsvCovert, "O020040011"), "") << "of the working plan";
  DO(input.drop(form->lsvCovert, "O02004019"));
  EXPECT_EQ(host.shelf().saveCount, 0) << "a group is ignored";
  DO(input.drop(form->lsvCovert, "O02004017"));
  const auto newId = [&] { return (*host.shelf().records.at("O020040011"))["NewID"].Value(); };
  EXPECT_EQ(newId(), Variant(7));
  serve({{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}, {12, 1, 0, 0, 0}});
  DO(input.pick(form->mnuRefresh));
  EXPECT_EQ(form->lsvCovert.currentRow()->key, "O020040011") << "the row stays";
  EXPECT_TRUE(form->cmdConvert.usable());

  host.pickers().answers = {Picked{"", "", false}};
  DO(input.activate(form->lsvCovert, 1));
  EXPECT_EQ(host.pickers().requests.back().prompt, "Pasirinkite atitinkamą sąskaitą");
  EXPECT_EQ(host.pickers().requests.back().current, "O02004017");
  EXPECT_TRUE(newId().IsNull());
  DO(input.select(form->lsvCovert, 0));
  EXPECT_NE(input.drop(form->lsvCovert, "O02004017"), "") << "a class has none";
  DO(input.activate(form->lsvCovert, 0));
  EXPECT_EQ(host.pickers().requests.size(), 1u);

  DO(input.select(form->lsvCovert, 1));
  host.shelf().saves = {SaveResult{1201, "Įrašą pakeitė kitas vartotojas"}};
  DO(input.drop(form->lsvCovert, "O02004017"));
  EXPECT_EQ(told(),
            (std::vector<Told>{{"Klaida!\r\n\r\nĮrašą pakeitė kitas vartotojas", Icon::Stop}}));
  host.shelf().records.erase("O020040011");
  DO(input.drop(form->lsvCovert, "O02004017"));
  EXPECT_EQ(told(), (std::vector<Told>{{"Sąskaita panaikinta!", Icon::Stop}}));
}

TEST_F(ConversionScreen, AccountsAreMatchedForTheSelectedRow) {
  const auto form = open();
  answer("SetAccountAuto");
  ui::Input input(*form);
  DO(input.select(form->lsvCovert, 2));
  DO(input.pick(form->mnuSetAccountsAuto));
  EXPECT_EQ(done, (Texts{"SetAccountAuto O020040012"}));
  EXPECT_EQ(form->lsvCovert.currentRow()->key, "O020040012");
  DO(input.pick(form->mnuToDeskTop));
  EXPECT_EQ(host.desktop().log, (Texts{"putObject O020040012"}));
}

TEST_F(ConversionScreen, BackupConversionAndRestoreInTheirOrder) {
  serve({{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}});
  const auto form = open();
  for (const char* routine : {"BackUpDB", "Convert", "RestoreDB"}) answer(routine);
  ui::Input input(*form);
  EXPECT_NE(input.click(form->cmdRestore), "") << "there is no copy yet";
  DO(input.click(form->cmdBackUp));
  EXPECT_EQ(told(),
            (std::vector<Told>{{"Atsarginė kopija išsaugota kietajame diske.", Icon::Info}}));
  DO(input.click(form->cmdConvert));
  EXPECT_EQ(done, (Texts{"BackUpDB 'Convert'", "BackUpDB 'Convert'", "Convert "}));
  EXPECT_EQ(told(),
            (std::vector<Told>{{"Sąskaitų planas pakeistas į naują sąskaitų planą.", Icon::Info}}));
  EXPECT_EQ(host.tree().log, (Texts{"redraw O0200400", "redraw O0200401"}));
  EXPECT_TRUE(form->SOPanel.usable());
  done.clear();
  DO(input.click(form->cmdRestore));
  EXPECT_EQ(done, (Texts{"BackUpDB 'Pries-atstatyma 20030209 143015'", "RestoreDB 'Convert'"}));
  EXPECT_EQ(told(), (std::vector<Told>{{"Atsarginė kopija atstatyta.", Icon::Info}}));
  EXPECT_EQ(host.pump().busyLog,
            (std::vector<bool>{true, false, true, false, true, false, true, false, true, false}));
}

TEST_F(ConversionScreen, FailuresAreToldOnceAndStopWhatFollows) {
  struct Case {
    const char *name, *failing, *button;
    Texts done;
    Icon icon;
  };
  const Case kCases[] = {
      {"no backup, no conversion", "BackUpDB", "cmdConvert", {"BackUpDB 'Convert'"}, Icon::Stop},
      {"a conversion that is refused",
       "Convert",
       "cmdConvert",
       {"BackUpDB 'Convert'", "Convert "},
       Icon::Exclamation},
      {"a backup alone", "BackUpDB", "cmdBackUp", {"BackUpDB 'Convert'"}, Icon::Stop},
      {"nothing restored over books without a copy",
       "BackUpDB",
       "cmdRestore",
       {"BackUpDB 'Pries-atstatyma 20030209 143015'"},
       Icon::Stop},
      {"a restore",
       "RestoreDB",
       "cmdRestore",
       {"BackUpDB 'Pries-atstatyma 20030209 143015'", "RestoreDB 'Convert'"},
       Icon::Stop},
  };
  serve({{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}});
  serveCopies({"Kita", "Convert"});
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    const auto form = open();
    for (const char* routine : {"BackUpDB", "Convert", "RestoreDB"}) answer(routine);
    answer(c.failing, 1299, "Diske nebėra vietos!");
    done.clear();
    DO(ui::Input(*form).click(*form->find(c.button)));
    EXPECT_EQ(done, c.done);
    EXPECT_EQ(told(), (std::vector<Told>{{"Diske nebėra vietos!", c.icon}}));
    EXPECT_TRUE(form->SOPanel.usable()) << "enabled again on every way out";
  }
}

TEST_F(ConversionScreen, OtherScreensMustCloseAndRightsAreKept) {
  serve({{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}});
  serveCopies({"Convert"});
  for (const char* routine : {"BackUpDB", "Convert", "RestoreDB"}) answer(routine);
  const auto form = open();
  host.screens().othersClose = false;
  DO(ui::Input(*form).click(form->cmdConvert));
  DO(ui::Input(*form).click(form->cmdRestore));
  EXPECT_EQ(done, Texts{});
  host.rights().table[kPlanRights] = {1, 1, 1, 1, 0};
  EXPECT_FALSE(open()->cmdRestore.usable()) << "rights come back with a restore";
  host.rights().table[kPlanRights] = {1, 0, 0, 1, 0};
  EXPECT_FALSE(open()->cmdConvert.usable());
  EXPECT_FALSE(open()->cmdBackUp.usable());
}

TEST_F(ConversionScreen, WhatIsLeftForAPersonIsListed) {
  serve({{1, 0, 1, 0, 0}, {11, 1, 0, 3, 7}});
  answer("BackUpDB");
  host.store().serve("Convert", table({{"Where", FieldType::Text}, {"Text", FieldType::Text}},
                                      {{"Balansas: Atsargos", "20"}}));
  const auto form = open();
  EXPECT_FALSE(form->lsvLeft.shown());
  DO(ui::Input(*form).click(form->cmdConvert));
  ASSERT_TRUE(form->lsvLeft.shown());
  EXPECT_EQ(form->lsvLeft.rows()[0].cells[1].text, "20");
}

}  // namespace
}  // namespace tolvex::test
