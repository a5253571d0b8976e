#include "host/objects/screen_set.h"

#include <algorithm>
#include <exception>

#include "framework/references.h"
#include "host/objects/kinds.h"

namespace tolvex {
namespace {

// Documents are known by the reference of their exact kind and by that of their family. Kinds with
// a list of their own are themselves, however alike their codes.
std::string identity(std::string_view reference) {
  const bool own = hasOwnView(reference);
  return (own ? std::string(kindOf(reference)) : familyCode(reference)) +
         std::string(idTextOf(reference));
}

}  // namespace

ui::Form* ScreenSet::find(std::string_view reference) const {
  if (!isRef(reference)) return nullptr;
  const std::string wanted = identity(reference);
  for (const auto& form : open_)
    if (form->isOpen() && isRef(form->objectReference()) &&
        identity(form->objectReference()) == wanted)
      return form.get();
  return nullptr;
}

bool ScreenSet::put(std::shared_ptr<ui::Form> form) {
  if (!form) return false;
  show(std::move(form));
  return true;
}

bool ScreenSet::putObject(std::string_view reference) {
  if (ui::Form* known = find(reference)) {
    bringToFront(known);
    return true;
  }
  const auto kind = host_.objects().kind(kindOf(reference));
  return kind && kind->AddToDeskTopVXObject(std::string(reference));
}

void ScreenSet::rename(std::string_view reference, std::string_view text) {
  if (ui::Form* form = find(reference)) {
    form->setTitle(std::string(text));
    stage_.titleChanged(*form);
  }
}

void ScreenSet::show(std::string_view reference) {
  putObject(reference);  // a kind without a screen of its own opens nothing
}

void ScreenSet::show(std::shared_ptr<ui::Form> form) {
  if (ui::Form* known = find(form->objectReference()); known && known != form.get()) {
    bringToFront(known);
    return;
  }
  open_.push_back(form);
  form->markOpen(true);
  try {
    form->opened();
  } catch (...) {  // half filled and not on the stage: nobody could work with it or close it
    form->markOpen(false);
    std::erase(open_, form);
    closed_.push_back(form);
    throw;
  }
  if (!form->isOpen()) {  // gave up while opening and was never on the stage
    std::erase(open_, form);
    closed_.push_back(form);
    return;
  }
  front_ = form.get();
  stage_.shown(*form);
}

void ScreenSet::runModal(ui::Form& form) {
  host_.noteInterruption();
  modal_.push_back(&form);
  form.markOpen(true);
  struct Leave {
    std::vector<ui::Form*>& modal;
    ui::Form& form;
    ~Leave() {
      form.markOpen(false);
      modal.pop_back();
    }
  } leave{modal_, form};
  form.opened();
  if (form.isOpen()) stage_.runModal(form);
}

bool ScreenSet::closeOthers(ui::Form& stays) {
  for (const auto& form : std::vector<std::shared_ptr<ui::Form>>(open_)) {
    if (form.get() == &stays || !form->isOpen() || form->mayClose()) continue;
    bringToFront(form.get());
    return false;
  }
  for (const auto& form : open_)
    if (form.get() != &stays) form->close();
  return true;
}

void ScreenSet::bringToFront(ui::Form* form) {
  front_ = form;
  if (ui::Form* shown = form ? form : list_) stage_.raised(*shown);
}

void ScreenSet::idle() {
  std::exception_ptr failure;
  const auto runLater = [&failure](ui::Form& form) {
    if (!form.isOpen() || !form.hasLater()) return;
    for (const ui::Handler& work : form.takeLater()) {
      try {
        if (form.isOpen()) work();
      } catch (...) {
        if (!failure) failure = std::current_exception();
      }
    }
  };
  // Behind a modal screen only that one goes on: the others wait as for the user.
  if (!modal_.empty()) {
    if (modal_.back()) runLater(*modal_.back());
    if (failure) std::rethrow_exception(failure);
    return;
  }
  for (const auto& form : std::vector<std::shared_ptr<ui::Form>>(open_)) runLater(*form);
  for (std::size_t i = 0; i < open_.size();) {
    if (open_[i]->isOpen()) {
      ++i;
      continue;
    }
    const std::shared_ptr<ui::Form> form = open_[i];
    open_.erase(open_.begin() + static_cast<std::ptrdiff_t>(i));
    const bool wasFront = front_ == form.get();
    if (wasFront) front_ = nullptr;
    stage_.removed(*form);
    closed_.push_back(form);
    if (wasFront) bringToFront(open_.empty() ? nullptr : open_.back().get());
  }
  closed_.clear();
  if (failure) std::rethrow_exception(failure);
}

}  // namespace tolvex
