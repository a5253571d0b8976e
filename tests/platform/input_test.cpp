#include "platform/input.h"

#include <gtest/gtest.h>

#include "platform/host.h"
#include "tests/support/fake_host.h"

namespace tolvex::ui {
namespace {

class OrderForm final : public Form {
 public:
  explicit OrderForm(HostContext& host) : Form(host, "frmOrder") {
    cmdCancel.isCancel = true;
    cmbAccount.editable = true;
    cmbCurr.setTexts({"LTL", "EUR", "USD"});
    cmbAccount.setTexts({"2411 Pirkėjai", "2721 Kasa"});
    lvwRows.setRows({Row{}, Row{}, Row{}});
    for (Control* control : controls()) {
      control->onEnter = [this, control] { log += "+" + control->name + " "; };
      control->onLeave = [this, control] { log += "-" + control->name + " "; };
      control->onChange = [this, control] { log += control->name + "! "; };
      control->onClick = [this, control] { log += control->name + "() "; };
    }
    layout();
    markOpen(true);
  }
  const char* picture() const override {
    return R"(
      [SOPanel]
        txtSum | txtNote | cmbCurr | cmbAccount | dtpDate | chkAll
        optA | optB
        lvwRows>
      cmdWrite | cmdCancel)";
  }
  std::string takeLog() { return std::exchange(log, {}); }

  bool mayClose() override { return agrees; }

