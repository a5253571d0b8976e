#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTreeView>

#include "host/desktop/row_model.h"
#include "host/desktop/suggestions.h"
#include "tests/desktop/desktop_test.h"

namespace tolvex::test {
namespace {

using desktop::RowModel;

std::vector<ui::Row> rows(int count) {
  std::vector<ui::Row> list(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    ui::Row& row = list[static_cast<std::size_t>(i)];
    row.key = std::to_string(i);
    row.cells = {"2721", "2411", std::to_string(i) + ",00", "", "", "Operacija " + row.key};
  }
  return list;
}

class ViewTest : public DesktopTest {};

class FramedForm final : public ui::Form {
 public:
  explicit FramedForm(HostContext& host) : Form(host, "frmFramed") { fraList.visible = false; }
  const char* picture() const override {
    return "[SOPanel]\n  []\n    txtBank\n  []\n    txtSum\n  [fraList]\n    lvwList>\n";
  }
  ui::Panel SOPanel{this, "SOPanel", "Mokėjimas"}, fraList{this, "fraList"};
  ui::ListView lvwList{this, "lvwList", {{"Eilutė", 10}}};
  ui::TextBox txtBank{this, "txtBank", "Bankas tarpininkas", 20};
  ui::TextBox txtSum{this, "txtSum", "Suma", 8};
};

TEST_F(ViewTest, RowModelsKeepTheRulesOfModels) {
  RowModel model(form.lvwEntries, nullptr);
  const QAbstractItemModelTester tester(&model,
                                        QAbstractItemModelTester::FailureReportingMode::Fatal);
  EXPECT_EQ(model.rowCount(), 5);
  form.lvwEntries.setRows(rows(40));
  EXPECT_TRUE(model.refresh());
  EXPECT_EQ(model.rowCount(), 40);
  form.lvwEntries.edit()[3].cells[0].text = "9";
  EXPECT_FALSE(model.refresh()) << "the same rows, told as a change of data";
  EXPECT_EQ(model.index(3, 0).data().toString(), "9");
  model.setFilter("operacija 3");
  EXPECT_EQ(model.rowCount(), 13) << "3, 13, 23, 30 to 39";
  EXPECT_EQ(model.listRow(1), 13);
  EXPECT_EQ(model.shownRow(23), 2);
  EXPECT_EQ(model.shownRow(24), -1);
  form.lvwEntries.columns.pop_back();
  EXPECT_TRUE(model.refresh());
  EXPECT_EQ(model.columnCount(), 5);
  form.lvwEntries.setRows({});
  model.refresh();
  EXPECT_EQ(model.rowCount(), 0);
  EXPECT_EQ(model.row(0), nullptr);
}

TEST_F(ViewTest, AHiddenStripHidesItsPages) {
  EXPECT_TRUE(find(form.lvwEntries).isVisible());
  form.tabMain.visible = false;
  settle();
  EXPECT_FALSE(find(form.lvwEntries).isVisible());
  EXPECT_TRUE(find(form.txtSum).isVisible());
  form.tabMain.visible = true;
  settle();
  EXPECT_TRUE(find(form.lvwEntries).isVisible());
}

TEST_F(ViewTest, ALongListIsDrawnAtOnceAndScrolls) {
  QElapsedTimer clock;
  form.lvwEntries.setRows(rows(100000));
  clock.start();
  widget->flush();
  auto& table = find<QTreeView>(form.lvwEntries);
  table.viewport()->repaint();
  EXPECT_LT(clock.elapsed(), 150) << "milliseconds until the first page stands";
  clock.restart();
  constexpr int kSteps = 40;
  for (int i = 0; i < kSteps; ++i) {
    table.verticalScrollBar()->setValue(i * table.verticalScrollBar()->maximum() / kSteps);
    table.viewport()->repaint();
  }
  EXPECT_LT(clock.elapsed() / kSteps, 16) << "milliseconds a page while scrolling";
}

TEST_F(ViewTest, SuggestionsBeginFirstAndStayFast) {
  std::vector<ui::ComboBox::Item> items;
  for (int i = 0; i < 5000; ++i) items.push_back({"UAB „Šilas “ Nr. " + std::to_string(i), ""});
  items.push_back({"Nr. viena", ""});
  items.push_back({"šilainė", ""});
  EXPECT_EQ(desktop::suggestions(items, "ŠILAIN", 10), std::vector<int>{5001});
  EXPECT_EQ(desktop::suggestions(items, "nr.", 2), (std::vector<int>{5000, 0}));
  QElapsedTimer clock;
  clock.start();
  desktop::suggestions(items, "nr. 49", 200);
  EXPECT_LT(clock.elapsed(), 50);
}

TEST_F(ViewTest, ARowAddedKeepsThePlaceInTheList) {
  form.lvwEntries.setRows(rows(500));
  form.lvwEntries.current = 300;
  settle();
  auto& table = find<QTreeView>(form.lvwEntries);
  const int place = table.verticalScrollBar()->value();
  EXPECT_GT(place, 0);
  form.lvwEntries.edit().push_back(rows(1).front());
  settle();
  EXPECT_EQ(table.verticalScrollBar()->value(), place);
  EXPECT_EQ(table.currentIndex().row(), 300);
}

TEST_F(ViewTest, MouseTicksARowAndOpensItsMenu) {
  auto& table = find<QTreeView>(form.lvwEntries);
  const QRect cell = table.visualRect(table.model()->index(4, 0));
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, cell.topLeft() + QPoint(14, 12));
  settle();
  EXPECT_TRUE(form.lvwEntries.rows()[4].checked);
  EXPECT_EQ(form.lvwEntries.current(), 4);
  takeLog();
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, cell.center());
  QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, cell.center());
  settle();
  EXPECT_EQ(takeLog(), "open 27217,00 ");
  const QPoint second = table.visualRect(table.model()->index(1, 1)).center();
  QContextMenuEvent right(QContextMenuEvent::Mouse, second, table.viewport()->mapToGlobal(second));
  QApplication::sendEvent(table.viewport(), &right);
  settle();
  EXPECT_EQ(form.lvwEntries.current(), 1) << "the row under the mouse becomes the current one";
  EXPECT_EQ(stage.openMenu(), &form.menuClient);
  stage.closeMenu();
}

