// What is odd about a code, an account number: "" or words for the user, without a
// full stop. Nothing here refuses:
// foreign partners and old codes do not follow the rules.
#pragma once

#include <string>
#include <string_view>

namespace tolvex {

std::string companyCodeRemark(std::string_view code);      // 7 or 9 digits, the last controls
std::string vatCodeRemark(std::string_view code);          // "LT" and 9 or 12 digits
std::string personCodeRemark(std::string_view code);       // 11 digits: sex, date of birth, control
std::string accountNumberRemark(std::string_view number);  // IBAN

}  // namespace tolvex
