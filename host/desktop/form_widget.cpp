#include "host/desktop/form_widget.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QShortcut>
#include <QStackedWidget>
#include <QTimer>
#include <algorithm>
#include <set>

#include "host/desktop/layout_builder.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {

using ui::Kind;

FormWidget::FormWidget(ui::Form& form, ActGuard& guard, QWidget* parent)
    : QWidget(parent), form_(form), guard_(guard), shownTitle_(form.title()) {
  setObjectName(text(form.name()));
  LayoutBuilder(*this).build();
  QWidget* before = nullptr;
  for (ui::Control* control : order_) {
    QWidget* field = views_.at(control)->field;
    if (before) QWidget::setTabOrder(before, field);
    before = field;
  }
  makeShortcuts();
  form_.view = this;
  form_.takeDirty();
  for (ui::Control* control : form_.controls()) syncControl(*control);
  syncHolders();
  alignLabels();
  if (form_.hasLater()) wake();
}

FormWidget::~FormWidget() {
  form_.view = nullptr;
  // Widgets go first: their last signals must still find their views.
  for (auto& [widget, control] : owners_) widget->removeEventFilter(this);
  qDeleteAll(findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly));
}

ControlView* FormWidget::view(const ui::Control& control) const {
  const auto found = views_.find(&control);
  return found == views_.end() ? nullptr : found->second.get();
}

void FormWidget::watch(QWidget& widget, ui::Control& control) {
  owners_[&widget] = &control;
  widget.installEventFilter(this);
}

ui::Control* FormWidget::controlOf(QObject* widget) const {
  const auto found = owners_.find(widget);
  return found == owners_.end() ? nullptr : found->second;
}

// --- acts
// -----------------------------------------------------------------------------------------

void FormWidget::actNow(const std::function<void()>& work) { guard_.run(work); }

void FormWidget::act(std::function<void()> work) {
  // A long work that lets the screen be drawn is not interrupted: the act waits for its end.
  constexpr int kPatience = 30;
  const auto perform = [this, work = std::move(work)] {
    if (guard_.holding()) {
      QTimer::singleShot(kPatience, this, [this, work] { act(work); });
      return;
    }
    guard_.run(work);
  };
  QMetaObject::invokeMethod(this, perform, Qt::QueuedConnection);
}

void FormWidget::commit() {
  if (const ui::Control* focus = form_.focus()) {
    if (ControlView* field = view(*focus)) field->commit();
  }
}

void FormWidget::closeByUser() {
  act([this] {
    commit();
    input().close();
  });
}

// --- following the form -----------------------------------------------------------------------

void FormWidget::wake() {
  if (woken_) return;
  woken_ = true;
  QMetaObject::invokeMethod(
      this, [this] { flush(); }, Qt::QueuedConnection);
}

void FormWidget::flush() {
  woken_ = false;
  for (ui::Control* control : form_.takeDirty()) syncControl(*control);
  if (holdersMoved_) syncHolders();
  if (labelsMoved_) alignLabels();
  if (focusEvents_ == 0) syncFocus();
  if (form_.title() != shownTitle_) {
    shownTitle_ = form_.title();
    if (onTitle) onTitle();
  }
  if (form_.hasLater()) guard_.settled();
  if (!form_.isOpen() && !closedTold_) {
    closedTold_ = true;
    guard_.settled();
    if (onClosed) onClosed();
  }
}

void FormWidget::syncControl(ui::Control& control) {
  if (control.kind == Kind::Timer) {
    syncTimer(static_cast<ui::Timer&>(control));
    return;
  }
  if (control.kind == Kind::MenuItem) return;  // read when its menu opens
  syncCommon(control);
  if (ControlView* shown = view(control)) shown->sync();
  if (control.kind == Kind::TabStrip) syncPages(static_cast<ui::TabStrip&>(control));
}

void FormWidget::syncCommon(ui::Control& control) {
  ControlView* shown = view(control);
  const auto frame = frames_.find(&control);
  QWidget* outer = shown ? shown->outer : frame != frames_.end() ? frame->second : nullptr;
  if (!outer) return;
  if (outer->isVisibleTo(outer->parentWidget()) != control.visible()) holdersMoved_ = true;
  outer->setVisible(control.visible());
  outer->setEnabled(control.enabled());
  (shown ? shown->field : outer)->setToolTip(text(control.tip()));
  const auto found = labels_.find(&control);
  if (found == labels_.end()) return;
  QLabel* label = found->second.label;
  const QString caption = text(control.caption());
  // A caption that is empty keeps its place before a field and takes none above a block.
  const bool above = found->second.stack < 0;
  label->setVisible(control.visible() && (!above || !caption.isEmpty()));
  label->setEnabled(control.enabled());
  if (label->text() != caption) {
    label->setText(caption);
    labelsMoved_ = true;
  }
}

