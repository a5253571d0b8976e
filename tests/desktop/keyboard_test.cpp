#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabBar>

#include "tests/desktop/desktop_test.h"

namespace tolvex::test {
namespace {

class KeyboardTest : public DesktopTest {};

class PickingForm final : public ui::Form {
 public:
  explicit PickingForm(HostContext& host) : Form(host, "frmPicking") {
    txtBank.picker = &cmdBank;
    cmdBank.onClick = [this] { ++picked; };
  }
  const char* picture() const override { return "txtBank cmdBank\ntxtSum\n"; }
  ui::TextBox txtBank{this, "txtBank", "Bankas", 20};
  ui::Button cmdBank{this, "cmdBank", "…", ui::Role::Small};
  ui::TextBox txtSum{this, "txtSum", "Suma", 8};
  int picked = 0;
};

TEST_F(KeyboardTest, EveryControlHasItsWidget) {
  for (const ui::Control* control : form.controls()) {
    if (control->kind == ui::Kind::MenuItem || control->kind == ui::Kind::Timer) continue;
    EXPECT_TRUE(widget->findChild<QWidget*>(QString::fromStdString(control->name)))
        << control->name;
  }
}

TEST_F(KeyboardTest, EnterGoesFromFieldToField) {
  focus(form.dtpDate);
  std::vector<const ui::Control*> seen;
  for (int i = 0; i < 9; ++i) {
    key(Qt::Key_Return);
    seen.push_back(form.focus());
  }
  // Read-only boxes, plain buttons and tab strips are passed over.
  const std::vector<const ui::Control*> want = {
      &form.txtCode, &form.txtSeries,  &form.txtNumber,     &form.txtSum,  &form.cmbCurr,
      &form.txtRate, &form.cmbAccount, &form.txtFoundation, &form.chkPrint};
  EXPECT_EQ(seen, want);
}

TEST_F(KeyboardTest, TypedTextReachesTheControlThroughItsFilter) {
  form.txtSum.maxLength = 6;
  form.txtSum.keyFilter = [](char32_t code, const std::string&) -> char32_t {
    if (code == U'.') return U',';
    return (code >= U'0' && code <= U'9') || code == U',' ? code : 0;
  };
  focus(form.txtSum);
  find<QLineEdit>(form.txtSum).selectAll();
  type("12a.5");
  EXPECT_EQ(form.txtSum.text(), "12,5");
  EXPECT_EQ(find<QLineEdit>(form.txtSum).text(), "12,5");
  key(Qt::Key_Home);
  type("9x");
  EXPECT_EQ(form.txtSum.text(), "912,5");
  EXPECT_EQ(find<QLineEdit>(form.txtSum).cursorPosition(), 1) << "the caret stays behind the 9";
  form.txtSum.text = "0,00";
  settle();
  EXPECT_EQ(find<QLineEdit>(form.txtSum).text(), "0,00");
}

TEST_F(KeyboardTest, WhatAFieldBeginsWithIsNeitherTypedOverNorAway) {
  const auto toEnd = [this] { form.txtNumber.caret = 2; };
  form.txtNumber.text = "24";
  form.txtNumber.onEnter = toEnd;
  form.txtNumber.onChange = [this, toEnd] {
    if (form.txtNumber.text().starts_with("24")) return;
    form.txtNumber.text = "24";
    toEnd();
  };
  focus(form.txtNumber);  // by Tab, which marks the whole text
  type("9");
  EXPECT_EQ(form.txtNumber.text(), "249");
  key(Qt::Key_Home);
  key(Qt::Key_Delete);
  EXPECT_EQ(form.txtNumber.text(), "24");
  type("1");
  EXPECT_EQ(form.txtNumber.text(), "241");
  EXPECT_EQ(find<QLineEdit>(form.txtNumber).text(), "241");
}

TEST_F(KeyboardTest, TypedDatesAreReadOnLeaving) {
  focus(form.dtpDate);
  auto& edit = find<QLineEdit>(form.dtpDate);
  edit.selectAll();
  type("5.4");
  takeLog();
  key(Qt::Key_Return);
  EXPECT_EQ(takeLog(), "dtpDate! ");
  EXPECT_EQ(edit.text(), "2008.04.05");
  focus(form.dtpDate);
  edit.selectAll();
  type("32");
  key(Qt::Key_Tab);
  EXPECT_EQ(edit.text(), "2008.04.05") << "what is no date is taken back";
  focus(form.dtpDate);
  key(Qt::Key_Up);
  EXPECT_EQ(form.dtpDate.value()->Text(), "2008.04.06");
  key(Qt::Key_PageDown);
  EXPECT_EQ(form.dtpDate.value()->Text(), "2008.03.06");
}

TEST_F(KeyboardTest, AVetoReturnsTheFocus) {
  form.txtRate.mayLeave = [this] { return form.txtRate.text() != "x"; };
  focus(form.txtRate);
  find<QLineEdit>(form.txtRate).selectAll();
  type("x");
  key(Qt::Key_Tab);
  EXPECT_TRUE(find(form.txtRate).hasFocus());
  key(Qt::Key_Backspace);
  type("3");
  key(Qt::Key_Return);
  EXPECT_EQ(form.focus(), &form.cmbAccount);
}

TEST_F(KeyboardTest, ABoxBetweenPressAndReleaseDropsTheClick) {
  int boxes = 0;
  form.txtRate.onLeave = [&] {
    ++boxes;
    host.noteInterruption();
    Message message;
    message.text = "Nenurodytas valiutos kursas!";
    QTimer::singleShot(0, [&] { stage.answer(Answer::Ok); });
    EXPECT_EQ(stage.message(message), Answer::Ok);
  };
  focus(form.txtRate);
  takeLog();
  auto& button = find<QPushButton>(form.cmdWrite);
  QTest::mousePress(&button, Qt::LeftButton);
  settle();
  EXPECT_EQ(boxes, 0) << "the press alone leaves no field";
  QTest::mouseRelease(&button, Qt::LeftButton);
  settle();
  EXPECT_EQ(boxes, 1);
  EXPECT_EQ(takeLog(), "") << "nothing was saved behind the box";
  EXPECT_FALSE(button.isDown());
  QTest::mouseClick(&button, Qt::LeftButton);
  settle();
  EXPECT_EQ(takeLog(), "cmdWrite() ");
}

TEST_F(KeyboardTest, ListsAnswerTheKeysOfALedger) {
  focus(form.lvwEntries);
  takeLog();
  key(Qt::Key_Down);
  EXPECT_EQ(form.lvwEntries.current(), 2);
  key(Qt::Key_Return);
  key(Qt::Key_Insert);
  key(Qt::Key_Delete);
  key(Qt::Key_Space);
  EXPECT_EQ(takeLog(), "lvwEntries! open 272221 885,00 insert delete tick ");
  EXPECT_TRUE(form.lvwEntries.rows()[2].checked);
  key(Qt::Key_Home);
  EXPECT_EQ(form.lvwEntries.current(), 0);
}

TEST_F(KeyboardTest, EnterGoesOnFromAnEmptyListAndOpensWhatASearchFound) {
  form.txtFoundation.finds = &form.lvwEntries;
  focus(form.txtFoundation);
  takeLog();
  key(Qt::Key_Return);
  EXPECT_EQ(takeLog(), "open 272111 567,75 ");
  form.lvwEntries.setRows({});
  form.lvwEntries.current = -1;
  settle();
  focus(form.txtFoundation);
  key(Qt::Key_Return);
  EXPECT_EQ(form.focus(), &form.chkPrint) << "nothing was found: Enter goes on";
  focus(form.lvwEntries);
  key(Qt::Key_Return);
  EXPECT_EQ(takeLog(), "");
  EXPECT_EQ(form.focus(), &form.cmdWrite);
}

TEST_F(KeyboardTest, ArrowsChooseAmongOptions) {
  form.optEntries.choose();
  focus(form.optEntries);
  key(Qt::Key_Left);
  EXPECT_TRUE(form.optEntries.on()) << "there is none before the first";
  key(Qt::Key_Right);
  EXPECT_TRUE(form.optLinks.on());
  EXPECT_EQ(form.focus(), &form.optLinks);
  EXPECT_TRUE(find(form.optLinks).hasFocus());
  focus(form.chkPrint);
  key(Qt::Key_Return);
  EXPECT_EQ(form.focus(), &form.optLinks) << "Enter stops at the chosen one";
  key(Qt::Key_Return);
  EXPECT_EQ(form.focus(), &form.lvwEntries);
}

TEST_F(KeyboardTest, ShortcutsAndDefaultButtons) {
  focus(form.txtSum);
  takeLog();
  key(Qt::Key_F4);
  EXPECT_EQ(takeLog(), "mnuFirm() ") << "a menu entry by its key, without the menu";
  key(Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(takeLog(), "") << "a disabled button";
  key(Qt::Key_Return, Qt::ControlModifier);
  EXPECT_EQ(takeLog(), "cmdWrite() ");
  key(Qt::Key_Escape);
  EXPECT_EQ(takeLog(), "cmdCancel() ");
}

TEST_F(KeyboardTest, F4PressesThePickerOfTheBox) {
  PickingForm picking(host);
  picking.markOpen(true);
  desktop::FormWidget view(picking, stage, nullptr);
  view.show();
  view.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
  for (const char* name : {"txtBank", "txtSum"}) {
    auto* box = view.findChild<QWidget*>(QString::fromUtf8(name));
    box->setFocus(Qt::TabFocusReason);
    settle();
    QTest::keyClick(box, Qt::Key_F4);
    settle();
  }
  EXPECT_EQ(picking.picked, 1) << "only one of the boxes has a picker";
}

TEST_F(KeyboardTest, AccessKeysLeadToFields) {
  focus(form.txtNumber);
  key(Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(form.focus(), &form.txtSum);
  key(Qt::Key_P, Qt::AltModifier);
  QTest::qWait(150);  // a button pressed by its letter is seen to go down
  EXPECT_EQ(takeLog(), "cmdDebts() ");
}

TEST_F(KeyboardTest, TabStripsTurnPages) {
  focus(form.lvwEntries);
  EXPECT_FALSE(find(form.tvwGroups).isVisible());
  key(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(form.tabMain.currentKey(), "more");
  EXPECT_TRUE(find(form.tvwGroups).isVisible());
  EXPECT_FALSE(find(form.lvwEntries).isVisible());
}

TEST_F(KeyboardTest, AnyListIsPrintedAndWrittenByKey) {
  bool formPrinted = false;
  form.cmdPrint.enabled = true;
  form.cmdPrint.onClick = [&] { formPrinted = true; };
  focus(form.txtSum);
  key(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(host.reports().log.empty()) << "a box is no list";
  focus(form.lvwEntries);
  key(Qt::Key_P, Qt::ControlModifier);
  EXPECT_TRUE(formPrinted) << "the form's own key comes first";
  focus(form.lvwEntries);
  key(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  key(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
  const std::string stem = host.reports().shown.at(0).exportStem;
  EXPECT_EQ(host.reports().log,
            (std::vector<std::string>{"show list excel", "export excel " + stem}));
  const auto& table = std::get<ReportTable>(host.reports().shown[0].body.back());
  EXPECT_EQ(table.rows.size(), form.lvwEntries.rows().size());
}

TEST_F(KeyboardTest, TreesAreWalkedByKey) {
  form.tabMain.current = std::string("more");
  settle();
  focus(form.tvwGroups);
  takeLog();
  key(Qt::Key_Down);
  EXPECT_EQ(form.tvwGroups.current(), "c");
  key(Qt::Key_Return);
  EXPECT_EQ(takeLog(), "tvwGroups! node c ");
  key(Qt::Key_Up);
  key(Qt::Key_Left);
  EXPECT_FALSE(form.tvwGroups.find("b")->expanded);
}

TEST_F(KeyboardTest, TheMenuKeyOpensTheMenuOfTheRow) {
  focus(form.lvwEntries);
  QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
  QApplication::sendEvent(QApplication::focusWidget(), &byKey);
  settle();
  ASSERT_EQ(stage.openMenu(), &form.menuClient);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(menu);
  takeLog();
  QTest::keyClick(menu, Qt::Key_Down);
  QTest::keyClick(menu, Qt::Key_Return);
  settle();
  EXPECT_EQ(takeLog(), "mnuFirm() ");
  EXPECT_EQ(stage.openMenu(), nullptr);
}

TEST_F(KeyboardTest, EntriesOfAMenuAreFoundByTyping) {
  focus(form.lvwEntries);
  QContextMenuEvent byKey(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
  QApplication::sendEvent(QApplication::focusWidget(), &byKey);
  settle();
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(menu);
  std::string marked;
  for (const char* letter : {"f", "i", "į", "x"}) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString::fromUtf8(letter));
    QApplication::sendEvent(menu, &press);
    marked += menu->activeAction() ? menu->activeAction()->objectName().toStdString() + " " : "- ";
  }
  EXPECT_EQ(marked, "mnuPerson mnuPerson mnuFirm mnuFirm ");
  takeLog();
  QTest::keyClick(menu, Qt::Key_Return);
  settle();
  EXPECT_EQ(takeLog(), "mnuFirm() ");
}

TEST_F(KeyboardTest, CombosCompleteWhatIsTyped) {
  focus(form.cmbAccount);
  takeLog();
  type("kas");
  EXPECT_EQ(form.cmbAccount.text(), "kas");
  auto* popup = QApplication::activePopupWidget();
  ASSERT_TRUE(popup);
  auto* list = qobject_cast<QAbstractItemView*>(popup);
  ASSERT_TRUE(list);
  EXPECT_EQ(list->model()->rowCount(), 2) << "Kasa and Bankas";
  QTest::keyClick(popup, Qt::Key_Return);
  settle();
  EXPECT_EQ(form.cmbAccount.text(), "2721 Kasa");
  EXPECT_EQ(form.cmbAccount.index(), 1);
  EXPECT_EQ(form.focus(), &form.txtFoundation) << "Enter took the suggestion and went on";
}

TEST_F(KeyboardTest, LongTextsShowHowTheyBegin) {
  auto& combo = find<QComboBox>(form.cmbAccount);
  QLineEdit& account = *combo.lineEdit();
  focus(form.cmbAccount);
  type("kas");
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
  EXPECT_EQ(account.cursorPosition(), 3) << "while it is typed the caret stays";
  emit combo.activated(1);  // from the list, by mouse
  settle();
  EXPECT_EQ(account.text(), "2721 Kasa");
  EXPECT_EQ(account.cursorPosition(), 0);
  EXPECT_EQ(account.selectedText(), "2721 Kasa") << "typing begins anew";
  auto& words = find<QLineEdit>(form.txtFoundation);
  focus(form.txtFoundation);
  type("Pagal sutarti");
  key(Qt::Key_Tab);
  EXPECT_EQ(words.cursorPosition(), 0);
}

TEST_F(KeyboardTest, PanelsDisableAndHideAllInside) {
  form.SSFrameSum.enabled = false;
  form.SSFrame.visible = false;
  settle();
  EXPECT_FALSE(find(form.txtSum).isEnabled());
  EXPECT_FALSE(find(form.txtNumber).isVisible());
  EXPECT_TRUE(find(form.lvwEntries).isEnabled());
}

TEST_F(KeyboardTest, ALongWorkGivesTheFocusBack) {
  focus(form.txtFoundation);
  takeLog();
  std::string left;
  form.txtFoundation.onLeave = [&] { left = "left"; };
  {
    const ui::BusyScope busy(form, form.SOPanel);
    stage.turn();
    EXPECT_FALSE(find(form.txtFoundation).isEnabled());
  }
  settle();
  EXPECT_EQ(form.focus(), &form.txtFoundation);
  EXPECT_TRUE(find(form.txtFoundation).hasFocus());
  EXPECT_EQ(left, "") << "the toolkit moved its focus, the user did not";
}

TEST_F(KeyboardTest, AFieldNamedBehindABoxGetsTheFocus) {
  form.cmdDebts.onClick = [this] {
    Message message;
    message.text = "Nenurodyta suma!";
    stage.message(message);
    form.setFocus(form.txtSum);
  };
  QTimer::singleShot(30, [this] { stage.answer(Answer::Ok); });
  QTest::mouseClick(&find(form.cmdDebts), Qt::LeftButton);
  QTest::qWait(60);
  window.activateWindow();  // as a window manager does once the box has gone
  QTest::qWait(60);
  EXPECT_TRUE(find(form.txtSum).hasFocus());
}

TEST_F(KeyboardTest, AScriptedWindowIgnoresTheUser) {
  focus(form.txtSum);
  takeLog();
  stage.idleTick = [] { return 1000; };
  type("1");
  QTest::mouseClick(&find(form.cmdWrite), Qt::LeftButton);
  settle();
  EXPECT_EQ(takeLog(), "");
  EXPECT_EQ(find<QLineEdit>(form.txtSum).text(), "21885,00");
  stage.idleTick = nullptr;
  focus(form.txtSum);
  type("1");
  EXPECT_EQ(takeLog(), "txtSum! ");
}

}  // namespace
}  // namespace tolvex::test
