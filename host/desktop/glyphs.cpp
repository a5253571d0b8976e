#include "host/desktop/glyphs.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <map>

#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

// Glyphs are drawn on a field of 16 by 16 with lines of one width.
using Draw = void (*)(QPainter&);

void sheet(QPainter& p) {
  QPainterPath path(QPointF(3.5, 1.5));
  path.lineTo(9.5, 1.5);
  path.lineTo(12.5, 4.5);
  path.lineTo(12.5, 14.5);
  path.lineTo(3.5, 14.5);
  path.closeSubpath();
  p.drawPath(path);
}

void lines(QPainter& p, std::initializer_list<QLineF> list) {
  for (const QLineF& line : list) p.drawLine(line);
}

void operation(QPainter& p) {
  sheet(p);
  lines(p, {{5.5, 7.5, 10.5, 7.5}, {5.5, 9.5, 10.5, 9.5}, {5.5, 11.5, 8.5, 11.5}});
}
void plan(QPainter& p) {
  p.drawRect(QRectF(2.5, 2.5, 4, 3));
  p.drawRect(QRectF(9.5, 6.5, 4, 3));
  p.drawRect(QRectF(9.5, 11, 4, 3));
  lines(p, {{4.5, 5.5, 4.5, 12.5}, {4.5, 8, 9.5, 8}, {4.5, 12.5, 9.5, 12.5}});
}
void planClass(QPainter& p) {
  p.drawRect(QRectF(2.5, 2.5, 11, 3.5));
  lines(p, {{4.5, 8.5, 13.5, 8.5}, {4.5, 11, 13.5, 11}, {4.5, 13.5, 10.5, 13.5}});
}
void group(QPainter& p) {
  QPainterPath path(QPointF(1.5, 4.5));
  path.lineTo(1.5, 13.5);
  path.lineTo(14.5, 13.5);
  path.lineTo(14.5, 4.5);
  path.lineTo(7.5, 4.5);
  path.lineTo(6, 2.5);
  path.lineTo(1.5, 2.5);
  path.closeSubpath();
  p.drawPath(path);
}
void groupOpen(QPainter& p) {
  group(p);
  p.drawLine(QLineF(4, 7.5, 14.5, 7.5));
}
void arrow(QPainter& p, double x, double from, double to) {
  const double back = to > from ? -2.5 : 2.5;
  lines(p, {{x, from, x, to}, {x - 2.5, to + back, x, to}, {x + 2.5, to + back, x, to}});
}
void coins(QPainter& p) {
  p.drawEllipse(QRectF(1.5, 5.5, 7, 7));
  p.drawLine(QLineF(5, 7.5, 5, 10.5));
}
void cashIn(QPainter& p) {
  coins(p);
  arrow(p, 12, 3, 12);
}
void cashOut(QPainter& p) {
  coins(p);
  arrow(p, 12, 12, 3);
}
void columns(QPainter& p) {
  QPainterPath roof(QPointF(1.5, 6));
  roof.lineTo(8, 2);
  roof.lineTo(14.5, 6);
  roof.closeSubpath();
  p.drawPath(roof);
  lines(p, {{3.5, 8, 3.5, 11.5}, {8, 8, 8, 11.5}, {12.5, 8, 12.5, 11.5}, {1.5, 13.5, 14.5, 13.5}});
}
void bankOut(QPainter& p) {
  sheet(p);
  lines(p, {{5.5, 9, 10.5, 9}, {8.5, 7, 10.5, 9}, {8.5, 11, 10.5, 9}});
}
void bankIn(QPainter& p) {
  sheet(p);
  lines(p, {{5.5, 9, 10.5, 9}, {7.5, 7, 5.5, 9}, {7.5, 11, 5.5, 9}});
}
void advance(QPainter& p) {
  sheet(p);
  p.drawEllipse(QRectF(6.3, 6, 3.4, 3.4));
  p.drawArc(QRectF(5, 10, 6, 5), 0, 180 * 16);
}
void closing(QPainter& p) {
  sheet(p);
  lines(p, {{5.5, 9.5, 7.2, 11.5}, {7.2, 11.5, 10.5, 7.5}});
}
void journal(QPainter& p) {
  p.drawRect(QRectF(2.5, 1.5, 11, 13));
  lines(p, {{5.5, 1.5, 5.5, 14.5}, {7.5, 5, 11.5, 5}, {7.5, 8, 11.5, 8}, {7.5, 11, 10, 11}});
}
void journalGroup(QPainter& p) {
  p.drawRect(QRectF(1.5, 2.5, 4, 12));
  p.drawRect(QRectF(5.5, 2.5, 4, 12));
  p.drawLine(QLineF(11, 3.5, 14, 14));
}
void stencil(QPainter& p) {
  QPen pen = p.pen();
  pen.setStyle(Qt::DashLine);
  pen.setDashPattern({2, 1.6});
  p.save();
  p.setPen(pen);
  sheet(p);
  p.restore();
  lines(p, {{5.5, 8.5, 10.5, 8.5}, {8, 6, 8, 11}});
}
void payments(QPainter& p) {
  p.drawRect(QRectF(1.5, 3.5, 13, 11));
  lines(p, {{1.5, 6.5, 14.5, 6.5}, {5, 1.5, 5, 5}, {11, 1.5, 11, 5}, {5, 10.5, 11, 10.5}});
}
void lock(QPainter& p) {
  p.drawRect(QRectF(3.5, 7.5, 9, 6.5));
  p.drawArc(QRectF(5, 2, 6, 9), 0, 180 * 16);
  p.drawLine(QLineF(8, 10, 8, 11.8));
}
void firm(QPainter& p) {
  p.drawRect(QRectF(3.5, 1.5, 9, 13));
  lines(p, {{6, 4.5, 7, 4.5},
            {9, 4.5, 10, 4.5},
            {6, 7.5, 7, 7.5},
            {9, 7.5, 10, 7.5},
            {6, 10.5, 7, 10.5},
            {9, 10.5, 10, 10.5},
            {8, 12.5, 8, 14.5}});
}
void person(QPainter& p) {
  p.drawEllipse(QRectF(5, 1.8, 6, 6));
  p.drawArc(QRectF(2, 9.5, 12, 10), 0, 180 * 16);
}
void people(QPainter& p) {
  p.drawEllipse(QRectF(3, 3, 5, 5));
  p.drawArc(QRectF(0.8, 9.5, 9.4, 9), 0, 180 * 16);
  p.drawArc(QRectF(8.5, 3.2, 4.6, 4.6), -110 * 16, 220 * 16);
  p.drawArc(QRectF(6, 9.8, 9.2, 9), 0, 100 * 16);
}
void currency(QPainter& p) {
  p.drawEllipse(QRectF(1.5, 1.5, 13, 13));
  p.drawArc(QRectF(5.5, 4.5, 6.5, 7), 55 * 16, 250 * 16);
  lines(p, {{4.2, 7.1, 8.8, 7.1}, {4.2, 9, 8.3, 9}});
}
void percent(QPainter& p) {
  sheet(p);
  p.drawLine(QLineF(10.3, 6.8, 5.7, 12.2));
  p.drawEllipse(QRectF(5.2, 6.4, 2, 2));
  p.drawEllipse(QRectF(8.8, 10.6, 2, 2));
}
void trip(QPainter& p) {
  p.drawRect(QRectF(1.5, 5.5, 13, 8));
  lines(p, {{5.5, 5.5, 5.5, 3}, {5.5, 3, 10.5, 3}, {10.5, 3, 10.5, 5.5}, {1.5, 9, 14.5, 9}});
}
void books(QPainter& p) {
  p.drawRect(QRectF(2.5, 2.5, 11, 11));
  lines(p, {{2.5, 5.5, 13.5, 5.5}, {6, 5.5, 6, 13.5}, {8, 8.5, 11.5, 8.5}, {8, 11, 11.5, 11}});
}

