// The sums of a new entry: its value in litas, whether its currency sides fit, and the rows that
// keep them.
#pragma once

#include <string>
#include <string_view>

#include "framework/recordset.h"
#include "operations/new_entry.h"

namespace tolvex {

// Litas by the first currency if it has a rate, else by the second if it has a sum, else as given.
double litasSum(const EntrySums& sums);

// Whether sign, codes, rates and sums belong together: a currency that says one of sum and rate
// says the other and has a code.
bool sumsAreComplete(const EntrySums& sums);

// Two currencies must come to the same litas.
bool sidesAgree(const EntrySums& sums);

// The values of a refused call as lists of quoted texts, a line each but for the first: what was
// given before the currencies, the first currency, the second, the sign.
std::string describeSums(std::string_view given, const EntrySums& sums);

// What a missing sign means for the currency rows.
enum class NoSign {
  BothSides,   // one currency stands on both sides: the first, or the second if there is no first
  FirstDebit,  // the first currency is the debit side's
};
// Adds the currency rows of the entry `guid`; the base currency has none.
void addCurrencyRows(RowSet& BRCurrency, std::string_view guid, const EntrySums& sums, NoSign rule);

}  // namespace tolvex
