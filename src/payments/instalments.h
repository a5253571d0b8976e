// Instalments: how a sum falls due, by whole percents of it and days until payment.
//
// All instalments of a template share 100 percent; what is not given out yet is the rest.
#pragma once

#include <string_view>

#include "framework/recordset.h"

namespace tolvex {

struct Instalment {
  int days = 0;
  int percent = 0;
  bool operator==(const Instalment&) const = default;
};

inline constexpr int kWholePercent = 100;

// An empty set of instalments: ID, PaymentTemplateID, Days, Percent.
RowSetPtr noInstalments();
// What is left of 100 percent; below 0 when more was given out.
int restPercent(RowSet& items);
// The most that an instalment may take: the rest, or what it has already when that is more.
int percentLimit(int rest, int own);
// What is taken for a typed percent: nothing, or more than the limit, means all of it.
int takenPercent(int typed, int limit);
// The whole number that a text begins with, rounded; 0 for none, at most 32767. Blanks do not
// count.
int leadingNumber(std::string_view text);

}  // namespace tolvex
