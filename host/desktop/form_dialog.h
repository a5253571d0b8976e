// FormDialog: a modal form in a window of its own, sized to its content within the screen.
#pragma once

#include <QDialog>

#include "host/desktop/form_widget.h"

namespace tolvex::desktop {

class FormDialog final : public QDialog {
 public:
  FormDialog(ui::Form& form, ActGuard& guard, QWidget* parent);
  FormWidget& widget() { return *widget_; }

 private:
  void reject() override { widget_->closeByUser(); }
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

  FormWidget* widget_;
};

}  // namespace tolvex::desktop
