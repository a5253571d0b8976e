#include "framework/date_time.h"

#include <chrono>

#include "framework/results.h"

namespace tolvex {

namespace {

constexpr std::int64_t kDaySeconds = 86400;

std::int64_t secondOfDay(std::int64_t seconds) {
  return ((seconds % kDaySeconds) + kDaySeconds) % kDaySeconds;
}

std::chrono::year_month_day civil(std::int64_t seconds) {
  const std::int64_t day = (seconds - secondOfDay(seconds)) / kDaySeconds;
  return std::chrono::sys_days(std::chrono::days(day));
}

void put(std::string& out, int value, int digits) {
  for (int unit = digits == 4 ? 1000 : 10; unit > 0; unit /= 10) {
    out += static_cast<char>('0' + value / unit % 10);
  }
}

// Reads exactly `digits` digits at `at` and moves on; -1 when they are not there.
int take(std::string_view text, std::size_t& at, std::size_t digits) {
  if (at + digits > text.size()) return -1;
  int value = 0;
  for (const std::size_t end = at + digits; at < end; ++at) {
    if (text[at] < '0' || text[at] > '9') return -1;
    value = value * 10 + (text[at] - '0');
  }
  return value;
}

bool takeMark(std::string_view text, std::size_t& at, char mark) {
  if (at >= text.size() || text[at] != mark) return false;
  ++at;
  return true;
}

bool secondsOf(int year, int month, int day, int hour, int minute, int second, std::int64_t& out) {
  using namespace std::chrono;
  if (year < 1 || year > 9999 || month < 1 || day < 1) return false;
  const year_month_day date{std::chrono::year(year), std::chrono::month(unsigned(month)),
                            std::chrono::day(unsigned(day))};
  if (!date.ok() || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 ||
      second > 59) {
    return false;
  }
  out = sys_days(date).time_since_epoch().count() * kDaySeconds;
  out += hour * 3600 + minute * 60 + second;
  return true;
}

}  // namespace

DateTime DateTime::Of(int year, unsigned month, unsigned day, int hour, int minute, int second) {
  DateTime moment;
  if (month > 12 || day > 31 ||
      !secondsOf(year, int(month), int(day), hour, minute, second, moment.seconds_)) {
    throw RowSetError(RowSetError::TypeMismatch, "Tokios datos nėra!");
  }
  return moment;
}

std::optional<DateTime> DateTime::Parse(std::string_view text) {
  std::size_t at = 0;
  const int year = take(text, at, 4);
  const char mark = at < text.size() && text[at] == '-' ? '-' : '.';
  if (year < 0 || !takeMark(text, at, mark)) return std::nullopt;
  const int month = take(text, at, 2);
  if (month < 0 || !takeMark(text, at, mark)) return std::nullopt;
  const int day = take(text, at, 2);
  if (day < 0) return std::nullopt;
  int hour = 0, minute = 0, second = 0;
  if (at < text.size()) {
    if (!takeMark(text, at, ' ')) return std::nullopt;
    hour = take(text, at, 2);
    if (hour < 0 || !takeMark(text, at, ':')) return std::nullopt;
    minute = take(text, at, 2);
    if (minute >= 0 && takeMark(text, at, ':')) second = take(text, at, 2);
  }
  DateTime moment;
  if (at != text.size() || !secondsOf(year, month, day, hour, minute, second, moment.seconds_)) {
    return std::nullopt;
  }
  return moment;
}

DateTime DateTime::FromSeconds(std::int64_t seconds) {
  DateTime moment;
  moment.seconds_ = seconds;
  return moment;
}

DateTime DateTime::FromDayNumber(int yyyymmdd) {
  if (yyyymmdd < 0) throw RowSetError(RowSetError::TypeMismatch, "Tokios datos nėra!");
  return Of(yyyymmdd / 10000, unsigned(yyyymmdd / 100 % 100), unsigned(yyyymmdd % 100));
}

int DateTime::Year() const { return int(civil(seconds_).year()); }
unsigned DateTime::Month() const { return unsigned(civil(seconds_).month()); }
unsigned DateTime::Day() const { return unsigned(civil(seconds_).day()); }
int DateTime::Hour() const { return int(secondOfDay(seconds_) / 3600); }
int DateTime::Minute() const { return int(secondOfDay(seconds_) / 60 % 60); }
int DateTime::Second() const { return int(secondOfDay(seconds_) % 60); }

DateTime DateTime::Date() const { return FromSeconds(seconds_ - secondOfDay(seconds_)); }

DateTime DateTime::AddDays(std::int64_t days) const {
  return FromSeconds(seconds_ + days * kDaySeconds);
}

int DateTime::DayNumber() const {
  const auto day = civil(seconds_);
  return int(day.year()) * 10000 + int(unsigned(day.month())) * 100 + int(unsigned(day.day()));
}

std::string DateTime::Text() const {
  const auto day = civil(seconds_);
  std::string out;
  put(out, int(day.year()), 4);
  out += '.';
  put(out, int(unsigned(day.month())), 2);
  out += '.';
  put(out, int(unsigned(day.day())), 2);
  return out;
}

std::string DateTime::LongText() const {
  std::string out = Text() + ' ';
  put(out, Hour(), 2);
  out += ':';
  put(out, Minute(), 2);
  out += ':';
  put(out, Second(), 2);
  return out;
}

}  // namespace tolvex
