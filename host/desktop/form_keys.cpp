// The keyboard of a form: what its fields do with keys, focus and context menus.
#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QScrollArea>
#include <QShortcut>
#include <algorithm>

#include "host/desktop/carry.h"
#include "host/desktop/form_widget.h"
#include "host/desktop/theme.h"
#include "host/objects/list_report.h"
#include "platform/host.h"

namespace tolvex::desktop {

using ui::Kind;

// -------------------------------------------------------------------------------------

bool FormWidget::event(QEvent* event) {
  // While a box stood in front the form may have moved its focus.
  if (event->type() == QEvent::WindowActivate) wake();
  return QWidget::event(event);
}

bool FormWidget::eventFilter(QObject* watched, QEvent* event) {
  ui::Control* control = controlOf(watched);
  if (!control) return false;
  switch (event->type()) {
    case QEvent::FocusIn:
      bringIntoSight(*control);
      focusIn(*control, static_cast<QFocusEvent*>(event)->reason());
      return false;
    case QEvent::FocusOut: {
      const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
      ControlView* field = view(*control);
      if (!field || reason == Qt::PopupFocusReason) return false;
      field->commit();
      if (reason != Qt::ActiveWindowFocusReason) field->left();
      return false;
    }
    case QEvent::ShortcutOverride: {
      const auto* press = static_cast<QKeyEvent*>(event);
      if (hasShortcut(press->keyCombination())) {
        event->ignore();  // a field must not take it for itself, as it takes Ctrl+Ins for copying
        return true;
      }
      const bool turns = press->key() == Qt::Key_PageUp || press->key() == Qt::Key_PageDown;
      if (!turns || !(press->modifiers() & Qt::ControlModifier) || pages_.empty()) return false;
      event->accept();  // the form's own pages come before the tabs of the window
      return true;
    }
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

// Where the form is larger than its window.
void FormWidget::bringIntoSight(const ui::Control& control) {
  ControlView* field = view(control);
  for (QWidget* above = parentWidget(); above && field; above = above->parentWidget()) {
    if (auto* area = qobject_cast<QScrollArea*>(above)) {
      area->ensureWidgetVisible(field->outer, kFieldHeight, kFieldHeight);
      return;
    }
  }
}

void FormWidget::focusIn(ui::Control& control, int reason) {
  if (syncing_ || reason == Qt::PopupFocusReason || guard_.showing()) return;
  // A pressed button brings its focus with the click; the press alone says nothing yet.
  if (reason == Qt::MouseFocusReason &&
      (control.kind == Kind::Button || control.kind == Kind::OptionButton ||
       control.kind == Kind::CheckBox)) {
    return;
  }
  // A window that comes back remembers its old field; the form may have named another meanwhile.
  if (reason == Qt::ActiveWindowFocusReason && form_.focus()) {
    wake();
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
    if (!onEscape) return false;
    onEscape();
    return true;
  }
  if (control_ && (code == Qt::Key_PageUp || code == Qt::Key_PageDown) && !pages_.empty()) {
    switchTab(code == Qt::Key_PageDown ? 1 : -1);
    return true;
  }
  if (modifiers == Qt::ControlModifier && (code == Qt::Key_C || code == Qt::Key_V)) {
    if (code == Qt::Key_C ? copyFrom(control) : putInto(control)) return true;
  }
  if (control.kind == Kind::ListView && control_ && listCommand(control, code, modifiers))
    return true;
  if (control.kind == Kind::ListView && !control_) {
    if (listKey(static_cast<ui::ListView&>(control), code)) return true;
  }
  if (control.kind == Kind::OptionButton && modifiers == Qt::NoModifier &&
      (code == Qt::Key_Left || code == Qt::Key_Right)) {
    chooseBeside(static_cast<ui::OptionButton&>(control), code == Qt::Key_Right ? 1 : -1);
    return true;
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
  if (code == Qt::Key_F4 && modifiers == Qt::NoModifier && control.kind == Kind::TextBox) {
    if (ui::Button* picker = static_cast<ui::TextBox&>(control).picker) {
      act([this, picker] { input().click(*picker); });
      return true;
    }
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

void FormWidget::chooseBeside(const ui::OptionButton& option, int direction) {
  std::vector<ui::OptionButton*> group;
  for (ui::Control* control : order_) {
    if (control->kind != Kind::OptionButton || !control->usable()) continue;
    auto* one = static_cast<ui::OptionButton*>(control);
    if (one->group == option.group) group.push_back(one);
  }
  const auto at = std::find(group.begin(), group.end(), &option) - group.begin() + direction;
  if (at < 0 || at >= static_cast<std::ptrdiff_t>(group.size())) return;
  ui::OptionButton* const next = group[static_cast<std::size_t>(at)];
  act([this, next] {
    input().choose(*next);
    wake();
  });
}

// Whether a command of the form bears these keys. Keys without Ctrl or Alt write text first.
bool FormWidget::hasShortcut(QKeyCombination keys) const {
  if (!(keys.keyboardModifiers() & (Qt::ControlModifier | Qt::AltModifier))) return false;
  return std::any_of(form_.controls().begin(), form_.controls().end(), [&](const ui::Control* c) {
    if (c->kind != Kind::Button || !c->usable()) return false;
    const auto& shortcut = static_cast<const ui::Button*>(c)->shortcut;
    return !shortcut.empty() && QKeySequence(text(shortcut)) == QKeySequence(keys);
  });
}

bool FormWidget::copyFrom(const ui::Control& control) {
  if (control.kind != Kind::ListView && control.kind != Kind::TreeView) return false;
  if (const Burden burden = burdenOf(control); !burden.words.empty()) copy(burden);
  return true;
}

bool FormWidget::putInto(ui::Control& control) {
  const std::string reference = copiedReference();
  ui::Control* target = targetOf(control, reference);
  if (!target) return false;
  act([this, target, reference] { input().drop(*target, reference); });
  return true;
}

// What any list offers: Ctrl+P prints it, Ctrl+Shift+E writes a spreadsheet. Where the form prints
// itself by Ctrl+P, Ctrl+Shift+P is left to the list.
bool FormWidget::listCommand(ui::Control& control, int code, int modifiers) {
  const auto& list = static_cast<const ui::ListView&>(control);
  const bool shift = modifiers & Qt::ShiftModifier;
  if (code == Qt::Key_P) {
    act([&list] { printList(list); });
    return true;
  }
  if (code == Qt::Key_E && shift) {
    act([&list] { exportList(list); });
    return true;
  }
  return false;
}

bool FormWidget::listKey(ui::ListView& list, int code) {
  switch (code) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (list.rows().empty()) return false;  // nothing to open: Enter goes on
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
  ui::ListView* found =
      control.kind == Kind::TextBox ? static_cast<ui::TextBox&>(control).finds : nullptr;
  if (found && found->currentRow()) {
    act([this, found] { input().activate(*found, found->current()); });
    return;
  }
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
    // Of options the chosen one stands for all; arrows lead to the others.
    if (control->kind == Kind::OptionButton)
      return static_cast<const ui::OptionButton*>(control)->on();
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

void FormWidget::serveShortcutsIn(QWidget& place) {
  const auto bind = [this, &place](const std::string& keys, std::function<void()> work) {
    if (keys.empty()) return;
    auto* shortcut = new QShortcut(QKeySequence(text(keys)), &place);
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

void FormWidget::serveHelp() {
  auto* shortcut = new QShortcut(QKeySequence(Qt::Key_F1), this);
  shortcut->setContext(Qt::WidgetWithChildrenShortcut);
  connect(shortcut, &QShortcut::activated, this,
          [this] { act([this] { form_.host().help().show(form_.name(), form_.title()); }); });
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

}  // namespace tolvex::desktop
