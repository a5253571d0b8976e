// A sample screen in a real window, without a screen: the offscreen platform.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include "host/desktop/form_widget.h"
#include "host/desktop/qt_stage.h"
#include "host/desktop/theme.h"
#include "tests/desktop/sample_form.h"
#include "tests/support/fake_host.h"

namespace tolvex::test {

// Two hops lie between a key and the widget: the act is queued, so is the redrawing.
inline void settle() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

class DesktopTest : public testing::Test {
 protected:
  DesktopTest() { open(); }
  void open() {
    form.markOpen(true);
    widget = new desktop::FormWidget(form, stage, &window);
    auto* layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(widget);
    window.resize(1000, 700);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    settle();
  }
  template <class T = QWidget>
  T& find(const ui::Control& control) {
    T* found = widget->findChild<T*>(QString::fromStdString(control.name));
    if (!found) throw std::runtime_error("no widget " + control.name);
    return *found;
  }
  void focus(const ui::Control& control) {
    find(control).setFocus(Qt::TabFocusReason);
    settle();
  }
  void key(Qt::Key code, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &window, code,
                    with);
    settle();
  }
  void type(const char* words) {
    QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(words));
    settle();
  }
  std::string takeLog() { return std::exchange(form.log, {}); }

  FakeHost host;
  desktop::QtStage stage;
  SampleForm form{host};
  QWidget window;
  desktop::FormWidget* widget = nullptr;  // the window's
};

}  // namespace tolvex::test
