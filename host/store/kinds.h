// Kinds of objects that the store itself tells apart.
#pragma once

#include <string_view>

#include "framework/references.h"

namespace tolvex::store {

inline constexpr std::string_view kOperationKind = "O0201500";
inline constexpr std::string_view kFirmKind = "O0000100", kPersonKind = "O0001402",
                                  kEmployeeKind = "O0001401";

// The generic operation and the documents of the money screens, O0201501 to O0201506: rows of one
// table under one count of ids.
inline bool isOperationKind(std::string_view kind) {
  return kind.size() == kKindLength && kind.starts_with("O020150") && kind[7] >= '0' &&
         kind[7] <= '6';
}

// The operation's id behind a reference of any of its kinds, 0 when it names something else.
inline int operIdOf(std::string_view reference) {
  return isRef(reference) && isOperationKind(kindOf(reference)) ? idOf(reference) : 0;
}

// Who can owe or be owed: a firm, a person or an employee.
inline bool isParty(std::string_view reference) {
  if (!isRef(reference)) return false;
  const std::string_view kind = kindOf(reference);
  return kind == kFirmKind || kind == kPersonKind || kind == kEmployeeKind;
}

}  // namespace tolvex::store
