// The card of a template with its lines, the choice of one, and the operation that takes it.
#include "operations/UI0201600.h"
#include "operations/UIO0201400.h"
#include "operations/UIO0201600.h"
#include "operations/frmBROperTemplateSelect.h"
#include "operations/frmBRTemplate.h"
#include "operations/frmBRTemplateAcc.h"
#include "operations/template_forms.h"
#include "operations/template_rules.h"
#include "tests/operations/screen_fixture.h"
#include "tests/support/rows.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

using Texts = std::vector<std::string>;

constexpr ColumnSpec kRequired[] = {
    {"GUID", FieldType::Text}, {"FOID", FieldType::Text, 8}, {"Sign", FieldType::SmallInt}};

class TemplateScreens : public ScreenTest {
 protected:
  TemplateScreens() {
    registerTemplateForms(tables->forms);
    kind->VXS(host);
    host.objects().kinds["O0201600"] = kind;
    host.objects().makers["O0201400"] = [] {
      auto groups = std::make_shared<UIO0201400>();
      EXPECT_EQ(groups->Read().Code, kDone);
      return groups;
    };
    serveStore();
    put(1, 0, true, "Šablonai");
    put(7, 1, false, "Pardavimas");
    open7();
  }

  void serveStore() {
    host.store().serve("GetEnabledAddressee",
                       table({{"FOID", FieldType::Text}, {"Name", FieldType::Text}},
                             {{"O0000100", "Įmonės"}, {"O0001401", "Darbuotojai"}}));
    host.store().serve("GetTemplateList",
                       table({{"ParentCode", FieldType::Text},
                              {"OwnCode", FieldType::Text},
                              {"Preview", FieldType::Text},
                              {"GroupFlag", FieldType::Integer},
                              {"AccPreview", FieldType::Text},
                              {"OIDR", FieldType::Text}},
                             {{"K1", "K2", "Paslaugos", 1, "", "O02016002"},
                              {"K2", "K7", "Pardavimas", 0, "240-500", "O02016007"},
                              {"K1", "K9", "Panaikintas", 0, "", "O02016009"}}));
    host.store().serve("GetTemplateAccAndAddr",
                       table({{"ID", FieldType::Integer},
                              {"AccountD", FieldType::Text},
                              {"AccountC", FieldType::Text},
                              {"Factor", FieldType::Double},
                              nestedColumn("RequiredAddr", kRequired)},
                             {{11, "240", "500", 1.0}, {12, "*", "443", 0.5}}));
    for (const char* action : {"AddBRTemplateSet", "DeleteTemplateSet"})
      host.store().serve(action, [](const std::string&) { return HostResult{}; });
  }
  void put(int id, int parent, bool group, const char* name) {
    const RowSetPtr record = emptyRecord(kTemplateKind);
    record->AddNew();
    (*record)["Name"] = name;
    (*record)["ParentID"] = parent;
    (*record)["GroupFlag"] = group ? 1 : 0;
    if (!group) {
      writeTemplateLine(*record, {"g1", "240", "500", 1, {{"O0000100", 1, ""}}});
      writeTemplateLine(*record, {"g2", "*", "443", 0.5, {}});
    }
    host.shelf().put(kTemplateKind, id, *record);
  }
  // The choice asks for the template through the host's factory.
  void open7() { host.objects().opened["O02016007"] = kind->GetVXObject("O02016007"); }

