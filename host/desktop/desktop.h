// The Qt desktop: the window in which a person works.
//
// The rest of the program meets it through this header alone, which names no Qt type. The caller
// brings the books and the module; the desktop draws what the workspace opens and turns mouse and
// keyboard into acts of ui::Input.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/objects/stage.h"

namespace tolvex {

class Workspace;

// A stage with a window, on which a script may act in the user's place.
class DesktopStage : public Stage, public Playground {
 public:
  // Called by a single-shot timer from whichever loop is innermost, never inside turn() and never
  // while a closed form or box is still being unwound. Answers the milliseconds until it wants to
  // be called again, or a number below zero for never. While it is set the window is a show: what
  // the user types or clicks is ignored.
  std::function<int()> idleTick;
  virtual void startTicking() = 0;
  // Brings every widget up to its control, so that what is drawn is what a script reads.
  virtual void flush() = 0;
  // Replies prepared for file dialogs, taken in order before a dialog would be shown.
  std::deque<std::optional<std::string>> fileReplies;
  virtual void resize(int width, int height) = 0;  // of the main window
  virtual void quit(int status) = 0;               // ends the outermost loop without questions
};

struct DesktopRun {
  // Brings up the books on the given stage, as a rule after a login shown there; null when the
  // user gave up. A std::runtime_error is shown to the user and ends the program with 1.
  std::function<std::unique_ptr<Workspace>(DesktopStage&)> open;
  // The main window stands and the loop is about to begin.
  std::function<void(DesktopStage&, Workspace&)> started;
};

// Runs the program until its window is closed; the exit status of the program. On a machine
// without a display Qt's offscreen platform is used.
int runDesktop(int argc, char** argv, const DesktopRun& run);

}  // namespace tolvex
