#include "platform/save_outcome.h"

#include "framework/text.h"

namespace tolvex {

namespace {

void tellUnsaved(HostContext& host, std::string text) {
  text.append(kLineBreak).append("Įrašymas neatliktas !");
  showStop(host, std::move(text));
}

}  // namespace

void showFailedSave(HostContext& host, const std::string& reason) {
  tellUnsaved(host, reason + std::string(kLineBreak));
}

void showRefusedSave(HostContext& host, const std::string& reason) { tellUnsaved(host, reason); }

MethodResult told(HostContext& host, const HostResult& answer) {
  MethodResult result = passOn(answer);
  result.Told = answer.Code != kDone;
  if (result.Told) warn(host, answer.Text);
  return result;
}

bool showFailure(HostContext& host, const MethodResult& result) {
  if (result.Code == kDone) return false;
  if (!result.Told && !result.Text.empty()) warn(host, result.Text);
  return true;
}

void showInfo(HostContext& host, std::string text) {
  show(host, {std::move(text), Icon::Info, Buttons::Ok, Answer::Ok, std::nullopt});
}

void showStop(HostContext& host, std::string text) {
  show(host, {std::move(text), Icon::Stop, Buttons::Ok, Answer::Ok, std::nullopt});
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
