// FormWidget: draws a form of the control model and turns mouse and keyboard into ui::Input.
//
// The form decides, the widget follows: changes arrive by takeDirty once the loop is idle, and the
// toolkit's focus is moved to where the form says it is. Acts of the user are queued, so that a
// message opened by the field that is being left never stands between press and release.
#pragma once

#include <QKeyCombination>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/desktop/control_view.h"
#include "platform/form.h"
#include "platform/input.h"

class QBoxLayout;
class QLabel;
class QMenu;
class QTimer;

namespace tolvex::desktop {

// What a form widget needs of the stage around it.
class ActGuard {
 public:
  virtual ~ActGuard() = default;
  // Runs an act: never inside a long work's turn, failures shown to the user.
  virtual void run(const std::function<void()>& act) = 0;
  virtual bool holding() const = 0;  // acts have to wait: a long work is drawing itself
  virtual bool showing() const = 0;  // a script acts; the user's own input is ignored
  virtual void menuOpened(ui::Menu* menu, QMenu* widget) = 0;
  virtual void settled() = 0;  // a form closed, was renamed or has put work off
};

class FormWidget final : public QWidget, public ui::FormView {
 public:
  FormWidget(ui::Form& form, ActGuard& guard, QWidget* parent = nullptr);
  ~FormWidget() override;

  ui::Form& form() { return form_; }
  ui::Input input() { return ui::Input(form_); }

  void wake() override;
  void popup(ui::Menu& menu, ui::Control& at) override;

  void act(std::function<void()> work);            // queued
  void actNow(const std::function<void()>& work);  // at once, for typed characters
  void flush();                                    // widgets from controls, now
  void commit();                                   // what the focused field has not told yet
  void takeFocus();                                // the form came to front
  void closeByUser();                              // Esc or the close box
  void serveShortcutsIn(QWidget& place);           // the form's shortcuts work there as well
  void step(ui::Control& from);                    // to the next field, as Enter does
  bool modal = false;  // Enter in the last field presses the default button
  std::function<void()> onClosed, onTitle;
  std::function<void()> onEscape;  // Esc where no cancel button takes it

  ControlView* view(const ui::Control& control) const;
  // Focus, keys and menus of a widget belong to `control` from now on.
  void watch(QWidget& widget, ui::Control& control);
  ui::Control* controlOf(QObject* widget) const;
  void setMenuPoint(QPoint global) { menuPoint_ = global; }

 private:
  friend class LayoutBuilder;
  struct Labelled {
    QLabel* label = nullptr;
    int stack = -1;  // labels of one stack have one width; -1: its own
  };
  struct Holder {  // a cell or a row of the layout
    QWidget* widget = nullptr;
    std::vector<const ui::Control*> controls;
    bool always = false;  // it has words of its own
  };
  struct Page {
    QWidget* widget = nullptr;
    std::string key;
  };

  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool key(ui::Control& control, int key, int modifiers);
  void serveHelp();
  bool hasShortcut(QKeyCombination keys) const;
  bool copyFrom(const ui::Control& control);
  bool putInto(ui::Control& control);
  bool listKey(ui::ListView& list, int key);
  bool listCommand(ui::Control& control, int key, int modifiers);
  void enterKey(ui::Control& control);
  void chooseBeside(const ui::OptionButton& option, int direction);
  void focusIn(ui::Control& control, int reason);
  void bringIntoSight(const ui::Control& control);
  void pressDefault();
  void syncControl(ui::Control& control);
  void syncCommon(ui::Control& control);
  void syncPages(ui::TabStrip& strip);
  void syncTimer(ui::Timer& timer);
  void syncFocus();
  void alignLabels();
  void syncHolders();
  void runShortcut(ui::MenuItem& item);
  void switchTab(int step);

  ui::Form& form_;
  ActGuard& guard_;
  std::map<const ui::Control*, ViewPtr> views_;
  std::map<QObject*, ui::Control*> owners_;
  std::map<const ui::Control*, QWidget*> frames_;
  std::map<const ui::Control*, Labelled> labels_;
  std::map<const ui::Control*, std::vector<Page>> pages_;
  std::map<const ui::Control*, QTimer*> timers_;
  std::vector<Holder> holders_;
  std::vector<ui::Control*> order_;  // fields as the layout has them
  int stacks_ = 0;
  bool woken_ = false;
  bool labelsMoved_ = true;
  bool holdersMoved_ = true;
  bool closedTold_ = false;
  bool syncing_ = false;  // focus that moves now was moved by the toolkit, not by the user
  const ui::Control* syncedFocus_ = nullptr;  // given to the toolkit last
  unsigned focusEvents_ = 0;                  // queued, not yet told to the form
  QPoint menuPoint_;
  std::string shownTitle_;
};

}  // namespace tolvex::desktop
