// Paper and margins of a report, asked of the user.
#pragma once

#include <QDialog>

#include "platform/report.h"

class QDoubleSpinBox;
class QPushButton;

namespace tolvex::desktop {

class PageDialog final : public QDialog {
 public:
  PageDialog(const PageSetup& page, QWidget* parent);
  PageSetup page() const;

 private:
  PageSetup before_;
  QPushButton* landscape_;
  QDoubleSpinBox *left_, *top_, *right_, *bottom_;
};

}  // namespace tolvex::desktop
