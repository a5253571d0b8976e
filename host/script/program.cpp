#include "host/script/program.h"

#include <utility>

#include "framework/parameters.h"
#include "host/cards/all_cards.h"
#include "host/store/moments.h"
#include "host/store/rights.h"

namespace tolvex {
namespace {
constexpr const char* kOwnPassword = "O0000820";
}

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
  use(store::openBooks(options_.place, options_.login, options_.password, clock_));
}

void Program::use(std::unique_ptr<store::Session> session) {
  const auto components = module_.security()->GetComponentList();
  const HostResult known = store::registerComponents(*session, components);
  if (known.Code != kDone) throw store::BooksError(known.Text);
  session_ = std::move(session);
  user_ = session_->user();
  session_->watch({[this](std::string_view what, double share) { return goOn(what, share); },
                   [this] {
                     if (workspace_) workspace_->noteRenewed();
                   }});
  faults_.setInner(observer_ ? observer_(*session_) : session_.get());
}

LoginReply Program::loginReply() {
  LoginReply reply;
  const auto setting = [this](const char* routine, const char* value) {
    return session_->call("O0201500", routine,
                          Parameters().text("Tolvex").text("PasswordDeclined").text(value).str());
  };
  const auto offered = [&] {
    const HostResult declined = setting("GetSetting", "");
    return declined.Code == kDone && (*declined.Data.AsRows())["Value"].Text().empty();
  };
  reply.mustChange = user_.mustChangePassword;
  reply.offerPassword = !user_.hasPassword && !user_.mustChangePassword && offered();
  reply.change = [this](const std::string& old, const std::string& fresh) {
    const HostResult made = session_->create(kOwnPassword, "");
    if (made.Code != kDone) return made.Text;
    RowSet& wish = *made.Data.AsRows();
    wish.MoveFirst();
    wish["OldPassword"] = old;
    wish["NewPassword"] = fresh;
    return session_->save(kOwnPassword, "", wish, nullptr, nullptr).Text;
  };
  reply.declined = [setting] { (void)setting("SaveSetting", "1"); };
  return reply;
}

std::string Program::openedAgain() {
  try {
    use(store::reopenBooks(options_.place, user_, clock_));
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
    // Nobody logged in: as before.
    if (!session_) use(store::reopenBooks(options_.place, user_, clock_));
  });
  workspace_ = workspace;
}

void Program::logIn() {
  const store::User before = user_;
  const auto tryOpen = [this](const std::string& login, const std::string& password) {
    session_.reset();
    try {
      use(store::openBooks(options_.place, login, password, clock_));
      return loginReply();
    } catch (const store::BooksError& error) {
      LoginReply refused;
      refused.refusal = error.what();
      return refused;
    }
  };
  if (askLogin(*stage_, booksName(), before.login, tryOpen)) return;
  session_.reset();
  user_ = before;
}

}  // namespace tolvex
