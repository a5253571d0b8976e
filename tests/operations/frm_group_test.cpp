// The card of a group of operations, over the fake host.
#include <gtest/gtest.h>

#include "operations/UI0201400.h"
#include "operations/UIO0201400.h"
#include "operations/frmBROperGroup.h"
#include "operations/group_parameters.h"
#include "operations/operation_forms.h"
#include "platform/input.h"
#include "tests/support/fake_host.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

// An act of the user that must be possible.
#define DO(act) EXPECT_EQ(act, "")

using Texts = std::vector<std::string>;
constexpr const char* kUnsaved = "\r\nĮrašymas neatliktas !";

class GroupCard : public testing::Test {
 protected:
  GroupCard() {
    adoptHostContext(nullptr);
    adoptHostContext(&host);
    registerOperationForms(tables->forms);
    groups->VXS(host);
    host.objects().kinds[kGroupKind] = groups;
    put(1, Null{}, "Finansinių operacijų apskaita", 1);
    put(3, 1, "Pirkimai", 0);
    host.pickers().known["O02014001"] = {"O02014001", "Finansinių operacijų apskaita", true};
    host.pickers().known["O02016002"] = {"O02016002", "Pirkimai", true};
    host.pickers().known["O020160011"] = {"O020160011", "Prekės su PVM", false};
    serve();
  }
  ~GroupCard() override { adoptHostContext(nullptr); }

  void serve() {
    FakeBusinessObject& store = host.store();
    const ColumnSpec name{"Name", FieldType::Text}, kind{"OID", FieldType::Text};
    store.serve("GetFormTypes", table({name, kind}, {{"Finansinė operacija", "O0201500"},
                                                     {"Mokėjimo nurodymas", "O0201501"},
                                                     {"Avanso apyskaita", "O0201505"},
                                                     {"Prekybos dokumentas", "O1000100"}}));
    store.serve("GetMyFirmAccounts",
                table({{"Preview", FieldType::Text}, {"AccOIDR", FieldType::Text}},
                      {{"Bankas, LT1", "O00005001"}, {"Bankas, LT2", "O00005002"}}));
    store.serve("GetTemplateList",
                table({{"ParentCode", FieldType::Text},
                       {"OwnCode", FieldType::Text},
                       {"Preview", FieldType::Text},
                       {"GroupFlag", FieldType::Integer},
                       {"AccPreview", FieldType::Text},
                       {"OIDR", FieldType::Text}},
                      {{"K2", "K11", "Prekės su PVM", 0, "204-450, 2441-450", "O020160011"},
                       {"K2", "K20", "Kiti", 1, "", "O020160020"},
                       {"K20", "K21", "Laisvas įrašas", 0, "*-*", "O020160021"}}));
    store.serve("DO0201400_GetAccountSettings",
                table({{"Code", FieldType::Text},
                       {"CodeName", FieldType::Text},
                       {"Account", FieldType::Text},
                       {"AccountName", FieldType::Text}},
                      {{"2710", "Bankas", "2711", "Bankas litais"},
                       {"2710", "Bankas", "2712", "Bankas valiuta"},
                       {"240", "Pirkėjai", "240", "Pirkėjų skolos"}}));
    store.serve("DO0201400_CreateFullSum", [](const std::string&) { return HostResult{}; });
  }

  std::string put(int id, Variant parent, const char* name, int common) {
    const RowSetPtr record = emptyRecord(kGroupKind);
    record->AddNew();
    RowSet& row = *record;
    row["ParentID"] = parent;
    row["Name"] = name;
    row["GroupFlag"] = common;
    row["FormOID"] = "O0201500";
    row["BRTemplateID"] = common ? 0 : 2;
    row["DefaultTemplateID"] = common ? 0 : 11;
    row["ANMask"] = common ? "" : "Prefix_AutoNumber";
    row["ANPrefix"] = "P";
    row["ANTemplate"] = "0000";
    row["ANMinimal"] = 1;
    row["ANGroupBy"] = 1;
    row["ANCycle"] = 3;
    row["Parameters"] = "";
    row["Serija"] = "";
    row["AccountCode"] = "";
    return host.shelf().put(kGroupKind, id, row);
  }

