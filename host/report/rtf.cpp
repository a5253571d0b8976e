#include "host/report/rtf.h"

#include <algorithm>

#include "host/objects/report_service.h"
#include "host/report/grid.h"
#include "host/report/panel_pages.h"
#include "host/report/parts.h"
#include "host/report/rtf_text.h"
#include "host/report/saving.h"
#include "host/report/table_pages.h"

namespace tolvex::report {
namespace {

constexpr std::size_t kPiece = 1 << 16;
constexpr int kFooterFromEdge = 340;  // twips
constexpr float kFooterPoints = 8;
constexpr const char* kTableRow =
    "\\trowd\\trkeep\\trpaddl57\\trpaddr57\\trpaddt20\\trpaddb20"
    "\\trpaddfl3\\trpaddfr3\\trpaddft3\\trpaddfb3";
// A paragraph of no height, between two tables that would join otherwise.
constexpr const char* kNothing = "\\pard\\plain\\fs2\\sl-20\\slmult0 ";

std::uint8_t cellLines(const ReportTable& table) {
  return static_cast<std::uint8_t>((table.hLines ? Top | Bottom : 0) |
                                   (table.vLines ? Left | Right : 0));
}

class Writer {
 public:
  Writer(const ReportDocument& document, QIODevice& file, const FileNotes& notes)
      : document_(document), notes_(notes), file_(file), rows_(document, notes.progress) {}

  bool write() {
    head();
    for (const Block& block : document_.body)
      if (!std::visit([this](const auto& one) { return add(one); }, block)) return false;
    // The last paragraph of a document stands outside of any table.
    out_ += kNothing;
    out_ += "\\par}";
    flush();
    return true;
  }

 private:
  void head() {
    const PageSetup& page = document_.page;
    out_ += "{\\rtf1\\ansi\\ansicpg1257\\deff0\\uc1{\\fonttbl{\\f0\\fnil\\fcharset186 ";
    appendRtf(out_, page.font);
    out_ +=
        ";}}{\\colortbl;\\red238\\green238\\blue238;\\red150\\green150\\blue150;}\n{\\info{"
        "\\title ";
    appendRtf(out_, document_.title);
    out_ += '}';
    if (notes_.made) out_ += madeWords(*notes_.made);
    out_ += "}\n";
    number("\\paperw", wholeTwips(page.landscape ? kPaperHeightMm : kPaperWidthMm));
    number("\\paperh", wholeTwips(page.landscape ? kPaperWidthMm : kPaperHeightMm));
    number("\\margl", wholeTwips(page.leftMm));
    number("\\margr", wholeTwips(page.rightMm));
    number("\\margt", wholeTwips(page.topMm));
    number("\\margb", wholeTwips(page.bottomMm));
    number("\\footery", std::min(kFooterFromEdge, wholeTwips(page.bottomMm)));
    if (page.landscape) out_ += "\\landscape\\lndscpsxn";
    out_ += '\n';
    footer();
  }

  static std::string madeWords(const DateTime& at) {
    return "{\\creatim\\yr" + std::to_string(at.Year()) + "\\mo" + std::to_string(at.Month()) +
           "\\dy" + std::to_string(at.Day()) + "\\hr" + std::to_string(at.Hour()) + "\\min" +
           std::to_string(at.Minute()) + "}";
  }

  void footer() {
    if (document_.footer.empty()) return;
    // The format knows a first page of its own and no other exception.
    if (document_.footerFrom > 1) out_ += "\\titlepg{\\footerf\\pard\\plain\\par}\n";
    out_.append("{\\footer\\pard").append(alignWord(document_.footerAlign));
    out_ += typeWords({}, kFooterPoints) + " ";
    for (const FooterPiece& piece : footerPieces(document_.footer)) {
      if (piece.kind == FooterPiece::Words) {
        appendRtf(out_, piece.words);
        continue;
      }
      out_ += "{\\field{\\*\\fldinst ";
      out_ += piece.kind == FooterPiece::Page ? "PAGE" : "NUMPAGES";
      out_ += "}{\\fldrslt 1}}";
    }
    out_ += "\\par}\n";
  }

  // A failure stays with the file until it is asked.
  void flush() {
    file_.write(out_.data(), static_cast<qint64>(out_.size()));
    out_.clear();
  }

  void number(const char* word, int value) { out_.append(word).append(std::to_string(value)); }

  // Two tables, or a table and a form, would be taken for one.
  void startTable() {
    if (std::exchange(afterTable_, true)) out_.append(kNothing).append("\\par\n");
  }

  void cell(std::string_view words, std::string_view text) {
    out_.append("\\pard\\intbl").append(words) += ' ';
    appendRtf(out_, text);
    out_ += "\\cell";
  }

  bool add(const Paragraph& paragraph) {
    afterTable_ = false;
    out_.append("\\pard").append(alignWord(paragraph.style.align));
    if (paragraph.beforeMm > 0) number("\\sb", wholeTwips(paragraph.beforeMm));
    if (paragraph.afterMm > 0) number("\\sa", wholeTwips(paragraph.afterMm));
    out_ += typeWords(paragraph.style, document_.page.size) + " ";
    appendRtf(out_, paragraph.text);
    out_ += "\\par\n";
    if (out_.size() >= kPiece) flush();
    return true;
  }

  bool add(const PageBreak&) {
    afterTable_ = false;
    out_.append(kNothing).append("\\page\\par\n");
    return true;
  }

