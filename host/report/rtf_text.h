// The words of RTF: escaped text, measures, and rows of tables.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/report/parts.h"
#include "platform/report.h"

namespace tolvex::report {

// All letters beyond ASCII as numbers, marks of the format escaped, line ends as line breaks.
void appendRtf(std::string& out, std::string_view text);

int wholeTwips(float mm);
int halfPoints(float points);

const char* alignWord(ui::Align align);  // "\\ql" and so on
std::string typeWords(const Style& style, float pageSize);

enum class Merge : std::uint8_t { None, First, Next };
struct RtfCell {
  int right = 0;           // twips from the left margin
  std::uint8_t edges = 0;  // box flags Top, Bottom, Left, Right
  Standing place = Standing::Top;
  Merge merge = Merge::None;
  bool head = false;       // shaded
  bool strongTop = false;  // of a total
  bool fine = false;       // its lines are thin and grey
};
// What a row is like: its words and those of all its cells. `words`: of the row itself.
std::string rowWords(std::string_view words, const std::vector<RtfCell>& cells);

}  // namespace tolvex::report
