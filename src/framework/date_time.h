// Dates and moments as accountants write them: local civil time in whole seconds, no time zone.
//
// The text form everywhere (records, parameters, filters, screens) is yyyy.mm.dd, with a time
// part " hh:mm:ss" only where one is asked for. An unreadable text is std::nullopt, never a guess.
#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvex {

class DateTime {
 public:
  // 1970.01.01 00:00; use Of or Parse for anything meant.
  DateTime() = default;

  // The given civil moment. Throws RowSetError (TypeMismatch) for a day that does not exist.
  static DateTime Of(int year, unsigned month, unsigned day, int hour = 0, int minute = 0,
                     int second = 0);
  // Reads "yyyy.mm.dd" or "yyyy-mm-dd", then optionally a blank and "hh:mm[:ss]".
  static std::optional<DateTime> Parse(std::string_view text);
  // From a whole number of seconds since 1970-01-01 00:00 of the same calendar.
  static DateTime FromSeconds(std::int64_t seconds);
  // From the number yyyymmdd in which the store keeps days. Throws like Of.
  static DateTime FromDayNumber(int yyyymmdd);

  int Year() const;
  unsigned Month() const;
  unsigned Day() const;
  int Hour() const;
  int Minute() const;
  int Second() const;

  DateTime Date() const;  // the same day at 00:00
  DateTime AddDays(std::int64_t days) const;
  std::int64_t Seconds() const { return seconds_; }
  int DayNumber() const;  // yyyymmdd

  std::string Text() const;      // "yyyy.mm.dd"
  std::string LongText() const;  // "yyyy.mm.dd hh:mm:ss"

  auto operator<=>(const DateTime&) const = default;

 private:
  std::int64_t seconds_ = 0;
};

}  // namespace tolvex