  bool add(const ReportTable& table) {
    if (table.columns.empty()) return true;
    startTable();
    const ColumnPlan plan = planColumns(table, document_.page, wholeTwips(roomMm(document_.page)));
    std::vector<int> edges = {0};
    double edge = 0;
    for (const float width : plan.widths)
      edges.push_back(static_cast<int>(edge += static_cast<double>(width)));
    headOfTable(table, plan, edges);
    const std::string plain = rowOfTable(table, edges, false),
                      total = rowOfTable(table, edges, true);
    for (std::size_t r = 0; r < table.rows.size(); ++r) {
      const ReportRow& row = table.rows[r];
      out_ += isTotal(table, r) ? total : plain;
      Style style = row.style;
      style.size *= plan.share;
      const std::string type = typeWords(style, plan.points) + (row.heading ? "\\keepn" : "");
      for (std::size_t i = 0; i < table.columns.size(); ++i)
        cell(alignWord(alignOf(table, row, i)) + type, cellAt(row, i));
      out_ += "\\row\n";
      if (out_.size() >= kPiece) flush();
      if (!rows_.next()) return false;
    }
    return true;
  }

  static std::string rowOfTable(const ReportTable& table, const std::vector<int>& edges,
                                bool total) {
    std::vector<RtfCell> cells;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
      RtfCell one;
      one.right = edges[i + 1];
      one.edges = cellLines(table);
      one.strongTop = total;
      one.fine = true;
      cells.push_back(one);
    }
    return rowWords(kTableRow, cells);
  }

  void headOfTable(const ReportTable& table, const ColumnPlan& plan,
                   const std::vector<int>& edges) {
    const std::vector<HeadCell> head = headOf(table);
    for (int row = 0; row < headRows(table); ++row) {
      std::vector<const HeadCell*> shown;
      for (const HeadCell& one : head)
        if (row >= one.row && row < one.row + one.rows) shown.push_back(&one);
      byColumn(shown);
      std::vector<RtfCell> cells;
      for (const HeadCell* one : shown) {
        RtfCell made;
        made.right = edges[static_cast<std::size_t>(one->column + one->columns)];
        made.edges = Frame;
        made.place = Standing::Middle;
        made.head = true;
        made.merge = mergeOf(*one, row);
        cells.push_back(made);
      }
      out_ += rowWords(std::string(kTableRow) + "\\trhdr", cells);
      for (std::size_t i = 0; i < cells.size(); ++i)
        cell("\\qc" + typeWords({0, true, false}, plan.points),
             cells[i].merge == Merge::Next ? std::string_view() : shown[i]->caption);
      out_ += "\\row\n";
    }
  }

  // Cells that reach down from a row above stand between those of this one.
  template <class Cell>
  static void byColumn(std::vector<const Cell*>& cells) {
    std::sort(cells.begin(), cells.end(),
              [](const Cell* a, const Cell* b) { return a->column < b->column; });
  }
  template <class Cell>
  static Merge mergeOf(const Cell& cell, int row) {
    if (cell.rows == 1) return Merge::None;
    return row == cell.row ? Merge::First : Merge::Next;
  }

  bool add(const Panel& panel) {
    const Grid grid = gridOf(panel);
    startTable();
    for (int row = 0; row < grid.rows(); ++row) {
      std::vector<const GridCell*> shown;
      for (const GridCell& one : grid.cells)
        if (row >= one.row && row < one.row + one.rows) shown.push_back(&one);
      byColumn(shown);
      panelRow(panel, grid, row, shown);
    }
    if (out_.size() >= kPiece) flush();
    return true;
  }

  void panelRow(const Panel& panel, const Grid& grid, int row,
                const std::vector<const GridCell*>& shown) {
    const auto at = static_cast<std::size_t>(row);
    std::vector<RtfCell> cells;
    for (const GridCell* one : shown) {
      RtfCell made;
      made.right = wholeTwips(grid.x[static_cast<std::size_t>(one->column + one->columns)]);
      made.edges = one->edges;
      if (one->box >= 0) made.place = standingOf(panel.boxes[static_cast<std::size_t>(one->box)]);
      made.merge = mergeOf(*one, row);
      // A merged cell has its own line above and below only at its ends.
      if (made.merge != Merge::None) {
        if (row != one->row) made.edges &= static_cast<std::uint8_t>(~Top);
        if (row + 1 != one->row + one->rows) made.edges &= static_cast<std::uint8_t>(~Bottom);
      }
      cells.push_back(made);
    }
    const int height = std::max(wholeTwips(grid.y[at + 1]) - wholeTwips(grid.y[at]), 1);
    out_ += rowWords("\\trowd\\trkeep\\trpaddl40\\trpaddr40\\trpaddfl3\\trpaddfr3\\trrh-" +
                         std::to_string(height),
                     cells);
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const GridCell& one = *shown[i];
      if (one.box < 0 || cells[i].merge == Merge::Next) {
        cell("\\plain\\fs2", "");
        continue;
      }
      const Box& box = panel.boxes[static_cast<std::size_t>(one.box)];
      const ui::Align align = one.letter >= 0 ? ui::Align::Center : box.style.align;
      Style style = box.style;
      style.bold = style.bold || (box.flags & Bold);
      // A line too long for its row of a fixed height would not be seen at all.
      style.size = fittingPoints(fonts_, box, document_.page);
      cell(alignWord(align) + typeWords(style, document_.page.size), cellText(panel, one));
    }
    out_ += "\\row\n";
  }

  const ReportDocument& document_;
  const FileNotes& notes_;
  QIODevice& file_;
  RowCount rows_;
  FontSet fonts_{document_.page.font};
  std::string out_;  // to be written next
  bool afterTable_ = false;
};

}  // namespace

std::string writeRtf(const ReportDocument& document, const std::string& path,
                     const FileNotes& notes) {
  needFonts();
  SavedFile file(path);
  if (!file.open()) return file.failure();
  if (!Writer(document, file, notes).write()) return ReportOutput::kStopped;
  return file.put();
}

}  // namespace tolvex::report
