#include "host/report/page_flow.h"

#include "framework/text.h"

namespace tolvex::report {
namespace {

constexpr float kShortSide = 210, kLongSide = 297;  // A4
constexpr float kFooterPoints = 8, kAboveFooterMm = 2;

}  // namespace

PageFlow::PageFlow(const ReportDocument& document)
    : fonts(document.page.font), document_(document) {
  const PageSetup& page = document.page;
  pages_.width = twips(page.landscape ? kLongSide : kShortSide);
  pages_.height = twips(page.landscape ? kShortSide : kLongSide);
  left = twips(page.leftMm);
  width = pages_.width - left - twips(page.rightMm);
  y = top_ = twips(page.topMm);
  pages_.pages.emplace_back();
}

float PageFlow::bottomOf(std::size_t page) const {
  const float edge = pages_.height - twips(document_.page.bottomMm);
  const bool hasFooter =
      !document_.footer.empty() && page >= static_cast<std::size_t>(document_.footerFrom);
  return hasFooter ? edge - twips(kAboveFooterMm) - kFooterPoints * 20 * 1.15F : edge;
}

void PageFlow::newPage() {
  // As a rule a page holds about as much as the one before it.
  const std::size_t texts = marks().texts.size(), lines = marks().lines.size();
  pages_.pages.emplace_back();
  marks().texts.reserve(texts);
  marks().lines.reserve(lines);
  y = top_;
}

void PageFlow::text(float x, float baseline, std::uint16_t font, QString words, float pitch) {
  if (!words.isEmpty()) marks().texts.push_back({x, baseline, font, std::move(words), pitch});
}

void PageFlow::text(float from, float to, float baseline, std::uint16_t font, QString words,
                    ui::Align align) {
  float x = from;
  if (align != ui::Align::Left) {
    const float free = to - from - static_cast<float>(fonts[font].width(words));
    x += align == ui::Align::Right ? free : free / 2;
  }
  text(x, baseline, font, std::move(words));
}

void PageFlow::line(float x1, float y1, float x2, float y2, std::uint8_t weight,
                    std::uint8_t gray) {
  marks().lines.push_back({x1, y1, x2, y2, weight, gray});
}

void PageFlow::fill(float x, float from, float w, float h, std::uint8_t gray) {
  marks().fills.push_back({x, from, w, h, gray});
}

void PageFlow::footers() {
  const std::size_t first = static_cast<std::size_t>(std::max(1, document_.footerFrom));
  if (document_.footer.empty()) return;
  const std::uint16_t font = fonts.find(kFooterPoints);
  const float baseline =
      pages_.height - twips(document_.page.bottomMm) - static_cast<float>(fonts[font].descent());
  const std::string count = std::to_string(pages_.pages.size());
  for (std::size_t page = first; page <= pages_.pages.size(); ++page) {
    const std::string words =
        replaceAll(replaceAll(document_.footer, "{pages}", count), "{page}", std::to_string(page));
    const QString line = QString::fromStdString(words);
    const float free = width - static_cast<float>(fonts[font].width(line));
    const float shift = document_.footerAlign == ui::Align::Left    ? 0
                        : document_.footerAlign == ui::Align::Right ? free
                                                                    : free / 2;
    pages_.pages[page - 1].texts.push_back({left + shift, baseline, font, line, 0});
  }
}

Pages PageFlow::finish() {
  const PageMarks& last = marks();
  if (pages_.pages.size() > 1 && last.texts.empty() && last.lines.empty() && last.fills.empty())
    pages_.pages.pop_back();
  footers();
  for (std::uint16_t i = 0; i < fonts.size(); ++i) pages_.fonts.push_back(fonts[i].font());
  return std::move(pages_);
}

}  // namespace tolvex::report
