// The files that a script may write: below the folder in which the program was started, and
// nowhere else.
#pragma once

#include <optional>
#include <string>

#include "platform/host.h"

namespace tolvex::script {

// The whole path; folders on the way are made. Throws ScriptError for a path that leads out, also
// through a link.
std::string placeInRun(const std::string& path);

// By the ending: .pdf, .xlsx or .rtf.
std::optional<ReportFormat> formatOf(const std::string& path);

}  // namespace tolvex::script
