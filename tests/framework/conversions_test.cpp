#include "framework/conversions.h"

#include <gtest/gtest.h>

#include "framework/object_contract.h"
#include "tests/support/fake_host.h"

namespace tolvex {
namespace {

TEST(Conversions, FormatSumHidesZeroAndRests) {
  const struct {
    double value;
    const char* want;
  } kCases[] = {{0.005, " "},
                {-0.005, " "},
                {0.0099999999999999534, " "},
                {0.01, "0,01"},
                {-0.01, "-0,01"},
                {1.005, "1,01"},
                {-1.005, "-1,00"},
                {1234.5,
                 "1\xC2\xA0"
                 "234,50"}};
  for (const auto& c : kCases) EXPECT_EQ(FormatSum(c.value), c.want) << c.value;
}

TEST(Conversions, NumberKeys) {
  const struct {
    char32_t key;
    const char* text;
    char32_t want;
  } kCases[] = {{'5', "1,2", '5'}, {8, "1", 8},     {'.', "12", ','}, {',', "12", ','},
                {'.', "1,2", 0},   {',', "1,2", 0}, {'-', "", 0},     {U'ž', "", 0}};
  for (const auto& c : kCases) EXPECT_EQ(FilterNumberKey(c.key, c.text), c.want) << c.text;
  for (const char32_t key : {U'0', U'9', U'\b'}) EXPECT_EQ(FilterDigitKey(key), key);
  for (const char32_t key : {U'/', U':', U'a', U'-', U',', U'ą'})
    EXPECT_EQ(FilterDigitKey(key), 0u);
}

TEST(Conversions, NumberTextsAreRewritten) {
  const struct {
    const char* text;
    bool zeroIfBad;
    const char* want;
  } kCases[] = {{"12,345", true, "12,35"},
                {"1234", true, "1234,00"},
                {"12,", true, "12,00"},
                {"12a", true, "0,00"},
                {"12a", false, ""},
                {"", false, ""},
                {"", true, "0,00"},
                {",", false, ""},
                {"12345678901234", true, "12345678901234,00"},
                {"123456789012345", true, "0,00"},
                {"(1)", false, ""}};
  for (const auto& c : kCases) {
    EXPECT_EQ(NormalizeNumberText(c.text, 2, c.zeroIfBad), c.want) << c.text;
  }
}

TEST(Conversions, AbsentValues) {
  const DateTime day = DateTime::Of(2003, 2, 9);
  EXPECT_EQ(NullToDouble(Null{}), 0);
  EXPECT_EQ(NullToDouble("12,5"), 12.5);
  EXPECT_EQ(NullToText(Variant()), "");
  EXPECT_EQ(NullToText(12.5), "12,5");
  EXPECT_EQ(NullToDate(Null{}, day), day);
  EXPECT_EQ(NullToDate("2003.01.01", day), DateTime::Of(2003, 1, 1));
  for (const Variant& yes : {Variant(true), Variant(-1), Variant("True"), Variant("1")}) {
    EXPECT_TRUE(NullToBool(yes)) << yes.Show();
  }
  for (const Variant& no : {Variant(), Variant(Null{}), Variant(0), Variant(""), Variant("0")}) {
    EXPECT_FALSE(NullToBool(no)) << no.Show();
  }
  EXPECT_EQ(CutTrailing(" a;b; "), "a;b");
  EXPECT_EQ(CutTrailing("ž"), "");
  EXPECT_EQ(CutTrailing("  "), "");
}

TEST(Conversions, Dates) {
  EXPECT_EQ(LastDayOfMonth(DateTime::Of(2004, 2, 10)), DateTime::Of(2004, 2, 29));
  EXPECT_EQ(LastDayOfMonth(DateTime::Of(2003, 12, 31)), DateTime::Of(2003, 12, 31));
  EXPECT_EQ(FirstDayOfMonth(DateTime::Of(2003, 12, 31)), DateTime::Of(2003, 12, 1));
  EXPECT_EQ(DateInWords(DateTime::Of(2003, 2, 9), ""), "2003 m. vasario 9 d.");
  EXPECT_EQ(DateInWords(DateTime::Of(2003, 12, 1), "m"), "gruodžio");
  EXPECT_EQ(DateInWords(DateTime::Of(2003, 12, 1), "x"), "");
}

TEST(Conversions, AccountTexts) {
  ParamDictionary accounts;
  accounts.Add("240", "Pirkėjai");
  accounts.Add("0", "Pradiniai likučiai");
  const struct {
    const char* name;
    const char* text;
    bool mustExist, skipZero;
    const char *shown, *message;
  } kCases[] = {
      {"a code gets its name", "240", true, false, "240 Pirkėjai", ""},
      {"an old name is replaced", "240 Kasa", true, true, "240 Pirkėjai", ""},
      {"blanks in front", "  240", true, false, "240 Pirkėjai", ""},
      {"zero with its name", "0", true, false, "0 Pradiniai likučiai", ""},
      {"zero left alone", "0 x", true, true, "0", ""},
      {"unknown", "9 x", true, false, "9", "Klaidinga  balansinės sąskaitos reikšmė !"},
      {"unknown but allowed", "9 x", false, false, "9", ""},
      {"empty", "", true, false, "", "Nenurodyta  balansinė sąskaita !"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.name);
    const AccountBoxCheck check = checkAccountText(c.text, accounts, c.mustExist, c.skipZero);
    EXPECT_EQ(check.text, c.shown);
    EXPECT_EQ(check.message, c.message);
  }
  EXPECT_EQ(AccountCodeOf("240 Pirkėjai ir kt."), "240");
  EXPECT_FALSE(ExistsUnlessAll(accounts, "*"));
  EXPECT_TRUE(ExistsUnlessAll(accounts, "240"));
}

class AccountForm final : public ui::Form {
 public:
  explicit AccountForm(HostContext& host) : Form(host, "frmTest") {}
  const char* picture() const override { return "txtAccount txtOther"; }
  ui::TextBox txtAccount{this, "txtAccount"}, txtOther{this, "txtOther"};
};

TEST(Conversions, ARefusedAccountIsToldAndKeepsTheFocus) {
  test::FakeHost host;
  AccountForm form(host);
  form.setFocus(form.txtOther);
  form.txtAccount.text = "9 x";
  EXPECT_FALSE(CheckAccountBox(form.txtAccount, ParamDictionary{}, true, false));
  EXPECT_EQ(form.focus(), &form.txtAccount);
  EXPECT_EQ(host.dialogs().takeTexts().size(), 1u);
}

TEST(HostContextVariable, TheFirstHostStays) {
  EXPECT_THROW(hostContext(), RowSetError);
  test::FakeHost first, second;
  adoptHostContext(&first);
  adoptHostContext(&second);
  EXPECT_EQ(&hostContext(), &first);
  adoptHostContext(nullptr);
  EXPECT_THROW(hostContext(), RowSetError);
}

}  // namespace
}  // namespace tolvex