TEST_F(ViewTest, LabelsOfOneStackHaveOneWidth) {
  std::map<QString, int> right;
  for (const QLabel* label : widget->findChildren<QLabel*>()) {
    right[label->text()] = label->mapTo(widget, QPoint(label->width(), 0)).x();
  }
  EXPECT_EQ(right["&Data"], right["Serija, Nr."]);
  EXPECT_EQ(right["&Suma"], right["Pagrindas"]);
}

TEST_F(ViewTest, FramesAreOfOneColumnAndAsHighAsWhatIsInThem) {
  FramedForm framed(host);
  framed.markOpen(true);
  desktop::FormWidget view(framed, stage, nullptr);
  view.resize(600, 700);
  view.show();
  settle();
  const auto place = [&](const char* name) {
    return view.findChild<QWidget*>(QString::fromUtf8(name))->mapTo(&view, QPoint());
  };
  EXPECT_EQ(place("txtBank").x(), place("txtSum").x());
  EXPECT_LT(place("txtSum").y() - place("txtBank").y(), 100) << "though a list is hidden below";
  EXPECT_GT(place("SOPanel").x(), 0) << "a form has its margins";
}

TEST_F(ViewTest, ALongWorkShowsHowFarItIsAndStops) {
  const auto stopButton = [] {
    for (QWidget* one : QApplication::allWidgets())
      if (one->objectName() == QStringLiteral("stopWork")) return one;
    return static_cast<QWidget*>(nullptr);
  };
  SampleForm inner(host);
  inner.markOpen(true);
  QTimer::singleShot(0, &stage, [&] {
    stage.busy(true);
    stage.progress("Daroma atsarginė kopija", 0.1);
    EXPECT_EQ(stopButton(), nullptr) << "a short work needs none";
    QElapsedTimer clock;
    clock.start();
    while (!stopButton() && clock.elapsed() < 5000) stage.progress("Daroma atsarginė kopija", 0.4);
    QWidget* stop = stopButton();
    EXPECT_TRUE(stop && stop->isVisible());
    EXPECT_FALSE(stage.stopped());
    if (stop) {
      EXPECT_EQ(stop->parentWidget()->findChild<QLabel*>()->text().toStdString(),
                "Daroma atsarginė kopija");
      QTest::mouseClick(stop, Qt::LeftButton);
    }
    EXPECT_TRUE(stage.stopped());
    stage.busy(false);
    EXPECT_EQ(stopButton(), nullptr);
    inner.close();
  });
  stage.runModal(inner);
}

