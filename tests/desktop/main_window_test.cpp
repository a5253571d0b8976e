// A day's work by the keyboard alone: the main window over a demo company, driven by key events.
#include "host/desktop/main_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <QTimer>
#include <deque>

#include "host/desktop/qt_stage.h"
#include "host/objects/module_loader.h"
#include "host/script/program.h"
#include "host/script/runner.h"
#include "host/store/sql.h"

namespace tolvex::test {
namespace {

class MainWindowTest : public testing::Test {
 protected:
  MainWindowTest() {
    Program::Options options;
    options.place = books_.place();
    options.today = DateTime::Of(2004, 3, 31);
    program_ = std::make_unique<Program>(*module_, options);
    workspace_ = program_->open(stage_, stage_);
    stage_.bind(*workspace_);
    EXPECT_TRUE(QTest::qWaitForWindowActive(stage_.window()));
    QApplication::processEvents();
  }
  ~MainWindowTest() override {
    stage_.unbind();
    workspace_.reset();
  }

  // Steps are taken from a timer, so that they go on inside the loop of a dialog.
  void key(Qt::Key code, Qt::KeyboardModifiers with = Qt::NoModifier) {
    steps_.push_back([=, this] { QTest::keyClick(place(), code, with); });
  }
  void type(const char* words) {
    for (const QChar letter : QString::fromUtf8(words)) {
      steps_.push_back([letter, this] {
        const Qt::Key none = Qt::Key_unknown;
        QKeyEvent press(QEvent::KeyPress, none, Qt::NoModifier, QString(letter));
        QApplication::sendEvent(place(), &press);
        QKeyEvent release(QEvent::KeyRelease, none, Qt::NoModifier, QString(letter));
        QApplication::sendEvent(place(), &release);
      });
    }
  }
  // Where the keys go by now, or soon: screen and control.
  void expectAt(const std::string& screen, const std::string& control) {
    steps_.push_back([=, this] { awaitAt(screen + "." + control, 100); });
  }
  void play() {
    QTimer clock;
    QObject::connect(&clock, &QTimer::timeout, &clock, [this] {
      if (steps_.empty()) return;
      const auto step = std::move(steps_.front());
      steps_.pop_front();
      step();
    });
    clock.start(15);
    EXPECT_TRUE(QTest::qWaitFor([this] { return steps_.empty(); }, 20000));
    QTest::qWait(60);
  }
  std::int64_t count(const char* sql) { return *store::integerFrom(program_->session().db(), sql); }

 private:
  std::string whereKeysGo() const {
    const ui::Form* form = stage_.modalForm() ? stage_.modalForm() : workspace_->current();
    const QWidget* focus = place();
    return form->name() + "." + focus->objectName().toStdString();
  }
  void awaitAt(const std::string& wanted, int patience) {
    if (whereKeysGo() == wanted) return;
    if (patience == 0) {
      ADD_FAILURE() << "keys go to " << whereKeysGo() << ", not to " << wanted;
      return;
    }
    steps_.push_front([=, this] { awaitAt(wanted, patience - 1); });
  }
  // Without a window manager nobody gives the window its focus back behind a dialog.
  QWidget* place() const {
    if (QWidget* modal = QApplication::activeModalWidget())
      return modal->focusWidget() ? modal->focusWidget() : modal;
    if (!QApplication::focusWidget()) {
      stage_.window()->activateWindow();
      stage_.window()->add(*workspace_->current()).takeFocus();
    }
    QWidget* focus = QApplication::focusWidget();
    return focus ? focus : stage_.window();
  }

 protected:
  script::ScratchBooks books_{""};
  std::unique_ptr<Module> module_ = loadModule(TOLVEX_MODULE);
  std::unique_ptr<Program> program_;
  mutable desktop::QtStage stage_;
  std::unique_ptr<Workspace> workspace_;
  std::deque<std::function<void()>> steps_;
};

TEST_F(MainWindowTest, AnOperationIsMadeWithoutAMouse) {
  key(Qt::Key_1, Qt::ControlModifier);
  type("Bendrosios");
  expectAt("frmList", "tvwLayout");
  key(Qt::Key_N, Qt::ControlModifier);
  expectAt("frmBROper", "txtComment");
  type("Be pelės");
  key(Qt::Key_Insert, Qt::ControlModifier);
  expectAt("frmBROperRecord", "cmbAccountD");
  type("2721");
  key(Qt::Key_Return);
  expectAt("frmBROperRecord", "cmbAccountC");
  type("500");
  key(Qt::Key_Return);
  expectAt("frmBROperRecord", "txtSuma");
  type("100*1,18");
  key(Qt::Key_S, Qt::ControlModifier);
  expectAt("frmBROper", "cmdNewEntry");
  key(Qt::Key_S, Qt::ControlModifier);
  play();
  ASSERT_EQ(workspace_->screens().size(), 1u);
  EXPECT_NE(workspace_->screens()[0]->objectReference(), "") << "stored";
  EXPECT_EQ(count("SELECT COUNT(*) FROM entry WHERE sum_lt = 11800"), 1);
}

}  // namespace
}  // namespace tolvex::test
