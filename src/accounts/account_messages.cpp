#include "accounts/account_messages.h"

#include "platform/save_outcome.h"

namespace tolvex {

void stopWith(HostContext& host, std::string text) {
  show(host, {std::move(text), Icon::Stop, Buttons::Ok, Answer::Ok, kPlanTitle});
}

void showFailedWrite(HostContext& host, const std::string& reason) {
  std::string text = "Klaida!";
  text.append(kLineBreak).append(kLineBreak).append(reason);
  showStop(host, std::move(text));
}

}  // namespace tolvex
