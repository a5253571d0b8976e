// The program over demo books for measurements: without a login, at the end of the last year.
#pragma once

#include <string>

#include "host/script/program.h"

namespace tolvex::bench {

inline Program::Options programOver(const std::string& books) {
  Program::Options options;
  options.place = books;
  options.today = DateTime::Of(2004, 12, 31);
  return options;
}

}  // namespace tolvex::bench
