#include "host/desktop/theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QStyleFactory>

namespace tolvex::desktop {
namespace {

constexpr double kPointSize = 9.5;

QFont chooseFont() {
  for (const char* family : {"Open Sans", "Noto Sans", "Segoe UI", "DejaVu Sans"}) {
    if (!QFontDatabase::hasFamily(QString::fromLatin1(family))) continue;
    QFont font(QString::fromLatin1(family));
    font.setPointSizeF(kPointSize);
    return font;
  }
  QFont font;
  font.setPointSizeF(kPointSize);
  return font;
}

QPalette palette() {
  // Made of two colours, so that nothing of a dark desktop shines through.
  QPalette p(QColor(colour::kCard), QColor(colour::kGround));
  p.setColor(QPalette::Window, QColor(colour::kGround));
  p.setColor(QPalette::WindowText, QColor(colour::kText));
  p.setColor(QPalette::Base, QColor(colour::kCard));
  p.setColor(QPalette::AlternateBase, QColor(colour::kStripe));
  p.setColor(QPalette::Text, QColor(colour::kText));
  p.setColor(QPalette::Button, QColor(colour::kCard));
  p.setColor(QPalette::ButtonText, QColor(colour::kText));
  p.setColor(QPalette::Highlight, QColor(colour::kAccent));
  p.setColor(QPalette::HighlightedText, Qt::white);
  p.setColor(QPalette::ToolTipBase, QColor(colour::kText));
  p.setColor(QPalette::ToolTipText, Qt::white);
  p.setColor(QPalette::PlaceholderText, QColor(colour::kFaint));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    p.setColor(QPalette::Disabled, role, QColor(colour::kFaint));
  }
  return p;
}

constexpr const char* kSheet = R"(
QToolTip { background: #1b2830; color: white; border: 0; padding: 5px 8px; }
QMainWindow::separator, QSplitter::handle { background: #dde3e8; }
QFrame[card="true"] { background: white; border: 1px solid #dde3e8; border-radius: 6px; }
QFrame[card="true"][inner="true"] { background: #f8fafb; }
QFrame[band="true"] { background: white; border: 1px solid #dde3e8; border-left: 4px solid #1f6a8c;
  border-radius: 4px; }
QLabel[role="band"] { color: #17536e; font-size: 12pt; font-weight: 600; }
QLabel[role="frame"] { color: #1b2830; font-weight: 600; }
QLabel[role="caption"] { color: #5b6b78; }
QLabel[role="caption"]:disabled, QLabel[role="frame"]:disabled { color: #9aa7b2; }
QLineEdit, QPlainTextEdit, QComboBox { background: white; border: 1px solid #c3ccd4;
  border-radius: 4px; padding: 0 9px; selection-background-color: #1f6a8c; }
QLineEdit, QComboBox { min-height: 26px; max-height: 26px; }
QPlainTextEdit { padding: 3px 5px; }
QLineEdit:hover, QPlainTextEdit:hover, QComboBox:hover { border-color: #9aa7b2; }
QLineEdit:focus, QPlainTextEdit:focus, QComboBox:focus { border: 1px solid #1f6a8c;
  background: #fbfdfe; }
QLineEdit:read-only, QPlainTextEdit:read-only { background: #f3f5f7; border-color: #dde3e8; }
QLineEdit:disabled, QPlainTextEdit:disabled, QComboBox:disabled { background: #f3f5f7;
  border-color: #dde3e8; color: #7b8894; }
QDoubleSpinBox { background: white; border: 1px solid #c3ccd4; border-radius: 4px;
  padding: 0 9px; min-height: 26px; max-height: 26px; selection-background-color: #1f6a8c; }
QDoubleSpinBox:focus { border: 1px solid #1f6a8c; background: #fbfdfe; }
QComboBox { padding-right: 0; }
QComboBox::drop-down { border: 0; width: 22px; }
QComboBox::down-arrow { image: none; }
QComboBox QLineEdit { border: 0; padding: 0; min-height: 22px; background: transparent; }
QAbstractItemView[popup="true"] { background: white; border: 1px solid #c3ccd4; outline: 0;
  selection-background-color: #dcebf2; selection-color: #1b2830; }
QPushButton { background: white; border: 1px solid #c3ccd4; border-radius: 4px; padding: 0 14px;
  min-height: 28px; max-height: 28px; }
QPushButton:hover { border-color: #1f6a8c; color: #17536e; }
QPushButton:pressed { background: #dcebf2; }
QPushButton:focus { border: 1px solid #1f6a8c; }
QPushButton:disabled { background: #f8fafb; border-color: #dde3e8; color: #9aa7b2; }
QPushButton[role="primary"] { background: #1f6a8c; border-color: #1f6a8c; color: white;
  font-weight: 600; }
QPushButton[role="primary"]:hover { background: #17536e; color: white; }
QPushButton[role="primary"]:focus { border: 2px solid #0d3a4f; }
QPushButton[role="primary"]:disabled { background: #c3ccd4; border-color: #c3ccd4; color: white; }
QPushButton[role="quiet"] { background: transparent; border-color: transparent; color: #5b6b78; }
QPushButton[role="quiet"]:hover { background: #e6ebef; color: #1b2830; }
QPushButton[role="quiet"]:focus { border-color: #9aa7b2; }
QPushButton[role="quiet"]:disabled { color: #9aa7b2; }
QPushButton[role="danger"] { color: #b3261e; }
QPushButton[role="danger"]:hover { border-color: #b3261e; background: #fdf3f2; }
QPushButton[role="danger"]:disabled { color: #9aa7b2; }
QPushButton[role="small"] { padding: 0 7px; min-width: 14px; min-height: 26px; max-height: 26px; }
QPushButton[role="segment"] { border-radius: 0; padding: 0 13px; }
QPushButton[role="segment"]:checked { background: #dcebf2; border-color: #1f6a8c; color: #17536e; }
QPushButton[role="segment"]:focus { border: 2px solid #1f6a8c; padding: 0 12px; }
QPushButton[role="segment"]:checked:disabled { color: #9aa7b2; border-color: #c3ccd4; }
QTreeView, QTreeWidget { background: white; border: 1px solid #dde3e8; border-radius: 4px;
  outline: 0; show-decoration-selected: 1; }
QTreeWidget::item { height: 26px; }
QTreeView:focus { border-color: #9fc3d3; }
QTreeView[sidebar="true"], QTreeView[sidebar="true"]:focus { border: 0; border-radius: 0; }
QHeaderView { background: #f3f5f7; border: 0; }
QHeaderView::section { background: #f3f5f7; color: #5b6b78; border: 0;
  border-right: 1px solid #dde3e8; border-bottom: 1px solid #dde3e8; padding: 0 8px;
  height: 28px; }
QTabWidget::pane { border: 0; border-top: 1px solid #dde3e8; top: -1px; }
QTabBar { background: transparent; border: 0; }
QTabBar::tab { background: transparent; color: #5b6b78; padding: 7px 14px;
  border: 0; border-bottom: 2px solid transparent; }
QTabBar::tab:hover { color: #1b2830; }
QTabBar::tab:selected { color: #17536e; border-bottom: 2px solid #1f6a8c; }
QTabBar::tab:focus { background: #e6eff4; }
QTabBar::tab:disabled { color: #9aa7b2; }
QScrollArea { border: 0; background: transparent; }
QAbstractScrollArea::corner { background: transparent; border: 0; }
QScrollBar:vertical { background: transparent; width: 10px; margin: 1px; }
QScrollBar:horizontal { background: transparent; height: 10px; margin: 1px; }
QScrollBar::handle { background: #d3dae0; border-radius: 4px; }
QScrollBar::handle:vertical { min-height: 30px; }
QScrollBar::handle:horizontal { min-width: 30px; }
QScrollBar::handle:hover { background: #9aa7b2; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QMenu { background: white; border: 1px solid #c3ccd4; padding: 4px 0; }
QMenu::item { padding: 5px 28px 5px 26px; }
QMenu::item:selected { background: #dcebf2; color: #1b2830; }
QMenu::item:disabled { color: #9aa7b2; }
QMenu::separator { height: 1px; background: #dde3e8; margin: 4px 10px; }
QMenuBar { background: white; border-bottom: 1px solid #dde3e8; }
QMenuBar::item { padding: 4px 10px; background: transparent; color: #5b6b78; }
QMenuBar::item:selected { background: #dcebf2; color: #1b2830; }
QStatusBar { background: #e6ebef; color: #5b6b78; }
QStatusBar::item { border: 0; }
QProgressBar { background: #dde3e8; border: 0; border-radius: 3px; max-height: 6px; }
QProgressBar::chunk { background: #1f6a8c; border-radius: 3px; }
QCalendarWidget QToolButton { background: transparent; border: 0; padding: 4px; color: #1b2830; }
QCalendarWidget QWidget#qt_calendar_navigationbar { background: #f3f5f7; }
)";

}  // namespace

void applyTheme(QApplication& app) {
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setFont(chooseFont());
  QApplication::setPalette(palette());
  app.setStyleSheet(QString::fromUtf8(kSheet));
}

int charsWidth(const QFont& font, int chars) {
  const QFontMetrics metrics(font);
  return chars * metrics.horizontalAdvance(QLatin1Char('0'));
}

void paintChevron(QPainter& painter, const QRectF& box, QRgb ink, double degrees) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(box.center());
  painter.rotate(degrees);
  painter.setPen(QPen(QColor(ink), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  QPainterPath path(QPointF(-3.5, -1.8));
  path.lineTo(0, 1.8);
  path.lineTo(3.5, -1.8);
  painter.drawPath(path);
  painter.restore();
}

QString text(const std::string& utf8) { return QString::fromStdString(utf8); }
std::string text(const QString& words) { return words.toStdString(); }

}  // namespace tolvex::desktop
