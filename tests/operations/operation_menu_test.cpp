#include <gtest/gtest.h>

#include "framework/references.h"
#include "framework/text.h"
#include "operations/UI0201400.h"
#include "operations/UI0201500.h"
#include "tests/operations/operation_world.h"

namespace tolvex::test {
namespace {

// A screen that remembers what it was opened over.
class FakeScreen final : public ui::Form {
 public:
  FakeScreen(std::string name, const ObjectFormRequest& request)
      : Form(request.host, std::move(name)), request(request) {}
  const char* picture() const override { return ""; }
  ObjectFormRequest request;
};

class Menus : public testing::Test {
 protected:
  Menus() {
    operations->VXS(host);
    groups->VXS(host);
    host.objects().kinds[kOperationKind] = operations;
  }

  void addScreen(const char* name) {
    tables->forms.add<ObjectFormRequest>(name, [name](const ObjectFormRequest& request) {
      return std::make_shared<FakeScreen>(name, request);
    });
  }
  std::string putGroup(int id, const char* kind, int common = 0) {
    const RowSetPtr record = emptyRecord("O0201400");
    record->AddNew();
    (*record)["FormOID"] = kind;
    (*record)["GroupFlag"] = common;
    (*record)["Parameters"] = "a#b";
    return host.shelf().put("O0201400", id, *record);
  }
  std::string putOperation(int id, const char* kind, int group) {
    const RowSetPtr record = emptyRecord(kOperationKind);
    record->AddNew();
    (*record)["BROperGroupID"] = group;
    return host.shelf().put(kind, id, *record);
  }
  // Captions joined by "|", a disabled one with "-" before it.
  static std::string shown(const std::vector<MenuEntry>& menu) {
    std::vector<std::string> texts;
    for (const MenuEntry& entry : menu) {
      texts.push_back(entry.enabled || entry.caption == "-" ? entry.caption : "-" + entry.caption);
    }
    return join(texts, "|");
  }
  static std::shared_ptr<FakeScreen> screenOf(const MenuAction& action) {
    EXPECT_EQ(action.Action, MenuAction::ShowForm);
    return action.Value.As<FakeScreen>();
  }

