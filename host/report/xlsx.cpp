#include "host/report/xlsx.h"

#include <QTemporaryFile>
#include <algorithm>
#include <set>

#include "framework/text.h"
#include "host/objects/report_service.h"
#include "host/report/fonts.h"
#include "host/report/grid.h"
#include "host/report/parts.h"
#include "host/report/saving.h"
#include "host/report/xlsx_book.h"

namespace tolvex::report {
namespace {

constexpr float kCellRoomMm = 2;  // left and right of a text
constexpr float kPointsPerMm = 72 / 25.4F;
constexpr float kRowRoom = 3;  // points free above and below a line
constexpr qint64 kPiece = 1 << 18;
constexpr std::uint8_t kA4 = 9;
constexpr const char* kTooManyRows = "Ataskaitoje per daug eilučių skaičiuoklės bylai.";

struct Contents {
  int tables = 0, panels = 0, breaks = 0;
  bool groups = false;
};

Contents contentsOf(const ReportDocument& document) {
  Contents found;
  for (const Block& block : document.body) {
    found.panels += std::holds_alternative<Panel>(block);
    found.breaks += std::holds_alternative<PageBreak>(block);
    if (const auto* table = std::get_if<ReportTable>(&block)) {
      ++found.tables;
      found.groups = found.groups || !table->groups.empty();
    }
  }
  return found;
}

// Tables and forms of one sheet share its columns: the edges of all of them.
std::vector<float> columnsOf(const ReportDocument& document) {
  std::vector<float> edges = {0};
  bool any = false;
  for (const Block& block : document.body) {
    std::vector<float> more;
    if (const auto* table = std::get_if<ReportTable>(&block)) more = columnEdges(*table);
    if (const auto* panel = std::get_if<Panel>(&block)) more = edgesAcross(*panel);
    any = any || more.size() > 1;
    edges.insert(edges.end(), more.begin(), more.end());
  }
  if (!any) edges.push_back(roomMm(document.page));
  return joints(std::move(edges));
}

double columnLetters(float mm) { return std::max((double(mm) / 25.4 * 96 - 5) / 7, 0.1); }

class Writer {
 public:
  Writer(const ReportDocument& document, const std::string& path, const FileNotes& notes)
      : document_(document),
        contents_(contentsOf(document)),
        book_(path, document, notes, contents_.panels == 0 && !contents_.groups),
        rows_(document, notes.progress),
        fonts_(document.page.font),
        x_(columnsOf(document)),
        usualHeight_(linesOf("", 0, lookOf({})).height) {}

  // "" or why the report cannot be written.
  std::string write() {
    setPage();
    for (std::size_t i = 0; i + 1 < x_.size(); ++i) {
      const auto column = static_cast<lxw_col_t>(i);
      book_.noted(worksheet_set_column(book_.sheet(), column, column,
                                       columnLetters(x_[i + 1] - x_[i]), nullptr));
    }
    for (const Block& block : document_.body) {
      const char* why = std::visit([this](const auto& one) { return add(one); }, block);
      if (*why) return why;
    }
    if (!breaks_.empty()) {
      breaks_.push_back(0);
      book_.noted(worksheet_set_h_pagebreaks(book_.sheet(), breaks_.data()));
    }
    if (!texts_.empty())
      book_.noted(
          worksheet_ignore_errors(book_.sheet(), LXW_IGNORE_NUMBER_STORED_AS_TEXT, texts_.c_str()));
    return {};
  }
  bool close() { return book_.close(row_); }

 private:
  void setPage() {
    lxw_worksheet* sheet = book_.sheet();
    const PageSetup& page = document_.page;
    const auto inches = [](float mm) { return double(mm) / 25.4; };
    worksheet_set_paper(sheet, kA4);
    worksheet_set_default_row(sheet, static_cast<double>(usualHeight_), LXW_FALSE);
    if (page.landscape) worksheet_set_landscape(sheet);
    worksheet_set_margins(sheet, inches(page.leftMm), inches(page.rightMm), inches(page.topMm),
                          inches(page.bottomMm));
    // Breaks between pages and fitting to the width exclude each other.
    if (contents_.breaks > 0)
      worksheet_set_print_scale(sheet, kScaleWithBreaks);
    else
      worksheet_fit_to_pages(sheet, 1, 0);
    if (contents_.panels > 0) worksheet_gridlines(sheet, LXW_HIDE_ALL_GRIDLINES);
    setFooter();
  }

  void setFooter() {
    if (document_.footer.empty()) return;
    std::string words = document_.footerAlign == ui::Align::Right    ? "&R"
                        : document_.footerAlign == ui::Align::Center ? "&C"
                                                                     : "&L";
    words += "&8&\"" + document_.page.font + ",Regular\"";
    for (const FooterPiece& piece : footerPieces(document_.footer))
      words += piece.kind == FooterPiece::Words  ? replaceAll(piece.words, "&", "&&")
               : piece.kind == FooterPiece::Page ? "&P"
                                                 : "&N";
    book_.noted(worksheet_set_footer(book_.sheet(), CutToChars(words, 255).c_str()));
  }

