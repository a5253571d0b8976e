// What the sweep over failing calls takes for told and for silent.
#include <gtest/gtest.h>

#include <sstream>

#include "host/objects/module_loader.h"
#include "host/script/runner.h"

namespace tolvex::script {
namespace {

struct SweepCase {
  const char* name;
  const char* script;
  const char* want;  // a part of the report
};

const SweepCase kSweeps[] = {
    {"what the script looks at is told, beside failures that it arranges itself",
     R"(test("t", function()
          local bank = object "O0000300"
          bank:set("Name", "Bankas")
          fault(1, 1205, "busy")
          expect(bank:save().text, "busy")
          expect(bank:save().code, 0)
        end))",
     "ok      each of"},
    {"a refusal told before or after does not stand for a failure that nobody looks at",
     R"(test("t", function()
          local bank, other = object "O0000300", object "O0000300"
          expect(other:save().code ~= 0, true)
          bank:set("Name", "Bankas")
          bank:save()
          expect(other:save().code ~= 0, true)
        end))",
     "a failed save was not told"},
};

TEST(EveryFault, ToldAndSilentFailures) {
  const auto module = loadModule(TOLVEX_MODULE);
  for (const SweepCase& c : kSweeps) {
    SCOPED_TRACE(c.name);
    Program::Options options;
    options.today = DateTime::Of(2004, 3, 31);
    std::ostringstream out;
    const bool good = runEveryFault(*module, options, {"case.lua", c.script}, out);
    EXPECT_EQ(good, std::string_view(c.want).starts_with("ok"));
    EXPECT_NE(out.str().find(c.want), std::string::npos) << out.str();
  }
}

}  // namespace
}  // namespace tolvex::script
