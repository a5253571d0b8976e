#include "host/report/saving.h"

#include "framework/results.h"

namespace tolvex::report {
namespace {

std::string which(const std::string& path) {
  return "Nepavyko įrašyti bylos " + path + "." + std::string(kLineBreak);
}

}  // namespace

std::string diskFull(const std::string& path) { return which(path) + "Diske nebėra vietos."; }

std::string notWritten(const QFileDevice& file, const std::string& path) {
  switch (file.error()) {
    case QFileDevice::ResourceError:
      return diskFull(path);
    case QFileDevice::PermissionsError:
      return which(path) + "Nėra teisės čia rašyti arba bylą laiko atvertą kita programa.";
    case QFileDevice::OpenError:
      return which(path) + "Nėra tokio katalogo arba į jį negalima rašyti.";
    default:
      return which(path) + file.errorString().toStdString();
  }
}

}  // namespace tolvex::report
