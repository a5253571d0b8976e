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

class Stage {
 public:
  virtual ~Stage() = default;
  // A screen was opened, is to be brought to front, or was closed (destroyed after this call has
  // returned to the loop). Modal forms do not pass here.
  virtual void shown(ui::Form& form) = 0;
  virtual void raised(ui::Form& form) = 0;
  virtual void removed(ui::Form& form) = 0;
  virtual void titleChanged(ui::Form& form) = 0;

  virtual void runModal(ui::Form& form) = 0;             // opened() has been called
  virtual Answer message(const Message& message) = 0;    // title filled in
  virtual std::optional<std::string> openFile(const std::string& pattern,
                                              const std::string& start) = 0;
  virtual std::optional<std::string> saveFile(const std::string& pattern, const std::string& folder,
                                              const std::string& name) = 0;
  virtual void help(const std::string& page, const std::string& title) = 0;

  virtual void turn() = 0;                               // MessagePump
  virtual bool stopped() const = 0;
  virtual void busy(bool on) = 0;
  virtual void progress(std::string_view what, double share) = 0;
  virtual void statusChanged() = 0;                      // Workspace::status() reads otherwise
};

}  // namespace tolvex
