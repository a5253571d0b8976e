#include "host/desktop/form_dialog.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "host/desktop/layout_builder.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {

FormDialog::FormDialog(ui::Form& form, ActGuard& guard, QWidget* parent) : QDialog(parent) {
  setWindowTitle(text(form.title()));
  widget_ = new FormWidget(form, guard, this);
  widget_->modal = true;
  widget_->onClosed = [this] { done(0); };
  widget_->onEscape = [this] { widget_->closeByUser(); };
  widget_->onTitle = [this] { setWindowTitle(text(widget_->form().title())); };
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  area_ = new QScrollArea(this);  // on a small screen a large form is looked at by parts
  area_->setWidgetResizable(true);
  area_->setFocusPolicy(Qt::NoFocus);
  area_->setWidget(widget_);
  layout->addWidget(area_);
  const bool grows = growsDown(form.layout());
  constexpr int kListHeight = 420;
  QSize size = widget_->sizeHint();
  if (grows) size.setHeight(std::max(size.height(), kListHeight));
  fit(size);
  widget_->installEventFilter(this);
}

void FormDialog::fit(QSize size) {
  // Pictures are taken of windows larger than the screen that is not there.
  QSize whole = screen()->availableSize();
  for (QWidget* below = parentWidget(); below; below = below->parentWidget())
    whole = whole.expandedTo(below->size());
  const QSize room = whole - QSize(40, 60);
  if (size.height() > room.height())
    size.rwidth() += area_->verticalScrollBar()->sizeHint().width();
  resize(size.boundedTo(room));
}

bool FormDialog::eventFilter(QObject* watched, QEvent* event) {
  // What the form shows now may need more room than what it showed before.
  if (watched == widget_ && event->type() == QEvent::LayoutRequest) {
    const QSize needed = widget_->minimumSizeHint();
    if (needed.width() > width() || needed.height() > height()) fit(needed.expandedTo(size()));
  }
  return QDialog::eventFilter(watched, event);
}

void FormDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  widget_->closeByUser();
}

void FormDialog::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!event->spontaneous()) widget_->takeFocus();
}

void FormDialog::keyPressEvent(QKeyEvent* event) {
  // Enter belongs to the fields, Esc to the form.
  if (event->key() == Qt::Key_Escape) {
    widget_->closeByUser();
    return;
  }
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return;
  QDialog::keyPressEvent(event);
}

}  // namespace tolvex::desktop
