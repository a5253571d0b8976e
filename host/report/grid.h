// The grid of a form: its free boxes as cells of a table, for files that know tables only.
//
// The joints are all edges of the boxes; edges nearer than 0.6 mm are one. Each box is a cell that
// spans what lies between its edges, what is left free becomes blank cells.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/report.h"

namespace tolvex::report {

// Edges along one axis in millimetres, sorted, those nearer than 0.6 mm joined to the first.
std::vector<float> joints(std::vector<float> edges);
// The joint that an edge was joined to; the edge must have been among them.
int jointAt(const std::vector<float>& joints, float edge);

struct GridCell {
  int row = 0, column = 0, rows = 1, columns = 1;
  int box = -1;            // of the panel; -1: a blank cell
  int letter = -1;         // of a comb: which of its boxes; -1: the whole text
  std::uint8_t edges = 0;  // box flags Top, Bottom, Left, Right
};

struct Grid {
  std::vector<float> x, y;      // joints, from 0 to the width and the height
  std::vector<GridCell> cells;  // by row and column; together they cover the grid once
  int rows() const { return static_cast<int>(y.size()) - 1; }
  int columns() const { return static_cast<int>(x.size()) - 1; }
};

// All edges of the panel across its width.
std::vector<float> edgesAcross(const Panel& panel);

// `x`: joints with at least the panel's own among them. A form whose boxes overlap, stick out or
// have no size is a mistake of its maker: RowSetError names the boxes.
Grid gridOf(const Panel& panel, std::vector<float> x);
Grid gridOf(const Panel& panel);

// What stands in a cell: the box's text or one letter of it.
std::string cellText(const Panel& panel, const GridCell& cell);

}  // namespace tolvex::report
