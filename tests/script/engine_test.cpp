// The engine as a source of the user's acts: nested boxes, failures with their place, limits.
#include <gtest/gtest.h>

#include <sstream>

#include "host/objects/module_loader.h"
#include "host/script/headless_stage.h"
#include "host/script/runner.h"
#include "host/script/script_engine.h"

namespace tolvex::script {
namespace {

class EngineTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    module_ = loadModule(TOLVEX_MODULE);
    books_ = std::make_unique<ScratchBooks>("");
  }
  static void TearDownTestSuite() {
    books_.reset();
    module_.reset();
  }

  // What the runner reports of the script.
  std::string run(const std::string& text) {
    Program::Options options;
    options.place = books_->place();
    options.today = DateTime::Of(2004, 3, 31);
    Program program(*module_, options);
    std::ostringstream out;
    (void)runScenario(program, {"case.lua", text}, out);
    return out.str();
  }

  static std::unique_ptr<Module> module_;
  static std::unique_ptr<ScratchBooks> books_;
};

std::unique_ptr<Module> EngineTest::module_;
std::unique_ptr<ScratchBooks> EngineTest::books_;

struct FailureCase {
  const char* name;
  const char* script;
  const char* want;  // a part of the report
};

const FailureCase kFailures[] = {
    {"an expectation names its own line", "\nexpect(1, 2, 'sum')", "case.lua:2: sum: expected 2"},
    {"a script that does not compile", "if", "case.lua:1:"},
    {"an unknown control", "click 'cmdNone'", "case.lua:1: no control cmdNone in frmList"},
    {"an act on the wrong kind of control", "check 'txtFind'", "txtFind is not a check box"},
    {"an act within a helper of the language names the script's line",
     "\nlist_command('Pirkimai', 'none', 'Panaikinti')", "case.lua:2: no row \"none\""},
    {"and so does a read there", "\nfind_row('lvwNone', {})", "case.lua:2: no control lvwNone"},
    {"a hidden control", "click 'cmdAll'", "hidden: cmdAll"},
    {"an answer without a box", "answer 'ok'", "no message is open"},
    {"a pick without a menu", "pick 'Atrinkti'", "no menu is open"},
    {"an act inside a coroutine of the script's own",
     "local t = table.sort({2, 1}, function() click 'txtFind' end)", "C-call boundary"},
    {"an act while a box is open",
     "select('tvwLayout', 'Pirkimai') right_click('lvwObjects', 1) pick 'Panaikinti' close()",
     "a message is open: Ar tikrai norite panaikinti?"},
    {"a script that ends before an open box",
     "select('tvwLayout', 'Pirkimai') right_click('lvwObjects', 1) pick 'Panaikinti'",
     "ended before an open message: Ar tikrai norite panaikinti?"},
    {"a button that the box does not have",
     "select('tvwLayout', 'Pirkimai') right_click('lvwObjects', 1) pick 'Panaikinti' answer 'ok'",
     "the message has no button \"ok\""},
    {"files and foreign code are out of reach",
     "expect(io or os or require or load or dofile or debug or coroutine)", "missing"},
};

TEST_F(EngineTest, FailuresSayWhatAndWhere) {
  for (const FailureCase& c : kFailures) {
    SCOPED_TRACE(c.name);
    const std::string report = run(c.script);
    if (std::string(c.want) == "missing")
      EXPECT_EQ(report, "");  // all of them are nil, as is the expected value
    else
      EXPECT_NE(report.find(c.want), std::string::npos) << report;
  }
}

TEST_F(EngineTest, EndlessLoopIsStoppedAtItsLine) {
  const std::string report = run("local n = 0\nwhile true do n = n + 1 end");
  EXPECT_NE(report.find("case.lua:2: the script takes too many steps"), std::string::npos)
      << report;
}

// A refusal inside a modal dialog: three loops deep, then out again, in one straight script.
TEST_F(EngineTest, GoesOnInsideNestedLoops) {
  EXPECT_EQ(run(R"(
    test("nested", function()
      select("tvwLayout", "Pirkimai")
      click "cmdPeriod"
      expect_screen "frmPeriod"
      enter("txtDays", "x")
      click "cmdOk"
      expect(message().icon, "exclamation")
      expect(screen(), "frmPeriod")
      answer "ok"
      click "cmdCancel"
      expect_screen "frmList"
    end))"),
            "ok      nested\n");
}

TEST_F(EngineTest, AFailedTestLeavesACleanScreenToTheNext) {
  const std::string report = run(R"(
    test("first", function() select("tvwLayout", "Pirkimai") click "cmdPeriod" error "stop" end)
    test("second", function() expect_screen "frmList" expect(message(), nil) end))");
  EXPECT_NE(report.find("FAILED  first"), std::string::npos) << report;
  EXPECT_NE(report.find("ok      second"), std::string::npos) << report;
}

TEST_F(EngineTest, RowsAreReadWhenAsked) {
  EXPECT_EQ(run(R"(
    test("rows", function()
      select("tvwLayout", "Įmonės")
      local all = rows "lvwObjects"
      expect(#all, 5)
      expect(all[5]["Pavadinimas"], "UAB Tiekėjas")
      expect(all[6], nil)
      enter("txtFind", "tiek")
      expect(#all, 1)
      expect(all[1].key, "O00001002")
    end))"),
            "ok      rows\n");
}

TEST_F(EngineTest, FailedActsCanBeCaught) {
  EXPECT_EQ(run(R"(
    test("pcall", function()
      local done, why = pcall(click, "cmdAll")
      expect(done, false)
      expect(why:find("hidden", 1, true) ~= nil, true)
      select("tvwLayout", "Įmonės")
    end))"),
            "ok      pcall\n");
}

}  // namespace
}  // namespace tolvex::script