void FormWidget::syncPages(ui::TabStrip& strip) {
  const std::string current = strip.currentKey();
  for (const Page& page : pages_[&strip]) {
    if (page.key != current) continue;
    static_cast<QStackedWidget*>(page.widget->parentWidget())->setCurrentWidget(page.widget);
  }
}

void FormWidget::syncTimer(ui::Timer& timer) {
  QTimer*& clock = timers_[&timer];
  if (!clock) {
    clock = new QTimer(this);
    connect(clock, &QTimer::timeout, this, [this, &timer] {
      if (!guard_.holding()) guard_.run([this, &timer] { input().tick(timer); });
    });
  }
  if (timer.running() == clock->isActive()) return;
  timer.running() ? clock->start(timer.milliseconds) : clock->stop();
}

void FormWidget::syncHolders() {
  holdersMoved_ = false;
  for (const Holder& holder : holders_) {
    const bool any = std::any_of(holder.controls.begin(), holder.controls.end(),
                                 [](const ui::Control* control) { return control->visible(); });
    holder.widget->setVisible(holder.always || any);
  }
}

void FormWidget::alignLabels() {
  labelsMoved_ = false;
  std::map<int, int> widths;
  const auto texts = findChildren<QLabel*>();
  const auto stackOf = [](const QLabel* label) {
    const QVariant stack = label->property("stack");
    return stack.isValid() ? stack.toInt() : -1;
  };
  for (const auto& [control, labelled] : labels_) {
    if (labelled.stack >= 0) labelled.label->setProperty("stack", labelled.stack);
  }
  for (QLabel* label : texts) {
    if (const int stack = stackOf(label); stack >= 0) {
      label->setMinimumWidth(0);
      widths[stack] = std::max(widths[stack], label->sizeHint().width());
    }
  }
  for (QLabel* label : texts) {
    if (const int stack = stackOf(label); stack >= 0) label->setMinimumWidth(widths[stack]);
  }
}

void FormWidget::syncFocus() {
  const ui::Control* focus = form_.focus();
  if (!focus || !isVisible() || !window()->isActiveWindow()) return;
  ControlView* field = view(*focus);
  if (!field || !focus->usable() || field->field->hasFocus()) return;
  if (field->field->isAncestorOf(QApplication::focusWidget())) return;
  field->field->setFocus(Qt::OtherFocusReason);
}

void FormWidget::takeFocus() {
  const ui::Control* focus = form_.focus();
  if (focus && focus->usable() && view(*focus)) {
    view(*focus)->field->setFocus(Qt::OtherFocusReason);
    return;
  }
  for (const ui::Control* control : order_) {
    if (!control->usable() || control->kind == Kind::Label || control->kind == Kind::Button)
      continue;
    if (control->kind == Kind::TextBox && static_cast<const ui::TextBox*>(control)->readOnly()) {
      continue;
    }
    view(*control)->field->setFocus(Qt::TabFocusReason);
    return;
  }
}

// --- keyboard
// -------------------------------------------------------------------------------------

bool FormWidget::eventFilter(QObject* watched, QEvent* event) {
  ui::Control* control = controlOf(watched);
  if (!control) return false;
  switch (event->type()) {
    case QEvent::FocusIn:
      focusIn(*control, static_cast<QFocusEvent*>(event)->reason());
      return false;
    case QEvent::FocusOut:
      if (static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
        if (ControlView* field = view(*control)) field->commit();
      }
      return false;
    case QEvent::KeyPress: {
      const auto* press = static_cast<QKeyEvent*>(event);
      return key(*control, press->key(), press->modifiers());
    }
    case QEvent::ContextMenu: {
      const auto* wish = static_cast<QContextMenuEvent*>(event);
      if (!control->menu && !control->onRightClick) return false;
      const bool byMouse = wish->reason() == QContextMenuEvent::Mouse;
      if (!byMouse || control->kind == Kind::ListView || control->kind == Kind::TreeView) {
        if (!byMouse) {
          menuPoint_ = QPoint();
          act([this, control] { input().rightClick(*control); });
        }
        return true;  // lists report the mouse through their viewport
      }
      menuPoint_ = wish->globalPos();
      act([this, control] { input().rightClick(*control); });
      return true;
    }
    case QEvent::MouseButtonDblClick:
      if (control->kind == Kind::Label || control->kind == Kind::Panel) {
        act([this, control] { input().doubleClick(*control); });
      }
      return false;
    case QEvent::MouseButtonRelease:
      if (control->kind == Kind::Label && control->onClick) {
        act([this, control] { input().click(*control); });
      }
      return false;
    default:
      return false;
  }
}

