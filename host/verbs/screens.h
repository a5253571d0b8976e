// What the verbs with screens share.
#pragma once

#include "host/script/runner.h"
#include "host/verbs/arguments.h"

namespace tolvex::verbs {

// From --user, --password and --today.
Program::Options programOptions(const Arguments& arguments, const std::string& place);
struct WindowSize {
  int width = 1366, height = 768;
};
// Plays a script in a window; the exit status.
int showScenario(Program& program, const script::Scenario& scenario, WindowSize size);

}  // namespace tolvex::verbs
