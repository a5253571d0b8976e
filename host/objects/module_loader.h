// The module library: loaded once and kept until the program ends, because closures and virtual
// tables of its screens may outlive every object of it.
#pragma once

#include <memory>
#include <string>

#include "platform/registration.h"

namespace tolvex {

// `path` with a folder in it, "./libTolvexUI.so" at least: a bare name would be looked up in the
// system's folders. Throws std::runtime_error with a text for the user.
std::unique_ptr<Module> loadModule(const std::string& path);

// The library beside the running program.
std::string modulePathBeside(const std::string& program);

}  // namespace tolvex
