#include "host/script/headless_stage.h"

#include "host/objects/workspace.h"

namespace tolvex {

void HeadlessStage::setDriver(std::function<bool()> step, std::function<void()> idle) {
  step_ = std::move(step);
  idle_ = std::move(idle);
}

void HeadlessStage::renewed(Workspace& workspace) {
  menu_ = nullptr;
  take(workspace.tree());
  take(workspace.list());
}

void HeadlessStage::removed(ui::Form& form) {
  form.view = nullptr;
  menu_ = nullptr;
}

void HeadlessStage::pump(const std::function<bool()>& done) {
  while (!done()) {
    if (idle_) idle_();
    if (done()) break;
    if (!step_ || !step_()) unwindOne(*this);
  }
}

std::optional<std::string> HeadlessStage::takeFileReply() {
  if (fileReplies_.empty()) return std::nullopt;
  auto reply = std::move(fileReplies_.front());
  fileReplies_.pop_front();
  return reply;
}

void HeadlessStage::runModal(ui::Form& form) {
  take(form);
  layers_.push_back({&form, nullptr, std::nullopt});
  pump([&form] { return !form.isOpen(); });
  layers_.pop_back();
  form.view = nullptr;
  menu_ = nullptr;
}

Answer HeadlessStage::message(const Message& message) {
  const std::size_t layer = layers_.size();
  layers_.push_back({nullptr, &message, std::nullopt});
  pump([this, layer] { return layers_[layer].reply.has_value(); });
  const Answer reply = *layers_[layer].reply;
  layers_.pop_back();
  return reply;
}

const Message* HeadlessStage::openMessage() const {
  return layers_.empty() ? nullptr : layers_.back().message;
}

void HeadlessStage::answer(Answer answer) {
  if (!layers_.empty() && layers_.back().message) layers_.back().reply = answer;
}

ui::Form* HeadlessStage::modalForm() const {
  for (auto layer = layers_.rbegin(); layer != layers_.rend(); ++layer)
    if (layer->form) return layer->form;
  return nullptr;
}

bool HeadlessStage::closeReport() {
  if (previews_ == 0) return false;
  --previews_;
  return true;
}

bool unwindOne(Playground& playground) {
  if (const Message* box = playground.openMessage()) {
    const Answer safest = box->buttons == Buttons::YesNo      ? Answer::No
                          : box->buttons == Buttons::OkCancel ? Answer::Cancel
                                                              : Answer::Ok;
    playground.answer(safest);
    return true;
  }
  if (ui::Form* form = playground.modalForm()) {
    form->close();
    return true;
  }
  return false;
}

}  // namespace tolvex
