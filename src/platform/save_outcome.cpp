#include "platform/save_outcome.h"

#include "framework/text.h"

namespace tolvex {

void showFailedSave(HostContext& host, const std::string& reason) {
  Message box;
  box.text = reason;
  box.text.append(kLineBreak).append(kLineBreak).append("Įrašymas neatliktas !");
  box.icon = Icon::Stop;
  host.dialogs().message(box);
}

bool showFailure(HostContext& host, const MethodResult& result) {
  if (result.Code == kDone) return false;
  if (!result.Text.empty()) warn(host, result.Text);
  return true;
}

bool askDelete(HostContext& host) { return ask(host, "Ar tikrai norite panaikinti?"); }

bool askCloseUnsaved(HostContext& host, const std::string& caption,
                     std::optional<std::string> title) {
  std::string text = trim(caption);
  text.append(kLineBreak).append(kLineBreak).append("Uždaryti be išsaugojimo?");
  return show(host, {std::move(text), Icon::Question, Buttons::YesNo, Answer::No,
                     std::move(title)}) == Answer::Yes;
}

}  // namespace tolvex
