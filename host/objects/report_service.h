// ReportService: what the module and the lists ask about reports, over the stage that shows them
// and the output that writes them.
#pragma once

#include <memory>
#include <string>

#include "host/objects/stage.h"
#include "platform/host.h"

namespace tolvex {

// Writes a report into a file.
class ReportOutput {
 public:
  virtual ~ReportOutput() = default;
  // "" or why it was not written, for the user; the file is then as it was before. kStopped when
  // `progress` stopped it.
  virtual std::string write(const ReportDocument& document, ReportFormat format,
                            const std::string& path, const ReportProgress& progress) = 0;
  static constexpr const char* kStopped = "Nutraukta.";
};

class ReportService final : public ReportViewer {
 public:
  ReportService(HostContext& host, Stage& stage, ReportOutput* output)
      : host_(host), stage_(stage), output_(output) {}
  void show(ReportDocument document, bool withExcel) override;
  bool exportAs(const ReportDocument& document, ReportFormat format,
                std::string_view stem) override;
  void keepPage(const ReportDocument& document) override;

 private:
  HostContext& host_;
  Stage& stage_;
  ReportOutput* output_;
};

}  // namespace tolvex
