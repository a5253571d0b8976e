// Files of reports are written beside their place and put there once they are whole (QSaveFile);
// this tells the user why it did not come to that.
#pragma once

#include <QFileDevice>
#include <string>

namespace tolvex::report {

std::string notWritten(const QFileDevice& file, const std::string& path);
std::string diskFull(const std::string& path);

}  // namespace tolvex::report
