// VAT marks of an entry: what the user chooses in one list and what the record keeps in two fields.
#pragma once

#include <string>
#include <vector>

#include "framework/recordset.h"

namespace tolvex {

// The kinds of trade operation in the order of the list. A return to a supplier is a purchase that
// restores, a return from a customer a sale that restores.
const std::vector<std::string>& tradeOperationTexts();
// What the entry's sum is: nothing, the value of goods, the VAT.
const std::vector<std::string>& vatMeaningTexts();

struct TradeMarks {
  int type = 0;           // 0 no trade, 1 purchase, 2 sale
  int restoringSign = 1;  // -1 takes back
  bool operator==(const TradeMarks&) const = default;
};
TradeMarks tradeMarks(int index);     // an index outside of the list is no trade
int tradeIndex(TradeMarks marks);     // of an unknown type 0
TradeMarks tradeMarksOf(RowSet& BR);  // of the entry at the cursor; an absent sign reads as 1

}  // namespace tolvex
