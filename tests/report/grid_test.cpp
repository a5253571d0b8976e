#include "host/report/grid.h"

#include <gtest/gtest.h>

#include <set>

#include "framework/results.h"
#include "tests/report/sample_reports.h"

namespace tolvex::test {
namespace {

using report::Grid;
using report::GridCell;

Box box(std::string name, float x, float y, float w, float h, std::string text = {},
        std::uint8_t flags = 0, int comb = 0) {
  return {std::move(name), x, y, w, h, std::move(text), {}, flags, comb};
}

// Every field of the grid belongs to one cell.
void expectWhole(const Grid& grid) {
  std::set<std::pair<int, int>> fields;
  for (const GridCell& cell : grid.cells)
    for (int row = cell.row; row < cell.row + cell.rows; ++row)
      for (int column = cell.column; column < cell.column + cell.columns; ++column)
        EXPECT_TRUE(fields.emplace(row, column).second) << row << " " << column;
  EXPECT_EQ(fields.size(), static_cast<std::size_t>(grid.rows() * grid.columns()));
}

TEST(Grid, BoxesAreCellsAndTheRestIsBlank) {
  const Panel form{
      100, 30, {box("a", 0, 0, 40, 10), box("b", 40.4F, 0, 30, 20), box("c", 0, 20, 100, 10)}};
  const Grid grid = report::gridOf(form);
  EXPECT_EQ(grid.x.size(), 4U) << "edges 40 and 40,4 are one";
  EXPECT_EQ(grid.y.size(), 4U);
  expectWhole(grid);
  const auto b = std::find_if(grid.cells.begin(), grid.cells.end(),
                              [](const GridCell& cell) { return cell.box == 1; });
  ASSERT_NE(b, grid.cells.end());
  EXPECT_EQ(b->column, 1);
  EXPECT_EQ(b->rows, 2);
}

TEST(Grid, EdgesAreJoinedToTheFirstOfThemOnly) {
  // In a chain of small steps each edge is near the one before; joining them all would move
  // boxes by more than anybody overlooks.
  const std::vector<float> joined = report::joints({0, 0.5F, 1.0F, 1.5F, 20});
  EXPECT_EQ(joined, (std::vector<float>{0, 1.0F, 20}));
  EXPECT_EQ(report::jointAt(joined, 0.5F), 0);
  EXPECT_EQ(report::jointAt(joined, 1.5F), 1);
}

TEST(Grid, FaultsOfAFormAreNamed) {
  struct Case {
    const char* name;
    std::vector<Box> boxes;
    const char* want;
  };
  const Case cases[] = {
      {"overlap", {box("a", 0, 0, 40, 10), box("b", 30, 5, 40, 10)}, "\"b\" of a form overlaps"},
      {"one inside another", {box("a", 0, 0, 90, 28), box("b", 30, 5, 5, 5)}, "overlaps box \"a\""},
      {"too far right", {box("a", 80, 0, 30, 10)}, "\"a\" of a form sticks out"},
      {"too far down", {box("", 0, 25, 30, 10, "Suma")}, "\"Suma\" of a form sticks out"},
      {"no width", {box("a", 10, 0, 0.3F, 10)}, "\"a\" of a form has no size"},
      {"comb finer than the joints", {box("a", 0, 0, 10, 10, "", Frame, 20)}, "has no size"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    try {
      (void)report::gridOf(Panel{100, 30, one.boxes});
      ADD_FAILURE() << "not refused";
    } catch (const RowSetError& error) {
      EXPECT_NE(std::string(error.what()).find(one.want), std::string::npos) << error.what();
    }
  }
}

TEST(Grid, CombsHoldOneLetterABox) {
  struct Case {
    const char* text;
    ui::Align align;
    const char* want;
  };
  const Case cases[] = {{"LTĄ", ui::Align::Left, "L|T|Ą||"},
                        {"9,5", ui::Align::Right, "||9|,|5"},
                        {"9,5", ui::Align::Center, "|9|,|5|"},
                        {"", ui::Align::Left, "||||"},
                        {"ilgesnis", ui::Align::Left, "ilgesnis"}};
  for (const Case& one : cases) {
    SCOPED_TRACE(one.text);
    Panel form{50, 8, {box("a", 0, 0, 50, 8, one.text, Frame, 5)}};
    form.boxes[0].style.align = one.align;
    std::string got;
    for (const GridCell& cell : report::gridOf(form).cells)
      got += (cell.column > 0 ? "|" : "") + report::cellText(form, cell);
    EXPECT_EQ(got, one.want);
  }
}

TEST(Grid, AnUnlinedCombStaysUnlined) {
  // The strict-reporting blank has its boxes printed already.
  for (const GridCell& cell : report::gridOf({50, 8, {box("a", 0, 0, 50, 8, "AB", 0, 5)}}).cells)
    EXPECT_EQ(cell.edges, 0);
  for (const GridCell& cell :
       report::gridOf({50, 8, {box("a", 0, 0, 50, 8, "AB", Frame, 5)}}).cells)
    EXPECT_EQ(cell.edges, Frame);
}

TEST(Grid, FormsOfTheProgramFit) {
  for (const ReportDocument& document : sampleReports())
    for (const Block& block : document.body)
      if (const auto* form = std::get_if<Panel>(&block)) expectWhole(report::gridOf(*form));
}

}  // namespace
}  // namespace tolvex::test
