// The verb run: plays a script, without a window unless one is asked for.
#include <iostream>

#include "framework/text.h"
#include "host/objects/module_loader.h"
#include "host/report/report_files.h"
#include "host/script/runner.h"
#include "host/store/moments.h"
#include "host/verbs/screens.h"
#include "host/verbs/verbs.h"

namespace tolvex::verbs {
namespace {

// "1920x1080"
WindowSize windowSize(const std::string& text) {
  WindowSize size;
  if (text.empty()) return size;
  const auto sides = split(text, 'x');
  double width = 0, height = 0;
  if (sides.size() != 2 || !parsePlainNumber(sides[0], width) ||
      !parsePlainNumber(sides[1], height) || width < 1 || height < 1 || width > 10000 ||
      height > 10000)
    throw UsageError("Klaidingas lango dydis: " + text);
  return {static_cast<int>(width), static_cast<int>(height)};
}

}  // namespace

Program::Options programOptions(const Arguments& arguments, const std::string& place) {
  Program::Options options;
  options.place = place;
  options.login = arguments.value("--user", options.login);
  options.password = arguments.value("--password");
  if (arguments.has("--today")) {
    options.today = DateTime::Parse(arguments.value("--today"));
    if (!options.today) throw UsageError("Klaidinga data: " + arguments.value("--today"));
  }
  return options;
}

int run(const Words& words, const std::string& modulePath) {
  const Arguments arguments = parse(words, {{"--books", "yes"},
                                            {"--today", "yes"},
                                            {"--user", "yes"},
                                            {"--password", "yes"},
                                            {"--window", "no"},
                                            {"--size", "yes"},
                                            {"--every-fault", "no"}});
  wordCount(arguments, 1, 1);
  const WindowSize size = windowSize(arguments.value("--size"));
  const script::Scenario scenario = script::readScenario(arguments.words[0]);
  Program::Options options = programOptions(arguments, arguments.value("--books"));
  ReportFiles files([&options] { return options.today.value_or(store::localNow()); });
  options.output = &files;
  const auto module = loadModule(modulePath);
  if (arguments.has("--every-fault")) {
    return script::runEveryFault(*module, options, scenario, std::cout) ? EXIT_SUCCESS
                                                                        : EXIT_FAILURE;
  }
  // Without books of its own a script plays on the demo company, which goes with it.
  std::unique_ptr<script::ScratchBooks> scratch;
  Program::Options own = options;
  if (own.place.empty()) {
    scratch = std::make_unique<script::ScratchBooks>("");
    own.place = scratch->place();
  }
  Program program(*module, own);
  if (arguments.has("--window")) return showScenario(program, scenario, size);
  return script::runScenario(program, scenario, std::cout) ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace tolvex::verbs
