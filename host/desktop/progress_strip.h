// ProgressStrip: what a long work is doing, with a button that asks it to stop. It lies over the
// lower edge of the window in front.
#pragma once

#include <QFrame>
#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;

namespace tolvex::desktop {

class ProgressStrip final : public QFrame {
 public:
  ProgressStrip(QWidget* window, std::function<void()> onStop);
  void show(const QString& what, double share);
  bool isStop(const QObject* object) const;

 private:
  QLabel* what_;
  QProgressBar* bar_;
  QPushButton* stop_;
};

}  // namespace tolvex::desktop
