// A report laid out: pages of marks in twips, and drawing that only paints them.
//
// Layout happens once; preview, printer and PDF paint the same marks, so their pages are the same.
#pragma once

#include <QFont>
#include <QRectF>
#include <QString>
#include <cstdint>
#include <vector>

#include "platform/report.h"

class QPainter;

namespace tolvex::report {

struct TextMark {
  float x, y;  // y is the base line
  std::uint16_t font;
  QString text;
  float pitch = 0;  // of a comb: each letter stands in the middle of so much; 0: running text
};
struct LineMark {
  float x1, y1, x2, y2;
  std::uint8_t weight, gray;
};
struct FillMark {
  float x, y, w, h;
  std::uint8_t gray;
};
struct PageMarks {
  std::vector<FillMark> fills;
  std::vector<LineMark> lines;
  std::vector<TextMark> texts;
};
struct Pages {
  float width = 0, height = 0;
  std::vector<QFont> fonts;
  std::vector<PageMarks> pages;  // at least one; none when the layout was stopped
};

// Needs a Qt application (needFonts).
Pages paginate(const ReportDocument& document, const ReportProgress& progress = {});

// The painter is scaled so that one unit is a twip.
void draw(QPainter& painter, const Pages& pages, std::size_t page);

// Where a text stands on the page, from its letter `from` on.
QRectF placeOf(const Pages& pages, const TextMark& mark, qsizetype from, qsizetype count);

}  // namespace tolvex::report
