// A report as a document for word processors (RTF).
#pragma once

#include <string>

#include "host/report/file_notes.h"
#include "platform/report.h"

namespace tolvex::report {

// "" or why the file was not written, for the user; what stood there is then untouched.
std::string writeRtf(const ReportDocument& document, const std::string& path,
                     const FileNotes& notes = {});

}  // namespace tolvex::report
