#include "host/report/saving.h"

#include <utility>

#include "framework/results.h"

namespace tolvex::report {
namespace {

std::string which(const std::string& path) {
  return "Nepavyko įrašyti bylos " + path + "." + std::string(kLineBreak);
}

}  // namespace

std::string diskFull(const std::string& path) { return which(path) + "Diske nebėra vietos."; }

SavedFile::SavedFile(std::string path)
    : QSaveFile(QString::fromStdString(path)), path_(std::move(path)) {}

bool SavedFile::open() { return QSaveFile::open(QIODevice::WriteOnly); }

qint64 SavedFile::writeData(const char* data, qint64 size) {
  const qint64 written = QSaveFile::writeData(data, size);
  if (written != size) cut_ = true;
  return written;
}

std::string SavedFile::put() {
  // What the buffer still holds may fail as well, and commit() would not say so.
  const bool whole = flush() && !cut_ && error() == NoError;
  return whole && commit() ? std::string() : failure();
}

std::string SavedFile::failure() const {
  switch (error()) {
    case NoError:  // less was written than there was
    case ResourceError:
      return diskFull(path_);
    case PermissionsError:
      return which(path_) + "Nėra teisės čia rašyti arba bylą laiko atvertą kita programa.";
    case OpenError:
      return which(path_) + "Nėra tokio katalogo arba į jį negalima rašyti.";
    default:
      return which(path_) + errorString().toStdString();
  }
}

}  // namespace tolvex::report
