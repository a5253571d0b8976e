#include <gtest/gtest.h>

#include <QApplication>
#include <cstdio>

#include "host/desktop/theme.h"

namespace {

void quietRemarks(QtMsgType, const QMessageLogContext&, const QString& words) {
  if (words.startsWith("This plugin does not support") || words.startsWith("QStandardPaths"))
    return;
  fprintf(stderr, "%s\n", words.toUtf8().constData());
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(quietRemarks);
  QApplication app(argc, argv);
  tolvex::desktop::applyTheme(app);
  return RUN_ALL_TESTS();
}
