#include "host/store/moments.h"

#include <algorithm>
#include <ctime>

namespace tolvex::store {

DateTime localNow() {
  const std::time_t now = std::time(nullptr);
  const std::tm local = *std::localtime(&now);  // the program runs on one thread
  return DateTime::Of(local.tm_year + 1900, static_cast<unsigned>(local.tm_mon + 1),
                      static_cast<unsigned>(local.tm_mday), local.tm_hour, local.tm_min,
                      std::min(local.tm_sec, 59));  // a leap second
}

std::string storedMoment(DateTime at) {
  std::string text = at.LongText();
  text[4] = text[7] = '-';
  return text;
}

std::string shownMoment(std::string stored) {
  if (stored.size() > 7) stored[4] = stored[7] = '.';
  return stored;
}

}  // namespace tolvex::store
