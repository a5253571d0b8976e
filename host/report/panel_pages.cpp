#include "host/report/panel_pages.h"

#include <algorithm>
#include <cmath>

namespace tolvex::report {
namespace {

constexpr float kSideMm = 0.9F;   // free at both sides of a text
constexpr float kUnderMm = 0.5F;  // free below an upper line
constexpr float kBelowMm = 1.0F;  // from the base line to the line to write on
constexpr float kStep = 0.5F;     // points by which a long text is made smaller

struct Fitted {
  float points;
  std::uint16_t font;
  QStringList lines;
};

float pointsOf(const Box& box, const PageSetup& page) {
  return box.style.size > 0 ? box.style.size : page.size;
}

float above(const Box& box) { return (box.flags & Top) ? kUnderMm : 0; }

bool isComb(const Box& box, const QString& words) {
  return box.comb > 0 && words.size() <= box.comb;  // a longer text is written as a plain one
}

QStringList linesOf(const Box& box, const QString& words, double width, const Typeface& face) {
  if (box.flags & Wrap) return wrap(words, width, face);
  return words.split(u'\n');
}

bool lettersFit(const Box& box, const QString& letters, const Typeface& face) {
  const double pitch = double(twips(box.w)) / box.comb;
  return std::all_of(letters.begin(), letters.end(), [&](const QChar& letter) {
    return face.width(QStringView(&letter, 1)) <= pitch;
  });
}

bool fits(const Box& box, const QStringList& lines, double width, const Typeface& face) {
  // A single line may be higher than its box: a form is drawn with its first line in mind.
  if (lines.size() > 1 &&
      face.lineHeight() * double(lines.size()) > double(twips(box.h - above(box))))
    return false;
  return std::all_of(lines.begin(), lines.end(),
                     [&](const QString& line) { return face.width(line) <= width; });
}

Fitted fit(FontSet& fonts, const Box& box, const PageSetup& page) {
  const QString words = QString::fromStdString(box.text).remove(u'\r');
  const double width = double(twips(box.w - 2 * kSideMm));
  for (float points = pointsOf(box, page);; points -= kStep) {
    const bool bold = box.style.bold || (box.flags & Bold);
    const std::uint16_t font = fonts.find(points, bold, box.style.italic);
    const Typeface& face = fonts[font];
    if (isComb(box, words)) {
      if (points - kStep < kSmallestPoints || lettersFit(box, words, face))
        return {points, font, {words}};
      continue;
    }
    QStringList lines = linesOf(box, words, width, face);
    if (fits(box, lines, width, face)) return {points, font, std::move(lines)};
    if (points - kStep >= kSmallestPoints) continue;
    const auto room = std::max<qsizetype>(
        1, static_cast<qsizetype>(double(twips(box.h - above(box))) / face.lineHeight()));
    if (lines.size() > room) {
      lines = lines.first(room);
      lines.back() += u'…';
    }
    for (QString& line : lines) line = cutToWidth(line, width, face);
    return {points, font, std::move(lines)};
  }
}

float firstBaseline(const Box& box, float top, const Typeface& face, qsizetype lines) {
  const float bottom = top + twips(box.h);
  const float height = static_cast<float>(face.lineHeight()) * static_cast<float>(lines - 1);
  const auto ascent = static_cast<float>(face.ascent());
  const auto descent = static_cast<float>(face.descent());
  if (box.flags & Middle) return (top + bottom - height + ascent - descent) / 2;
  const bool written = (box.flags & Base) || ((box.flags & Bottom) && !(box.flags & Top));
  if (written) return bottom - twips(kBelowMm) - height;
  return top + twips(above(box)) + ascent;
}

void placeFrame(PageFlow& flow, const Box& box, float x, float y, bool comb) {
  const float right = x + twips(box.w), bottom = y + twips(box.h);
  if (box.flags & Top) flow.line(x, y, right, y, kFine);
  if (box.flags & Bottom) flow.line(x, bottom, right, bottom, kFine);
  if (box.flags & Left) flow.line(x, y, x, bottom, kFine);
  if (box.flags & Right) flow.line(right, y, right, bottom, kFine);
  if (!comb) return;
  const float pitch = twips(box.w) / static_cast<float>(box.comb);
  for (int i = 1; i < box.comb; ++i) {
    const float at = x + pitch * static_cast<float>(i);
    flow.line(at, y, at, bottom, kHair);
  }
}

void placeText(PageFlow& flow, const Box& box, float x, float y, const Fitted& fitted, bool comb) {
  const Typeface& face = flow.fonts[fitted.font];
  float baseline = firstBaseline(box, y, face, fitted.lines.size());
  if (comb) {
    const float pitch = twips(box.w) / static_cast<float>(box.comb);
    const QString& letters = fitted.lines.front();
    const auto free = static_cast<float>(box.comb - letters.size());
    const float shift = box.style.align == ui::Align::Right    ? free
                        : box.style.align == ui::Align::Center ? std::floor(free / 2)
                                                               : 0;
    flow.text(x + shift * pitch, baseline, fitted.font, letters, pitch);
    return;
  }
  for (const QString& line : fitted.lines) {
    flow.text(x + twips(kSideMm), x + twips(box.w - kSideMm), baseline, fitted.font, line,
              box.style.align);
    baseline += static_cast<float>(face.lineHeight());
  }
}

}  // namespace

float fittingPoints(FontSet& fonts, const Box& box, const PageSetup& page) {
  return fit(fonts, box, page).points;
}

void placePanel(PageFlow& flow, const Panel& panel, const PageSetup& page) {
  for (const Box& box : panel.boxes) {
    const float x = flow.left + twips(box.x), y = flow.y + twips(box.y);
    const bool comb = isComb(box, QString::fromStdString(box.text));
    placeFrame(flow, box, x, y, comb);
    if (!box.text.empty()) placeText(flow, box, x, y, fit(flow.fonts, box, page), comb);
  }
  flow.y += twips(panel.heightMm);
}

}  // namespace tolvex::report
