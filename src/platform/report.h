// ReportDocument: a report as plain data: a flow of paragraphs, tables, boxes and page breaks.
//
// Whoever makes a report says what stands in it; the host lays it out once and shows, prints or
// writes it as PDF, spreadsheet or RTF. No layout is known by name outside of its maker, so a new
// report needs no line in the host.
//
// Units: centimetres for columns, millimetres for boxes and margins, points for type.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "framework/param_dictionary.h"
#include "platform/controls.h"

namespace tolvex {

struct Style {
  float size = 0;  // points; 0: the page's
  bool bold = false, italic = false;
  ui::Align align = ui::Align::Left;
  bool operator==(const Style&) const = default;
};

// What a column holds, so that a spreadsheet gets numbers and dates and an account stays a text.
enum class CellKind : std::uint8_t { Text, Number, Date };

struct PageSetup {  // A4; margins in millimetres from the paper's edge
  bool landscape = false;
  float leftMm = 25, topMm = 15, rightMm = 15, bottomMm = 12;
  std::string font = "Arial";
  float size = 10;  // points
};

struct Paragraph {
  std::string text;
  Style style;
  float beforeMm = 0, afterMm = 0;
};

struct ReportColumn {
  std::string key, caption;
  float cm = 2;
  ui::Align align = ui::Align::Left;
  CellKind kind = CellKind::Text;
  int decimals = 2;  // of a number
};
struct ReportRow {
  std::vector<std::string> cells;  // as many as columns, or fewer
  Style style;                     // its align is for alignedCell alone; size 0: the page's
  int alignedCell = -1;
  bool heading = false;  // of the rows below: never the last one of a page
};
struct ColumnGroup {  // one caption over several columns
  int first = 0, count = 0;
  std::string caption;
};
// Wider than the page: its columns and its type shrink in proportion. Its head is repeated on every
// page. A bold row after plain ones, unless a heading, is a total: a strong line stands above it,
// and a page never begins with it.
struct ReportTable {
  std::vector<ReportColumn> columns;
  std::vector<ColumnGroup> groups;
  std::vector<ReportRow> rows;
  bool hLines = true, vLines = true;
};

enum BoxFlag : std::uint8_t {
  Top = 1,
  Bottom = 2,
  Left = 4,
  Right = 8,
  Frame = Top | Bottom | Left | Right,
  Middle = 16,  // the text stands in the middle of the height
  Wrap = 32,
  Bold = 64,
  Base = 128,  // the text stands on the line of the field beside it
};
struct Box {
  std::string name;  // "" for a fixed text
  float x = 0, y = 0, w = 0, h = 0;
  std::string text;
  Style style;
  std::uint8_t flags = 0;
  int comb = 0;  // that many boxes of one character each; 0: one box
};
// A form of boxes, never split over pages. Boxes may not overlap.
struct Panel {
  float widthMm = 0, heightMm = 0;
  std::vector<Box> boxes;
};
struct PageBreak {};

using Block = std::variant<Paragraph, ReportTable, Panel, PageBreak>;

struct ReportDocument {
  std::string layout;  // which report it is, for tests and for the user's settings
  std::string title;   // of the window and of the written file
  std::string exportStem;
  std::string wordPrefix;  // of templates for the word processor; "" offers none
  PageSetup page;
  std::vector<Block> body;
  std::string footer = "{page} psl. iš {pages}";  // "" for none
  int footerFrom = 1;                             // the first page that carries it
  ui::Align footerAlign = ui::Align::Right;
  ParamDictionary placeholders;  // for a template of the word processor
};

// A form as a table of constants: name, place and size in millimetres, size of type (0: the
// page's), flags, alignment, fixed text, comb.
struct BoxSpec {
  const char* name;
  float x, y, w, h;
  float size;
  int flags;
  ui::Align align;
  const char* text;
  int comb = 0;
};
// The form with its named boxes filled. A name that the form lacks is a fault of the program.
Panel panel(float widthMm, float heightMm, std::span<const BoxSpec> boxes,
            std::initializer_list<std::pair<std::string_view, std::string>> values);

// How far a long work on a report is, 0 to 1; false stops it.
using ReportProgress = std::function<bool(double share)>;

// The document as text, a line a paragraph, cell row or filled box: for tests and scripts.
std::string dump(const ReportDocument& document);

}  // namespace tolvex
