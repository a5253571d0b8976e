// Lock dates of accounts: until when entries of an account are closed, for everybody and for all
// but the head.
//
// A row here is one of the list of locks: "DateToHigh" (the head's date), "DateToLow" (everybody
// else's), null where there is no lock. The head's date is never the later one.
#pragma once

#include <optional>
#include <string_view>

#include "framework/recordset.h"

namespace tolvex {

struct LockDates {
  std::optional<DateTime> high, low;
  bool any() const { return high || low; }
  bool operator==(const LockDates&) const = default;
};

// The dates after the user moved one of them: the other one follows, so that the order holds. A
// head's date needs the other one; without the other one there is none.
LockDates afterHighMoved(LockDates dates);
LockDates afterLowMoved(LockDates dates);

LockDates lockDatesOf(RowSet& row);
// Writes the dates and who set them into the current row; without dates both become null.
void writeLock(RowSet& row, const LockDates& dates, std::string_view user);
// The same in every row that the filter lets through. The cursor stays.
void writeLocks(RowSet& rows, const LockDates& dates, std::string_view user);

}  // namespace tolvex
