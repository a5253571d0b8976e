// The document behind a payment order or a money receipt: the fields of its Parameters text in
// columns of their own, so that transfers, last orders and imported lines are found by an index.
#pragma once

#include <optional>
#include <string>

#include "host/store/oper_rows.h"

namespace tolvex::store {

struct DocRow {
  std::string cur{kBaseCode};
  double rate = 0;
  std::optional<std::string> myAccountRef, clientRef, clientAccountRef, internalCode, paymentCode;
  int priority = 1;
  std::optional<int> importDay;
  std::optional<std::string> importKey;  // the bank's own id of the line
  bool operator==(const DocRow&) const = default;
};

// Null for a kind that has no such document.
std::optional<DocRow> docOf(const HeaderRow& header);
// Replaces the stored document by what the header says now; `stored` tells that there may be one.
void writeDoc(Database& db, const HeaderRow& header, bool stored);

}  // namespace tolvex::store
