#include "tests/support/plan_fixture.h"

#include <gtest/gtest.h>

#include <map>

#include "framework/references.h"
#include "host/store/plan_mapping.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr const char* kWorking = "O0200400";
constexpr const char* kNew = "O0200401";

}  // namespace

int accountId(Session& session, int plan, const std::string& code) {
  return static_cast<int>(
      integerFrom(session.db(), "SELECT id FROM account WHERE plan = $1 AND code = $2", plan, code)
          .value_or(0));
}

int addNewAccount(Session& session, const std::string& code, bool group) {
  const HostResult made = session.create(kNew, "");
  EXPECT_EQ(made.Code, kDone) << made.Text;
  RowSet& node = *made.Data.AsRows();
  node.MoveFirst();
  for (std::size_t length = code.size() - 1; length > 0; --length) {
    const int parent = accountId(session, 1, code.substr(0, length));
    if (parent == 0) continue;
    node["ParentID"] = parent;
    break;
  }
  node["Account"] = code;
  node["Name"] = "Nauja " + code;
  node["Type"] = "D";
  node["GroupFlag"] = group ? 1 : 0;
  const SaveOutcome saved = session.save(kNew, "", node, nullptr, nullptr);
  EXPECT_EQ(saved.Code, kDone) << code << ": " << saved.Text;
  return idOf(saved.reference);
}

void setCounterpart(Session& session, const std::string& code, const std::string& newCode) {
  const HostResult read = session.load(kWorking, refOf(kWorking, accountId(session, 0, code)));
  ASSERT_EQ(read.Code, kDone) << code << ": " << read.Text;
  RowSet& node = *read.Data.AsRows();
  node.MoveFirst();
  node["NewID"] = newCode.empty() ? Variant(Null{}) : Variant(accountId(session, 1, newCode));
  const SaveOutcome saved = session.save(kWorking, "", node, nullptr, nullptr);
  EXPECT_EQ(saved.Code, kDone) << code << ": " << saved.Text;
}

std::string counterpartOf(const std::string& code) {
  static const std::map<std::string, std::string> joined = {
      {"0", "0"},       {"240", "2410"}, {"2711", "2720"}, {"2712", "2720"},
      {"2713", "2720"}, {"450", "4430"}, {"443", "4430"}};
  const auto found = joined.find(code);
  return found == joined.end() ? "9" + code : found->second;
}

void makeSmallPlan(Session& session) {
  addNewAccount(session, "9", true);
  // What a conversion asks for, and an account that is matched with nothing yet.
  std::vector<std::string> codes = withoutCounterpart(session.db());
  codes.emplace_back("443");
  for (const std::string& code : codes) {
    const std::string wanted = counterpartOf(code);
    if (accountId(session, 1, wanted) == 0) addNewAccount(session, wanted);
    setCounterpart(session, code, wanted);
  }
}

}  // namespace tolvex::store
