// Engine: runs a Lua scenario as a source of the user's acts.
//
// The script runs in a coroutine. A read answers at once; an act yields, and the loop that is
// innermost at that moment performs it by calling step(). An act that opens a box or a modal form
// leads into a nested loop, which calls step() again: the script simply goes on inside, and the
// outer act ends when the box is closed. The language of scripts: docs/internals/scripts.md.
#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "host/script/script_world.h"

struct lua_State;

namespace tolvex::script {

// A mistake of the script itself, as against a failure of the program.
class ScriptError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One act of the script with its arguments as texts, numbers, Booleans or named texts.
struct Act {
  std::string name;
  std::vector<Variant> arguments;
  std::map<std::string, std::string> options;  // of a table given as the last argument
};

class Engine {
 public:
  struct Limits {
    int steps = 20'000'000;  // Lua instructions a test may take
  };
  explicit Engine(ScriptWorld& world) : Engine(world, Limits{}) {}
  Engine(ScriptWorld& world, Limits limits);
  ~Engine();
  Engine(const Engine&) = delete;

  // Loads a script; false with a failure noted when it does not compile.
  bool load(const std::string& text, const std::string& name);
  // Makes the next part of the script ready to run: first its main part, then one test after the
  // other. False when there is none left.
  bool nextTest();
  // Resumes the script and performs its act. False when the running part has ended.
  bool step();
  bool running() const { return running_; }

  struct Outcome {
    std::string name;     // "" for the main part
    std::string failure;  // "" passed; else file, line, text, and the text of an open box
  };
  const std::vector<Outcome>& outcomes() const { return outcomes_; }
  // Texts of the boxes that a call of the object contract showed since the last asking. Such a box
  // is answered at once with its safest button.
  std::vector<std::string> takeShown() { return std::exchange(shown_, {}); }

  // Texts of the failures that the script looked at in results of the object contract.
  const std::vector<std::string>& seenFailures() const { return seenFailures_; }

  // For the parts of the engine.
  void noteSeen(std::string failure) { seenFailures_.push_back(std::move(failure)); }
  ScriptWorld& world() { return world_; }
  lua_State* thread() const { return thread_; }
  ui::Form& front();                              // the form that acts and reads are about
  ui::Control& control(const std::string& name);  // there; throws when there is none
  void addTest(std::string name, int function) { tests_.push_back({std::move(name), function}); }
  // Why the act could not be done, or "".
  std::string perform(const Act& act);

 private:
  struct Test {
    std::string name;
    int function;  // reference in the registry
  };
  void start(int function, std::string name);
  void finish(int status);
  std::string boxText();

  ScriptWorld& world_;
  Limits limits_;
  lua_State* lua_ = nullptr;
  lua_State* thread_ = nullptr;
  int threadReference_ = 0;
  int mainReference_ = 0;
  bool mainDone_ = false;
  std::vector<Test> tests_;
  std::size_t nextTest_ = 0;
  std::string testName_;
  bool running_ = false;
  unsigned resumes_ = 0;
  std::string reply_;  // of the act that the script waits for
  bool waiting_ = false;
  bool inScript_ = false;
  std::vector<std::string> shown_, seenFailures_;
  std::vector<Outcome> outcomes_;
};

}  // namespace tolvex::script