  int columns() const { return static_cast<int>(x_.size()) - 1; }
  float widthMm() const { return x_.back(); }

  const Typeface& faceOf(const CellLook& look) {
    return fonts_[fonts_.find(look.size, look.bold, look.italic)];
  }

  struct Lines {
    int count;
    float height;  // points of all
  };
  Lines linesOf(const std::string& text, float mm, const CellLook& look) {
    const Typeface& face = faceOf(look);
    const double room = std::max(mm - kCellRoomMm, 1.0F) * kTwipsPerMm;
    const auto count = static_cast<int>(wrap(QString::fromStdString(text), room, face).size());
    return {count, static_cast<float>(face.lineHeight() * count / 20) + kRowRoom};
  }

  // A height that differs from that of a plain row.
  void setHeight(float points) {
    if (points > usualHeight_ + 0.1F) book_.height(row_, points);
  }

  CellLook lookOf(const Style& style) const {
    CellLook look;
    look.size = style.size > 0 ? style.size : document_.page.size;
    look.bold = style.bold;
    look.italic = style.italic;
    return look;
  }

  const char* add(const Paragraph& paragraph) {
    if (row_ >= kMostRows) return kTooManyRows;
    CellLook look = lookOf(paragraph.style);
    look.align = paragraph.style.align;
    const Lines lines = linesOf(paragraph.text, widthMm(), look);
    // A single line may run on over the free cells beside it.
    const bool merged = lines.count > 1 || look.align != ui::Align::Left;
    look.wrap = lines.count > 1;
    look.place =
        paragraph.beforeMm >= paragraph.afterMm ? CellLook::Place::Bottom : CellLook::Place::Top;
    setHeight(lines.height + (paragraph.beforeMm + paragraph.afterMm) * kPointsPerMm);
    book_.put({row_, 0, 1, merged ? columns() : 1}, paragraph.text, look);
    ++row_;
    return "";
  }

  const char* add(const PageBreak&) {
    if (row_ > 0) breaks_.push_back(static_cast<lxw_row_t>(row_));
    return "";
  }

  const char* add(const ReportTable& table) {
    if (table.columns.empty()) return "";
    if (table.rows.size() + 2 > static_cast<std::size_t>(kMostRows - row_)) return kTooManyRows;
    std::vector<int> edges;
    for (const float edge : columnEdges(table)) edges.push_back(jointAt(x_, edge));
    addHead(table, edges);
    const int first = row_;
    std::set<std::size_t> numberLike;
    for (std::size_t r = 0; r < table.rows.size(); ++r) {
      addRow(table, r, edges, numberLike);
      if (!rows_.next()) return ReportOutput::kStopped;
    }
    for (const std::size_t column : numberLike) noteTexts(edges[column], first);
    return "";
  }

  void addHead(const ReportTable& table, const std::vector<int>& edges) {
    const int rows = headRows(table);
    if (rows == 0) return;
    CellLook look = lookOf({0, true, false});
    look.align = ui::Align::Center;
    look.edges = Frame;
    look.head = look.wrap = true;
    look.place = CellLook::Place::Middle;
    std::vector<float> heights(static_cast<std::size_t>(rows), 0);
    for (const HeadCell& cell : headOf(table)) {
      const float mm = x_[at(edges, cell.column + cell.columns)] - x_[at(edges, cell.column)];
      float& height = heights[static_cast<std::size_t>(cell.row + cell.rows - 1)];
      const float wanted = linesOf(cell.caption, mm, look).height;
      height = std::max(height, cell.rows > 1 ? wanted - usualHeight_ : wanted);
    }
    const int first = row_;
    for (const float height : heights) {
      setHeight(height);
      if (rows == 1) break;  // cells go out before the next row is begun
      ++row_;
    }
    for (const HeadCell& cell : headOf(table))
      book_.put({first + cell.row, edges[static_cast<std::size_t>(cell.column)], cell.rows,
                 span(edges, cell.column, cell.columns)},
                cell.caption, look);
    row_ = first + rows;
    if (contents_.tables > 1) return;
    book_.noted(worksheet_repeat_rows(book_.sheet(), static_cast<lxw_row_t>(first),
                                      static_cast<lxw_row_t>(row_ - 1)));
    if (contents_.panels == 0)
      worksheet_freeze_panes(book_.sheet(), static_cast<lxw_row_t>(row_), 0);
  }

  static std::size_t at(const std::vector<int>& edges, int column) {
    return static_cast<std::size_t>(edges[static_cast<std::size_t>(column)]);
  }
  static int span(const std::vector<int>& edges, int column, int count) {
    return edges[static_cast<std::size_t>(column + count)] -
           edges[static_cast<std::size_t>(column)];
  }

