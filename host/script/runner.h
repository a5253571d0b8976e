// Running scenarios: once, in a window or without one, or once for every call to the store with
// that call failing.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "host/script/program.h"

namespace tolvex::script {

struct Scenario {
  std::string file;  // of the script
  std::string text;
};
// Throws std::runtime_error with a text for the user.
Scenario readScenario(const std::string& file);

// A copy of books that goes with this object, always in a file: of others, or of the demo company
// made anew.
class ScratchBooks {
 public:
  explicit ScratchBooks(const std::string& original);  // "" makes the demo company
  ~ScratchBooks();
  ScratchBooks(const ScratchBooks&) = delete;
  const std::string& place() const { return place_; }

 private:
  std::string folder_, place_;
};

// What a loop does between two acts.
void idle(Program& program);

// Runs all parts of the scenario without a window and reports each on `out`. True: all passed.
bool runScenario(Program& program, const Scenario& scenario, std::ostream& out);

// Runs the scenario on a fresh copy of `books` once for every call it makes to the store, that call
// failing. Each time the books must verify clean, stand as they stood at some point of the good
// run, every screen must close, and a failed save must have said so. True: all held.
bool runEveryFault(Module& module, const Program::Options& options, const Scenario& scenario,
                   std::ostream& out);

class Engine;
// Writes the outcomes and gives back whether all passed.
bool report(const Engine& engine, const Scenario& scenario, std::ostream& out);

}  // namespace tolvex::script