  std::shared_ptr<frmBROperGroup> shown(MenuAction action) {
    auto form = action.Value.As<frmBROperGroup>();
    EXPECT_TRUE(form) << "a card was asked for";
    if (!form) return nullptr;
    form->markOpen(true);
    form->opened();
    return form;
  }
  std::shared_ptr<frmBROperGroup> stored(const char* reference) {
    return shown(groups->ClickMenu(reference, "", "Padėti ant darbo stalo", ""));
  }
  std::shared_ptr<frmBROperGroup> fresh(bool common = false, const char* at = "O02014001") {
    return shown(
        groups->ClickMenu(at, "", common ? "Naują bendra grupė" : "Naują operacijų grupė", ""));
  }
  RowSet& record(const std::string& reference) { return *host.shelf().records.at(reference); }
  Texts told() { return host.dialogs().takeTexts(); }

  FakeHost host;
  std::shared_ptr<OperationTables> tables = std::make_shared<OperationTables>();
  std::shared_ptr<UI0201400> groups = std::make_shared<UI0201400>(tables);
};

TEST_F(GroupCard, Looks) {
  const auto group = stored("O02014003");
  EXPECT_NO_THROW(group->layout());
  expectScreen(*group, "frmBROperGroup_general");
  ui::Input user(*group);
  for (const char* page : {"numbering", "templates", "sums"}) {
    DO(user.choose(group->tabGroup, page));
    expectScreen(*group, std::string("frmBROperGroup_") + page);
  }
  expectScreen(*fresh(true), "frmBROperGroup_common");
  host.rights().table["CBROperGroupRights3"] = {1, 0, 0, 0, 0};
  expectScreen(*stored("O02014003"), "frmBROperGroup_readonly");
}

TEST_F(GroupCard, ANewGroupStandsInACommonOne) {
  EXPECT_EQ(fresh()->VXObjectUIO->Fields()["ParentID"].Number(), 1);
  EXPECT_EQ(fresh(true, "O02014003")->VXObjectUIO->Fields()["ParentID"].Number(), 1)
      << "beside a group of documents, never in it";
  host.shelf().lists[kGroupKind] = table({{"OIDR", FieldType::Text}}, {{"O02014001"}});
  EXPECT_EQ(fresh(true, "O0201400")->VXObjectUIO->Fields()["ParentID"].Number(), 1);
  EXPECT_EQ(groups->ClickMenu("O020140099", "", "Naują bendra grupė", "").Action, 0);
  EXPECT_EQ(groups->ClickMenu("O020140099", "", "Padėti ant darbo stalo", "").Action, 0);
  EXPECT_EQ(told(), (Texts{"Grupė panaikinta!", "Grupė panaikinta!"}));
  host.shelf().reads = {{1203, "Nėra teisės peržiūrėti!"}};
  EXPECT_FALSE(groups->AddToDeskTopVXObject("O02014003"));
  EXPECT_EQ(told(), Texts{"Nėra teisės peržiūrėti!"});
}

