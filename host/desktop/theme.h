// The look of the desktop: one accent colour, one font with digits of equal width, few lines.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <string>

class QApplication;
class QPainter;
class QRectF;

namespace tolvex::desktop {

namespace colour {
inline constexpr QRgb kAccent = 0xFF1F6A8C;
inline constexpr QRgb kAccentDark = 0xFF17536E;
inline constexpr QRgb kSelected = 0xFFDCEBF2;
inline constexpr QRgb kGround = 0xFFF3F5F7;
inline constexpr QRgb kCard = 0xFFFFFFFF;
inline constexpr QRgb kStripe = 0xFFF8FAFB;
inline constexpr QRgb kLine = 0xFFDDE3E8;
inline constexpr QRgb kEdge = 0xFFC3CCD4;
inline constexpr QRgb kText = 0xFF1B2830;
inline constexpr QRgb kMuted = 0xFF5B6B78;
inline constexpr QRgb kFaint = 0xFF9AA7B2;
inline constexpr QRgb kGood = 0xFF2B7A4B;
inline constexpr QRgb kBad = 0xFFB3261E;
inline constexpr QRgb kWarn = 0xFFB26A00;
}  // namespace colour

inline constexpr int kFieldHeight = 30;
inline constexpr int kRowHeight = 26;

void applyTheme(QApplication& app);

// Width of so many of the widest digits, without frame and padding.
int charsWidth(const QFont& font, int chars);
// A downward chevron, as combos and trees have.
void paintChevron(QPainter& painter, const QRectF& box, QRgb ink, double degrees = 0);

QString text(const std::string& utf8);
std::string text(const QString& words);

}  // namespace tolvex::desktop