void FormWidget::focusIn(ui::Control& control, int reason) {
  if (reason == Qt::PopupFocusReason || guard_.showing()) return;
  // A pressed button brings its focus with the click; the press alone says nothing yet.
  if (reason == Qt::MouseFocusReason &&
      (control.kind == Kind::Button || control.kind == Kind::OptionButton ||
       control.kind == Kind::CheckBox)) {
    return;
  }
  if (&control == form_.focus()) return;
  ++focusEvents_;
  act([this, &control] {
    --focusEvents_;
    input().focus(control);
    wake();
  });
}

bool FormWidget::key(ui::Control& control, int code, int modifiers) {
  const bool control_ = modifiers & Qt::ControlModifier;
  const bool enter = code == Qt::Key_Return || code == Qt::Key_Enter;
  if (enter && control_) {
    pressDefault();
    return true;
  }
  if (code == Qt::Key_Escape) {
    if (QApplication::activePopupWidget()) return false;
    if (!form_.isOpen()) return true;
    for (ui::Control* other : form_.controls()) {
      if (other->kind != Kind::Button || !other->usable()) continue;
      if (!static_cast<ui::Button*>(other)->isCancel) continue;
      act([this, other] { input().click(*other); });
      return true;
    }
    if (modal) {
      closeByUser();
      return true;
    }
    return false;
  }
  if (control_ && (code == Qt::Key_PageUp || code == Qt::Key_PageDown) && !pages_.empty()) {
    switchTab(code == Qt::Key_PageDown ? 1 : -1);
    return true;
  }
  if (control.kind == Kind::ListView && !control_) {
    if (listKey(static_cast<ui::ListView&>(control), code)) return true;
  }
  if (control.kind == Kind::TreeView && enter) {
    auto& tree = static_cast<ui::TreeView&>(control);
    act([this, &tree] { input().activate(tree, tree.current()); });
    return true;
  }
  if (enter) {
    const bool multiline =
        control.kind == Kind::TextBox && static_cast<ui::TextBox&>(control).lines > 1;
    if (multiline) return false;
    enterKey(control);
    return true;
  }
  if (code == Qt::Key_Down && control.kind == Kind::TextBox && modifiers == Qt::NoModifier) {
    // From a search box straight into the list below.
    const auto at = std::find(order_.begin(), order_.end(), &control);
    const auto list = std::find_if(at, order_.end(), [](const ui::Control* c) {
      return c->kind == Kind::ListView && c->usable();
    });
    if (static_cast<ui::TextBox&>(control).lines == 1 && list != order_.end()) {
      view(**list)->field->setFocus(Qt::TabFocusReason);
      return true;
    }
  }
  return false;
}

bool FormWidget::listKey(ui::ListView& list, int code) {
  switch (code) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      act([this, &list] { input().activate(list, list.current()); });
      return true;
    case Qt::Key_Insert:
      act([this, &list] { input().insertKey(list); });
      return true;
    case Qt::Key_Delete:
      act([this, &list] { input().deleteKey(list); });
      return true;
    case Qt::Key_Space:
      if (!list.checkBoxes) return false;
      act([this, &list] {
        if (const ui::Row* row = list.currentRow())
          input().check(list, list.current(), !row->checked);
      });
      return true;
    default:
      return false;
  }
}

void FormWidget::enterKey(ui::Control& control) {
  if (control.kind == Kind::Button) {
    act([this, &control] { input().click(control); });
    return;
  }
  if (ControlView* field = view(control)) field->commit();
  step(control);
}