void sliders(QPainter& p) {
  lines(p, {{1.5, 4, 14.5, 4}, {1.5, 8, 14.5, 8}, {1.5, 12, 14.5, 12}});
  p.drawEllipse(QRectF(8.5, 2.5, 3, 3));
  p.drawEllipse(QRectF(3.5, 6.5, 3, 3));
  p.drawEllipse(QRectF(9.5, 10.5, 3, 3));
}

struct Glyph {
  Draw draw;
  QRgb ink;
};

const std::map<std::string, Glyph>& glyphs() {
  constexpr QRgb kBlue = colour::kAccent;
  constexpr QRgb kGrey = colour::kMuted;
  constexpr QRgb kFolder = 0xFFA8762B;
  constexpr QRgb kGreen = colour::kGood;
  static const std::map<std::string, Glyph> table = {
      {"C0200300", {planClass, kBlue}},
      {"C0200400", {plan, kBlue}},
      {"C0200500", {journal, kBlue}},
      {"C0200500J", {journal, kBlue}},
      {"C0200500G", {journalGroup, kFolder}},
      {"C0201300", {lock, kGrey}},
      {"C0201400", {group, kFolder}},
      {"C0201500", {operation, kBlue}},
      {"C0202000", {operation, kBlue}},
      {"C0201501", {bankOut, kBlue}},
      {"C0201502", {bankIn, kGreen}},
      {"C0201503", {cashOut, kBlue}},
      {"C0201504", {cashIn, kGreen}},
      {"C0201505", {advance, kBlue}},
      {"C0201506", {closing, kBlue}},
      {"C0201600", {stencil, kGrey}},
      {"C0201700", {payments, kGrey}},
      {"C0001600", {group, kFolder}},
      {"C0001601", {payments, kGrey}},
      {"L02020011", {books, kBlue}},
      {"L0000001", {journalGroup, kBlue}},
      {"L0000002", {sliders, kBlue}},
      {"LAYOUT", {books, kBlue}},
      {"stdClose", {group, kFolder}},
      {"stdOpen", {groupOpen, kFolder}},
      {"C0000100", {firm, kBlue}},
      {"C0000200", {firm, kBlue}},
      {"C0000300", {columns, kBlue}},
      {"C0000500", {columns, kGreen}},
      {"C0001401", {person, kBlue}},
      {"C0001402", {people, kBlue}},
      {"C0000800", {people, kBlue}},
      {"C0000810", {journal, kGrey}},
      {"C0000830", {lock, kBlue}},
      {"C0000900", {operation, kGrey}},
      {"C0001629", {percent, kBlue}},
      {"C0002200", {currency, kGreen}},
      {"C0002201", {currency, kBlue}},
      {"C1000200", {percent, kGrey}},
      {"DOCUMENT_CHECK", {closing, kGreen}},
      {"C0202100", {trip, kBlue}},
      {"C0001900", {journal, kGrey}},
      {"plan", {plan, kBlue}},
      {"group", {group, kFolder}},
      {"operation", {operation, kBlue}},
      {"journal", {journal, kBlue}},
      {"template", {stencil, kGrey}},
      {"firm", {firm, kBlue}},
      {"person", {person, kBlue}},
      {"bank", {columns, kBlue}},
      {"currency", {currency, kGreen}},
      {"lock", {lock, kGrey}},
  };
  return table;
}

}  // namespace

