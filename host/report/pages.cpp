#include "host/report/pages.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "host/report/page_flow.h"
#include "host/report/panel_pages.h"
#include "host/report/table_pages.h"

namespace tolvex::report {
namespace {

constexpr std::size_t kRowsBetweenWords = 512;  // until `progress` is asked again

class Paginator {
 public:
  Paginator(const ReportDocument& document, const ReportProgress& progress)
      : document_(document), progress_(progress), flow_(document) {
    for (const Block& block : document.body)
      if (const auto* table = std::get_if<ReportTable>(&block)) rowsInAll_ += table->rows.size();
  }

  Pages run() {
    for (at_ = 0; at_ < document_.body.size() && !stopped_; ++at_)
      std::visit(*this, document_.body[at_]);
    return stopped_ ? Pages{} : flow_.finish();
  }

  void operator()(const PageBreak&) {
    if (!flow_.atTop()) flow_.newPage();
  }
  void operator()(const Paragraph& paragraph);
  void operator()(const ReportTable& table) {
    stopped_ = !TablePages(table, document_.page, flow_).place([this] { return more(); });
  }
  void operator()(const Panel& panel) {
    if (twips(panel.heightMm) > flow_.room() && !flow_.atTop()) flow_.newPage();
    placePanel(flow_, panel, document_.page);
  }

 private:
  bool more() {
    ++rowsDone_;
    if (!progress_ || rowsDone_ % kRowsBetweenWords != 0) return true;
    return progress_(static_cast<double>(rowsDone_) / static_cast<double>(rowsInAll_));
  }
  float heightTiedBelow();

  const ReportDocument& document_;
  const ReportProgress& progress_;
  PageFlow flow_;
  std::size_t at_ = 0;  // the block at hand
  std::size_t rowsInAll_ = 0, rowsDone_ = 0;
  bool stopped_ = false;
};

// What must stand on the page with the paragraph at hand: the beginning of a table that it heads.
float Paginator::heightTiedBelow() {
  if (at_ + 1 >= document_.body.size()) return 0;
  const auto* table = std::get_if<ReportTable>(&document_.body[at_ + 1]);
  return table ? TablePages(*table, document_.page, flow_).leastHeight() : 0;
}

void Paginator::operator()(const Paragraph& paragraph) {
  const Style& style = paragraph.style;
  const float points = style.size > 0 ? style.size : document_.page.size;
  const std::uint16_t font = flow_.fonts.find(points, style.bold, style.italic);
  const Typeface& face = flow_.fonts[font];
  const QStringList lines = wrap(QString::fromStdString(paragraph.text), double(flow_.width), face);
  const auto lineHeight = static_cast<float>(face.lineHeight());
  const float before = twips(paragraph.beforeMm), after = twips(paragraph.afterMm);
  const float all = before + lineHeight * static_cast<float>(lines.size()) + after;
  const float tied = heightTiedBelow();
  const float wholePage = flow_.bottom() - flow_.top();
  if (tied > 0 && all + tied > flow_.room() && all + tied <= wholePage && !flow_.atTop())
    flow_.newPage();
  flow_.y += before;
  for (const QString& line : lines) {
    if (lineHeight > flow_.room() && !flow_.atTop()) {
      if (line.isEmpty()) continue;  // an empty line has no use at the edge of a page
      flow_.newPage();
    }
    flow_.text(flow_.left, flow_.left + flow_.width, flow_.y + static_cast<float>(face.ascent()),
               font, line, style.align);
    flow_.y += lineHeight;
  }
  flow_.y += after;
}

// Without smoothing a line of a form or a table is as sharp as the device allows, and never
// thinner than one of its points.
void drawLines(QPainter& painter, const PageMarks& page) {
  const double scale = std::abs(painter.worldTransform().m11());
  painter.setRenderHint(QPainter::Antialiasing, false);
  for (const FillMark& fill : page.fills)
    painter.fillRect(QRectF(double(fill.x), double(fill.y), double(fill.w), double(fill.h)),
                     QColor(fill.gray, fill.gray, fill.gray));
  for (const LineMark& line : page.lines) {
    QPen pen(QColor(line.gray, line.gray, line.gray), line.weight, Qt::SolidLine, Qt::FlatCap);
    if (line.weight * scale < 1) pen.setWidthF(0);
    painter.setPen(pen);
    painter.drawLine(QPointF(double(line.x1), double(line.y1)),
                     QPointF(double(line.x2), double(line.y2)));
  }
}

void drawComb(QPainter& painter, const TextMark& mark) {
  const QFontMetricsF metrics(painter.font());
  for (qsizetype i = 0; i < mark.text.size(); ++i) {
    const QString letter = mark.text.mid(i, 1);
    const double x = double(mark.x) + double(mark.pitch) * (double(i) + 0.5) -
                     metrics.horizontalAdvance(letter) / 2;
    painter.drawText(QPointF(x, double(mark.y)), letter);
  }
}

}  // namespace

Pages paginate(const ReportDocument& document, const ReportProgress& progress) {
  return Paginator(document, progress).run();
}

void draw(QPainter& painter, const Pages& pages, std::size_t page) {
  const PageMarks& marks = pages.pages[page];
  painter.save();
  drawLines(painter, marks);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::TextAntialiasing);
  painter.setPen(Qt::black);
  int font = -1;
  for (const TextMark& mark : marks.texts) {
    if (mark.font != font) painter.setFont(pages.fonts[static_cast<std::size_t>(font = mark.font)]);
    if (mark.pitch > 0)
      drawComb(painter, mark);
    else
      painter.drawText(QPointF(double(mark.x), double(mark.y)), mark.text);
  }
  painter.restore();
}

QRectF placeOf(const Pages& pages, const TextMark& mark, qsizetype from, qsizetype count) {
  const QFontMetricsF metrics(pages.fonts[mark.font]);
  const double pitch = double(mark.pitch);
  const double before =
      pitch > 0 ? pitch * double(from) : metrics.horizontalAdvance(mark.text.left(from));
  const double width =
      pitch > 0 ? pitch * double(count) : metrics.horizontalAdvance(mark.text.mid(from, count));
  return {double(mark.x) + before, double(mark.y) - metrics.ascent(), width, metrics.height()};
}

}  // namespace tolvex::report
