// The place where the next thing of a report goes: the page at hand and the height used of it.
#pragma once

#include "host/report/fonts.h"
#include "host/report/pages.h"

namespace tolvex::report {

// Weights and greys of lines, in twips and 0 (black) to 255.
inline constexpr std::uint8_t kHair = 5, kFine = 7, kStrong = 10;
inline constexpr std::uint8_t kRowGray = 190, kColumnGray = 150, kHeadGray = 238;

class PageFlow {
 public:
  explicit PageFlow(const ReportDocument& document);

  FontSet fonts;
  float left, width;  // of the room between the margins
  float y;            // below what stands on the page

  PageMarks& marks() { return pages_.pages.back(); }
  float top() const { return top_; }
  float bottom() const { return bottomOf(pages_.pages.size()); }
  float room() const { return bottom() - y; }
  bool atTop() const { return y <= top_; }
  void newPage();
  bool isFirstPage() const { return pages_.pages.size() == 1; }

  void text(float x, float baseline, std::uint16_t font, QString words, float pitch = 0);
  // Aligned between two edges.
  void text(float from, float to, float baseline, std::uint16_t font, QString words,
            ui::Align align);
  void line(float x1, float y1, float x2, float y2, std::uint8_t weight, std::uint8_t gray = 0);
  void fill(float x, float from, float w, float h, std::uint8_t gray);

  Pages finish();  // with footers; an empty page at the end goes

 private:
  float bottomOf(std::size_t page) const;
  void footers();

  const ReportDocument& document_;
  float top_;
  Pages pages_;
};

inline float twips(float mm) { return static_cast<float>(kTwipsPerMm) * mm; }

}  // namespace tolvex::report