  std::string log;
  bool agrees = true;
  Panel SOPanel{this, "SOPanel"};
  TextBox txtSum{this, "txtSum", "Suma", 14, Align::Right};
  TextBox txtNote{this, "txtNote", "Pastaba", 40};
  ComboBox cmbCurr{this, "cmbCurr", "Valiuta", 6};
  ComboBox cmbAccount{this, "cmbAccount", "Sąskaita", 20};
  DatePicker dtpDate{this, "dtpDate", "Data"};
  CheckBox chkAll{this, "chkAll", "Visi"};
  OptionButton optA{this, "optA", "A", "view"}, optB{this, "optB", "B", "view"};
  ListView lvwRows{this, "lvwRows", {{"Sąskaita", 10}}};
  Button cmdWrite{this, "cmdWrite", "Įrašyti"};
  Button cmdCancel{this, "cmdCancel", "Atšaukti"};
};

class InputTest : public testing::Test {
 protected:
  test::FakeHost host;
  OrderForm form{host};
  Input input{form};
};

TEST_F(InputTest, EveryActLeavesTheOldFieldFirst) {
  EXPECT_EQ(input.enter(form.txtSum, "10"), "");
  EXPECT_EQ(input.click(form.cmdWrite), "");
  EXPECT_EQ(form.takeLog(), "+txtSum txtSum! -txtSum +cmdWrite cmdWrite() ");
  EXPECT_EQ(form.focus(), &form.cmdWrite);
  EXPECT_EQ(input.click(form.cmdWrite), "");
  EXPECT_EQ(form.takeLog(), "cmdWrite() ");
}

TEST_F(InputTest, ProgramWritesAreSilent) {
  form.takeDirty();
  form.txtSum.text = "5";
  form.cmbCurr.index = 1;
  form.optB.choose();
  form.setFocus(form.txtSum);
  EXPECT_EQ(form.takeLog(), "");
  const std::vector<Control*> changed = {&form.txtSum, &form.cmbCurr, &form.optB};
  EXPECT_EQ(form.takeDirty(), changed);
}

TEST_F(InputTest, AVetoKeepsTheFocus) {
  input.enter(form.txtSum, "abc");
  form.txtSum.mayLeave = [&] { return form.txtSum.text() != "abc"; };
  form.takeLog();
  EXPECT_EQ(input.click(form.cmdWrite), "kept in txtSum");
  EXPECT_EQ(input.focus(form.txtNote), "kept in txtSum");
  EXPECT_EQ(input.leave(), "kept in txtSum");
  EXPECT_EQ(form.takeLog(), "");
  EXPECT_EQ(form.focus(), &form.txtSum);

  EXPECT_EQ(input.click(form.cmdCancel), "") << "a cancel button skips the veto";
  EXPECT_EQ(form.takeLog(), "-txtSum +cmdCancel cmdCancel() ");
}

TEST_F(InputTest, ADisabledFieldCannotHoldTheFocus) {
  input.enter(form.txtSum, "abc");
  form.txtSum.mayLeave = [] { return false; };
  form.txtSum.enabled = false;
  EXPECT_EQ(input.click(form.cmdWrite), "");
}

TEST_F(InputTest, ABoxWhileLeavingDropsTheActOnce) {
  form.txtSum.onLeave = [&] { warn(host, "Nenurodytas valiutos kursas!"); };
  input.enter(form.txtSum, "10");
  form.takeLog();
  EXPECT_EQ(input.click(form.cmdWrite), "dropped: a message was shown");
  EXPECT_EQ(form.log.find("cmdWrite()"), std::string::npos);
  EXPECT_EQ(host.dialogs().takeTexts(), std::vector<std::string>{"Nenurodytas valiutos kursas!"});
  EXPECT_EQ(input.click(form.cmdWrite), "") << "the user is not caught";

  input.enter(form.txtSum, "11");
  form.takeLog();
  EXPECT_EQ(input.click(form.cmdCancel), "") << "cancelling is never dropped";
  EXPECT_EQ(form.takeLog(), "+cmdCancel cmdCancel() ");
}

TEST_F(InputTest, AMovedFocusWhileLeavingDropsTheAct) {
  form.txtSum.onLeave = [&] { form.setFocus(form.txtNote); };
  input.focus(form.txtSum);
  form.takeLog();
  EXPECT_EQ(input.choose(form.cmbCurr, 1), "dropped: the focus was moved");
  EXPECT_EQ(form.cmbCurr.index(), -1);
  EXPECT_EQ(form.focus(), &form.txtNote);
  const auto dirty = form.takeDirty();
  EXPECT_NE(std::find(dirty.begin(), dirty.end(), &form.cmbCurr), dirty.end())
      << "the view takes back what it shows";
}

TEST_F(InputTest, AFormClosedWhileLeavingDropsTheAct) {
  form.txtSum.onLeave = [&] { form.close(); };
  input.focus(form.txtSum);
  form.takeLog();
  EXPECT_EQ(input.click(form.cmdWrite), "dropped: the form was closed");
  EXPECT_EQ(form.takeLog(), "");
}

TEST_F(InputTest, WhatLeavingDisablesIsNotUsed) {
  form.txtSum.onLeave = [&] { form.cmdWrite.enabled = false; };
  input.focus(form.txtSum);
  EXPECT_EQ(input.click(form.cmdWrite), "disabled: cmdWrite");
}

TEST_F(InputTest, HiddenAndDisabledRefuse) {
  form.SOPanel.enabled = false;
  EXPECT_EQ(input.enter(form.txtSum, "1"), "disabled: txtSum");
  EXPECT_EQ(input.select(form.lvwRows, 1), "disabled: lvwRows");
  form.SOPanel.visible = false;
  EXPECT_EQ(input.check(form.chkAll, true), "hidden: chkAll");
  EXPECT_EQ(form.takeLog(), "");
  EXPECT_EQ(form.txtSum.text(), "");
  EXPECT_FALSE(form.chkAll.on());
}

TEST_F(InputTest, OptionsTakeTheOthersBack) {
  EXPECT_EQ(input.choose(form.optA), "");
  EXPECT_EQ(input.choose(form.optB), "");
  EXPECT_FALSE(form.optA.on());
  EXPECT_TRUE(form.optB.on());
  form.takeLog();
  EXPECT_EQ(input.choose(form.optB), "");
  EXPECT_EQ(form.takeLog(), "") << "nothing changed";
}

struct TypeCase {
  const char* name;
  const char* before;
  const char* now;
  int caret;
  const char* want;
  int wantCaret;
};

// The filter makes "#" a blank, drops letters, and the box takes six characters.
const TypeCase kTypes[] = {
    {"a digit in the middle", "12", "132", 2, "132", 2},
    {"a letter is dropped", "12", "1a2", 2, "12", 1},
    {"a sign becomes a blank", "12", "1#2", 2, "1 2", 2},
    {"a pasted text is filtered", "12", "1a3b42", 5, "1342", 3},
    {"the limit drops the rest of a paste", "1234", "12990034", 6, "129934", 4},
    {"deleting is not typing", "1234567890", "123456789", 9, "123456789", 9},
    {"replacing all", "12", "3", 1, "3", 1},
    {"equal digits: the one before the caret is new", "11", "111", 1, "111", 1},
};

TEST_F(InputTest, TypedCharactersPassTheFilter) {
  form.txtSum.maxLength = 6;
  form.txtSum.keyFilter = [](char32_t key, const std::string&) -> char32_t {
    if (key == U'#') return U' ';
    return key >= U'0' && key <= U'9' ? key : 0;
  };
  for (const auto& c : kTypes) {
    SCOPED_TRACE(c.name);
    form.txtSum.text = std::string(c.before);
    form.txtSum.caret = -1;
    EXPECT_EQ(input.typeText(form.txtSum, c.now, c.caret), "");
    EXPECT_EQ(form.txtSum.text(), c.want);
    if (form.txtSum.text() != c.before) {
      EXPECT_EQ(form.txtSum.caret(), c.wantCaret);
    }
  }
}

TEST_F(InputTest, ADroppedCharacterIsTakenBackFromTheView) {
  form.txtSum.keyFilter = [](char32_t, const std::string&) -> char32_t { return 0; };
  input.focus(form.txtSum);
  form.takeDirty();
  form.takeLog();
  input.typeText(form.txtSum, "a", 1);
  EXPECT_EQ(form.takeDirty(), std::vector<Control*>{&form.txtSum});
  EXPECT_EQ(form.takeLog(), "");
}

TEST_F(InputTest, ReadOnlyBoxesTakeTheFocusOnly) {
  form.txtSum.readOnly = true;
  EXPECT_EQ(input.enter(form.txtSum, "1"), "read-only: txtSum");
  EXPECT_EQ(form.focus(), &form.txtSum);
  EXPECT_EQ(form.txtSum.text(), "");
}

TEST_F(InputTest, CombosChooseAndType) {
  EXPECT_EQ(input.enter(form.cmbCurr, "EUR"), "");
  EXPECT_EQ(form.cmbCurr.index(), 1);
  EXPECT_EQ(input.enter(form.cmbCurr, "CHF"), "no item \"CHF\" in cmbCurr");
  EXPECT_EQ(form.cmbCurr.index(), 1);
  EXPECT_EQ(input.choose(form.cmbCurr, 3), "no such item in cmbCurr");

  EXPECT_EQ(input.enter(form.cmbAccount, "27"), "");
  EXPECT_EQ(form.cmbAccount.text(), "27");
  EXPECT_EQ(form.cmbAccount.index(), -1);
  EXPECT_EQ(input.choose(form.cmbAccount, 1), "");
  EXPECT_EQ(form.cmbAccount.text(), "2721 Kasa");
  EXPECT_EQ(input.typeCombo(form.cmbAccount, "2411 Pirkėjai"), "");
  EXPECT_EQ(form.cmbAccount.index(), 0) << "a whole text typed is a choice";
  EXPECT_EQ(input.typeCombo(form.cmbCurr, "E"), "not for typing: cmbCurr");
}

TEST_F(InputTest, DatesAreTypedAndMayBeEmptyOnlyWhereAllowed) {
  host.clock().moment = DateTime::Of(2003, 2, 9, 14, 0);
  EXPECT_EQ(input.enter(form.dtpDate, "5.3"), "");
  EXPECT_EQ(form.dtpDate.value()->Text(), "2003.03.05");
  EXPECT_EQ(input.enter(form.dtpDate, "7"), "");
  EXPECT_EQ(form.dtpDate.value()->Text(), "2003.03.07") << "a day of the month that stands there";
  EXPECT_EQ(input.enter(form.dtpDate, "40"), "no date: \"40\"");
  EXPECT_EQ(input.enter(form.dtpDate, ""), "may not be empty: dtpDate");
  EXPECT_EQ(form.dtpDate.value()->Text(), "2003.03.07");
  form.dtpDate.mayBeEmpty = true;
  EXPECT_EQ(input.enter(form.dtpDate, ""), "");
  EXPECT_FALSE(form.dtpDate.value());
  form.dtpDate.monthOnly = true;
  EXPECT_EQ(input.date(form.dtpDate, DateTime::Of(2004, 5, 17)), "");
  EXPECT_EQ(form.dtpDate.value()->Text(), "2004.05.01");
}

TEST_F(InputTest, RowsAreSelectedBeforeTheyAreOpenedOrTicked) {
  form.lvwRows.onActivate = [&] { form.log += "open "; };
  form.lvwRows.onCheck = [&] { form.log += "check "; };
  EXPECT_EQ(input.activate(form.lvwRows, 2), "");
  EXPECT_EQ(form.takeLog(), "+lvwRows lvwRows! open ");
  EXPECT_EQ(input.check(form.lvwRows, 1, true), "no row to tick in lvwRows");
  form.lvwRows.checkBoxes = true;
  EXPECT_EQ(input.check(form.lvwRows, 1, true), "");
  EXPECT_TRUE(form.lvwRows.rows()[1].checked);
  EXPECT_EQ(form.takeLog(), "lvwRows! check ");
  EXPECT_EQ(input.select(form.lvwRows, 3), "no such row in lvwRows");
  EXPECT_EQ(input.activate(form.lvwRows, -1), "no row in lvwRows");

  form.lvwRows.onChange = [&] { warn(host, "Eilutė užimta!"); };
  EXPECT_EQ(input.activate(form.lvwRows, 0), "dropped: a message was shown");
  host.dialogs().takeTexts();
}

TEST_F(InputTest, ClosingAsksTheForm) {
  form.agrees = false;
  EXPECT_EQ(input.close(), "refused to close: frmOrder");
  EXPECT_TRUE(form.isOpen());
  form.agrees = true;
  EXPECT_EQ(input.close(), "");
  EXPECT_FALSE(form.isOpen());
}

TEST_F(InputTest, AWorkThatThrowsGivesThePanelBack) {
  try {
    BusyScope busy(form, form.SOPanel);
    EXPECT_FALSE(form.txtSum.usable());
    throw std::runtime_error("store lost");
  } catch (const std::runtime_error&) {
  }
  EXPECT_TRUE(form.txtSum.usable());
  EXPECT_EQ(host.pump().busyLog, (std::vector<bool>{true, false}));
}

}  // namespace
}  // namespace tolvex::ui
