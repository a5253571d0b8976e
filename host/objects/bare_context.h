// BareContext: the host before any books are open: message boxes and nothing else. Asking it for
// another service is a fault of the program and throws.
#pragma once

#include <stdexcept>

#include "host/objects/dialog_services.h"
#include "host/objects/stage.h"
#include "platform/host.h"

namespace tolvex {

class BareContext final : public HostContext {
 public:
  explicit BareContext(Stage& stage) : pump_(stage), dialogs_(*this, stage), help_(stage) {}
  std::string title() const override { return kProgramTitle; }
  NumberFormat numbers() const override { return {}; }
  ObjectFactory& objects() override { none(); }
  Desktop& desktop() override { none(); }
  ObjectTree& tree() override { none(); }
  Screens& screens() override { none(); }
  Rights& rights() override { none(); }
  UserSettings& settings() override { none(); }
  CurrentUser& user() override { none(); }
  Workplace& workplace() override { none(); }
  Clock& clock() override { none(); }
  MessagePump& pump() override { return pump_; }
  Dialogs& dialogs() override { return dialogs_; }
  Pickers& pickers() override { none(); }
  Help& help() override { return help_; }
  ReportViewer& reports() override { none(); }

 private:
  [[noreturn]] static void none() { throw std::logic_error("no books are open"); }
  StagePump pump_;
  DialogService dialogs_;
  StageHelp help_;
};

}  // namespace tolvex
