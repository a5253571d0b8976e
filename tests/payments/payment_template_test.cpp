#include <gtest/gtest.h>

#include <optional>

#include "framework/object_contract.h"
#include "payments/UI0201700.h"
#include "payments/UIO0201700.h"
#include "payments/frmPaymentTemplate.h"
#include "payments/frmTemplateItem.h"
#include "payments/payment_forms.h"
#include "platform/input.h"
#include "tests/support/fake_host.h"
#include "tests/support/rows.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

#define DO(act) EXPECT_EQ(act, "")

TEST(Instalments, NumbersThatATextBeginsWith) {
  const struct {
    const char* text;
    int number;
  } kCases[] = {{"", 0},      {"30", 30},   {"  3 0 d.", 30}, {"abc", 0},       {"10 d.", 10},
                {"12.5", 12}, {"13.5", 14}, {"1.2.3", 1},     {"7,9", 7},       {"99999999", 32767},
                {"-5", 0},    {".", 0},     {"5.", 5},        {"šimtas 100", 0}};
  for (const auto& c : kCases) EXPECT_EQ(leadingNumber(c.text), c.number) << c.text;
}

TEST(Instalments, NoneGetsMoreThanIsLeft) {
  const struct {
    int rest, own, typed, limit, taken;
  } kCases[] = {
      {100, 0, 100, 100, 100},
      {70, 0, 80, 70, 70},  // more than is left
      {70, 0, 0, 70, 70},   // nothing said: all that is left
      {70, 0, 70, 70, 70},
      {70, 0, 1, 70, 1},
      {0, 30, 30, 30, 30},  // a stored one keeps what it has
      {0, 30, 40, 30, 30},
      {20, 30, 50, 30, 30},
      {50, 30, 45, 50, 45},
      {-10, 60, 70, 60, 60},  // books of other programs may hold more than all
  };
  for (const auto& c : kCases) {
    const int limit = percentLimit(c.rest, c.own);
    EXPECT_EQ(limit, c.limit) << c.rest << " " << c.own;
    EXPECT_EQ(takenPercent(c.typed, limit), c.taken) << c.rest << " " << c.typed;
  }
}

class PaymentTemplates : public testing::Test {
 protected:
  PaymentTemplates() {
    adoptHostContext(nullptr);
    adoptHostContext(&host);
    registerPaymentForms(*forms);
    kind->VXS(host);
    host.objects().kinds["O0201700"] = host.objects().kinds["O0201701"] = kind;
    host.store().serve("DO0201701_GetItemsList", [](const std::string&) {
      return HostResult{kDone, "", Variant(storedItems())};
    });
  }
  ~PaymentTemplates() override { adoptHostContext(nullptr); }

  static RowSetPtr storedItems() {
    const RowSetPtr items = noInstalments();
    fill(*items, "ID|PaymentTemplateID|Days|Percent\n1|2|30|70\n2|2|0|20\n");
    return items;
  }
  std::string put(int id, const char* type, int parent, bool group) {
    const RowSetPtr record = emptyRecord("O0201700");
    record->AddNew();
    (*record)["Name"] = group ? "Grupė" : "Dalimis";
    (*record)["ParentID"] = parent;
    (*record)["GroupFlag"] = group ? 1 : 0;
    return host.shelf().put(type, id, *record);
  }
  std::shared_ptr<frmPaymentTemplate> clicked(const std::string& id, const char* entry) {
    return opened(kind->ClickMenu(id, "", entry, "").Value.As<frmPaymentTemplate>());
  }
  std::shared_ptr<frmPaymentTemplate> card(const std::string& id) {
    EXPECT_TRUE(kind->AddToDeskTopVXObject(id));
    return opened(std::dynamic_pointer_cast<frmPaymentTemplate>(host.desktop().forms.back()));
  }
  static std::shared_ptr<frmPaymentTemplate> opened(std::shared_ptr<frmPaymentTemplate> form) {
    if (!form) return nullptr;
    form->markOpen(true);
    form->opened();
    return form;
  }
  // The next instalment dialogs, each given days and percent; null percent: the user leaves.
  void answerItem(std::string days, std::optional<std::string> percent) {
    host.screens().users.push_back([days, percent](ui::Form& shown) {
      auto& dialog = dynamic_cast<frmTemplateItem&>(shown);
      ui::Input user(dialog);
      if (!percent) {
        DO(user.click(dialog.cmdCancel));
        return;
      }
      DO(user.enter(dialog.txtDays, days));
      DO(user.enter(dialog.txtPercent, *percent));
      DO(user.click(dialog.cmdWrite));
    });
  }
  static std::string shown(const frmPaymentTemplate& form) {
    std::string text;
    for (const ui::Row& row : form.lvwPaymentTemplate.rows())
      text += row.cells[0].text + ":" + row.cells[1].text + " ";
    return text;
  }
  std::vector<std::string> told() { return host.dialogs().takeTexts(); }

  FakeHost host;
  std::shared_ptr<FormRegistry> forms = std::make_shared<FormRegistry>();
  std::shared_ptr<UI0201700> kind = std::make_shared<UI0201700>(forms);
};

