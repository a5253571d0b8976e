// Codes that may be saved but are remarked on.
#include "host/cards/code_checks.h"

#include <gtest/gtest.h>

namespace tolvex {
namespace {

using Remark = std::string (*)(std::string_view);
struct Case {
  Remark remark;
  const char *text, *part;  // of the remark; "" when there is none
};
constexpr Case kCases[] = {
    {companyCodeRemark, "111111113", ""},
    {companyCodeRemark, "111111111", "kontrolinis"},
    {companyCodeRemark, "1000038", ""},
    {companyCodeRemark, "100000134", ""},  // the second weights decide
    {companyCodeRemark, "100000810", ""},  // neither weights give a digit: 0
    {companyCodeRemark, "12345678", "7 arba 9"},
    {companyCodeRemark, "11111111a", "7 arba 9"},
    {vatCodeRemark, "LT111111113", ""},
    {vatCodeRemark, "LT111111114", "kontrolinis"},
    {vatCodeRemark, "LT100001919017", ""},
    {vatCodeRemark, "LT100001919018", "kontrolinis"},
    {vatCodeRemark, "LT11111111", "9 arba 12"},
    {vatCodeRemark, "LT11111111X", "9 arba 12"},
    {vatCodeRemark, "LV40003567907", ""},
    {vatCodeRemark, "111111113", "šalies raidėmis"},
    {personCodeRemark, "33309240064", ""},
    {personCodeRemark, "33309240065", "kontrolinis"},
    {personCodeRemark, "33313240064", "gimimo data"},
    {personCodeRemark, "33302300064", "gimimo data"},
    {personCodeRemark, "03309240064", "gimimo data"},
    {personCodeRemark, "3330924006", "11 skaitmenų"},
    {personCodeRemark, "333092400644", "11 skaitmenų"},
    {accountNumberRemark, "LT121000011101001000", ""},
    {accountNumberRemark, "lt12 1000 0111 0100 1000", ""},
    {accountNumberRemark, "LT121000011101001001", "kontroliniai"},
    {accountNumberRemark, "LT12100001110100100", "20 ženklų"},
    {accountNumberRemark, "DE89370400440532013000", ""},
    {accountNumberRemark, "GB82WEST12345698765432", ""},
    {accountNumberRemark, "GB82WEST12345698765433", "kontroliniai"},
    {accountNumberRemark, "12345", "IBAN"},
    {accountNumberRemark, "LT12-1000-0111-0100-1000", "IBAN"},
};

TEST(CodeChecks, RemarkOnWhatDoesNotFollowTheRules) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.text);
    const std::string remark = c.remark(c.text);
    if (*c.part) {
      EXPECT_NE(remark.find(c.part), std::string::npos) << remark;
    } else {
      EXPECT_EQ(remark, "");
    }
  }
}

}  // namespace
}  // namespace tolvex
