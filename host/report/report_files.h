// ReportFiles: reports as files of every format the program writes.
#pragma once

#include <functional>

#include "framework/date_time.h"
#include "host/objects/report_service.h"

namespace tolvex {

class ReportFiles final : public ReportOutput {
 public:
  // `clock` gives the moment that is noted in the files.
  explicit ReportFiles(std::function<DateTime()> clock) : clock_(std::move(clock)) {}
  std::string write(const ReportDocument& document, ReportFormat format, const std::string& path,
                    const ReportProgress& progress) override;

 private:
  std::function<DateTime()> clock_;
};

}  // namespace tolvex
