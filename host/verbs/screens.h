// What the verbs with screens share.
#pragma once

#include "host/script/runner.h"
#include "host/verbs/arguments.h"

namespace tolvex::verbs {

// From --user, --password and --today.
Program::Options programOptions(const Arguments& arguments, const std::string& place);
// Plays a script in a window; the exit status.
int showScenario(Program& program, const script::Scenario& scenario);

}  // namespace tolvex::verbs