  void addRow(const ReportTable& table, std::size_t index, const std::vector<int>& edges,
              std::set<std::size_t>& numberLike) {
    const ReportRow& row = table.rows[index];
    CellLook look = lookOf(row.style);
    look.edges = static_cast<std::uint8_t>((table.hLines ? Top | Bottom : 0) |
                                           (table.vLines ? Left | Right : 0));
    look.strongTop = isTotal(table, index);
    look.fine = true;
    int most = 1;
    float height = usualHeight_;
    looks_.clear();
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      const ReportColumn& column = table.columns[i];
      const std::string& text = cellAt(row, i);
      CellLook& own = looks_.emplace_back(look);
      own.align = alignOf(table, row, i);
      own.show = shownAs(column.kind, text);
      if (own.show == CellLook::Show::Number) own.decimals = column.decimals;
      if (column.kind == CellKind::Text && numberIn(text)) numberLike.insert(i);
      const float mm =
          x_[static_cast<std::size_t>(edges[i + 1])] - x_[static_cast<std::size_t>(edges[i])];
      const Lines lines = linesOf(own.show == CellLook::Show::Text ? text : "", mm, look);
      own.wrap = lines.count > 1;
      most = std::max(most, lines.count);
      height = std::max(height, lines.height);
    }
    setHeight(height);
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      looks_[i].place = most > 1 ? CellLook::Place::Top : CellLook::Place::Middle;
      book_.put({row_, edges[i], 1, edges[i + 1] - edges[i]}, cellAt(row, i), looks_[i]);
    }
    ++row_;
  }

  // Texts that look like numbers are meant so; the program need not mark each of them.
  void noteTexts(int column, int firstRow) {
    char name[LXW_MAX_COL_NAME_LENGTH];
    lxw_col_to_name(name, static_cast<lxw_col_t>(column), LXW_FALSE);
    if (!texts_.empty()) texts_ += ' ';
    texts_ += name + std::to_string(firstRow + 1) + ":" + name + std::to_string(row_);
  }

  const char* add(const Panel& panel) {
    const Grid grid = gridOf(panel, x_);
    if (grid.rows() > kMostRows - row_) return kTooManyRows;
    for (int row = 0; row < grid.rows(); ++row) {
      const auto i = static_cast<std::size_t>(row);
      book_.height(row_ + row, (grid.y[i + 1] - grid.y[i]) * kPointsPerMm);
    }
    for (const GridCell& cell : grid.cells) {
      if (cell.box < 0) continue;
      const Box& box = panel.boxes[static_cast<std::size_t>(cell.box)];
      CellLook look = lookOf(box.style);
      look.bold = look.bold || (box.flags & Bold);
      look.align = cell.letter >= 0 ? ui::Align::Center : box.style.align;
      look.edges = cell.edges;
      look.wrap = (box.flags & Wrap) != 0 || box.text.find('\n') != std::string::npos;
      look.shrink = !look.wrap && cell.letter < 0;
      look.place = placeOf(box);
      book_.put({row_ + cell.row, cell.column, cell.rows, cell.columns}, cellText(panel, cell),
                look);
    }
    row_ += grid.rows();
    return "";
  }

  static CellLook::Place placeOf(const Box& box) {
    switch (standingOf(box)) {
      case Standing::Middle:
        return CellLook::Place::Middle;
      case Standing::Bottom:
        return CellLook::Place::Bottom;
      case Standing::Top:
        break;
    }
    return CellLook::Place::Top;
  }

  static constexpr std::uint16_t kScaleWithBreaks = 95;  // a page of full width fits for certain

  const ReportDocument& document_;
  const Contents contents_;
  XlsxBook book_;
  RowCount rows_;
  FontSet fonts_;
  const std::vector<float> x_;
  const float usualHeight_;  // of a row of one line, in points
  int row_ = 0;              // to be written next
  std::vector<lxw_row_t> breaks_;
  std::string texts_;            // ranges of texts that look like numbers
  std::vector<CellLook> looks_;  // of the cells of one row
};

// A failure stays with the file until it is asked.
void copy(QIODevice& from, QIODevice& to) {
  for (QByteArray piece; !(piece = from.read(kPiece)).isEmpty();) to.write(piece);
}

}  // namespace

std::string writeXlsx(const ReportDocument& document, const std::string& path,
                      const FileNotes& notes) {
  needFonts();
  SavedFile file(path);
  if (!file.open()) return file.failure();
  // The library writes files by name only.
  QTemporaryFile whole;
  if (!whole.open()) return diskFull(whole.fileTemplate().toStdString());
  const std::string beside = whole.fileName().toStdString();
  Writer writer(document, beside, notes);
  if (std::string why = writer.write(); !why.empty()) return why;
  if (!writer.close()) return diskFull(beside);
  copy(whole, file);
  return file.put();
}

}  // namespace tolvex::report
