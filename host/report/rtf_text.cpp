#include "host/report/rtf_text.h"

#include <cmath>

#include "framework/case_fold.h"

namespace tolvex::report {
namespace {

constexpr float kTwipsPerMm = 1440 / 25.4F;

void appendUnit(std::string& out, unsigned unit) {
  const auto number = static_cast<std::int16_t>(unit);
  out += "\\u" + std::to_string(number) + "?";
}

void appendPoint(std::string& out, char32_t point) {
  if (point < 0x10000) return appendUnit(out, static_cast<unsigned>(point));
  const auto rest = static_cast<unsigned>(point) - 0x10000;
  appendUnit(out, 0xD800 + (rest >> 10));
  appendUnit(out, 0xDC00 + (rest & 0x3FF));
}

}  // namespace

void appendRtf(std::string& out, std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char c = text[at];
    if (static_cast<unsigned char>(c) >= 0x80) {
      appendPoint(out, nextPoint(text, at));
      continue;
    }
    ++at;
    if (c == '\\' || c == '{' || c == '}') {
      out += '\\';
      out += c;
    } else if (c == '\n') {
      out += "\\line ";
    } else if (c == '\t') {
      out += "\\tab ";
    } else if (c >= ' ') {  // other marks have no letter: CR before LF among them
      out += c;
    }
  }
}

int wholeTwips(float mm) { return static_cast<int>(std::floor(mm * kTwipsPerMm + 0.5F)); }
int halfPoints(float points) { return static_cast<int>(std::floor(points * 2 + 0.5F)); }

const char* alignWord(ui::Align align) {
  switch (align) {
    case ui::Align::Right:
      return "\\qr";
    case ui::Align::Center:
      return "\\qc";
    case ui::Align::Left:
      break;
  }
  return "\\ql";
}

std::string typeWords(const Style& style, float pageSize) {
  std::string words =
      "\\plain\\f0\\fs" + std::to_string(halfPoints(style.size > 0 ? style.size : pageSize));
  if (style.bold) words += "\\b";
  if (style.italic) words += "\\i";
  return words;
}

std::string rowWords(std::string_view words, const std::vector<RtfCell>& cells) {
  static constexpr std::pair<std::uint8_t, const char*> kSides[] = {
      {Top, "\\clbrdrt"}, {Left, "\\clbrdrl"}, {Bottom, "\\clbrdrb"}, {Right, "\\clbrdrr"}};
  static constexpr const char* kPlaces[] = {"\\clvertalt", "\\clvertalc", "\\clvertalb"};
  static constexpr const char* kMerges[] = {"", "\\clvmgf", "\\clvmrg"};
  std::string out(words);
  for (const RtfCell& cell : cells) {
    out += kMerges[static_cast<std::size_t>(cell.merge)];
    out += kPlaces[static_cast<std::size_t>(cell.place)];
    for (const auto& [side, word] : kSides) {
      if (side == Top && cell.strongTop)
        out.append(word).append("\\brdrs\\brdrw20");
      else if (cell.edges & side)
        out.append(word).append(cell.fine ? "\\brdrs\\brdrw5\\brdrcf2" : "\\brdrs\\brdrw10");
    }
    if (cell.head) out += "\\clcbpat1";
    out += "\\cellx" + std::to_string(cell.right);
  }
  return out;
}

}  // namespace tolvex::report
