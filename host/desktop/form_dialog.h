// FormDialog: a modal form in a window of its own, sized to its content within the screen.
#pragma once

#include <QDialog>

#include "host/desktop/form_widget.h"

class QScrollArea;

namespace tolvex::desktop {

class FormDialog final : public QDialog {
 public:
  FormDialog(ui::Form& form, ActGuard& guard, QWidget* parent);
  FormWidget& widget() { return *widget_; }

 private:
  void fit(QSize size);  // as large as that, within the screen
  void reject() override { widget_->closeByUser(); }
  bool eventFilter(QObject* watched, QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

  QScrollArea* area_;
  FormWidget* widget_;
};

}  // namespace tolvex::desktop