void paintGlyph(QPainter& painter, const QRectF& box, const std::string& key) {
  const auto found = glyphs().find(key);
  const Glyph glyph = found == glyphs().end() ? Glyph{sheet, colour::kMuted} : found->second;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(box.topLeft());
  painter.scale(box.width() / 16, box.height() / 16);
  painter.setPen(QPen(QColor(glyph.ink), 1.15, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  QColor wash(glyph.ink);
  wash.setAlpha(26);
  painter.setBrush(wash);
  glyph.draw(painter);
  painter.restore();
}

QIcon glyphIcon(const std::string& key) {
  static std::map<std::string, QIcon> made;
  if (const auto found = made.find(key); found != made.end()) return found->second;
  QIcon icon;
  for (const double scale : {1.0, 2.0}) {
    const int size = static_cast<int>(16 * scale);
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paintGlyph(painter, QRectF(0, 0, size, size), key);
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    icon.addPixmap(pixmap);
  }
  return made[key] = icon;
}

void paintMark(QPainter& painter, const QRectF& box, ui::Mark mark) {
  if (mark == ui::Mark::None) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const QRgb ink = mark == ui::Mark::Good  ? colour::kGood
                   : mark == ui::Mark::Bad ? colour::kBad
                                           : colour::kFaint;
  const QPointF c = box.center();
  painter.setPen(QPen(QColor(ink), 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  switch (mark) {
    case ui::Mark::Good: {
      QPainterPath path(c + QPointF(-4, 0.3));
      path.lineTo(c + QPointF(-1.2, 3.2));
      path.lineTo(c + QPointF(4, -3.2));
      painter.drawPath(path);
      break;
    }
    case ui::Mark::Bad:
      painter.setPen(Qt::NoPen);
      painter.setBrush(QColor(ink));
      painter.drawEllipse(c, 6, 6);
      painter.setPen(QPen(Qt::white, 1.7, Qt::SolidLine, Qt::RoundCap));
      painter.drawLine(c + QPointF(0, -3), c + QPointF(0, 0.6));
      painter.drawPoint(c + QPointF(0, 3.2));
      break;
    default:
      painter.drawLine(c + QPointF(-3.5, 0), c + QPointF(3.5, 0));
      break;
  }
  painter.restore();
}

void paintCheck(QPainter& painter, const QRectF& box, bool checked, bool enabled) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF square = QRectF(0, 0, 14, 14).translated(box.center() - QPointF(7, 7));
  const QColor ink(enabled ? colour::kAccent : colour::kFaint);
  painter.setPen(QPen(checked ? ink : QColor(colour::kEdge), 1));
  painter.setBrush(checked ? QBrush(ink) : QBrush(Qt::white));
  painter.drawRoundedRect(square, 3, 3);
  if (checked) {
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QPainterPath path(square.topLeft() + QPointF(3.4, 7.3));
    path.lineTo(square.topLeft() + QPointF(6, 10));
    path.lineTo(square.topLeft() + QPointF(10.6, 4.4));
    painter.drawPath(path);
  }
  painter.restore();
}

void paintSign(QPainter& painter, const QRectF& box, Icon icon) {
  if (icon == Icon::None) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  const QRgb ink = icon == Icon::Stop          ? colour::kBad
                   : icon == Icon::Exclamation ? colour::kWarn
                                               : colour::kAccent;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(ink));
  if (icon == Icon::Exclamation) {
    QPainterPath path(QPointF(box.center().x(), box.top() + 2));
    path.lineTo(box.right() - 1, box.bottom() - 3);
    path.lineTo(box.left() + 1, box.bottom() - 3);
    path.closeSubpath();
    painter.setPen(QPen(QColor(ink), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
  } else {
    painter.drawEllipse(box);
  }
  painter.setPen(QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPointF c = box.center();
  const double unit = box.height() / 36;
  switch (icon) {
    case Icon::Info:
      painter.drawPoint(c + QPointF(0, -8) * unit);
      painter.drawLine(c + QPointF(0, -2) * unit, c + QPointF(0, 9) * unit);
      break;
    case Icon::Exclamation:
      painter.drawLine(c + QPointF(0, -5) * unit, c + QPointF(0, 4) * unit);
      painter.drawPoint(c + QPointF(0, 10) * unit);
      break;
    case Icon::Stop:
      painter.drawLine(c + QPointF(-6, -6) * unit, c + QPointF(6, 6) * unit);
      painter.drawLine(c + QPointF(-6, 6) * unit, c + QPointF(6, -6) * unit);
      break;
    default: {
      QPainterPath path(c + QPointF(-5, -5) * unit);
      path.cubicTo(c + QPointF(-4, -12) * unit, c + QPointF(7, -11) * unit,
                   c + QPointF(5, -4) * unit);
      path.cubicTo(c + QPointF(4, -1) * unit, c + QPointF(0, 0) * unit, c + QPointF(0, 4) * unit);
      painter.setBrush(Qt::NoBrush);
      painter.drawPath(path);
      painter.drawPoint(c + QPointF(0, 10) * unit);
      break;
    }
  }
  painter.restore();
}

}  // namespace tolvex::desktop
