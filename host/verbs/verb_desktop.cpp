// The window: for a person, and for a script that is shown.
#include <iostream>

#include "host/desktop/desktop.h"
#include "host/objects/frm_login.h"
#include "host/objects/module_loader.h"
#include "host/report/report_files.h"
#include "host/script/headless_stage.h"
#include "host/script/script_engine.h"
#include "host/store/moments.h"
#include "host/verbs/screens.h"
#include "host/verbs/verbs.h"

namespace tolvex::verbs {
namespace {
constexpr int kPauseOfShow = 20;  // milliseconds between the acts of a script
}

int showScenario(Program& program, const script::Scenario& scenario, WindowSize size) {
  script::Engine engine(program);
  if (!engine.load(scenario.text, scenario.file)) {
    script::report(engine, scenario, std::cout);
    return EXIT_FAILURE;
  }
  engine.nextTest();
  DesktopRun show;
  show.open = [&](DesktopStage& stage) {
    auto workspace = program.open(stage, stage);
    stage.idleTick = [&]() -> int {
      if (engine.step()) return kPauseOfShow;
      if (unwindOne(stage)) return 0;
      for (const auto& form : std::vector(program.workspace().screens())) form->close();
      if (engine.nextTest()) return 0;
      stage.quit(EXIT_SUCCESS);
      return -1;
    };
    return workspace;
  };
  show.started = [size](DesktopStage& stage, Workspace&) { stage.resize(size.width, size.height); };
  std::string name = "tolvex";
  char* argv[] = {name.data(), nullptr};
  const int status = runDesktop(1, argv, show);
  const bool passed = script::report(engine, scenario, std::cout);
  return passed && status == EXIT_SUCCESS ? EXIT_SUCCESS : EXIT_FAILURE;
}

int desktop(const Words& words, const std::string& modulePath) {
  const Arguments arguments =
      parse(words, {{"--user", "yes"}, {"--password", "yes"}, {"--today", "yes"}});
  wordCount(arguments, 1, 1);
  const auto module = loadModule(modulePath);
  ReportFiles files(store::localNow);
  Program::Options options = programOptions(arguments, arguments.words[0]);
  options.output = &files;
  std::unique_ptr<Program> program;
  const auto tryOpen = [&](const std::string& login, const std::string& password) {
    options.login = login;
    options.password = password;
    try {
      program = std::make_unique<Program>(*module, options);
      return program->loginReply();
    } catch (const store::BooksError& error) {
      LoginReply refused;
      refused.refusal = error.what();
      return refused;
    }
  };
  DesktopRun window;
  window.open = [&](DesktopStage& stage) -> std::unique_ptr<Workspace> {
    // Named with --user he comes straight in when that opens the books; else he is asked.
    const bool named = arguments.has("--user");
    const std::string name = store::booksName(options.place);
    const auto comesIn = [&] {
      const LoginReply reply = tryOpen(options.login, options.password);
      return reply.refusal.empty() && !reply.mustChange;
    };
    const bool in = named && comesIn();
    if (!in && !askLogin(stage, name, options.login, tryOpen)) return nullptr;
    return program->open(stage, stage);
  };
  std::string name = "tolvex";
  char* argv[] = {name.data(), nullptr};
  return runDesktop(1, argv, window);
}

}  // namespace tolvex::verbs
