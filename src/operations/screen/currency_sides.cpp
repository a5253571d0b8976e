#include "operations/screen/currency_sides.h"

#include "framework/conversions.h"
#include "framework/text.h"

namespace tolvex {
namespace {

// Moves to the row of the side; false when there is none.
bool findSide(RowSet& rows, int sign) {
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    const bool debit = rows["Sign"].Number() == 1;
    if (debit == (sign == 1)) return true;
  }
  return false;
}

void writeSide(RowSet& BR, int sign, const CurrencySide& side) {
  if (side == currencySide(BR, sign)) return;
  RowSet& rows = *BR["BRCurrency"].Rows();
  const bool present = findSide(rows, sign);
  if (!side.hasCode() || side.sumCurr <= 0) {
    if (present) rows.Delete();
    return;
  }
  if (!present) {
    rows.AddNew();
    rows["BRGUID"] = BR["GUID"].Text();
    rows["Sign"] = sign;
  }
  rows["FCurrencyCode"] = side.code;
  rows["RateCurr"] = side.rateLtPerUnit;
  rows["SumCurr"] = side.sumCurr;
  rows.Update();
}

// A side that names the other side's currency and leaves the sum out means the same money.
void takeOver(CurrencySide& side, const CurrencySide& other) {
  if (!side.hasCode() || side.code != other.code) return;
  if (side.sumCurr > 0 || other.sumCurr <= 0) return;
  side = other;
}

}  // namespace

std::string currencyText(const CurrencySide& side, const NumberFormat& format) {
  return side.hasCode() ? trim(FormatSum(side.sumCurr, format) + " " + side.code) : std::string();
}

CurrencySide currencySide(RowSet& BR, int sign) {
  CurrencySide side;
  RowSet& rows = *BR["BRCurrency"].Rows();
  if (findSide(rows, sign)) {
    side.code = rows["FCurrencyCode"].Text();
    side.rateLtPerUnit = rows["RateCurr"].Number();
    side.sumCurr = rows["SumCurr"].Number();
  }
  return side;
}

void writeCurrencySides(RowSet& BR, CurrencySide debit, CurrencySide credit) {
  takeOver(debit, credit);
  takeOver(credit, debit);
  writeSide(BR, 1, debit);
  writeSide(BR, -1, credit);
}

}  // namespace tolvex
