// A table as marks: its columns over the width of the page, its rows over as many pages as it
// takes.
#pragma once

#include <functional>

#include "host/report/page_flow.h"

namespace tolvex::report {

// How the columns of a table share the page.
struct ColumnPlan {
  std::vector<float> widths;  // twips, with the room beside the text
  float points = 0;           // type of a row that names no size
  float share = 1;            // below 1: columns and type were shrunk by so much
  float pad = 0;              // room on each side of a text
};
ColumnPlan planColumns(const ReportTable& table, const PageSetup& page, double width);

class TablePages {
 public:
  TablePages(const ReportTable& table, const PageSetup& page, PageFlow& flow);

  float leastHeight();  // of the head with the first row and what is tied to it
  // False: `more`, called for every row, asked to stop.
  bool place(const std::function<bool()>& more);

 private:
  struct Cell {
    QStringList lines;
    std::uint16_t font = 0;
    ui::Align align = ui::Align::Left;
  };
  struct Shape {  // of a row or of one line of the head
    std::vector<Cell> cells;
    std::size_t lines = 1;  // of its highest cell
    double ascent = 0, lineHeight = 0;
    float height = 0;
  };

  Shape shapeOf(const ReportRow& row);
  Cell cellOf(const ReportColumn& column, const std::string& words, float width,
              const ReportRow& row, float points);
  void measure(Shape& shape);
  bool isTied(std::size_t row) const;  // must stand on the page of the next one
  const Shape& ahead(std::size_t row);
  float tiedHeight(std::size_t row);
  float wholePage() const;  // for rows

  void shapeHead();
  void placeHead();
  void headCell(const Cell& cell, const Shape& shape, float x, float width, float top,
                float height);
  void beginPage();
  void endPage();
  void nextPage();
  void placeRow(std::size_t row, const Shape& shape);
  void placeLines(const Shape& shape, std::size_t from, std::size_t count);

  const ReportTable& table_;
  PageFlow& flow_;
  ColumnPlan plan_;
  std::vector<float> edges_;  // one more than columns
  std::vector<int> groupOf_;  // of each column, -1 for none
  Shape captions_, groups_;   // the head: own captions below, those of several columns above
  float headHeight_ = 0, groupHeight_ = 0;
  std::deque<Shape> ahead_;  // shapes of the rows from firstAhead_ on
  std::size_t firstAhead_ = 0;
  float bodyTop_ = 0, tableTop_ = 0;  // on the page at hand
  bool ruleAbove_ = false;            // a strong line is there already
};

}  // namespace tolvex::report
