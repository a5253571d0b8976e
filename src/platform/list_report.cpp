#include "platform/list_report.h"

#include <algorithm>
#include <numeric>

#include "framework/date_time.h"
#include "framework/text.h"

namespace tolvex {
namespace {

constexpr float kPoints = 9, kTitlePoints = 12;
constexpr float kCmPerChar = 0.19F, kSidesCm = 0.25F;
constexpr int kTickChars = 2;
constexpr std::size_t kLongestStem = 80;
constexpr float kLeastShare = 0.6F;  // of a growing column, before it would break too much

const std::string& textAt(const ui::Row& row, std::size_t column) {
  static const std::string empty;
  return column < row.cells.size() ? row.cells[column].text : empty;
}

// How many digits stand behind the decimal mark; none where anything else stands there.
int decimalsOf(std::string_view text) {
  const std::size_t mark = text.find_last_of(",.");
  if (mark == std::string_view::npos) return 0;
  const std::string_view behind = text.substr(mark + 1);
  const bool number = behind.find_first_not_of("0123456789") == std::string_view::npos;
  return number ? static_cast<int>(behind.size()) : 0;
}

bool isDay(const std::string& text) {
  return text.size() == 10 && text[4] == '.' && DateTime::Parse(text).has_value();
}

ReportColumn columnOf(const ui::ListView& list, std::size_t index) {
  const ui::Column& shown = list.columns[index];
  ReportColumn column;
  column.key = shown.key;
  column.caption = shown.caption;
  column.align = shown.align;
  const int caption = static_cast<int>(length(shown.caption)) + 1;
  column.cm = static_cast<float>(std::max(shown.chars, caption)) * kCmPerChar + kSidesCm;
  if (shown.align == ui::Align::Right) {
    column.kind = CellKind::Number;
    column.decimals = 0;
    for (const ui::Row& row : list.rows())
      column.decimals = std::max(column.decimals, decimalsOf(textAt(row, index)));
    return column;
  }
  bool days = false;
  for (const ui::Row& row : list.rows()) {
    const std::string& text = textAt(row, index);
    if (text.empty()) continue;
    days = isDay(text);
    if (!days) break;
  }
  if (days) column.kind = CellKind::Date;
  return column;
}

bool isBold(const ui::Row& row) {
  if (row.bold) return true;
  bool any = false;
  for (const ui::Cell& cell : row.cells) {
    if (cell.text.empty()) continue;
    if (!cell.bold) return false;
    any = true;
  }
  return any;
}

float widthOf(const ReportTable& table) {
  return std::accumulate(table.columns.begin(), table.columns.end(), 0.0F,
                         [](float sum, const ReportColumn& column) { return sum + column.cm; });
}

// Growing columns take what room the page has left; before a page is turned on its side for them
// they give some of their own.
void fitGrowing(ReportTable& table, const ui::ListView& list) {
  const std::size_t first = table.columns.size() - list.columns.size();
  float growing = 0;
  for (std::size_t i = 0; i < list.columns.size(); ++i)
    if (list.columns[i].grow) growing += table.columns[first + i].cm;
  if (growing <= 0) return;
  const float fixed = widthOf(table) - growing;
  const float page = fixed + growing * kLeastShare <= kPortraitCm ? kPortraitCm : kLandscapeCm;
  const float share = std::max((page - fixed) / growing, kLeastShare);
  for (std::size_t i = 0; i < list.columns.size(); ++i)
    if (list.columns[i].grow) table.columns[first + i].cm *= share;
}

}  // namespace

PageSetup listPage(float columnsCm) {
  PageSetup page;
  page.landscape = columnsCm > kPortraitCm + 0.01F;  // sums of widths are not exact
  if (page.landscape) page.leftMm = page.rightMm = 13.5F;
  return page;
}

ReportTable listTable(const ui::ListView& list) {
  ReportTable table;
  if (list.checkBoxes)
    table.columns.push_back(
        {"", "", kTickChars * kCmPerChar + kSidesCm, ui::Align::Center, CellKind::Text, 0});
  for (std::size_t i = 0; i < list.columns.size(); ++i) table.columns.push_back(columnOf(list, i));
  fitGrowing(table, list);
  table.rows.reserve(list.rows().size());
  for (const ui::Row& row : list.rows()) {
    ReportRow printed;
    printed.cells.reserve(table.columns.size());
    if (list.checkBoxes) printed.cells.emplace_back(row.checked ? "x" : "");
    for (std::size_t i = 0; i < list.columns.size(); ++i) printed.cells.push_back(textAt(row, i));
    printed.style.bold = isBold(row);
    table.rows.push_back(std::move(printed));
  }
  // A bold row names what stands below it; at the end of a list it is a total.
  for (std::size_t i = 0; i + 1 < table.rows.size(); ++i)
    table.rows[i].heading = table.rows[i].style.bold;
  return table;
}

ReportDocument listReport(const std::string& firm, const ui::ListHeading& heading,
                          const ui::ListView& list) {
  ReportTable table = listTable(list);
  ReportDocument document;
  document.layout = "list";
  document.title = heading.title;
  document.exportStem = fileStem(heading.title);
  document.page = listPage(widthOf(table));
  document.page.size = kPoints;
  const auto line = [&](const std::string& text, Style style, float afterMm) {
    if (!text.empty()) document.body.emplace_back(Paragraph{text, style, 0, afterMm});
  };
  line(firm, {}, 1);
  line(heading.title, {kTitlePoints, true}, 2);
  for (const std::string& text : heading.lines) line(text, {}, 1);
  document.body.emplace_back(std::move(table));
  return document;
}

std::string fileStem(std::string_view text) {
  std::string stem;
  for (const char c : text) {
    const bool kept = static_cast<unsigned char>(c) >= ' ' &&
                      std::string_view("/\\:*?\"<>|").find(c) == std::string_view::npos;
    stem += kept ? c : ' ';
  }
  const std::size_t first = stem.find_first_not_of(" .");
  if (first == std::string::npos) return "Sarasas";
  stem = CutToChars(stem.substr(first), kLongestStem);
  return stem.substr(0, stem.find_last_not_of(" .") + 1);
}

}  // namespace tolvex
