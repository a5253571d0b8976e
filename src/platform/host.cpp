#include "platform/host.h"

namespace tolvex {

Answer show(HostContext& host, const Message& message) { return host.dialogs().message(message); }

void warn(HostContext& host, std::string text) {
  Message message;
  message.text = std::move(text);
  show(host, message);
}

bool ask(HostContext& host, std::string text, Answer preset) {
  Message message;
  message.text = std::move(text);
  message.icon = Icon::Question;
  message.buttons = Buttons::YesNo;
  message.preset = preset;
  return show(host, message) == Answer::Yes;
}

}  // namespace tolvex
