#include "host/report/parts.h"

#include <algorithm>
#include <utility>

#include "framework/results.h"
#include "framework/text.h"

namespace tolvex::report {
namespace {

constexpr float kNarrowestMm = 1;
constexpr int kDigits = 15;  // as many as a double holds for certain

bool isDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

float roomMm(const PageSetup& page) {
  const float paper = page.landscape ? kPaperHeightMm : kPaperWidthMm;
  return std::max(paper - page.leftMm - page.rightMm, kNarrowestMm);
}

std::vector<float> columnEdges(const ReportTable& table) {
  std::vector<float> edges = {0};
  for (const ReportColumn& column : table.columns)
    edges.push_back(edges.back() + std::max(column.cm * 10, kNarrowestMm));
  return edges;
}

int headRows(const ReportTable& table) {
  if (!table.groups.empty()) return 2;
  const bool named = std::any_of(table.columns.begin(), table.columns.end(),
                                 [](const ReportColumn& one) { return !one.caption.empty(); });
  return named ? 1 : 0;
}

bool isTotal(const ReportTable& table, std::size_t row) {
  const ReportRow& one = table.rows[row];
  return row > 0 && one.style.bold && !one.heading && !table.rows[row - 1].style.bold;
}

std::vector<HeadCell> headOf(const ReportTable& table) {
  const int columns = static_cast<int>(table.columns.size());
  if (headRows(table) == 0) return {};
  std::vector<bool> grouped(table.columns.size(), false);
  std::vector<HeadCell> cells;
  for (const ColumnGroup& group : table.groups) {
    expect(group.first >= 0 && group.count > 0 && group.first + group.count <= columns,
           "a caption stands over columns of its table");
    cells.push_back({0, group.first, 1, group.count, group.caption});
    for (int i = group.first; i < group.first + group.count; ++i) {
      expect(!grouped[static_cast<std::size_t>(i)], "a column has one caption above its own");
      grouped[static_cast<std::size_t>(i)] = true;
    }
  }
  for (int i = 0; i < columns; ++i) {
    const auto at = static_cast<std::size_t>(i);
    const int row = grouped[at] ? 1 : 0;
    cells.push_back({row, i, headRows(table) - row, 1, table.columns[at].caption});
  }
  std::sort(cells.begin(), cells.end(), [](const HeadCell& a, const HeadCell& b) {
    return a.row != b.row ? a.row < b.row : a.column < b.column;
  });
  return cells;
}

const std::string& cellAt(const ReportRow& row, std::size_t column) {
  static const std::string empty;
  return column < row.cells.size() ? row.cells[column] : empty;
}

ui::Align alignOf(const ReportTable& table, const ReportRow& row, std::size_t column) {
  return static_cast<int>(column) == row.alignedCell ? row.style.align
                                                     : table.columns[column].align;
}

std::optional<double> numberIn(std::string_view text) {
  std::string plain;
  int digits = 0;
  bool marked = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (text.substr(i, 2) == "\u00A0") {
      ++i;
    } else if (text.substr(i, 3) == "\u202F") {
      i += 2;
    } else if (text.substr(i, 3) == "\u2212" && plain.empty()) {
      plain = "-";
      i += 2;
    } else if (isDigit(c)) {
      plain += c;
      ++digits;
    } else if (c == '-' && plain.empty()) {
      plain = "-";
    } else if ((c == ',' || c == '.') && digits > 0 && !std::exchange(marked, true)) {
      plain += '.';
    } else if (c != ' ') {
      return std::nullopt;
    }
  }
  // "007" is a mark of something; as a number it would lose its noughts.
  const std::string_view whole = std::string_view(plain).substr(plain.starts_with('-') ? 1 : 0);
  if (whole.size() > 1 && whole[0] == '0' && whole[1] != '.') return std::nullopt;
  double value = 0;
  if (digits == 0 || digits > kDigits || plain.back() == '.' || !parsePlainNumber(plain, value))
    return std::nullopt;
  return value;
}

std::optional<DateTime> dayIn(std::string_view text) {
  return text.size() == 10 && text[4] == '.' ? DateTime::Parse(text) : std::nullopt;
}

Standing standingOf(const Box& box) {
  if (box.flags & Middle) return Standing::Middle;
  // The field's own line, and the words beside it, are written on.
  const bool written = (box.flags & Base) || ((box.flags & Bottom) && !(box.flags & Top));
  return written ? Standing::Bottom : Standing::Top;
}

std::vector<FooterPiece> footerPieces(std::string_view footer) {
  static constexpr std::pair<std::string_view, FooterPiece::Kind> kMarks[] = {
      {"{pages}", FooterPiece::Pages}, {"{page}", FooterPiece::Page}};
  std::vector<FooterPiece> pieces;
  std::string words;
  const auto endWords = [&] {
    if (!words.empty()) pieces.push_back({FooterPiece::Words, std::exchange(words, {})});
  };
  while (!footer.empty()) {
    const auto mark = std::find_if(std::begin(kMarks), std::end(kMarks),
                                   [&](const auto& one) { return footer.starts_with(one.first); });
    if (mark == std::end(kMarks)) {
      words += footer.front();
      footer.remove_prefix(1);
      continue;
    }
    endWords();
    pieces.push_back({mark->second, {}});
    footer.remove_prefix(mark->first.size());
  }
  endWords();
  return pieces;
}

}  // namespace tolvex::report