  std::shared_ptr<frmBRTemplate> shown(std::shared_ptr<frmBRTemplate> form) {
    form->markOpen(true);
    form->opened();
    return form;
  }
  std::shared_ptr<frmBRTemplate> card(const char* id) {
    EXPECT_TRUE(kind->AddToDeskTopVXObject(id));
    return shown(std::dynamic_pointer_cast<frmBRTemplate>(host.desktop().forms.back()));
  }
  void inLine(std::function<void(frmBRTemplateAcc&, ui::Input&)> acts) {
    host.screens().users.push_back([acts = std::move(acts)](ui::Form& form) {
      auto& line = dynamic_cast<frmBRTemplateAcc&>(form);
      ui::Input user(line);
      acts(line, user);
    });
  }
  void inChoice(std::function<void(frmBROperTemplateSelect&, ui::Input&)> acts) {
    host.screens().users.push_back([acts = std::move(acts)](ui::Form& form) {
      auto& choice = dynamic_cast<frmBROperTemplateSelect&>(form);
      ui::Input user(choice);
      acts(choice, user);
    });
  }
  static std::string entriesText(frmBROper& form) {
    std::string text;
    for (const ui::Row& row : form.lvwBRRecords.rows())
      text += row.cells[1].text + "-" + row.cells[2].text + " " + row.cells[3].text + "; ";
    return text;
  }

  std::shared_ptr<const FormRegistry> forms{tables, &tables->forms};
  std::shared_ptr<UI0201600> kind = std::make_shared<UI0201600>(forms);
};

TEST_F(TemplateScreens, CardsAsTexts) {
  auto form = card("O02016007");
  EXPECT_NO_THROW(form->layout());
  expectScreen(*form, "frmBRTemplate_stored");
  expectScreen(*card("O02016001"), "frmBRTemplate_group");
  inLine([](frmBRTemplateAcc& line, ui::Input&) {
    EXPECT_NO_THROW(line.layout());
    expectScreen(line, "frmBRTemplateAcc_stored");
  });
  ui::Input user(*form);
  DO(user.activate(form->lvwRows, 0));
  host.rights().table[kTemplateRights] = {1, 0, 0, 0, 0};
  expectScreen(*card("O02016007"), "frmBRTemplate_readonly");
}

TEST_F(TemplateScreens, ALineIsRefusedUntilItMakesSense) {
  auto form = card("O02016007");
  ui::Input user(*form);
  inLine([this](frmBRTemplateAcc& line, ui::Input& acts) {
    const struct {
      const char *debit, *credit, *factor, *told;
    } kCases[] = {
        {"", "500", "1", "Nenurodyta  balansinė sąskaita !"},
        {"240", "", "1", "Nenurodyta  balansinė sąskaita !"},
        {"240", "500", "", "Klaidinga koeficiento reikšmė!"},
    };
    for (const auto& c : kCases) {
      DO(acts.typeCombo(line.cmbAccountD, c.debit));
      DO(acts.typeCombo(line.cmbAccountC, c.credit));
      DO(acts.enter(line.txtFactor, c.factor));
      acts.click(line.cmdWrite);
      EXPECT_EQ(told(), Texts{c.told});
      EXPECT_TRUE(line.isOpen());
    }
    DO(acts.typeCombo(line.cmbAccountD, "0"));
    DO(acts.typeCombo(line.cmbAccountC, "*"));
    DO(acts.enter(line.txtFactor, "1,18"));
    DO(acts.check(line.lvwAddrC, 1, true));
    DO(acts.click(line.cmdWrite));
  });
  DO(user.click(form->cmdNewRow));
  ASSERT_EQ(form->lvwRows.rows().size(), 3U);
  const ui::Row& row = form->lvwRows.rows().back();
  EXPECT_EQ(row.cells[0].text, "0 Pradiniai likučiai");
  EXPECT_EQ(row.cells[1].text, "* Nežinoma sąskaita");
  EXPECT_EQ(row.cells[2].text, "1,18");
  EXPECT_EQ(form->lvwRows.currentRow()->key, row.key);
  const TemplateLine line = templateLine(*form->VXObjectUIO->RsFields(), row.key);
  EXPECT_EQ(line.required, (std::vector<RequiredAddressee>{{"O0001401", -1, ""}}));
}

