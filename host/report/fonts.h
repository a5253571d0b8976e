// The types of a report and the widths of their letters.
//
// Everything is measured in twips (1440 an inch) and a text is as wide as the sum of its letters:
// no kerning, no hinting. So what is laid out once stands at the same places on every device.
#pragma once

#include <QFont>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>

namespace tolvex::report {

inline constexpr double kTwipsPerMm = 56.7;
inline constexpr float kSmallestPoints = 5.5F;  // nothing is shrunk below this

class Typeface {
 public:
  Typeface(const std::string& family, float points, bool bold, bool italic);

  const QFont& font() const { return font_; }
  double ascent() const { return ascent_; }
  double descent() const { return descent_; }
  double lineHeight() const { return lineHeight_; }
  double width(QStringView words) const;

 private:
  double letter(char32_t code) const;

  static constexpr std::size_t kCommon = 0x250;  // Latin with all its accents
  QFont font_;
  double ascent_, descent_, lineHeight_;
  mutable std::array<float, kCommon> common_;
  mutable std::unordered_map<char32_t, float> others_;
};

// The typefaces that a report uses, each made once.
class FontSet {
 public:
  explicit FontSet(std::string family) : family_(std::move(family)) {}
  std::uint16_t find(float points, bool bold = false, bool italic = false);  // by half points
  const Typeface& operator[](std::uint16_t index) const { return faces_[index]; }
  std::size_t size() const { return faces_.size(); }

 private:
  std::string family_;
  std::unordered_map<int, std::uint16_t> known_;
  std::deque<Typeface> faces_;
};

// Lines no wider than `width`: broken at line ends and blanks, a word wider than a line by letters.
// A line has at least one letter; an empty text is one empty line.
QStringList wrap(const QString& words, double width, const Typeface& face);
// The line cut to the width, with "…" for what is lost.
QString cutToWidth(const QString& line, double width, const Typeface& face);

// "" or, for the user, that the machine lacks the family and any of the same widths, so that forms
// would not fit their boxes.
std::string fontFault(const std::string& family);

// Fonts need a Qt application. Where none runs one without a window is made; it stays to the end.
void needFonts();

}  // namespace tolvex::report
