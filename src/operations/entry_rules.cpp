#include "operations/entry_rules.h"

#include "framework/references.h"
#include "framework/results.h"
#include "framework/rounding.h"
#include "framework/text.h"

namespace tolvex {

std::string addresseeKey(int sign, std::string_view kindOrReference) {
  return (sign == 1 ? "D" : "C") + std::string(kindOf(kindOrReference));
}

std::string CheckValiuta(RowSet& BRCurrency, double sumLt) {
  Field SumCurr = BRCurrency["SumCurr"], RateCurr = BRCurrency["RateCurr"];
  Field code = BRCurrency["FCurrencyCode"];
  for (BRCurrency.MoveFirst(); !BRCurrency.Eof(); BRCurrency.MoveNext()) {
    if (!(SumCurr.Number() > 0)) continue;
    if (length(code.Text()) != 3) return std::string(kNoCurrencyCode);
    if (RateCurr.Number() == 0) return std::string(kNoCurrencyRate);
    // No bias on the right: only a value computed from a currency sum is lifted.
    if (roundLt(SumCurr.Number() * RateCurr.Number()) != roundHalfEven(sumLt, 2)) {
      return std::string(kRateMismatch);
    }
  }
  return {};
}

ParamDictionary GetRequiredAddr(RowSet& RequiredAddr) {
  ParamDictionary required;
  Field Sign = RequiredAddr["Sign"], FOID = RequiredAddr["FOID"];
  ForEachRow(RequiredAddr, [&](RowSet&) {
    const std::string key = addresseeKey(static_cast<int>(Sign.Number()), FOID.Text());
    if (!required.Exists(key)) required.Add(key, FOID.Text());
  });
  return required;
}

bool CheckRequiredAddr(const ParamDictionary& required, RowSet* BRProperties) {
  if (required.Count() == 0) return true;
  if (!BRProperties || BRProperties->RecordCount() < required.Count()) return false;
  std::size_t found = 0;
  Field Sign = (*BRProperties)["Sign"], FOIDR = (*BRProperties)["FOIDR"];
  ForEachRow(*BRProperties, [&](RowSet&) {
    if (required.Exists(addresseeKey(static_cast<int>(Sign.Number()), FOIDR.Text()))) ++found;
  });
  return found == required.Count();
}

std::string testEntry(RowSet& BR, const KnowsAccount& knowsAccount) {
  const auto known = [&](const char* column) {
    const std::string account(BR[column].Text());
    return account == "0" || knowsAccount(account);
  };
  if (!(BR["SumA"].Number() > 0)) return std::string(kBadSum);
  if (!known("AccountD") || !known("AccountC")) return std::string(kBadAccount);
  std::string message = CheckValiuta(*BR["BRCurrency"].Rows(), BR["SumA"].Number());
  if (!message.empty()) return message;
  const ParamDictionary required = GetRequiredAddr(*BR["RequiredAddr"].Rows());
  if (!CheckRequiredAddr(required, BR["BRProperties"].Rows().get())) {
    return std::string(kNoRequiredAddressee);
  }
  return {};
}

std::string entryFailure(std::string_view message, RowSet& BR, std::string_view sum) {
  std::string text(message);
  text.append(kLineBreak).append(BR["AccountD"].Text()).append(" ");
  text.append(BR["AccountC"].Text()).append(" ").append(sum);
  return text;
}

}  // namespace tolvex
