#include "accounts/lock_dates.h"

namespace tolvex {
namespace {

std::optional<DateTime> dateOf(const Variant& value) {
  return value.IsDate() ? std::optional(value.AsDate()) : std::nullopt;
}

Variant dateOrNull(const std::optional<DateTime>& date) {
  return date ? Variant(*date) : Variant(Null{});
}

}  // namespace

LockDates afterHighMoved(LockDates dates) {
  if (dates.high && (!dates.low || *dates.high > *dates.low)) dates.low = dates.high;
  return dates;
}

LockDates afterLowMoved(LockDates dates) {
  if (dates.high && (!dates.low || *dates.low < *dates.high)) dates.high = dates.low;
  return dates;
}

LockDates lockDatesOf(RowSet& row) {
  return {dateOf(row["DateToHigh"].Value()), dateOf(row["DateToLow"].Value())};
}

void writeLock(RowSet& row, const LockDates& dates, std::string_view user) {
  row["DateToHigh"] = dateOrNull(dates.high);
  row["DateToLow"] = dateOrNull(dates.low);
  row["UserOIDR"] = user;
}

void writeLocks(RowSet& rows, const LockDates& dates, std::string_view user) {
  const Variant place = rows.Bookmark();
  ForEachRow(rows, [&](RowSet& row) { writeLock(row, dates, user); });
  rows.SetBookmark(place);
}

}  // namespace tolvex
