// ReportFiles: reports as files of every format the program writes.
#pragma once

#include "host/objects/report_service.h"

namespace tolvex {

class ReportFiles final : public ReportOutput {
 public:
  std::string write(const ReportDocument& document, ReportFormat format, const std::string& path,
                    const ReportProgress& progress) override;
};

}  // namespace tolvex
