// Whether a workbook came out whole.
#pragma once

#include <string>

namespace tolvex::report {

// Every part of the package can be read and ends as it began, and the sheets hold so many rows.
bool isWholeXlsx(const std::string& path, int rows);

}  // namespace tolvex::report