TEST_F(GroupCard, APaymentGroupIsStoredWhole) {
  const auto form = fresh();
  ui::Input user(*form);
  EXPECT_EQ(form->numbering.dtpANDateFrom.value(), DateTime::Of(2003, 1, 1));
  EXPECT_FALSE(form->sums.cmdCreateFullSum.enabled()) << "not stored yet";
  DO(user.enter(form->txtName, "  Mokėjimai "));
  DO(user.choose(form->cmbFormTypes, 1));
  DO(user.check(form->chkSerija, true));
  DO(user.enter(form->txtSerija, "MN"));
  DO(user.choose(form->tabGroup, "numbering"));
  DO(user.check(form->numbering.lvwAutoNumber, 0, true));
  DO(user.check(form->numbering.lvwAutoNumber, 2, true));
  DO(user.click(form->numbering.cmdUp));
  DO(user.click(form->numbering.cmdUp));
  EXPECT_FALSE(form->numbering.cmdUp.enabled());
  DO(user.activate(form->numbering.lvwAutoNumber, 3));
  DO(user.enter(form->numbering.txtPrefix, "M-N"));
  DO(user.enter(form->numbering.txtANTemplate, "0a00"));
  DO(user.enter(form->numbering.txtMinimal, "15"));
  DO(user.choose(form->numbering.cmbGroupBy, 4));
  DO(user.choose(form->numbering.cmbCycle, 1));
  EXPECT_EQ(user.date(form->numbering.dtpANDateFrom, DateTime::Of(2003, 3, 1)),
            "disabled: dtpANDateFrom");
  DO(user.check(form->numbering.chkANDateFrom, true));
  DO(user.check(form->chkNumByAcc, true));
  EXPECT_EQ(form->numbering.txtExample.text(), "015-030209-MN");
  DO(user.choose(form->tabGroup, "sums"));
  DO(user.check(form->sums.lvwAccountSettings, 1, true));
  EXPECT_TRUE(form->sums.lvwAccountSettings.rows()[0].checked) << "the same mark";
  DO(user.check(form->sums.lvwAccountSettings, 2, true));
  EXPECT_FALSE(form->sums.lvwAccountSettings.rows()[0].checked) << "one mark at most";
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), Texts{});

  const std::string reference = form->objectReference();
  RowSet& row = record(reference);
  const std::map<std::string, Variant> kWant = {
      {"Name", "Mokėjimai"},  {"FormOID", "O0201501"},
      {"ParentID", 1},        {"Parameters", "O00005001####y#1"},
      {"AccountCode", "240"}, {"SerijaIndication", 1},
      {"Serija", "MN"},       {"ANMask", "AutoNumber_Date_Prefix"},
      {"ANPrefix", "MN"},     {"ANTemplate", "000"},
      {"ANMinimal", 15},      {"ANGroupBy", 4},
      {"ANCycle", 1},         {"ANDateFrom", DateTime::Of(2003, 1, 1)},
      {"BRTemplateID", 0},    {"DefaultTemplateID", 0}};
  for (const auto& [field, value] : kWant) {
    EXPECT_EQ(row[field].Value().Show(), value.Show()) << field;
  }
  const std::string id = reference.substr(8);
  EXPECT_EQ(host.rights().added,
            (std::vector<std::pair<std::string, std::string>>{
                {"CBROperRights" + id, " Finansinių operacijų grupėMokėjimai"}}));
  EXPECT_EQ(host.desktop().log.back(), "rename " + reference + " Mokėjimai");
  EXPECT_EQ(host.tree().log.back(), "redrawNode " + reference);
  EXPECT_EQ(form->SOPanel.caption(), " Finansinių operacijų grupė");
  EXPECT_FALSE(form->cmdWrite.enabled());

  DO(user.enter(form->txtName, "Kiti"));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(host.rights().added.size(), 1u) << "a component for the first save alone";
}

TEST_F(GroupCard, RefusalsKeepWhatWasTyped) {
  const auto form = fresh();
  ui::Input user(*form);
  DO(user.enter(form->txtName, "Prekyba"));
  DO(user.choose(form->cmbFormTypes, 3));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), Texts{"Nenurodyti šablonai !"});
  EXPECT_EQ(host.shelf().saveCount, 0);
  DO(user.choose(form->tabGroup, "templates"));
  host.pickers().answers = {std::nullopt, Picked{"O02016002", "Pirkimai", true}};
  DO(user.click(form->templates.cmdTemplate));
  EXPECT_FALSE(form->templates.chosen()) << "cancelled";
  DO(user.click(form->templates.cmdTemplate));
  EXPECT_EQ(host.pickers().requests[1].prompt, "Pažymėkite norimą grupę");
  EXPECT_EQ(host.pickers().requests[1].classes, "groups");
  host.shelf().saves = {{1, "Aukštesnio lygio įrašas nebeegzistuoja!"}};
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), Texts{std::string("Aukštesnio lygio įrašas nebeegzistuoja!") + kUnsaved});
  EXPECT_EQ(form->txtName.text(), "Prekyba");
  EXPECT_TRUE(form->cmdWrite.enabled());
  EXPECT_TRUE(host.rights().added.empty());
  host.dialogs().answers = {Answer::No};
  EXPECT_FALSE(form->mayClose());
  EXPECT_EQ(told(), Texts{"Nauja finansinių operacijų grupė\r\n\r\nUždaryti be išsaugojimo?"});
  DO(user.click(form->cmdCancel));
  EXPECT_EQ(form->txtName.text(), "");
  EXPECT_FALSE(form->templates.chosen());
  EXPECT_TRUE(form->mayClose());
}

