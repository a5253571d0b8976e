// ProgramTest: the program on the demo company, without a window. Boxes are answered at once with
// their safest button; their texts are kept. The test's target names the module: TOLVEX_MODULE.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host/objects/module_loader.h"
#include "host/script/headless_stage.h"
#include "host/script/program.h"
#include "host/script/runner.h"

namespace tolvex::test {

class ProgramTest : public testing::Test {
 protected:
  void SetUp() override {
    Program::Options options;
    options.place = books_.place();
    options.today = DateTime::Of(2004, 3, 31);
    program_ = std::make_unique<Program>(*module(), options);
    workspace_ = program_->open(stage_, stage_);
    stage_.setDriver(
        [this] {
          if (const Message* box = stage_.openMessage()) boxes_.push_back(box->text);
          return false;
        },
        [this] { workspace_->idle(); });
  }
  HostContext& host() { return workspace_->context(); }

  script::ScratchBooks books_{""};
  HeadlessStage stage_;
  std::unique_ptr<Program> program_;
  std::unique_ptr<Workspace> workspace_;
  std::vector<std::string> boxes_;

 private:
  static const std::unique_ptr<Module>& module() {
    static const std::unique_ptr<Module> loaded = loadModule(TOLVEX_MODULE);
    return loaded;
  }
};

}  // namespace tolvex::test
