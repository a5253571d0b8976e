#include "host/desktop/form_dialog.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
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
  layout->addWidget(widget_);
  const bool grows = growsDown(form.layout());
  constexpr int kListHeight = 420;
  QSize size = widget_->sizeHint();
  if (grows) size.setHeight(std::max(size.height(), kListHeight));
  const QSize room = screen()->availableSize() - QSize(40, 60);
  resize(size.boundedTo(room));
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
