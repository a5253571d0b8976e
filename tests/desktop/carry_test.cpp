// References that go from list to field by key and by mouse, and columns that stay as they were
// put.
#include <QClipboard>
#include <QDropEvent>
#include <QHeaderView>
#include <QMimeData>
#include <QTreeView>

#include "tests/desktop/desktop_test.h"

namespace tolvex::test {
namespace {

class CarryTest : public DesktopTest {
 protected:
  CarryTest() {
    const auto takesFirms = [](const std::string& reference) {
      return reference.starts_with("O0000100");
    };
    form.lvwEntries.carries = [](const std::string& key) { return "O0000100" + key; };
    for (ui::Control* target :
         {static_cast<ui::Control*>(&form.txtClient), static_cast<ui::Control*>(&form.lvwEntries),
          static_cast<ui::Control*>(&form.SSFrameClient)}) {
      target->canDrop = takesFirms;
      target->onDrop = [this, target](const std::string& reference) {
        form.log += target->name + "<" + reference + " ";
      };
    }
    // The widgets are made anew over the targets.
    delete widget;
    delete window.layout();
    open();
    form.lvwEntries.current = 1;
    settle();
    takeLog();
  }
  std::string clipboard() { return QApplication::clipboard()->text().toStdString(); }
};

TEST_F(CarryTest, ARowIsCopiedWithItsWordsAndItsReference) {
  focus(form.lvwEntries);
  key(Qt::Key_C, Qt::ControlModifier);
  const ui::Row& row = *form.lvwEntries.currentRow();
  EXPECT_EQ(clipboard().substr(0, clipboard().find('\t')), row.cells[0].text);
  takeLog();
  // A field that takes typed text takes the words, unless it wants just this reference.
  focus(form.txtClient);
  key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(takeLog(), "txtClient<O0000100" + row.key + " ");
  focus(form.txtFoundation);
  takeLog();
  key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_NE(form.txtFoundation.text().find(row.cells[0].text), std::string::npos);
  // From a button inside a panel the panel takes it.
  focus(form.cmdClient);
  key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_NE(takeLog().find("SSFrameClient<O0000100" + row.key), std::string::npos);
  QApplication::clipboard()->setText(QStringLiteral("O00001005"));
  key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(takeLog(), "") << "a text is no reference";
}

TEST_F(CarryTest, ADroppedReferenceReachesItsTargetAndItsRow) {
  auto& table = find<QTreeView>(form.lvwEntries);
  const auto drop = [&](QWidget& at, QPointF place, const char* reference) {
    QMimeData data;
    data.setData(QStringLiteral("application/x-tolvex-reference"), reference);
    QDragEnterEvent enter(place.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&at, &enter);
    QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    if (enter.isAccepted()) QApplication::sendEvent(&at, &event);
    settle();
    return enter.isAccepted();
  };
  const QRect row = table.visualRect(table.model()->index(3, 0));
  EXPECT_TRUE(drop(*table.viewport(), row.center(), "O00001009"));
  EXPECT_NE(takeLog().find("lvwEntries<O00001009 "), std::string::npos);
  EXPECT_EQ(form.lvwEntries.current(), 3);
  EXPECT_FALSE(drop(find(form.txtClient), QPointF(5, 5), "O00022001"));
  form.SSFrameClient.enabled = false;
  EXPECT_FALSE(drop(find(form.txtClient), QPointF(5, 5), "O00001009"));
  EXPECT_EQ(takeLog(), "");
}

TEST_F(CarryTest, ColumnsStayAsTheUserPutThem) {
  const auto header = [&]() -> QHeaderView& { return *find<QTreeView>(form.lvwEntries).header(); };
  const int usual = header().sectionSize(1);
  const auto dragHeader = [&](int from, int to) {
    const int y = header().height() / 2;
    QWidget* place = header().viewport();
    QTest::mousePress(place, Qt::LeftButton, {}, QPoint(from, y));
    QTest::mouseMove(place, QPoint((from + to) / 2, y));
    QTest::mouseMove(place, QPoint(to, y));
    QTest::mouseRelease(place, Qt::LeftButton, {}, QPoint(to, y));
    settle();
  };
  const int edge = header().sectionPosition(1) + usual;
  dragHeader(edge - 1, edge + 39);
  const int wider = header().sectionSize(1);
  EXPECT_GT(wider, usual + 20);
  header().moveSection(2, 3);
  dragHeader(edge + 60, edge + 60);
  ASSERT_EQ(host.settings().values.size(), 1u);

  delete widget;
  delete window.layout();
  open();
  EXPECT_EQ(header().sectionSize(1), wider);
  EXPECT_EQ(header().visualIndex(2), 3);
  form.lvwEntries.setRows({});
  settle();
  EXPECT_EQ(header().sectionSize(1), wider) << "rows come and go, columns stay";

  // Other columns have a memory of their own, and a broken one is none.
  host.settings().values.begin()->second = "0:0;1:90;1:90";
  delete widget;
  delete window.layout();
  open();
  EXPECT_EQ(header().sectionSize(1), usual);
}

TEST_F(CarryTest, AListScrollsSidewaysOnlyWhenItHasTo) {
  auto& table = find<QTreeView>(form.lvwEntries);
  const auto overflow = [&] {
    int wide = 0;
    for (int i = 0; i < table.header()->count(); ++i) wide += table.header()->sectionSize(i);
    return wide - table.viewport()->width();
  };
  EXPECT_LE(overflow(), 0);
  window.resize(760, 700);
  settle();
  EXPECT_LE(overflow(), 0) << "the growing column gives way";
}

}  // namespace
}  // namespace tolvex::test
