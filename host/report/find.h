// Finding words in laid out pages.
#pragma once

#include <QString>
#include <vector>

#include "host/report/pages.h"

namespace tolvex::report {

struct Hit {
  std::size_t page = 0, text = 0;  // PageMarks::texts[text] of that page
  qsizetype from = 0, count = 0;   // letters of it
};

// In reading order, letter case aside; a blank finds a no-break blank too. At most `most`.
std::vector<Hit> find(const Pages& pages, const QString& words, std::size_t most = 100'000);

}  // namespace tolvex::report
