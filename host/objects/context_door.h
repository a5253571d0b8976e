// ContextDoor: the one context that the module ever sees.
//
// The module keeps the first context it is given for as long as the program runs, while workspaces
// come and go with the books. So every screen and object gets this door, which leads to the
// workspace that is open. At most one is open at a time.
#pragma once

#include <stdexcept>

#include "platform/host.h"

namespace tolvex {

class ContextDoor final : public HostContext {
 public:
  static ContextDoor& instance() {
    static ContextDoor door;
    return door;
  }
  void leadTo(HostContext* host) { host_ = host; }
  // A workspace that goes closes the door unless another one has opened since.
  void leave(const HostContext* host) {
    if (host_ == host) host_ = nullptr;
  }

  std::string title() const override { return open().title(); }
  NumberFormat numbers() const override { return open().numbers(); }
  ObjectFactory& objects() override { return open().objects(); }
  Desktop& desktop() override { return open().desktop(); }
  ObjectTree& tree() override { return open().tree(); }
  Screens& screens() override { return open().screens(); }
  Rights& rights() override { return open().rights(); }
  UserSettings& settings() override { return open().settings(); }
  CurrentUser& user() override { return open().user(); }
  Workplace& workplace() override { return open().workplace(); }
  Clock& clock() override { return open().clock(); }
  MessagePump& pump() override { return open().pump(); }
  Dialogs& dialogs() override { return open().dialogs(); }
  Pickers& pickers() override { return open().pickers(); }
  Help& help() override { return open().help(); }
  ReportViewer& reports() override { return open().reports(); }

 private:
  ContextDoor() = default;
  HostContext& open() const {
    if (!host_) throw std::logic_error("no books are open");
    return *host_;
  }
  HostContext* host_ = nullptr;
};

}  // namespace tolvex
