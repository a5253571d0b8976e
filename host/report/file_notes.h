// What the writing of a report's file is told besides the report.
#pragma once

#include <cstddef>
#include <optional>

#include "framework/date_time.h"
#include "platform/report.h"

namespace tolvex::report {

struct FileNotes {
  std::optional<DateTime> made;  // noted in the file; absent: not noted, or the machine's clock
  ReportProgress progress;       // asked now and then; false stops the writing
};

// Rows of all tables, and how many of them have been written.
class RowCount {
 public:
  RowCount(const ReportDocument& document, const ReportProgress& progress) : progress_(progress) {
    for (const Block& block : document.body)
      if (const auto* table = std::get_if<ReportTable>(&block)) all_ += table->rows.size();
  }
  // False: stop.
  bool next() {
    if (++done_ % kEvery != 0 || !progress_) return true;
    return progress_(static_cast<double>(done_) / static_cast<double>(all_));
  }

 private:
  static constexpr std::size_t kEvery = 500;
  const ReportProgress& progress_;
  std::size_t all_ = 0, done_ = 0;
};

}  // namespace tolvex::report
