#include "operations/entry_rules.h"

#include <gtest/gtest.h>

#include "platform/numbers.h"

namespace tolvex {
namespace {

struct Side {
  double SumCurr;
  const char* code;
  double RateCurr;
};

RowSetPtr sides(const std::vector<Side>& rows) {
  RowSetPtr set = RowSet::make(kBRCurrency);
  int sign = 1;
  for (const Side& side : rows) {
    set->AddNew();
    (*set)["Sign"] = sign;
    (*set)["SumCurr"] = side.SumCurr;
    (*set)["FCurrencyCode"] = side.code;
    (*set)["RateCurr"] = side.RateCurr;
    sign = -sign;
  }
  return set;
}

TEST(CheckValiuta, Cases) {
  const struct {
    const char* name;
    std::vector<Side> sides;
    double sumLt;
    std::string_view want;
  } kCases[] = {
      {"no currency passes", {}, 1, ""},
      {"same cent passes", {{100, "USD", 3.4528}}, 345.28, ""},
      {"one cent off is refused", {{100, "USD", 3.4528}}, 345.29, kRateMismatch},
      {"code is tested before rate", {{100, "US", 0}}, 345.28, kNoCurrencyCode},
      {"rate is tested before sum", {{100, "USD", 0}}, 345.28, kNoCurrencyRate},
      {"three blanks are a code of three characters", {{100, "   ", 3.4528}}, 345.28, ""},
      {"zero sum skips the row", {{0, "", 0}}, 345.28, ""},
      {"negative sum skips the row", {{-5, "", 0}}, 345.28, ""},
      {"the second row counts", {{100, "USD", 3.4528}, {10, "EUR", 3}}, 345.28, kRateMismatch},
      {"the first fault wins", {{100, "USD", 0}, {10, "E", 3}}, 345.28, kNoCurrencyRate},
      {"the product is lifted over its half", {{1, "USD", 1.005}}, 1.01, ""},
      {"the sum in litas is not", {{1, "USD", 1.005}}, 1.005, kRateMismatch},
      {"an exact half goes to the even cent", {{687.09, "USD", 2.3110}}, 1587.86, ""},
      {"no fused product", {{302.55, "USD", 0.0098}}, 2.97, ""},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(CheckValiuta(*sides(c.sides), c.sumLt), c.want);
  }
}

struct Addressee {
  int sign;
  const char* reference;
};

void fill(RowSet& set, const char* column, const std::vector<Addressee>& rows) {
  for (const Addressee& row : rows) {
    set.AddNew();
    set["Sign"] = row.sign;
    set[column] = row.reference;
  }
}

TEST(CheckRequiredAddr, Cases) {
  const struct {
    const char* name;
    std::vector<Addressee> required, present;
    bool want;
  } kCases[] = {
      {"nothing required", {}, {}, true},
      {"fewer rows than kinds", {{1, "O0000100"}}, {}, false},
      {"kind and side fit", {{1, "O0000100"}}, {{1, "O000010015"}}, true},
      {"other side", {{1, "O0000100"}}, {{-1, "O000010015"}}, false},
      {"other kind", {{1, "O0000100"}}, {{1, "O000140215"}}, false},
      {"a required kind twice counts once",
       {{1, "O0000100"}, {1, "O0000100"}},
       {{1, "O00001001"}},
       true},
      {"unasked ones do no harm", {{1, "O0000100"}}, {{1, "O00001001"}, {-1, "O00014011"}}, true},
      {"both sides",
       {{1, "O0000100"}, {-1, "O0000100"}},
       {{1, "O00001001"}, {-1, "O00001002"}},
       true},
      // The count is kept as it is: two of one kind stand in for a missing one, and overshoot.
      {"two rows of one side stand in for the other kind",
       {{1, "O0000100"}, {1, "O0001402"}},
       {{1, "O00001001"}, {1, "O00001002"}},
       true},
      {"the count may not overshoot",
       {{1, "O0000100"}},
       {{1, "O00001001"}, {1, "O00001002"}},
       false},
      {"a sign other than 1 is the credit side", {{0, "O0000100"}}, {{-1, "O00001001"}}, true},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const RowSetPtr required = RowSet::make(kRequiredAddr), present = RowSet::make(kBRProperties);
    fill(*required, "FOID", c.required);
    fill(*present, "FOIDR", c.present);
    EXPECT_EQ(CheckRequiredAddr(GetRequiredAddr(*required), present.get()), c.want);
  }
}

TEST(CheckRequiredAddr, WithoutASetNothingRequiredIsThere) {
  const RowSetPtr required = RowSet::make(kRequiredAddr);
  EXPECT_TRUE(CheckRequiredAddr(GetRequiredAddr(*required), nullptr));
  fill(*required, "FOID", {{1, "O0000100"}});
  EXPECT_FALSE(CheckRequiredAddr(GetRequiredAddr(*required), nullptr));
}

// Every row breaks all rules behind its own, so the order of the tests shows.
TEST(TestEntry, TellsTheFirstFaultInOrder) {
  const struct {
    const char* name;
    double SumA;
    const char *AccountD, *AccountC;
    Side side;
    bool addressee;
    std::string_view want;
  } kCases[] = {
      {"no sum", 0, "9", "9", {1, "", 0}, false, kBadSum},
      {"negative sum", -1, "9", "9", {1, "", 0}, false, kBadSum},
      {"unknown debit", 10, "9", "443", {1, "", 0}, false, kBadAccount},
      {"unknown credit", 10, "240", "9", {1, "", 0}, false, kBadAccount},
      {"currency", 10, "240", "0", {1, "", 0}, false, kNoCurrencyCode},
      {"addressee", 10, "0", "443", {2, "USD", 5}, false, kNoRequiredAddressee},
      {"all is well", 10, "0", "443", {2, "USD", 5}, true, ""},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const RowSetPtr BR = RowSet::make(kBR);
    BR->AddNew();
    (*BR)["SumA"] = c.SumA;
    (*BR)["AccountD"] = c.AccountD;
    (*BR)["AccountC"] = c.AccountC;
    const RowSetPtr currency = (*BR)["BRCurrency"].Rows();
    currency->AddNew();
    (*currency)["SumCurr"] = c.side.SumCurr;
    (*currency)["FCurrencyCode"] = c.side.code;
    (*currency)["RateCurr"] = c.side.RateCurr;
    fill(*(*BR)["RequiredAddr"].Rows(), "FOID", {{1, "O0000100"}});
    if (c.addressee) fill(*(*BR)["BRProperties"].Rows(), "FOIDR", {{1, "O00001007"}});
    const auto known = [](const std::string& account) {
      EXPECT_NE(account, "0") << "the account 0 is never looked up";
      return account == "240" || account == "443";
    };
    EXPECT_EQ(testEntry(*BR, known), c.want);
  }
}

}  // namespace
}  // namespace tolvex
