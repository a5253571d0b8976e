#include "host/report/mailer.h"

#include <QDateTime>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include "framework/text.h"

namespace tolvex::report {
namespace {

void removeOldPlaces(uint owner) {
  const QDateTime limit = QDateTime::currentDateTime().addDays(-1);
  const auto places = QDir(QDir::tempPath())
                          .entryInfoList({QStringLiteral("tolvex-mail-*")},
                                         QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot);
  for (const QFileInfo& place : places)
    if (place.ownerId() == owner && place.lastModified() < limit)
      QDir(place.filePath()).removeRecursively();
}

}  // namespace

std::string Mailer::send(const std::string& file, const std::string& subject) const {
  QStringList words;
  for (const std::string& word : command_) {
    words << QString::fromStdString(
        replaceAll(replaceAll(word, "{subject}", subject), "{file}", file));
  }
  const QString program = words.takeFirst();
  if (QProcess::startDetached(program, words)) return {};
  return "Nepavyko paleisti pašto programos („" + program.toStdString() +
         "“).\r\nPDF byla liko čia: " + file;
}

std::string placeForAttachment(const std::string& name) {
  QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/tolvex-mail-XXXXXX"));
  folder.setAutoRemove(false);
  if (folder.isValid()) removeOldPlaces(QFileInfo(folder.path()).ownerId());
  return folder.isValid() ? folder.filePath(QString::fromStdString(name)).toStdString() : "";
}

}  // namespace tolvex::report
