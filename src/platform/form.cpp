#include "platform/form.h"

#include <algorithm>

#include "platform/host.h"

namespace tolvex::ui {

Form::Form(HostContext& host, std::string name) : host_(host), name_(std::move(name)) {}
Form::~Form() = default;

void Form::setTitle(std::string title) {
  if (title == title_) return;
  title_ = std::move(title);
  if (view) view->wake();
}

Control* Form::find(std::string_view wanted) const {
  const auto hit = std::find_if(controls_.begin(), controls_.end(),
                                [&](const Control* c) { return c->name == wanted; });
  return hit == controls_.end() ? nullptr : *hit;
}

const Node& Form::layout() {
  if (!layout_) layout_ = std::make_unique<Node>(buildLayout(*this, picture()));
  return *layout_;
}

void Form::setFocus(Control& control) {
  ++focusMoves_;
  focus_ = &control;
  if (view) view->wake();
}

void Form::popup(Menu& menu, Control& at) {
  if (menu.onPopup) menu.onPopup();
  if (view) view->popup(menu, at);
}

void Form::close() {
  if (!open_) return;
  open_ = false;
  closed();
  if (view) view->wake();
}

void Form::later(Handler work) {
  later_.push_back(std::move(work));
  if (view) view->wake();
}

std::vector<Control*> Form::takeDirty() { return std::exchange(dirty_, {}); }

std::vector<Handler> Form::takeLater() { return std::exchange(later_, {}); }

void Form::add(Control* control) { controls_.push_back(control); }

void Form::remove(Control* control) {
  std::erase(controls_, control);
  std::erase(dirty_, control);
  if (focus_ == control) focus_ = nullptr;
}

void Form::markDirty(Control* control) {
  if (std::find(dirty_.begin(), dirty_.end(), control) != dirty_.end()) return;
  dirty_.push_back(control);
  if (view) view->wake();
}

BusyScope::BusyScope(Form& form, Control& panel)
    : form_(form), panel_(panel), was_(panel.enabled()) {
  panel_.enabled = false;
  form_.host().pump().busy(true);
}

BusyScope::~BusyScope() {
  panel_.enabled = was_;
  form_.host().pump().busy(false);
}

}  // namespace tolvex::ui
