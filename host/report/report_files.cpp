#include "host/report/report_files.h"

#include "host/report/fonts.h"
#include "host/report/pdf.h"
#include "host/report/rtf.h"
#include "host/report/xlsx.h"

namespace tolvex {

std::string ReportFiles::write(const ReportDocument& document, ReportFormat format,
                               const std::string& path, const ReportProgress& progress) {
  report::needFonts();
  switch (format) {
    case ReportFormat::Pdf:
      return report::writePdf(document, path, progress);
    case ReportFormat::Excel:
      return report::writeXlsx(document, path, {clock_(), progress});
    case ReportFormat::Rtf:
      break;
  }
  return report::writeRtf(document, path, {clock_(), progress});
}

}  // namespace tolvex
