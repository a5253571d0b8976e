#include "operations/autonumber.h"

#include <gtest/gtest.h>

#include "tests/operations/operation_world.h"

namespace tolvex::test {
namespace {

class AutoNumber : public OperationWorld {
 protected:
  void serve(int counter, const char* mask, const char* prefix, const char* digits) {
    host.store().serve("GetAutoNumber", table({{"AutoNumber", FieldType::Integer},
                                               {"ANMask", FieldType::Text},
                                               {"ANPrefix", FieldType::Text},
                                               {"ANTemplate", FieldType::Text}},
                                              {{counter, mask, prefix, digits}}));
  }
  int held() { return static_cast<int>(operation->Fields()["AutoNumber"].Number()); }
};

TEST_F(AutoNumber, TextIsComposedByTheMask) {
  const struct {
    const char* name;
    int counter;
    const char *mask, *prefix, *digits, *want;
  } kCases[] = {
      {"today and a padded counter", 7, "Date_AutoNumber", "", "0000", "030209-0007"},
      {"a wider number is not cut", 123, "Prefix_UserPrefix_AutoNumber", "A", "00", "A-JJ-123"},
      {"the template's text does not show", 5, "AutoNumber", "", "##", "05"},
      {"no counter in the mask", 5, "Prefix", "B", "", "B"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    serve(c.counter, c.mask, c.prefix, c.digits);
    EXPECT_EQ(call("GetAutoNumber", {"2001.01.01", 1}).Value, Variant(c.want));
    EXPECT_EQ(held(), c.counter);
  }
}

TEST_F(AutoNumber, WithoutAMaskNothingIsHeld) {
  operation->Fields()["AutoNumber"] = 4;
  serve(7, "", "", "");
  EXPECT_EQ(call("GetAutoNumber", {}).Value, Variant(""));
  EXPECT_EQ(held(), 4);
}

TEST_F(AutoNumber, TheStoreIsAskedForGroupUserFlagAndDate) {
  serve(1, "UserPrefix", "", "");
  operation->Fields()["BROperGroupID"] = 12;
  (void)call("GetAutoNumber", {"2003.02.01", 1});
  host.user().user.reset();
  EXPECT_EQ(call("GetAutoNumber", {}).Value, Variant("??"));
  EXPECT_EQ(host.store().trace(),
            "GetAutoNumber 12,7,'JJ',1,'2003.02.01'\nGetAutoNumber 12,0,'?"
            "?',0,''\n");
  EXPECT_EQ(call("GetAutoNumber", {"x"}).Text, "Method GetAutoNumber:\r\nKlaidingi parametrai !");
}

TEST_F(AutoNumber, AnEditedTextGivesItsCounterBack) {
  const struct {
    const char *name, *mask, *text;
    int want;
    bool told;
  } kCases[] = {
      {"second piece", "Prefix_AutoNumber", "A-12", 12, false},
      {"leading zeros", "AutoNumber", "0012", 12, false},
      {"too few pieces", "Prefix_AutoNumber", "A12", 0, false},
      {"letters", "AutoNumber", "12a", 0, false},
      {"a mark", "AutoNumber", "1,2", 0, false},
      {"a dash in the prefix shifts the pieces", "Prefix_AutoNumber", "A-B-12", 0, false},
      {"the largest", "AutoNumber", "2147483647", 2147483647, false},
      {"too large", "AutoNumber", "2147483648", 0, true},
      {"no counter in the mask", "Prefix", "5", 0, false},
      {"no mask keeps the number", "", "5", 99, false},
      {"no text keeps the number", "AutoNumber", "", 99, false},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    operation->Fields()["AutoNumber"] = 99;
    EXPECT_EQ(call("SaveAutoNumber", {c.mask, c.text}).Code, kDone);
    EXPECT_EQ(held(), c.want);
    const std::vector<std::string> told = texts();
    EXPECT_EQ(told.size(), c.told ? 1u : 0u);
    if (c.told) {
      EXPECT_EQ(told[0], "Auto numerio reikšmė 2147483648 yra per didelė!");
    }
  }
}

TEST_F(AutoNumber, AChangedCounterStandsWhereTheMaskSays) {
  const struct {
    const char *mask, *text, *want;
  } kCases[] = {
      {"Prefix_AutoNumber", "P-0007", "P-0040"},
      {"AutoNumber", "7", "40"},
      {"AutoNumber_Date", "3-040331", "40-040331"},
      {"Prefix_AutoNumber", "P7", "P7"},
      {"AutoNumber", "ranka", "ranka"},
      {"Prefix", "5", "5"},
      {"", "5", "5"},
      {"AutoNumber", "", ""},
  };
  for (const auto& c : kCases) EXPECT_EQ(withCounter(c.mask, c.text, 40), c.want) << c.text;
}

TEST_F(AutoNumber, TheUserMayChangeTheCounter) {
  const struct {
    const char* name;
    std::optional<std::string> typed;
    std::optional<Answer> answer;  // to the question, if one is to come
    int want;
  } kCases[] = {
      {"cancelled", std::nullopt, std::nullopt, 5}, {"empty", "", std::nullopt, 5},
      {"the same", "5", std::nullopt, 5},           {"no number", "x", std::nullopt, 5},
      {"too large", "3000000000", std::nullopt, 5}, {"answered no", "6", Answer::No, 5},
      {"answered yes", "6", Answer::Yes, 6},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    operation->Fields()["AutoNumber"] = 5;
    host.dialogs().inputs.push_back(c.typed);
    if (c.answer) host.dialogs().answers.push_back(*c.answer);
    EXPECT_EQ(call("CheckAutoNumber", {}).Value, Variant(c.want == 6));
    EXPECT_EQ(held(), c.want);
    EXPECT_TRUE(host.dialogs().answers.empty());
  }
  EXPECT_EQ(texts().back(), "Pakeisti operacijos eilės numerį į 6?");
}

}  // namespace
}  // namespace tolvex::test
