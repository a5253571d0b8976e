// A report as a sheet for spreadsheet programs (XLSX).
//
// Columns say what they hold: numbers and days become numbers and days with their formats, all else
// stays text, so that an account "2721" is not added up. Head rows of a single table stand still on
// the screen and are repeated on paper; the sheet is one page wide.
#pragma once

#include <string>

#include "host/report/file_notes.h"
#include "platform/report.h"

namespace tolvex::report {

// "" or why the file was not written, for the user; what stood there is then untouched.
std::string writeXlsx(const ReportDocument& document, const std::string& path,
                      const FileNotes& notes = {});

}  // namespace tolvex::report