TEST_F(ViewTest, ModalFormsRunUntilClosedAndEscAsks) {
  SampleForm inner(host);
  inner.cmdCancel.isCancel = false;
  inner.agrees = false;
  inner.markOpen(true);
  int steps = 0;
  QTimer::singleShot(0, [&] {
    settle();
    EXPECT_EQ(stage.modalForm(), &inner);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    settle();
    EXPECT_TRUE(inner.isOpen()) << "refused";
    ++steps;
    inner.agrees = true;
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    settle();
    ++steps;
  });
  stage.runModal(inner);
  EXPECT_EQ(steps, 2);
  EXPECT_EQ(stage.modalForm(), nullptr);
}

TEST_F(ViewTest, BoxesSpeakLithuanianAndEscIsSafe) {
  Message question;
  question.text = "Ar tikrai norite panaikinti?\r\nKPO 000137";
  question.icon = Icon::Question;
  question.buttons = Buttons::YesNo;
  question.preset = Answer::No;
  QStringList names;
  const auto ask = [&](Qt::Key code) {
    QTimer::singleShot(0, [&, code] {
      QWidget* box = QApplication::activeModalWidget();
      ASSERT_TRUE(box);
      names.clear();
      for (const auto* button : box->findChildren<QPushButton*>()) names << button->text();
      QTest::keyClick(box, code);
    });
    return stage.message(question);
  };
  EXPECT_EQ(ask(Qt::Key_Escape), Answer::No);
  EXPECT_EQ(names, (QStringList{"Taip", "Ne"}));
  EXPECT_EQ(ask(Qt::Key_T), Answer::Yes) << "the first letter of a button";
  question.buttons = Buttons::OkCancel;
  EXPECT_EQ(ask(Qt::Key_Escape), Answer::Cancel);
  EXPECT_EQ(names, (QStringList{"Gerai", "Atšaukti"}));
}

TEST_F(ViewTest, AHandlerThatThrowsIsToldAndTheScreenStays) {
  form.cmdDebts.onClick = [] { throw std::runtime_error("store lost"); };
  std::string told;
  QTimer::singleShot(50, [&] {
    if (const Message* box = stage.openMessage()) told = box->text;
    stage.answer(Answer::Ok);
  });
  QTest::mouseClick(&find(form.cmdDebts), Qt::LeftButton);
  QTest::qWait(120);
  EXPECT_EQ(told, "Klaida!\r\nstore lost");
  EXPECT_TRUE(form.isOpen());
}

TEST_F(ViewTest, TimersTickWhileTheyRun) {
  form.tmrWait.running = true;
  QTest::qWait(60);
  EXPECT_NE(takeLog().find("tmrWait! "), std::string::npos);
  form.tmrWait.running = false;
  settle();
  takeLog();
  QTest::qWait(40);
  EXPECT_EQ(takeLog(), "");
}

TEST_F(ViewTest, AScriptTicksInsideBoxesToo) {
  int answered = 0;
  stage.idleTick = [&] {
    if (stage.openMessage()) {
      ++answered;
      stage.answer(Answer::Ok);
      return -1;
    }
    Message message;
    message.text = "Atlikta!";
    stage.message(message);
    return -1;
  };
  stage.startTicking();
  QTest::qWait(100);
  EXPECT_EQ(answered, 1);
  stage.idleTick = nullptr;
}

// The pictures are for people: nothing compares them.
TEST_F(ViewTest, Pictures) {
  QDir().mkpath("out");
  for (const QSize size : {QSize(1366, 768), QSize(1920, 1080)}) {
    window.resize(size);
    settle();
    EXPECT_TRUE(window.grab().save(QString("out/sample_%1.png").arg(size.width())));
  }
  form.tabMain.current = std::string("more");
  window.resize(1366, 768);
  settle();
  EXPECT_TRUE(window.grab().save("out/sample_more.png"));
}

}  // namespace
}  // namespace tolvex::test