  FakeHost host;
  HostScope scope{host};
  std::shared_ptr<OperationTables> tables = entryTables();
  std::shared_ptr<UI0201500> operations = std::make_shared<UI0201500>(tables);
  std::shared_ptr<UI0201400> groups = std::make_shared<UI0201400>(tables);
};

TEST_F(Menus, OperationEntriesFollowKindAndRights) {
  addScreen("frmBROper");
  const RightFlags all{1, 1, 1, 1, 1}, viewer{1, 0, 0, 0, 0};
  const struct {
    const char* name;
    const char *id, *kind;
    RightFlags rights;
    const char* want;
  } kCases[] = {
      {"the kind itself", "O0201500", "O0201500", all, ""},
      {"generic", "O02015001", "O0201500", all,
       "Padėti ant darbo stalo|Nauja operacija|Panaikinti|Atrinkti|-Paieška"},
      {"payment order", "O02015001", "O0201501", all,
       "Padėti ant darbo stalo|-Naujas mokėjimo nurodymas|-Eksportas į banką|Panaikinti|Atrinkti|"
       "-Paieška"},
      {"receipt", "O02015001", "O0201502", all,
       "Padėti ant darbo stalo|-Naujas pinigų gavimas|Panaikinti|Atrinkti|-Paieška"},
      {"closing", "O02015001", "O0201506", all,
       "Padėti ant darbo stalo|-Nauja operacija|Panaikinti|Atrinkti|-Paieška"},
      {"trade document", "O02015001", "O1000100", all,
       "Padėti ant darbo stalo|Panaikinti|Atrinkti|-Paieška"},
      {"to look at", "O02015001", "O0201501", viewer, "Padėti ant darbo stalo|Atrinkti|-Paieška"},
      {"no right", "O02015001", "O0201504", {}, "Atrinkti|-Paieška"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    host.rights().table["CBROperRights12"] = c.rights;
    EXPECT_EQ(shown(operations->GetMenu(c.id, c.kind, "O020140012")), c.want);
  }
}

TEST_F(Menus, ANewDocumentTakesItsGroupWithIt) {
  addScreen("frmCashPayment");
  const std::string group = putGroup(12, "O0201504");
  const auto screen = screenOf(groups->ClickMenu(group, "", "Naujas kasos pajamų orderis", "x;y"));
  ASSERT_NE(screen, nullptr);
  EXPECT_EQ(screen->name(), "frmCashPayment");
  EXPECT_EQ(screen->request.ClickedParameters, "x;y");
  VXObjectUIO& document = *screen->request.object;
  EXPECT_EQ(document.OType(), "O0201504");
  EXPECT_EQ(document.Fields()["BROperGroupID"].Number(), 12);
  EXPECT_EQ(document.Fields()["Parameters"].Text(), "a#b");
}

TEST_F(Menus, FromARowTheGroupIsThatOfTheRow) {
  addScreen("frmBROper");
  putGroup(12, "O0201500");
  const std::string row = putOperation(5, "O0201500", 12);
  const auto screen = screenOf(operations->ClickMenu(row, "O0201500", "Nauja operacija", ""));
  EXPECT_EQ(screen->request.object->Fields()["BROperGroupID"].Number(), 12);
  const auto tool = screenOf(operations->ClickMenu(row, "O0201500", "Skolų dengimas", ""));
  EXPECT_EQ(tool->request.ClickedParameters, "Skolų dengimas");
}

TEST_F(Menus, AMissingScreenOrGroupIsToldAndOpensNothing) {
  addScreen("frmBROper");
  const std::string group = putGroup(12, "O0201504");
  EXPECT_EQ(groups->ClickMenu(group, "", "Naujas kasos pajamų orderis", "").Action, 0);
  EXPECT_NE(host.dialogs().takeTexts().at(0).find("vėliau"), std::string::npos);
  host.shelf().records.clear();
  EXPECT_EQ(operations->ClickMenu("O020140012", "", "Nauja operacija", "").Action, 0);
  EXPECT_EQ(host.dialogs().takeTexts(), std::vector<std::string>{"Grupė panaikinta!"});
  EXPECT_EQ(operations->ClickMenu("O0201500", "", "Nauja operacija", "").Action, 0);
  EXPECT_EQ(operations->ClickMenu("O02015009", "", "Kažkas", "").Action, 0);
  EXPECT_TRUE(host.dialogs().shown.empty());
}

TEST_F(Menus, AStoredDocumentOpensInTheEditorOfItsReference) {
  for (const char* name : {"frmBROper", "frmTransfer", "frmCashPayment"}) addScreen(name);
  const struct {
    const char *name, *kind, *want;
  } kCases[] = {{"generic", "O0201500", "frmBROper"},
                {"receipt", "O0201502", "frmTransfer"},
                {"expense order", "O0201503", "frmCashPayment"},
                {"business trip, whose card is not there", "O0202000", "frmBROper"}};
  int id = 1;
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const RowSetPtr record = emptyRecord(kOperationKind);
    record->AddNew();
    (*record)["BROperGroupID"] = 12;
    const std::string reference = host.shelf().put(kOperationKind, id, *record);
    (*host.shelf().records[reference])["FOIDR"] = c.kind + std::to_string(id);
    (*host.shelf().records[reference])["OType"] = c.kind;
    ++id;
    EXPECT_EQ(screenOf(operations->ClickMenu(reference, "", "Padėti ant darbo stalo", ""))->name(),
              c.want);
    EXPECT_TRUE(operations->AddToDeskTopVXObject(reference));
    EXPECT_EQ(host.desktop().forms.back()->name(), c.want);
  }
  host.rights().table["CBROperRights12"] = {};
  EXPECT_FALSE(operations->AddToDeskTopVXObject("O02015001")) << "no right to view";
  EXPECT_EQ(host.dialogs().takeTexts(), std::vector<std::string>{"Nėra teisės peržiūrėti!"});
  EXPECT_FALSE(operations->AddToDeskTopVXObject("O020150099"));
  EXPECT_EQ(host.dialogs().takeTexts(), std::vector<std::string>{"Operacija panaikinta !"});
}

TEST_F(Menus, DocumentsOfOtherModulesAreShownByTheHost) {
  addScreen("frmBROper");
  const std::string reference = putOperation(3, "O0300100", 12);
  (*host.shelf().records["O03001003"])["OIDR"] = "O02015003";
  host.shelf().records["O02015003"] = host.shelf().records["O03001003"];
  host.objects().opened["O03001003"] = operations->GetVXObject("");
  EXPECT_TRUE(operations->AddToDeskTopVXObject("O02015003"));
  EXPECT_TRUE(host.desktop().forms.empty());
  EXPECT_EQ(host.desktop().log, std::vector<std::string>{"show O03001003"});
}

TEST_F(Menus, DeletingAsksAndChecksTheGroupsRight) {
  const std::string row = putOperation(5, "O0201500", 12);
  host.rights().others = {};
  EXPECT_EQ(operations->DeleteVXObject("O02015099"), kGone) << "gone is told before a right";
  host.rights().table["CBROperRights12"] = {1, 0, 1, 1, 0};
  EXPECT_EQ(operations->DeleteVXObject(row), kNoRight);
  host.rights().table["CBROperRights12"] = {1, 1, 1, 1, 0};
  host.dialogs().answers = {Answer::No, Answer::Yes};
  EXPECT_EQ(operations->ClickMenu(row, "", "Panaikinti", "").Action, MenuAction::Nothing);
  EXPECT_EQ(operations->ClickMenu(row, "", "Panaikinti", "").Action, MenuAction::Removed);
  EXPECT_EQ(host.dialogs().shown[0].preset, Answer::No);
  EXPECT_FALSE(host.shelf().records.contains(row));
}

TEST_F(Menus, AFilterTravelsInTheFirstArgument) {
  host.shelf().lists[kOperationKind] = table({{"OIDR", FieldType::Text}});
  host.dialogs().filters = {"SumA > 100", ""};
  const MenuAction action = operations->ClickMenu("O02015001", "", "Atrinkti", "");
  EXPECT_EQ(action.Action, MenuAction::ShowRows);
  EXPECT_EQ(host.shelf().listCalls.back(),
            (std::vector<std::string>{"O0201500", "'','SumA > 100'", "", ""}));
  EXPECT_EQ(operations->ClickMenu("O02015001", "", "Atrinkti", "").Action, 0);
  (void)operations->GetVXObjectList("O02014001", "a", "b");
  EXPECT_EQ(host.shelf().listCalls.back(),
            (std::vector<std::string>{"O0201500", "O02014001", "", ""}));
  EXPECT_TRUE(operations->DragOK("", "", ""));
  EXPECT_FALSE(operations->DropOK(""));
}

// --- groups
// ----------------------------------------------------------------------------------------

TEST_F(Menus, GroupEntriesFollowTheDocumentKindOfTheGroup) {
  addScreen("frmBROper");
  const std::string tree =
      "Sąskaitų likučiai|-Naują bendra grupė|-Naują operacijų grupė|-|Peržiūros "
      "nustatymai|Atrinkti|"
      "-Paieška|-|-Sąskaitų blokavimas|";
  EXPECT_EQ(shown(groups->GetMenu("O0201400", "", "")), tree + "Pagalba");
  const struct {
    const char* kind;
    int common;
    const char* want;
  } kCases[] = {
      {"O0201500", 1, ""},
      {"O0201500", 0,
       "Nauja operacija|-Skolų dengimas|-Valiutos perskaičiavimas|-Valiutos pirkimas/pardavimas|"
       "-Būsimų laikotarpių operacijos|"},
      {"O0201501", 0, "-Naujas mokėjimo nurodymas|-Eksportas į banką|"},
      {"O0201502", 0, "-Naujas pinigų gavimas|-Banko įrašų apie pinigų gavimą importas|"},
      {"O1000100", 0, ""},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.kind);
    const std::string group = putGroup(12, c.kind, c.common);
    EXPECT_EQ(shown(groups->GetMenu(group, "", "")),
              tree + "-Padėti ant darbo stalo|" + c.want + "Panaikinti|Pagalba");
  }
  EXPECT_EQ(shown(groups->GetMenu(putGroup(1, "O0201500", 1), "MainGroup", "")),
            tree + "-Padėti ant darbo stalo|Pagalba")
      << "the group above all is never deleted";
  host.rights().others = {};
  EXPECT_EQ(shown(groups->GetMenu(putGroup(13, "O0201502"), "", "")),
            "Sąskaitų likučiai|-|Peržiūros nustatymai|Atrinkti|-Paieška|Pagalba");
}

TEST_F(Menus, GroupsListTheViewingPeriod) {
  host.workplace().period.days = 30;
  (void)groups->GetVXObjectList("O020140012", "", "");
  EXPECT_EQ(host.shelf().listCalls.back()[1], "'2003.01.10','9999.12.31','O020140012',''");
  host.workplace().period = {true, DateTime::Of(2002, 1, 1), DateTime::Of(2002, 12, 31), 30};
  (void)groups->GetVXObjectList("O0201400", "Name = 'x'", "");
  EXPECT_EQ(host.shelf().listCalls.back()[1], "'2002.01.01','2002.12.31','','Name = 'x''");
  (void)groups->ClickMenu("O0201400", "", "Peržiūros nustatymai", "");
  EXPECT_EQ(host.tree().log, std::vector<std::string>{"redraw O0201400"});
  host.workplace().accepts = false;
  (void)groups->ClickMenu("O0201400", "", "Peržiūros nustatymai", "");
  EXPECT_EQ(host.tree().log.size(), 1u);
  (void)groups->ClickMenu("O0201400", "", "Sąskaitų likučiai", "");
  EXPECT_EQ(host.help().pages[0].first, "help\\saskaitulikuciai.htm");
}

TEST_F(Menus, AGroupReadsItsOwnParentAndTypes) {
  const RowSetPtr record = emptyRecord("O0201400");
  record->AddNew();
  (*record)["ParentID"] = 3;
  const auto group = groups->GetVXObject(host.shelf().put("O0201400", 12, *record));
  for (const char* name : {"GetFormTypes", "GetParent", "GetTemplateList"}) {
    host.store().serve(name, table({{"A", FieldType::Text}}));
  }
  (void)group->Properties("FormTypes", "'x'");
  (void)group->Properties("Parent", "");
  (void)group->Properties("TemplateList", "12,'K'");
  EXPECT_EQ(host.store().trace(), "GetFormTypes None\nGetParent 3\nGetTemplateList 12,'K'\n");
}

TEST_F(Menus, TheTreeOfTemplatesBeginsAtTheGroupOrWhereItsSettingsSay) {
  host.store().serve("GetTemplateList", table({{"A", FieldType::Text}}));
  const struct {
    const char *kind, *parameters, *want;
  } kCases[] = {{"O0201500", "a#b", "7,'K'"},
                {"O0201505", "450#453#255", "7,'K'"},
                {"O0202000", "O000161212#b", "12,'K'"},
                {"O0202000", "O0001612#b", "7,'K'"},
                {"O1000100", "O000161212#b", "7,'K'"}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.parameters);
    const auto group = groups->GetVXObject(putGroup(12, c.kind));
    group->Fields()["Parameters"] = c.parameters;
    EXPECT_EQ(group->Methods("FillTemplatesTrw", {7}).Code, kDone);
    EXPECT_EQ(host.store().calls.back().parameters, c.want);
  }
  const auto group = groups->GetVXObject(putGroup(12, "O0201500"));
  for (const std::vector<Variant>& wrong : {std::vector<Variant>{}, {"x"}, {1, 2}}) {
    const MethodResult refused = group->Methods("FillTemplatesTrw", std::span(wrong));
    EXPECT_EQ(refused.Code, kRefused);
    EXPECT_EQ(refused.Text, "VXObjectUIO_Methods FillTemplatesTrw:\r\nKlaida parametruose!");
  }
}

TEST_F(Menus, ToolsOfAGroupTakeItAlong) {
  for (const char* name : {"frmCoversInFuture", "frmImportFromBank", "frmTelebank"})
    addScreen(name);
  const std::string group = putGroup(12, "O0201500");
  const auto covers = screenOf(groups->ClickMenu(group, "", "Būsimų laikotarpių operacijos", ""));
  EXPECT_EQ(covers->request.object->OID(), group);
  EXPECT_EQ(covers->request.ClickedParameters, "P;" + group);
  const auto telebank = screenOf(groups->ClickMenu(group, "", "Eksportas į banką", ""));
  EXPECT_EQ(telebank->request.ClickedParameters, "E;" + group);
  const auto import =
      screenOf(groups->ClickMenu(group, "", "Banko įrašų apie pinigų gavimą importas", ""));
  EXPECT_EQ(import->request.ClickedParameters, "A;O0201502");
  EXPECT_EQ(import->title(), "Įrašų importas");
  EXPECT_TRUE(isNew(import->request.object->OID()));
}

}  // namespace
}  // namespace tolvex::test
