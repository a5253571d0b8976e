// Stage: the surface on which the program's screens appear; the Qt desktop or no window at all.
//
// The workspace decides what is open; the stage shows it and runs the loops. A modal call returns
// when its form is closed or its box answered; inside, the stage lets the user (or a script) act.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/form.h"
#include "platform/host.h"

namespace tolvex {

class Workspace;

class Stage {
 public:
  virtual ~Stage() = default;
  // A screen was opened, is to be brought to front, or was closed (destroyed after this call has
  // returned to the loop). Modal forms do not pass here.
  virtual void shown(ui::Form& form) = 0;
  virtual void raised(ui::Form& form) = 0;
  virtual void removed(ui::Form& form) = 0;
  virtual void titleChanged(ui::Form& form) = 0;

  virtual void runModal(ui::Form& form) = 0;           // opened() has been called
  virtual Answer message(const Message& message) = 0;  // title filled in
  virtual std::optional<std::string> openFile(const std::string& pattern,
                                              const std::string& start) = 0;
  virtual std::optional<std::string> saveFile(const std::string& pattern, const std::string& folder,
                                              const std::string& name) = 0;
  virtual void help(const std::string& page, const std::string& title) = 0;
  // Shows the preview of a report; its commands act through `viewer`.
  virtual void report(std::shared_ptr<const ReportDocument> document, bool withExcel,
                      ReportViewer& viewer) = 0;

  virtual void turn() = 0;  // MessagePump
  virtual bool stopped() const = 0;
  virtual void busy(bool on) = 0;
  virtual void progress(std::string_view what, double share) = 0;
  virtual void statusChanged() = 0;  // Workspace::status() reads otherwise
  // All forms of the workspace are about to go; it was built anew (Workspace::reopen).
  virtual void released() {}
  virtual void renewed(Workspace&) {}
};

// What stands in front of the open screens, for a script that acts in the user's place. A stage
// that scripts drive is a Playground too; its loops let the script act whenever they are idle.
class Playground {
 public:
  virtual ~Playground() = default;
  virtual const Message* openMessage() const = 0;  // the box in front of everything, or null
  virtual void answer(Answer answer) = 0;          // presses a button of that box
  virtual ui::Form* modalForm() const = 0;         // the innermost modal form, or null
  virtual ui::Menu* openMenu() const = 0;          // the menu that was popped up last, or null
  virtual void closeMenu() = 0;
  virtual bool shot(const std::string& path) = 0;  // a picture; false when it cannot be written
  virtual const ReportDocument* lastReport() const = 0;  // shown last, or null
  virtual bool closeReport() = 0;  // the preview opened last; false when none is open
  // The answer to a file dialog that will be asked: a path, or nothing to give it up. Answers are
  // taken in order; a dialog without one is given up.
  virtual void replyFile(std::optional<std::string> path) = 0;
};

}  // namespace tolvex
