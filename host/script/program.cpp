#include "host/script/program.h"

#include <utility>

#include "host/cards/all_cards.h"
#include "host/objects/frm_login.h"
#include "host/store/moments.h"

namespace tolvex {

Program::Program(Module& module, Options options) : module_(module), options_(std::move(options)) {
  if (options_.today) {
    const DateTime fixed = DateTime::FromSeconds(options_.today->Date().Seconds() + 9 * 3600);
    clock_ = [fixed] { return fixed; };
  } else {
    clock_ = store::localNow;
  }
  openSession();
}

void Program::openSession() {
  session_ = store::openBooks(options_.place, options_.login, options_.password, clock_);
  session_->watch({[this](std::string_view what, double share) { return goOn(what, share); },
                   [this] {
                     if (workspace_) workspace_->noteRenewed();
                   }});
  faults_.setInner(observer_ ? observer_(*session_) : session_.get());
}

std::string Program::openedAgain() {
  try {
    openSession();
    return {};
  } catch (const store::BooksError& error) {
    return error.what();
  }
}

// A long work of the store shows how far it is, and may be stopped.
bool Program::goOn(std::string_view what, double share) {
  if (!stage_) return true;
  stage_->progress(what, share);
  return !stage_->stopped();
}

void Program::observe(Observer observer) {
  observer_ = std::move(observer);
  faults_.setInner(observer_(*session_));
}

std::string Program::booksName() const { return store::booksName(options_.place); }

std::unique_ptr<Workspace> Program::open(Stage& stage, Playground& playground) {
  stage_ = &stage;
  playground_ = &playground;
  auto workspace = std::make_unique<Workspace>(
      Workspace::Setup{module_, trace_, stage, clock_, booksName(), allCards(), options_.output,
                       [this] { return openedAgain(); }});
  workspace_ = workspace.get();
  return workspace;
}

std::vector<std::string> Program::verify() {
  std::vector<std::string> lines;
  for (const store::Finding& finding : store::verifyBooks(session_->db()))
    lines.push_back(finding.check + ": " + finding.text);
  return lines;
}

void Program::restart(bool login) {
  Workspace* const workspace = std::exchange(workspace_, nullptr);
  workspace->reopen([&] {
    session_.reset();
    if (login) logIn();
    if (!session_) openSession();  // nobody logged in: as before
  });
  workspace_ = workspace;
}

void Program::logIn() {
  const Options before = options_;
  const auto tryOpen = [this](const std::string& login, const std::string& password) {
    options_.login = login;
    options_.password = password;
    return openedAgain();
  };
  if (!askLogin(*stage_, booksName(), options_.login, tryOpen)) options_ = before;
}

}  // namespace tolvex
