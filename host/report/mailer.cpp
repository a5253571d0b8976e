#include "host/report/mailer.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include "framework/text.h"

namespace tolvex::report {

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
  QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/tolvex-XXXXXX"));
  folder.setAutoRemove(false);
  return folder.isValid() ? folder.filePath(QString::fromStdString(name)).toStdString() : "";
}

}  // namespace tolvex::report
