#include "host/script/runner.h"

#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "host/objects/inner_uio.h"
#include "host/script/headless_stage.h"
#include "host/script/script_engine.h"

namespace tolvex::script {

Scenario readScenario(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error("Scenarijus nerastas: " + file);
  std::ostringstream text;
  text << in.rdbuf();
  return {file, text.str()};
}

ScratchBooks::ScratchBooks(const std::string& original) {
  const auto folder = std::filesystem::temp_directory_path() / ("tolvex-" + makeGuid());
  std::filesystem::create_directories(folder);
  folder_ = folder.string();
  place_ = (folder / "books.tolvex").string();
  try {
    if (original.empty()) {
      store::NewBooks what;
      what.demoCompany = true;
      store::createBooks(place_, what);
    } else if (store::isPostgresUrl(original)) {
      store::backupBooks(*store::Database::open(original, {}), place_);
    } else {
      std::filesystem::copy_file(original, place_);
    }
  } catch (...) {
    std::filesystem::remove_all(folder);
    throw;
  }
}

ScratchBooks::~ScratchBooks() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

bool report(const Engine& engine, const Scenario& scenario, std::ostream& out) {
  bool good = true;
  for (const Engine::Outcome& outcome : engine.outcomes()) {
    const std::string name = outcome.name.empty() ? scenario.file : outcome.name;
    if (outcome.failure.empty()) {
      if (!outcome.name.empty()) out << "ok      " << name << '\n';
      continue;
    }
    good = false;
    out << "FAILED  " << name << "\n        " << outcome.failure << '\n';
  }
  return good;
}

void idle(Program& program) {
  // A script finds a long list whole.
  while (program.isOpen() && program.workspace().idle()) {
  }
}

bool runScenario(Program& program, const Scenario& scenario, std::ostream& out) {
  HeadlessStage stage;
  const auto workspace = program.open(stage, stage);
  stage.renewed(*workspace);
  Engine engine(program);
  if (engine.load(scenario.text, scenario.file)) {
    stage.setDriver([&] { return engine.step(); }, [&] { idle(program); });
    while (engine.nextTest()) {
      do idle(program);
      while (engine.step());
      // The next part begins with no screen open, whatever this one left.
      if (!program.isOpen()) break;  // a restart failed: no books, nothing to test
      for (const auto& form : std::vector(program.workspace().screens())) form->close();
      idle(program);
    }
  }
  return report(engine, scenario, out);
}

}  // namespace tolvex::script
