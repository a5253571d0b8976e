// HelpWindow: the help page of a screen, in a small window of its own beside the work.
#pragma once

#include <QDialog>
#include <string>

namespace tolvex::desktop {

class HelpWindow final : public QDialog {
 public:
  // The page of that name, or the general keys alone when there is none.
  HelpWindow(const std::string& page, const std::string& title, QWidget* parent);
};

}  // namespace tolvex::desktop
