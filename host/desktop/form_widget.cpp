#include "host/desktop/form_widget.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QStackedWidget>
#include <QTimer>
#include <algorithm>

#include "host/desktop/layout_builder.h"
#include "host/desktop/letter_menu.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {

using ui::Kind;

namespace {

// A button tells its key as well.
QString tipOf(const ui::Control& control) {
  const QString tip = text(control.tip());
  if (control.kind != Kind::Button) return tip;
  const auto& button = static_cast<const ui::Button&>(control);
  if (button.shortcut.empty()) return tip;
  const QString words = tip.isEmpty() ? text(ui::withoutAccessKey(button.caption())) : tip;
  return QStringLiteral("%1 (%2)").arg(words, text(button.shortcut)).trimmed();
}

}  // namespace

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
  serveShortcutsIn(*this);
  serveHelp();
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
  syncing_ = true;
  for (ui::Control* control : form_.takeDirty()) syncControl(*control);
  syncing_ = false;
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
  (shown ? shown->field : outer)->setToolTip(tipOf(control));
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
    auto* stack = static_cast<QStackedWidget*>(page.widget->parentWidget());
    stack->setCurrentWidget(page.widget);
    stack->setVisible(strip.visible());
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
  if (!field || !focus->usable()) return;
  // Another screen of the window has the keys, and this one has not asked for them since.
  const QWidget* now = QApplication::focusWidget();
  if (now && !isAncestorOf(now) && focus == syncedFocus_) return;
  syncedFocus_ = focus;
  if (field->field->hasFocus() || field->field->isAncestorOf(now)) return;
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

// --- menus ------------------------------------------------------------------------------------

void FormWidget::popup(ui::Menu& menu, ui::Control& at) {
  auto* widget = new LetterMenu(this);
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
  flush();  // a row that was just chosen stands in its place
  ControlView* field = view(at);
  const QPoint place = !menuPoint_.isNull() ? menuPoint_
                       : field              ? field->menuPlace()
                                            : mapToGlobal(rect().center());
  menuPoint_ = QPoint();
  widget->popup(place);
}

}  // namespace tolvex::desktop
