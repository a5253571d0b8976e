// The currency sides of an entry as two plain values, read from and written to BRCurrency.
#pragma once

#include <string>

#include "framework/recordset.h"
#include "operations/screen/rate_book.h"
#include "platform/numbers.h"

namespace tolvex {

struct CurrencySide {
  std::string code = std::string(kNoCurrency);
  double rateLtPerUnit = 0;
  double sumCurr = 0;
  bool hasCode() const { return isCurrency(code); }
  bool operator==(const CurrencySide&) const = default;
};

// "100,00 USD" for lists; "" in the base currency.
std::string currencyText(const CurrencySide& side, const NumberFormat& format);

// The side of the entry at the cursor; without a row in the base currency.
CurrencySide currencySide(RowSet& BR, int sign);

// Writes both sides of the entry at the cursor. A side has a row when it has a code and a sum above
// 0; a side with a code and no sum takes rate and sum of the other side in the same currency. A
// side left as it was read keeps its row, also one without a sum, which marks a litas sum as
// counting in that currency.
void writeCurrencySides(RowSet& BR, CurrencySide debit, CurrencySide credit);

}  // namespace tolvex