TEST_F(GroupCard, ACancelledNewGroupKeepsItsPlace) {
  for (const bool common : {false, true}) {
    const auto form = fresh(common);
    const std::string caption = form->SOPanel.caption();
    ui::Input user(*form);
    DO(user.enter(form->txtName, "Klaida"));
    DO(user.click(form->cmdCancel));
    EXPECT_EQ(form->SOPanel.caption(), caption);
    DO(user.enter(form->txtName, "Nauja"));
    DO(user.click(form->cmdWrite));
    RowSet& row = record(form->objectReference());
    EXPECT_EQ(row["ParentID"].Number(), 1);
    EXPECT_EQ(row["GroupFlag"].Number(), common ? 1 : 0);
  }
}

TEST_F(GroupCard, TheMainTemplateIsChosenFromTheTreeOrPicked) {
  const auto form = stored("O02014003");
  GroupTemplates& page = form->templates;
  ui::Input user(*form);
  DO(user.choose(form->tabGroup, "templates"));
  EXPECT_EQ(page.txtMainTemplate.text(), "Prekės su PVM");
  EXPECT_TRUE(page.trwTemplates.find("K11")->bold);
  DO(user.activate(page.trwTemplates, "K20"));
  EXPECT_FALSE(form->cmdWrite.enabled()) << "a group starts no document";
  DO(user.activate(page.trwTemplates, "K21"));
  EXPECT_EQ(page.txtMainTemplate.text(), "Laisvas įrašas");
  EXPECT_FALSE(page.trwTemplates.find("K11")->bold);
  DO(user.click(page.cmdClearMainTemplate));
  EXPECT_EQ(page.txtMainTemplate.text(), "");
  host.pickers().answers = {Picked{"O02016002", "Pirkimai", true},
                            Picked{"O020160011", "Prekės su PVM", false}};
  DO(user.click(page.cmdMainTemplate));
  EXPECT_EQ(page.txtMainTemplate.text(), "") << "a group cannot be one";
  DO(user.click(page.cmdMainTemplate));
  EXPECT_EQ(host.pickers().requests[1].prompt, "Pasirinkite šabloną...");
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(record("O02014003")["DefaultTemplateID"].Number(), 11);
  DO(user.click(page.cmdClearTemplate));
  EXPECT_EQ(page.trwTemplates.nodes().size(), 1u);
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(record("O02014003")["BRTemplateID"].Number(), 0);
}

TEST_F(GroupCard, FullSumsAreAskedAndTold) {
  const auto form = stored("O02014003");
  ui::Input user(*form);
  DO(user.choose(form->tabGroup, "sums"));
  EXPECT_EQ(user.click(form->sums.cmdCreateFullSum), "disabled: cmdCreateFullSum");
  DO(user.check(form->sums.lvwAccountSettings, 2, true));
  host.store().calls.clear();
  host.dialogs().answers = {Answer::No};
  DO(user.click(form->sums.cmdCreateFullSum));
  EXPECT_EQ(told(), Texts{"Ar tikrai norite apskaičiuoti skolas?"});
  EXPECT_EQ(host.store().trace(), "");
  host.dialogs().answers = {Answer::Yes, Answer::Yes, Answer::Yes};
  DO(user.click(form->sums.cmdCreateFullSum));
  EXPECT_EQ(told(), (Texts{"Ar tikrai norite apskaičiuoti skolas?", "Atlikta!"}));
  host.store().failNext(1205, "Duomenų bazė užimta, bandykite dar kartą!");
  const std::string question = "Ar tikrai norite panaikinti apskaičiuotas skolas?";
  DO(user.click(form->sums.cmdClearFullSum));
  EXPECT_EQ(told(), (Texts{question, "Duomenų bazė užimta, bandykite dar kartą!"}));
  EXPECT_EQ(form->sums.code(), "240");
  DO(user.click(form->sums.cmdClearFullSum));
  EXPECT_EQ(told(), (Texts{question, "Atlikta!"}));
  EXPECT_EQ(form->sums.code(), "");
  EXPECT_EQ(host.store().trace(),
            "DO0201400_CreateFullSum 3,'240'\nDO0201400_CreateFullSum 3,''\n"
            "DO0201400_CreateFullSum 3,''\n");
}

// The screen of settings, as its subject will register it.
class SettingsScreen final : public ui::Form {
 public:
  explicit SettingsScreen(const GroupParametersRequest& request)
      : Form(request.host, "frmTransferParameters"), text(request.text) {}
  const char* picture() const override { return ""; }
  std::string& text;
};