void FormWidget::step(ui::Control& from) {
  const auto at = std::find(order_.begin(), order_.end(), &from);
  if (at == order_.end()) return;
  const auto wanted = [&](const ui::Control* control) {
    if (!control->usable() || control->kind == Kind::Label || control->kind == Kind::TabStrip) {
      return false;
    }
    if (control->kind == Kind::Button) {
      const auto* button = static_cast<const ui::Button*>(control);
      return button->role == ui::Role::Primary || button->isDefault;
    }
    return control->kind != Kind::TextBox || !static_cast<const ui::TextBox*>(control)->readOnly();
  };
  const auto next = std::find_if(at + 1, order_.end(), wanted);
  if (next == order_.end()) return;
  if ((*next)->kind == Kind::Button && modal && static_cast<ui::Button*>(*next)->isDefault) {
    pressDefault();
    return;
  }
  view(**next)->field->setFocus(Qt::TabFocusReason);
}

void FormWidget::pressDefault() {
  ui::Button* chosen = nullptr;
  for (ui::Control* control : form_.controls()) {
    if (control->kind != Kind::Button) continue;
    auto* button = static_cast<ui::Button*>(control);
    if (button->isDefault || (!chosen && button->role == ui::Role::Primary)) chosen = button;
  }
  if (!chosen) return;
  act([this, chosen] {
    commit();
    input().click(*chosen);
  });
}

void FormWidget::switchTab(int direction) {
  for (auto& [control, pages] : pages_) {
    if (!control->usable()) continue;
    auto& strip = const_cast<ui::TabStrip&>(static_cast<const ui::TabStrip&>(*control));
    std::vector<std::string> keys;
    for (const auto& tab : strip.tabs()) {
      if (tab.visible) keys.push_back(tab.key);
    }
    const auto at = std::find(keys.begin(), keys.end(), strip.currentKey());
    if (at == keys.end()) return;
    const auto index = (at - keys.begin()) + direction;
    if (index < 0 || index >= static_cast<std::ptrdiff_t>(keys.size())) return;
    act([this, &strip, key = keys[static_cast<std::size_t>(index)]] {
      input().choose(strip, key);
    });
    return;
  }
}

void FormWidget::makeShortcuts() {
  const auto bind = [this](const std::string& keys, std::function<void()> work) {
    if (keys.empty()) return;
    auto* shortcut = new QShortcut(QKeySequence(text(keys)), this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, work = std::move(work)] {
      act([this, work] {
        commit();
        work();
      });
    });
  };
  for (ui::Control* control : form_.controls()) {
    if (control->kind == Kind::Button) {
      auto* button = static_cast<ui::Button*>(control);
      bind(button->shortcut, [this, button] { input().click(*button); });
    } else if (control->kind == Kind::MenuItem) {
      auto* item = static_cast<ui::MenuItem*>(control);
      bind(item->shortcut, [this, item] { runShortcut(*item); });
    }
  }
}

void FormWidget::runShortcut(ui::MenuItem& item) {
  // The menu decides about its entries just before it opens; a shortcut asks it the same way.
  for (const ui::Control* control : form_.controls()) {
    const ui::Menu* menu = control->menu;
    if (!menu || std::find(menu->items.begin(), menu->items.end(), &item) == menu->items.end())
      continue;
    if (menu->onPopup) menu->onPopup();
    break;
  }
  input().pick(item);
}

// --- menus ------------------------------------------------------------------------------------

void FormWidget::popup(ui::Menu& menu, ui::Control& at) {
  auto* widget = new QMenu(this);
  widget->setAttribute(Qt::WA_DeleteOnClose);
  bool separate = false;
  for (ui::MenuItem* item : menu.items) {
    if (!item) {
      separate = !widget->isEmpty();
      continue;
    }
    if (!item->visible()) continue;
    if (std::exchange(separate, false)) widget->addSeparator();
    QAction* action = widget->addAction(text(item->caption()));
    action->setObjectName(text(item->name));
    action->setEnabled(item->enabled());
    if (item->ticked()) {
      action->setCheckable(true);
      action->setChecked(true);
    }
    if (!item->shortcut.empty()) {
      action->setText(action->text() + QLatin1Char('\t') + text(item->shortcut));
    }
    connect(action, &QAction::triggered, this,
            [this, item] { act([this, item] { input().pick(*item); }); });
  }
  if (widget->isEmpty()) {
    delete widget;
    return;
  }
  guard_.menuOpened(&menu, widget);
  ControlView* field = view(at);
  const QPoint place = !menuPoint_.isNull() ? menuPoint_
                       : field              ? field->menuPlace()
                                            : mapToGlobal(rect().center());
  menuPoint_ = QPoint();
  widget->popup(place);
}

}  // namespace tolvex::desktop