TEST_F(TemplateScreens, AFixedAddresseeStandsBehindItsKind) {
  host.pickers().known["O00001003"] = {"O00001003", "UAB [Pirkėjas]", false};
  auto form = card("O02016007");
  ui::Input user(*form);
  inLine([this](frmBRTemplateAcc& line, ui::Input& acts) {
    DO(acts.activate(line.lvwAddrC, 0));
    EXPECT_TRUE(host.pickers().requests.empty()) << "the kind is not required there";
    host.pickers().answers.push_back(Picked{"O00001001", "Grupė", true});
    DO(acts.activate(line.lvwAddrD, 0));
    EXPECT_EQ(told().size(), 1U);
    EXPECT_EQ(host.pickers().requests.back().classes, "C;T;Contract;");
    EXPECT_EQ(host.pickers().requests.back().prompt, "Pasirinkite");
    host.pickers().answers.push_back(Picked{"O00001003", "UAB [Pirkėjas]", false});
    DO(acts.activate(line.lvwAddrD, 0));
    EXPECT_EQ(line.lvwAddrD.rows()[0].cells[0].text, "Įmonės [UAB [Pirkėjas]]");
    DO(acts.click(line.cmdWrite));
  });
  DO(user.activate(form->lvwRows, 0));
  RowSet& record = *form->VXObjectUIO->RsFields();
  EXPECT_EQ(templateLine(record, "g1").required[0].reference, "O00001003");

  inLine([](frmBRTemplateAcc& line, ui::Input& acts) {
    EXPECT_EQ(line.lvwAddrD.rows()[0].cells[0].text, "Įmonės [UAB [Pirkėjas]]");
    DO(acts.check(line.lvwAddrD, 0, false));
    EXPECT_EQ(line.lvwAddrD.rows()[0].cells[0].text, "Įmonės");
    DO(acts.click(line.cmdWrite));
  });
  DO(user.activate(form->lvwRows, 0));
  EXPECT_TRUE(templateLine(record, "g1").required.empty());
}

TEST_F(TemplateScreens, WithoutTheKindsALineIsOnlyLookedAt) {
  host.store().serve("GetEnabledAddressee", [](const std::string&) {
    return HostResult{1205, "Nutrūko", {}};
  });
  auto form = card("O02016007");
  ui::Input user(*form);
  inLine([](frmBRTemplateAcc& line, ui::Input&) { EXPECT_FALSE(line.cmdWrite.enabled()); });
  DO(user.activate(form->lvwRows, 0));
  EXPECT_EQ(told(), Texts{"Klaida!\r\nGetEnabledAddressee:\r\nNutrūko"});
}

TEST_F(TemplateScreens, ANewTemplateJoinsItsSetOnce) {
  auto object = std::dynamic_pointer_cast<UIO0201600>(kind->GetVXObject(""));
  auto form = std::make_shared<frmBRTemplate>(ObjectFormRequest{host, object, "3|2"});
  shown(form);
  ui::Input user(*form);
  DO(user.enter(form->txtName, "  Nauja paslauga "));
  DO(user.click(form->cmdWrite));
  const std::string parameters = "'3','2'," + object->OIDR().substr(8);
  const auto joined = [&] {
    return std::count(host.store().calls.begin(), host.store().calls.end(),
                      FakeBusinessObject::Call{"AddBRTemplateSet", parameters});
  };
  EXPECT_EQ(joined(), 1);
  EXPECT_EQ(form->title(), "Nauja paslauga");
  DO(user.enter(form->txtComment, "Pastaba"));
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(joined(), 1) << "it is in the set already";

  host.dialogs().answers.push_back(Answer::Yes);
  EXPECT_EQ(kind->ClickMenu(object->OIDR(), "", "Panaikinti", "3|2").Action, MenuAction::Removed);
  EXPECT_EQ(host.store().calls.back(), (FakeBusinessObject::Call{"DeleteTemplateSet", parameters}));
}

TEST_F(TemplateScreens, AFailureToJoinTheSetIsToldAndTheTemplateStands) {
  host.store().serve("AddBRTemplateSet", [](const std::string&) {
    return HostResult{1203, "Nėra teisės!", {}};
  });
  auto object = kind->GetVXObject("");
  ASSERT_EQ(object->Methods("NewMode", {"3|2"}).Code, kDone);
  EXPECT_EQ(object->Save(nullptr, nullptr).Code, kDone);
  EXPECT_EQ(told(), Texts{"Nėra teisės!"});
}

