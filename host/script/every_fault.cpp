// Every call of a scenario to the store fails once, each time on fresh books.
#include <algorithm>
#include <map>
#include <ostream>
#include <set>

#include "host/script/headless_stage.h"
#include "host/script/runner.h"
#include "host/script/script_engine.h"
#include "platform/input.h"

namespace tolvex::script {
namespace {

constexpr std::int32_t kEngineFault = 1299;
constexpr const char* kFaultText = "Bandomoji duomenų bazės klaida!";
constexpr std::string_view kFailure = "Klaida!\r\n";

// Documents end the reason with these words and payment templates with the failure, other records
// begin it with a failure and a blank line.
bool tellsFailedSave(std::string_view box) {
  return box.ends_with("Įrašymas neatliktas !") || box.ends_with("Įrašymas neatliktas!") ||
         box.ends_with("\r\nKlaida!") ||
         (box.starts_with(kFailure) && box.substr(kFailure.size()).starts_with("\r\n"));
}

// What a handler threw stands right below the word; a refusal that is told so names what was asked.
bool isException(std::string_view box) {
  return box.starts_with(kFailure) && !tellsFailedSave(box) &&
         box.find(":\r\n") == std::string_view::npos;
}

// How many rows each table of documents has: what a half-done save would change. Settings and the
// protocol of logins are no part of the documents.
using Fingerprint = std::map<std::string, std::int64_t>;

Fingerprint fingerprintOf(store::Database& db) {
  std::vector<std::string> tables;
  {
    const auto names = db.prepare(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'");
    while (names->step()) tables.emplace_back(names->text(0));
  }
  Fingerprint counts;
  for (const std::string& table : tables) {
    if (table == "user_setting") continue;
    const auto count = db.prepare("SELECT count(*) FROM " + table);
    count->step();
    counts[table] = count->integer(0);
  }
  return counts;
}

// Notes the state of the books after every call of the good run.
class StateNotes final : public store::StorePort {
 public:
  StateNotes(store::Session& session, std::set<Fingerprint>& states)
      : session_(session), states_(states) {}
  HostResult call(std::string_view kind, std::string_view method,
                  std::string_view parameters) override {
    return noted(session_.call(kind, method, parameters));
  }
  HostResult load(std::string_view kind, std::string_view reference) override {
    return session_.load(kind, reference);
  }
  HostResult create(std::string_view kind, std::string_view otype) override {
    return session_.create(kind, otype);
  }
  store::SaveOutcome save(std::string_view kind, std::string_view otype, RowSet& header,
                          RowSet* second, RowSet* third) override {
    return noted(session_.save(kind, otype, header, second, third));
  }
  HostResult erase(std::string_view kind, std::string_view reference) override {
    return noted(session_.erase(kind, reference));
  }
  HostResult list(std::string_view kind, std::string_view first, std::string_view second,
                  std::string_view third) override {
    return session_.list(kind, first, second, third);
  }

 private:
  template <class Result>
  Result noted(Result result) {
    states_.insert(fingerprintOf(session_.db()));
    return result;
  }
  store::Session& session_;
  std::set<Fingerprint>& states_;
};

// Runs the scenario to its first failure, then unwinds. The call that is to fail is the store's
// own, below the failures that the scenario arranges itself; noted is what was told from then on.
class Attempt {
 public:
  // `states`, where given, gets what the books look like after every call.
  Attempt(Module& module, const Program::Options& options, const std::string& books,
          std::set<Fingerprint>* states = nullptr)
      : program_(module, at(options, books)) {
    program_.observe([this, states](store::Session& session) {
      notes_ = states ? std::make_unique<StateNotes>(session, *states) : nullptr;
      faults_.setInner(notes_ ? static_cast<store::StorePort*>(notes_.get()) : &session);
      return &faults_;
    });
  }
  Program& program() { return program_; }
  FaultStore& faults() { return faults_; }

  bool run(const Scenario& scenario, std::ostream& out) {
    stage_.setDriver([this] { return noteBox(), false; }, nullptr);
    workspace_ = program_.open(stage_, stage_);
    stage_.renewed(*workspace_);
    Engine engine(program_);
    if (!engine.load(scenario.text, scenario.file)) return report(engine, scenario, out);
    while (engine.nextTest()) {
      stage_.setDriver([&] { return noteBox(), engine.step(); }, [&] { idle(program_); });
      do idle(program_);
      while (engine.step());
      if (stuck_.empty()) stuck_ = closeAll();
      if (!engine.outcomes().back().failure.empty()) break;
    }
    seen_ = engine.seenFailures();
    seen_.push_back(engine.outcomes().back().failure);
    return report(engine, scenario, out);
  }

  // Texts of all boxes; of those since the call failed; of the failures that the script looked at.
  const std::set<std::string>& known() const { return known_; }
  const std::vector<std::string>& boxes() const { return boxes_; }
  const std::vector<std::string>& seen() const { return seen_; }
  const std::string& stuck() const { return stuck_; }

 private:
  // Every screen must let itself be closed by a user who agrees to lose what he typed.
  std::string closeAll() {
    stage_.setDriver([this] { return noteBox(), agree(); }, [this] { idle(program_); });
    std::string stuck;
    for (const auto& form : std::vector(program_.workspace().screens()))
      if (form->isOpen() && !program_.workspace().close(*form)) stuck = form->name();
    idle(program_);
    return stuck;
  }

  static Program::Options at(Program::Options options, const std::string& books) {
    options.place = books;
    return options;
  }
  bool agree() {
    const Message* box = stage_.openMessage();
    if (!box) return false;
    stage_.answer(box->buttons == Buttons::YesNo ? Answer::Yes : Answer::Ok);
    return true;
  }
  void noteBox() {
    const Message* box = stage_.openMessage();
    if (!box) return;
    known_.insert(box->text);
    if (!faults_.fired().empty() && (boxes_.empty() || boxes_.back() != box->text))
      boxes_.push_back(box->text);
  }

  Program program_;
  std::unique_ptr<StateNotes> notes_;
  FaultStore faults_;
  HeadlessStage stage_;
  std::unique_ptr<Workspace> workspace_;
  std::set<std::string> known_;
  std::vector<std::string> boxes_, seen_;
  std::string stuck_;  // a screen that did not close
};

// The ways in which a call fails. The store gives codes; the other two stand for faults of the
// program itself, so the user may be told of an exception.
enum class Way { Code, NoData, Throw };
constexpr std::pair<Way, const char*> kWays[] = {
    {Way::Code, "by code"}, {Way::NoData, "without data"}, {Way::Throw, "throwing"}};

void arm(FaultStore& faults, Way way, int call) {
  if (way == Way::Throw) return faults.armThrow(call, kFaultText);
  faults.arm(call, way == Way::Code ? kEngineFault : kDone, way == Way::Code ? kFaultText : "");
}

bool hasFault(const std::string& text) { return text.find(kFaultText) != std::string::npos; }

// What the good run came to.
struct GoodRun {
  std::set<Fingerprint> states;  // of the books, after each call
  std::set<std::string> boxes;
  int calls = 0;
};

// The one who saved, a person or the script, learned why it was not done.
bool toldFailedSave(const Attempt& attempt) {
  return std::ranges::any_of(attempt.seen(), hasFault) ||
         std::ranges::any_of(attempt.boxes(), [](const std::string& box) {
           return hasFault(box) && (tellsFailedSave(box) || isException(box));
         });
}

// Somebody learned that something failed, maybe in the screen's own words.
bool toldFailure(const Attempt& attempt, const GoodRun& good) {
  return std::ranges::any_of(attempt.seen(), hasFault) ||
         std::ranges::any_of(attempt.boxes(), [&](const std::string& box) {
           return hasFault(box) || !good.boxes.contains(box);
         });
}

std::string whatBroke(Attempt& attempt, Way way, const GoodRun& good) {
  if (way == Way::Code) {
    const auto exception = std::ranges::find_if(attempt.boxes(), isException);
    if (exception != attempt.boxes().end()) return "an exception reached the user: " + *exception;
  }
  const std::string& failed = attempt.faults().fired();
  if (failed == "save" && !toldFailedSave(attempt)) return "a failed save was not told";
  // Records are also read for a name alone, or to begin anew behind the screen.
  const bool shown = failed != "load" && failed != "create";
  if (way != Way::NoData && shown && !toldFailure(attempt, good))
    return "a failed call was not told";
  if (!attempt.stuck().empty()) return "a screen does not close: " + attempt.stuck();
  const auto findings = attempt.program().verify();
  if (!findings.empty()) return "the books are not clean: " + findings.front();
  if (!good.states.contains(fingerprintOf(attempt.program().session().db())))
    return "the books stand as they never stood in the good run";
  return {};
}

}  // namespace

bool runEveryFault(Module& module, const Program::Options& options, const Scenario& scenario,
                   std::ostream& out) {
  const ScratchBooks original(options.place);
  GoodRun good;
  {
    const ScratchBooks copy(original.place());
    Attempt attempt(module, options, copy.place(), &good.states);
    good.states.insert(fingerprintOf(attempt.program().session().db()));
    if (!attempt.run(scenario, out)) return false;
    good.calls = attempt.faults().calls();
    good.boxes = attempt.known();
  }
  int failures = 0;
  const auto failCall = [&](int n, Way way, const char* wayText) {
    const ScratchBooks copy(original.place());
    Attempt attempt(module, options, copy.place());
    arm(attempt.faults(), way, n);
    std::ostream nowhere(nullptr);  // the scenario itself is expected to fail
    (void)attempt.run(scenario, nowhere);
    const std::string broken = whatBroke(attempt, way, good);
    if (broken.empty()) return;
    ++failures;
    out << "FAILED  call " << n << " of " << good.calls << " failed " << wayText << " ("
        << attempt.faults().failedCall() << "): " << broken << '\n';
  };
  for (int n = 1; n <= good.calls; ++n)
    for (const auto& [way, text] : kWays) failCall(n, way, text);
  out << (failures ? "FAILED  " : "ok      ") << "each of " << good.calls
      << " calls to the store failed by code, without data and throwing\n";
  return failures == 0;
}

}  // namespace tolvex::script