TEST_F(PaymentTemplates, InstalmentsGoOnUntilAllIsGivenOut) {
  const std::string group = put(1, "O0001600", 0, true);
  auto form = clicked(group, "Naujas apmokėjimo šablonas");
  ASSERT_NE(form, nullptr);
  EXPECT_EQ((*form->VXObjectUIO->RsFields())["ParentID"].Number(), 1);
  EXPECT_EQ(form->RestPercent, 100);
  ui::Input user(*form);
  answerItem("60", "30");
  answerItem("5", "");
  DO(user.click(form->cmdNewItem));
  EXPECT_EQ(shown(*form), "5:70% 60:30% ") << "a blank percent takes the rest";
  EXPECT_EQ(form->RestPercent, 0);
  EXPECT_FALSE(form->cmdNewItem.enabled());
  EXPECT_EQ(host.screens().modals.size(), 2U) << "nothing is left to ask for";
  host.dialogs().answers.push_back(Answer::No);
  EXPECT_NE(user.close(), "");
  EXPECT_EQ(told(), std::vector<std::string>{"Uždaryti be pakeitimų išsaugojimo?"});
}

TEST_F(PaymentTemplates, AStoredTemplateIsChangedByItsLines) {
  auto form = card(put(2, "O0201701", 1, false));
  EXPECT_NO_THROW(form->layout());
  expectScreen(*form, "frmPaymentTemplate_stored");
  EXPECT_EQ(shown(*form), "0:20% 30:70% ");
  EXPECT_EQ(form->RestPercent, 10);
  ui::Input user(*form);
  answerItem("45", "25");  // 10 are left and it has 20: no more than 20
  DO(user.activate(form->lvwPaymentTemplate, 0));
  EXPECT_EQ(shown(*form), "30:70% 45:20% ") << "sorted anew";
  answerItem("", std::nullopt);
  DO(user.click(form->cmdNewItem));
  EXPECT_EQ(shown(*form), "30:70% 45:20% ") << "left half-way";
  DO(user.select(form->lvwPaymentTemplate, 0));
  DO(user.deleteKey(form->lvwPaymentTemplate));
  EXPECT_EQ(shown(*form), "45:20% ");

  host.shelf().saves.push_back({1201, "Pakeitė kitas"});
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), std::vector<std::string>{"Pakeitė kitas\r\nKlaida!"});
  EXPECT_EQ(shown(*form), "45:20% ") << "what was typed stays";
  DO(user.click(form->cmdWrite));
  EXPECT_EQ(told(), std::vector<std::string>{});
  DO(user.close());
}

TEST_F(PaymentTemplates, ATemplateMovesToAnotherGroup) {
  put(1, "O0001600", 0, true);
  put(5, "O0001600", 0, true);
  host.pickers().known["O00016001"] = {"O00016001", "Pirma", true};
  auto form = card(put(2, "O0201701", 1, false));
  EXPECT_EQ(form->txtGroup.text(), "Pirma");
  ui::Input user(*form);
  host.pickers().answers = {std::nullopt, Picked{"O00016005", "Kita", true}};
  DO(user.click(form->cmdParentGroup));
  DO(user.close());
  EXPECT_EQ(told(), std::vector<std::string>{}) << "cancelled: nothing was changed";
  form->markOpen(true);
  DO(user.click(form->cmdParentGroup));
  EXPECT_EQ(form->txtGroup.text(), "Kita");
  DO(user.click(form->cmdWrite));
  EXPECT_EQ((*host.shelf().records.at(form->objectReference()))["ParentID"].Number(), 5);
}

TEST_F(PaymentTemplates, WithoutItsInstalmentsATemplateIsOnlyLookedAt) {
  const std::string stored = put(2, "O0201701", 1, false);
  for (const bool noData : {false, true}) {
    host.store().serve("DO0201701_GetItemsList", [noData](const std::string&) {
      return HostResult{noData ? 0 : 1205, noData ? "" : "Nutrūko", {}};
    });
    auto form = card(stored);
    EXPECT_FALSE(form->cmdWrite.enabled());
    EXPECT_EQ(told(), std::vector<std::string>{noData ? "Įmokos neperskaitytos!" : "Nutrūko"});
  }
}

TEST_F(PaymentTemplates, WhatIsGoneIsTold) {
  EXPECT_EQ(kind->DeleteVXObject("O02017019"), kGone);
  EXPECT_EQ(kind->DeleteVXObject("O00016009"), kGone);
  EXPECT_EQ(kind->ClickMenu("O00016009", "", "Naujas apmokėjimo šablonas", "").Action,
            MenuAction::Nothing);
  EXPECT_EQ(told(), (std::vector<std::string>{"Objektas panaikintas!", "Grupė panaikinta!",
                                              "Grupė panaikinta!"}));
}

TEST_F(PaymentTemplates, TheMenuFollowsTheRights) {
  const auto captions = [this](const char* id) {
    std::string text;
    for (const MenuEntry& entry : kind->GetMenu(id, "", "")) text += entry.caption + "|";
    return text;
  };
  EXPECT_EQ(captions("O0201700"),
            "Naujas apmokėjimo šablonas|Nauja apmokėjimo šablonų grupė|-|Atrinkti|");
  EXPECT_EQ(captions("O02017012"),
            "Padėti ant darbo stalo|Naujas apmokėjimo šablonas|Nauja apmokėjimo šablonų grupė|-|"
            "Panaikinti|-|Atrinkti|");
  host.rights().table["CPaymentPlan"] = {1, 0, 0, 0, 0};
  EXPECT_EQ(captions("O02017012"), "Padėti ant darbo stalo|-|Atrinkti|");
  EXPECT_FALSE(card(put(2, "O0201701", 1, false))->cmdWrite.enabled());
}

}  // namespace
}  // namespace tolvex::test
