#include "host/cards/working_days.h"

namespace tolvex {
namespace {

struct Holiday {
  unsigned month, day;
  int since;  // the year
};
constexpr Holiday kHolidays[] = {
    {1, 1, 0},     {2, 16, 0}, {3, 11, 0},    {5, 1, 0},      {6, 24, 2003}, {7, 6, 0},
    {8, 15, 1999}, {11, 1, 0}, {11, 2, 2020}, {12, 24, 2009}, {12, 25, 0},   {12, 26, 0},
};

// Easter Sunday of the Gregorian calendar, by the rule of Meeus, Jones and Butcher.
DateTime easter(int year) {
  const int a = year % 19, b = year / 100, c = year % 100;
  const int d = b / 4, e = b % 4, g = (8 * b + 13) / 25;
  const int h = (19 * a + b - d - g + 15) % 30;
  const int i = c / 4, k = c % 4;
  const int l = (32 + 2 * e + 2 * i - h - k) % 7;
  const int m = (a + 11 * h + 19 * l) / 433;
  const int month = (h + l - 7 * m + 90) / 25;
  const int day = (h + l - 7 * m + 33 * month + 19) % 32;
  return DateTime::Of(year, static_cast<unsigned>(month), static_cast<unsigned>(day));
}

// 0 Monday … 6 Sunday; the first of January 1970 was a Thursday.
int weekday(DateTime day) {
  constexpr std::int64_t kSecondsADay = 86400;
  const std::int64_t days = day.Date().Seconds() / kSecondsADay;
  return static_cast<int>(((days + 3) % 7 + 7) % 7);
}

}  // namespace

bool isWorkingDay(DateTime day) {
  if (weekday(day) >= 5) return false;
  for (const Holiday& holiday : kHolidays)
    if (day.Month() == holiday.month && day.Day() == holiday.day && day.Year() >= holiday.since)
      return false;
  return day.Date() != easter(day.Year()).AddDays(1);
}

std::vector<DateTime> workingDays(DateTime from, DateTime to) {
  std::vector<DateTime> days;
  for (DateTime day = from.Date(); day <= to.Date(); day = day.AddDays(1))
    if (isWorkingDay(day)) days.push_back(day);
  return days;
}

}  // namespace tolvex
