// A report as PDF: the pages as they are laid out, with embedded fonts and text that can be
// selected.
#pragma once

#include <string>

#include "host/report/pages.h"

namespace tolvex::report {

// "" or why it was not written, for the user; a file that was there is then as it was.
std::string writePdf(const ReportDocument& document, const std::string& path,
                     const ReportProgress& progress = {});
// The same of pages laid out already.
std::string writePdf(const Pages& pages, const std::string& title, const std::string& path,
                     const ReportProgress& progress = {});

}  // namespace tolvex::report
