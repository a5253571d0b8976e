#include "host/report/report_files.h"

#include "host/report/fonts.h"
#include "host/report/pdf.h"

namespace tolvex {

std::string ReportFiles::write(const ReportDocument& document, ReportFormat format,
                               const std::string& path, const ReportProgress& progress) {
  report::needFonts();
  switch (format) {
    case ReportFormat::Pdf:
      return report::writePdf(document, path, progress);
    case ReportFormat::Excel:
    case ReportFormat::Rtf:
      break;
  }
  return "Šio formato bylų programa dar nerašo.";
}

}  // namespace tolvex
