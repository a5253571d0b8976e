// Every card of the program over real books: its picture, its fields, its looks.
#include <gtest/gtest.h>

#include "framework/references.h"
#include "host/cards/all_cards.h"
#include "platform/input.h"
#include "tests/support/program_test.h"
#include "tests/support/screen_text.h"

namespace tolvex {
namespace {

class Cards : public test::ProgramTest {
 protected:
  // The screen of a stored object, or of a new one where only a kind is given.
  std::shared_ptr<ui::Form> shown(const std::string& reference) {
    const auto object =
        isRef(reference) ? host().objects().open(reference) : host().objects().create(reference);
    const Card* card = allCards().find(kindOf(reference));
    if (!object || !card) return nullptr;
    auto form = card->make(host(), object);
    host().screens().show(form);
    return form;
  }
};

TEST_F(Cards, EachOpensNewAndEveryButtonOfItDoesSomething) {
  for (const LayoutNode& branch : allCards().layout()) {
    for (const LayoutNode& node : branch.children) {
      const Card* card = allCards().find(node.code);
      if (!card || card->newEntry.empty()) continue;
      SCOPED_TRACE(node.code);
      EXPECT_TRUE(card->newEntry.starts_with("Nauja")) << "the list finds the entry by that";
      const auto form = shown(node.code);
      ASSERT_NE(form, nullptr);
      EXPECT_NO_THROW((void)form->layout());
      for (const ui::Control* control : form->controls()) {
        if (control->kind != ui::Kind::Button) continue;
        EXPECT_TRUE(control->onClick || control->menu) << control->name;
      }
      EXPECT_EQ(boxes_, std::vector<std::string>());
    }
  }
}

TEST_F(Cards, LookAsTheyDid) {
  const std::pair<const char*, const char*> screens[] = {
      {"O0000100", "frmFirm_new"},        {"O00001003", "frmFirm_stored"},
      {"O00014021", "frmPerson_stored"},  {"O00014011", "frmEmployee_stored"},
      {"O00003001", "frmBank_stored"},    {"O00005001", "frmBankAccount_stored"},
      {"O00016011", "frmPurpose_stored"}, {"O00016291", "frmVATTariffs"}};
  for (const auto& [reference, name] : screens) {
    const auto form = shown(reference);
    ASSERT_NE(form, nullptr) << name;
    test::expectScreen(*form, name);
  }
}

// What was read back is what the boxes showed, so a save right after opening sends nothing.
TEST_F(Cards, ASaveOfAnUntouchedCardChangesNothing) {
  for (const char* reference : {"O00001002", "O00001004", "O00014021", "O00014012", "O00003002",
                                "O00005003", "O00016011", "O00009001"}) {
    SCOPED_TRACE(reference);
    const auto form = shown(reference);
    ASSERT_NE(form, nullptr);
    auto& write = *form->find<ui::Button>("cmdWrite");
    EXPECT_EQ(ui::Input(*form).click(write), "");
    const auto log = program_->session().db().prepare("SELECT COUNT(*) FROM record_log");
    ASSERT_TRUE(log->step());
    EXPECT_EQ(log->integer(0), 0);
  }
  EXPECT_EQ(boxes_, std::vector<std::string>());
}

TEST_F(Cards, TextsOfFullLengthComeBackWhole) {
  const auto form = shown("O0000100");
  std::vector<std::pair<ui::TextBox*, std::string>> typed;
  for (ui::Control* control : form->controls()) {
    auto* box = dynamic_cast<ui::TextBox*>(control);
    if (!box || box->readOnly || box->picker) continue;
    ASSERT_GT(box->maxLength, 0u) << box->name;
    std::string text;
    for (std::size_t i = 0; i < box->maxLength; ++i) text += i % 7 ? "ž" : "Ą";
    EXPECT_EQ(ui::Input(*form).enter(*box, text + "per daug"), "");
    EXPECT_EQ(box->text(), text) << box->name;
    typed.emplace_back(box, text);
  }
  EXPECT_EQ(typed.size(), 13u);
  EXPECT_EQ(ui::Input(*form).click(*form->find("cmdWrite")), "");
  EXPECT_EQ(boxes_, std::vector<std::string>());
  for (const auto& [box, text] : typed) EXPECT_EQ(box->text(), text) << box->name;
}

}  // namespace
}  // namespace tolvex
