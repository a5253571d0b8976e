#include "host/desktop/progress_strip.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace tolvex::desktop {

ProgressStrip::ProgressStrip(QWidget* window, std::function<void()> onStop) : QFrame(window) {
  setProperty("card", true);
  setAutoFillBackground(true);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(14, 8, 14, 8);
  line->setSpacing(12);
  what_ = new QLabel(this);
  bar_ = new QProgressBar(this);
  bar_->setTextVisible(false);
  bar_->setRange(0, 1000);
  stop_ = new QPushButton(QStringLiteral("Stabdyti"), this);
  stop_->setObjectName(QStringLiteral("stopWork"));
  line->addWidget(what_);
  line->addWidget(bar_, 1);
  line->addWidget(stop_);
  QObject::connect(stop_, &QPushButton::clicked, this, [this, asked = std::move(onStop)] {
    stop_->setEnabled(false);
    asked();
  });
}

bool ProgressStrip::isStop(const QObject* object) const { return object == stop_; }

void ProgressStrip::show(const QString& what, double share) {
  what_->setText(what);
  bar_->setValue(static_cast<int>(std::clamp(share, 0.0, 1.0) * 1000));
  const QWidget* window = parentWidget();
  const int width = std::min(window->width() - 40, 520);
  const int height = sizeHint().height();
  setGeometry((window->width() - width) / 2, window->height() - height - 40, width, height);
  raise();
  setVisible(true);
}

}  // namespace tolvex::desktop