TEST_F(GroupCard, SettingsFollowTheKind) {
  const auto without = stored("O02014003");
  ui::Input(*without).choose(without->cmbFormTypes, 1);
  EXPECT_EQ(ui::Input(*without).click(without->cmdParameters), "disabled: cmdParameters");

  tables->forms.add<GroupParametersRequest>("frmTransferParameters",
                                            [](const GroupParametersRequest& request) {
                                              return std::make_shared<SettingsScreen>(request);
                                            });
  const auto form = stored("O02014003");
  ui::Input user(*form);
  EXPECT_FALSE(form->cmdParameters.visible());
  DO(user.choose(form->cmbFormTypes, 1));
  EXPECT_TRUE(form->chkNumByAcc.visible());
  host.screens().users = {[](ui::Form&) {},
                          [](ui::Form& settings) {
                            auto& text = dynamic_cast<SettingsScreen&>(settings).text;
                            EXPECT_EQ(text, "O00005001####y#0");
                            text = "O00005002###1#y#1";
                          }};
  DO(user.click(form->cmdParameters));
  DO(user.click(form->cmdParameters));
  EXPECT_TRUE(form->chkNumByAcc.on());
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(record("O02014003")["Parameters"].Text(), "O00005002###1#y#1");
  DO(user.choose(form->cmbFormTypes, 2));
  DO(user.choose(form->cmbFormTypes, 1));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(record("O02014003")["Parameters"].Text(), "O00005002###1#y#1")
      << "back to the stored kind, back to its settings";
}

TEST_F(GroupCard, ListsThatCannotBeReadTakeNothingAway) {
  put(3, 1, "Pirkimai", 0);
  record("O02014003")["FormOID"] = "O0777700";
  record("O02014003")["AccountCode"] = "240";
  host.store().serve("GetFormTypes", [](const std::string&) {
    return HostResult{1299, "Klaida A", {}};
  });
  host.store().serve("DO0201400_GetAccountSettings", [](const std::string&) {
    return HostResult{1299, "Klaida B", {}};
  });
  const auto form = stored("O02014003");
  EXPECT_EQ(told(), (Texts{"Klaida A", "Klaida B"}));
  EXPECT_EQ(form->cmbFormTypes.items().size(), 2u);
  EXPECT_EQ(form->cmbFormTypes.items().front().text, "Finansinė operacija");
  ui::Input user(*form);
  DO(user.enter(form->txtName, "Kita"));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(record("O02014003")["FormOID"].Text(), "O0777700");
  EXPECT_EQ(record("O02014003")["AccountCode"].Text(), "240");
}

TEST_F(GroupCard, TheRightButtonDeletes) {
  const auto form = stored("O02014003");
  ui::Input user(*form);
  host.dialogs().answers = {Answer::No, Answer::Yes, Answer::Yes};
  DO(user.rightClick(form->SSCClose));
  EXPECT_EQ(told(), Texts{"Ar tikrai norite panaikinti?\r\nPirkimai"});
  host.shelf().deletes = {547};
  DO(user.rightClick(form->SSCClose));
  EXPECT_TRUE(form->isOpen());
  DO(user.rightClick(form->SSCClose));
  EXPECT_FALSE(form->isOpen());
  EXPECT_FALSE(host.shelf().records.contains("O02014003"));
  EXPECT_EQ(host.tree().log.back(), "redraw O0201400");
}

TEST_F(GroupCard, MovesBelowAnotherCommonGroup) {
  put(8, 1, "Archyvas", 1);
  const auto form = stored("O02014003");
  ui::Input user(*form);
  host.pickers().answers = {Picked{"O02014008", "Archyvas", true}};
  DO(user.click(form->cmdParentGroup));
  EXPECT_EQ(host.pickers().requests[0].current, "O02014001");
  EXPECT_EQ(form->txtParentGroup.text(), "Archyvas");
  EXPECT_EQ(record("O02014003")["ParentID"].Number(), 1) << "not before it is saved";
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(record("O02014003")["ParentID"].Number(), 8);
  EXPECT_FALSE(stored("O02014001")->cmdParentGroup.enabled()) << "the group above all";
}

TEST_F(GroupCard, ADeletionThatSomebodyElseMadeClosesTheCardToo) {
  const auto form = stored("O02014003");
  ui::Input user(*form);
  host.dialogs().answers = {Answer::Yes};
  host.shelf().deletes = {kGone};
  DO(user.rightClick(form->SSCClose));
  EXPECT_FALSE(form->isOpen());
}

}  // namespace
}  // namespace tolvex::test
