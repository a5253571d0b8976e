#include "host/report/grid.h"

#include <algorithm>

#include "framework/results.h"
#include "framework/text.h"

namespace tolvex::report {
namespace {

constexpr float kJoin = 0.6F;  // millimetres
constexpr float kSlack = 0.01F;

std::string nameOf(const Box& box) {
  return "\"" + (box.name.empty() ? box.text : box.name) + "\"";
}

[[noreturn]] void refuse(const Box& box, const std::string& why) {
  throw RowSetError(RowSetError::Unexpected, "box " + nameOf(box) + " of a form " + why);
}

std::vector<float> edgesDown(const Panel& panel) {
  std::vector<float> edges = {0, panel.heightMm};
  for (const Box& box : panel.boxes) edges.insert(edges.end(), {box.y, box.y + box.h});
  return edges;
}

// A text too long for the boxes of a comb is written as a plain one.
bool isComb(const Box& box) {
  return box.comb > 0 && length(box.text) <= static_cast<std::size_t>(box.comb);
}

int partsOf(const Box& box) { return isComb(box) ? box.comb : 1; }

float partEdge(const Box& box, int part) {
  return box.x + box.w * static_cast<float>(part) / static_cast<float>(partsOf(box));
}

// The cells of one box. A comb is divided where the box has lines at its sides.
void addBox(Grid& grid, const Panel& panel, int index) {
  const Box& box = panel.boxes[static_cast<std::size_t>(index)];
  if (box.x < -kSlack || box.y < -kSlack || box.x + box.w > panel.widthMm + kSlack ||
      box.y + box.h > panel.heightMm + kSlack)
    refuse(box, "sticks out");
  const int parts = partsOf(box);
  const std::uint8_t sides = box.flags & Frame;
  for (int part = 0; part < parts; ++part) {
    GridCell cell;
    cell.box = index;
    cell.letter = isComb(box) ? part : -1;
    cell.edges = sides;
    if (sides & (Left | Right) && parts > 1) {
      if (part > 0) cell.edges |= Left;
      if (part + 1 < parts) cell.edges |= Right;
    }
    cell.column = jointAt(grid.x, partEdge(box, part));
    cell.columns = jointAt(grid.x, partEdge(box, part + 1)) - cell.column;
    cell.row = jointAt(grid.y, box.y);
    cell.rows = jointAt(grid.y, box.y + box.h) - cell.row;
    if (cell.columns < 1 || cell.rows < 1) refuse(box, "has no size");
    grid.cells.push_back(cell);
  }
}

// Which box owns each field of the grid; a field owned twice is an overlap.
std::vector<int> owners(const Grid& grid, const Panel& panel) {
  const auto columns = static_cast<std::size_t>(grid.columns());
  std::vector<int> owner(columns * static_cast<std::size_t>(grid.rows()), -1);
  for (const GridCell& cell : grid.cells)
    for (int row = cell.row; row < cell.row + cell.rows; ++row)
      for (int column = cell.column; column < cell.column + cell.columns; ++column) {
        int& field =
            owner[static_cast<std::size_t>(row) * columns + static_cast<std::size_t>(column)];
        if (field >= 0)
          refuse(panel.boxes[static_cast<std::size_t>(cell.box)],
                 "overlaps box " + nameOf(panel.boxes[static_cast<std::size_t>(field)]));
        field = cell.box;
      }
  return owner;
}

void addBlanks(Grid& grid, const std::vector<int>& owner) {
  const int columns = grid.columns();
  for (int row = 0; row < grid.rows(); ++row) {
    const auto free = [&](int column) {
      return owner[static_cast<std::size_t>(row * columns + column)] < 0;
    };
    for (int column = 0; column < columns;) {
      int end = column;
      while (end < columns && free(end)) ++end;
      if (end > column) {
        GridCell blank;
        blank.row = row;
        blank.column = column;
        blank.columns = end - column;
        grid.cells.push_back(blank);
      }
      column = std::max(end, column + 1);
    }
  }
}

}  // namespace

std::vector<float> joints(std::vector<float> edges) {
  std::sort(edges.begin(), edges.end());
  std::vector<float> result;
  for (const float edge : edges)
    if (result.empty() || edge - result.back() >= kJoin) result.push_back(edge);
  return result;
}

int jointAt(const std::vector<float>& joints, float edge) {
  const auto above = std::upper_bound(joints.begin(), joints.end(), edge + kSlack);
  return std::max(static_cast<int>(above - joints.begin()) - 1, 0);
}

std::vector<float> edgesAcross(const Panel& panel) {
  std::vector<float> edges = {0, panel.widthMm};
  for (const Box& box : panel.boxes)
    for (int part = 0; part <= partsOf(box); ++part) edges.push_back(partEdge(box, part));
  return edges;
}

Grid gridOf(const Panel& panel, std::vector<float> x) {
  Grid grid;
  grid.x = std::move(x);
  grid.y = joints(edgesDown(panel));
  for (std::size_t i = 0; i < panel.boxes.size(); ++i) addBox(grid, panel, static_cast<int>(i));
  addBlanks(grid, owners(grid, panel));
  std::sort(grid.cells.begin(), grid.cells.end(), [](const GridCell& a, const GridCell& b) {
    return a.row != b.row ? a.row < b.row : a.column < b.column;
  });
  return grid;
}

Grid gridOf(const Panel& panel) { return gridOf(panel, joints(edgesAcross(panel))); }

std::string cellText(const Panel& panel, const GridCell& cell) {
  if (cell.box < 0) return {};
  const Box& box = panel.boxes[static_cast<std::size_t>(cell.box)];
  if (cell.letter < 0) return box.text;
  const int free = box.comb - static_cast<int>(length(box.text));
  const int before = box.style.align == ui::Align::Right    ? free
                     : box.style.align == ui::Align::Center ? free / 2
                                                            : 0;
  const int wanted = cell.letter - before;
  return wanted < 0 ? std::string() : mid(box.text, static_cast<std::size_t>(wanted) + 1, 1);
}

}  // namespace tolvex::report
