// LetterMenu: a menu whose entries are found by typing how they begin.
#pragma once

#include <QElapsedTimer>
#include <QMenu>
#include <string>

namespace tolvex::desktop {

class LetterMenu final : public QMenu {
 public:
  using QMenu::QMenu;

 private:
  void keyPressEvent(QKeyEvent* event) override;
  QAction* found(const std::string& beginning) const;

  std::string typed_;
  QElapsedTimer sinceTyped_;
};

}  // namespace tolvex::desktop
