#include "debts/cover_variant.h"

#include "framework/conversions.h"

namespace tolvex {
namespace {

constexpr std::string_view kBetween = " - ", kDebit = " D", kCredit = " K";

std::string part(std::string_view account, bool credit) {
  return std::string(account).append(credit ? kCredit : kDebit);
}

}  // namespace

std::string CoverVariant::text() const {
  return part(primary, primaryOnCredit).append(kBetween) + part(secondary, !primaryOnCredit);
}

std::optional<CoverVariant> readCoverVariant(std::string_view text) {
  const std::size_t between = text.find(kBetween);
  if (between == std::string_view::npos) return std::nullopt;
  const std::string_view first = text.substr(0, between);
  const std::string_view second = text.substr(between + kBetween.size());
  return CoverVariant{AccountCodeOf(std::string(first)), AccountCodeOf(std::string(second)),
                      !first.ends_with(kDebit)};
}

}  // namespace tolvex
