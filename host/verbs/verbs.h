// What the program does, one function a verb. Each gives the exit status.
#pragma once

#include <string>
#include <vector>

#include "host/verbs/arguments.h"

namespace tolvex::verbs {

using Words = std::vector<std::string>;

int newBooks(const Words& words);
int verify(const Words& words);
int backup(const Words& words);
int restore(const Words& words);
int grant(const Words& words);
int call(const Words& words);
int run(const Words& words, const std::string& module);
int desktop(const Words& words, const std::string& module);

}  // namespace tolvex::verbs
