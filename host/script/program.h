// Program: the books, the decorators for scripts, and the workspace over them, on a given stage.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "host/objects/frm_login.h"
#include "host/script/script_world.h"
#include "host/store/books.h"
#include "platform/registration.h"

namespace tolvex {

class Program final : public ScriptWorld {
 public:
  struct Options {
    std::string place;  // of the books
    std::string login = "admin", password;
    ReportOutput* output = nullptr;  // writes reports into files; outlives the program
    std::optional<DateTime> today;   // a fixed day, for scripts; else the clock of the machine
  };
  // Throws store::BooksError.
  Program(Module& module, Options options);

  // What a login screen needs to know after the books were opened.
  LoginReply loginReply();
  // The workspace lives with the caller and must go before this object.
  std::unique_ptr<Workspace> open(Stage& stage, Playground& playground);
  store::Session& session() { return *session_; }
  // Puts an observer between the books and the decorators, also after a restart.
  using Observer = std::function<store::StorePort*(store::Session&)>;
  void observe(Observer observer);

  bool isOpen() const override { return workspace_ != nullptr; }
  Workspace& workspace() override { return *workspace_; }
  Playground& playground() override { return *playground_; }
  TraceStore& trace() override { return trace_; }
  FaultStore& faults() override { return faults_; }
  store::StorePort& books() override { return *session_; }
  std::vector<std::string> verify() override;
  ReportOutput* output() override { return options_.output; }
  void restart(bool login) override;
  DateTime today() const override { return clock_().Date(); }

 private:
  void openSession();
  void use(std::unique_ptr<store::Session> session);
  std::string openedAgain();  // "" or why the books stay as they were
  bool goOn(std::string_view what, double share);
  void logIn();
  std::string booksName() const;  // for the status line

  Module& module_;
  Options options_;
  std::function<DateTime()> clock_;
  std::unique_ptr<store::Session> session_;
  store::User user_;  // who came in; he is not asked again when the books are opened anew
  Observer observer_;
  FaultStore faults_;
  TraceStore trace_{faults_};
  Workspace* workspace_ = nullptr;
  Stage* stage_ = nullptr;
  Playground* playground_ = nullptr;
};

}  // namespace tolvex
