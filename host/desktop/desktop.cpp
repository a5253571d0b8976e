#include "host/desktop/desktop.h"

#include <QApplication>
#include <QTimer>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "host/desktop/main_window.h"
#include "host/desktop/qt_stage.h"
#include "host/desktop/theme.h"
#include "host/objects/workspace.h"

namespace tolvex {
namespace {

bool hasDisplay() { return std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY"); }

// The toolkit's remarks about its platform are nothing to the user.
void quietRemarks(QtMsgType type, const QMessageLogContext&, const QString& words) {
  if (words.startsWith(QStringLiteral("This plugin does not support"))) return;
  if (words.startsWith(QStringLiteral("QStandardPaths:"))) return;
  if (type != QtDebugMsg) std::cerr << words.toStdString() << '\n';
}

}  // namespace

int runDesktop(int argc, char** argv, const DesktopRun& run) {
#ifdef Q_OS_LINUX
  if (!hasDisplay() && !std::getenv("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
  qInstallMessageHandler(quietRemarks);
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tolvex"));
  QApplication::setApplicationDisplayName(QString());
  desktop::applyTheme(app);
  desktop::QtStage stage;
  std::unique_ptr<Workspace> workspace;
  try {
    workspace = run.open(stage);
  } catch (const std::runtime_error& error) {
    std::cerr << error.what() << '\n';
    if (QApplication::platformName() != QStringLiteral("offscreen") && !stage.idleTick) {
      Message note;
      note.icon = Icon::Stop;
      note.title = "Tolvex";
      note.text = error.what();
      stage.message(note);
    }
    return EXIT_FAILURE;
  }
  if (!workspace) return EXIT_SUCCESS;
  stage.bind(*workspace);
  if (run.started) run.started(stage, *workspace);
  stage.startTicking();
  const int status = QApplication::exec();
  stage.unbind();
  return status;
}

}  // namespace tolvex