TEST_F(TemplateScreens, TheChoiceTakesTemplatesOnlyAndASum) {
  ChosenTemplate chosen;
  frmBROperTemplateSelect form(TemplateChoiceRequest{host, 1, 7, 5, chosen});
  form.markOpen(true);
  form.opened();
  EXPECT_NO_THROW(form.layout());
  expectScreen(form, "frmBROperTemplateSelect");
  EXPECT_EQ(host.store().calls.back(), (FakeBusinessObject::Call{"GetTemplateList", "1,'K'"}));
  ui::Input user(form);
  DO(user.select(form.trwTemplates, "K2"));
  EXPECT_FALSE(form.cmdOK.enabled()) << "a group";
  DO(user.select(form.trwTemplates, "K9"));
  EXPECT_EQ(told(), Texts{"Objektas panaikintas!"});
  EXPECT_FALSE(form.cmdOK.enabled());
  DO(user.select(form.trwTemplates, "K7"));
  DO(user.enter(form.txtSuma, ""));
  DO(user.click(form.cmdOK));
  EXPECT_EQ(told(), Texts{"Klaidinga sumos reikšmė!"});
  EXPECT_TRUE(form.isOpen());
  EXPECT_EQ(chosen.reference, "");
  DO(user.enter(form.txtSuma, "100*1,5"));
  DO(user.click(form.cmdOK));
  EXPECT_EQ(chosen.reference, "O02016007");
  EXPECT_EQ(chosen.sumLt, 150);
}

TEST_F(TemplateScreens, AnOperationAddsOrChangesItsTemplate) {
  auto object = newOperation();
  add(*object, "450", "2711", 5);
  auto form = open(object);
  ui::Input user(*form);
  const auto take = [](const char* sum) {
    return [sum](frmBROperTemplateSelect& choice, ui::Input& acts) {
      DO(acts.select(choice.trwTemplates, "K7"));
      DO(acts.enter(choice.txtSuma, sum));
      DO(acts.click(choice.cmdOK));
    };
  };
  inChoice(
      [](frmBROperTemplateSelect& choice, ui::Input& acts) { DO(acts.click(choice.cmdCancel)); });
  DO(user.pick(form->entryMenu.mnuOperTemplate));
  EXPECT_EQ(entriesText(*form), "450-2711 5,00; ") << "left half-way";

  inChoice(take("100,01"));
  DO(user.pick(form->entryMenu.mnuAddTemplate));
  EXPECT_EQ(entriesText(*form), "450-2711 5,00; 240-500 100,01; *-443 50,01; ");
  EXPECT_EQ(form->lvwBRRecords.current, 0) << "the cursor stays on its entry";

  inChoice(take("10"));
  host.store().serve("GetTemplateAccAndAddr", [](const std::string&) {
    return HostResult{1205, "Nutrūko", {}};
  });
  DO(user.pick(form->entryMenu.mnuOperTemplate));
  EXPECT_EQ(entriesText(*form), "450-2711 5,00; 240-500 100,01; *-443 50,01; ")
      << "entries are not lost to a template that cannot be read";
  (void)told();

  serveStore();
  inChoice(take("10"));
  DO(user.pick(form->entryMenu.mnuOperTemplate));
  EXPECT_EQ(entriesText(*form), "240-500 10,00; *-443 5,00; ");
}

TEST_F(TemplateScreens, ATemplateThatIsUsedStays) {
  auto form = card("O02016007");
  ui::Input user(*form);
  host.shelf().deletes.push_back(547);
  host.dialogs().answers.push_back(Answer::Yes);
  DO(user.rightClick(form->SSCClose));
  EXPECT_EQ(told()[0], "Ar tikrai norite panaikinti?\r\nPardavimas");
  EXPECT_TRUE(form->isOpen());
  host.dialogs().answers.push_back(Answer::Yes);
  DO(user.rightClick(form->SSCClose));
  EXPECT_FALSE(form->isOpen());
}

}  // namespace
}  // namespace tolvex::test
