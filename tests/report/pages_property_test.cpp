// Random tables: whatever they hold, nothing is lost, doubled or out of place.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "framework/text.h"
#include "host/report/page_flow.h"
#include "host/report/table_pages.h"
#include "tests/report/page_reading.h"

namespace tolvex::test {
namespace {

int below(int limit) { return *rc::gen::inRange(0, limit); }

std::string randomText(int mostWords = 60) {
  static const char* const kWords[] = {"ąžuolas",
                                       "UAB",
                                       "„Šėžėnų žuvėdra“",
                                       "1\u00A0180,00",
                                       "\n",
                                       "mm",
                                       "i",
                                       "gręžinių",
                                       "   ",
                                       "2004.03.31",
                                       "nepertraukiamasbendradarbiavimas"};
  std::string text;
  for (int i = below(below(6) == 0 ? mostWords : 6); i > 0; --i)
    text += kWords[below(11)] + std::string(" ");
  return text;
}

// Without high rows every one is below half a page.
ReportDocument randomReport(bool highRows = true) {
  const float leastCm = highRows ? 1.5F : 5;
  const int mostWords = highRows ? 60 : 6;
  ReportDocument document;
  document.page.landscape = below(2) == 0;
  document.page.size = 7 + static_cast<float>(below(10)) / 2;
  ReportTable table;
  table.hLines = below(3) != 0;
  table.vLines = below(3) != 0;
  const int columns = 1 + below(highRows ? 8 : 4);
  for (int c = 0; c < columns; ++c) {
    const float cm = leastCm + static_cast<float>(below(60)) / 10;
    table.columns.push_back({"", "S" + std::to_string(c) + " " + (below(4) ? "" : randomText()), cm,
                             static_cast<ui::Align>(below(3))});
  }
  if (columns > 2 && below(3) == 0) table.groups.push_back({1, 2, "Grupė"});
  const int rows = below(150);
  for (int r = 0; r < rows; ++r) {
    ReportRow row;
    row.cells.push_back("#" + std::to_string(r));
    for (int c = 1; c < columns - below(2); ++c) row.cells.push_back(randomText(mostWords));
    row.style.bold = below(8) == 0;
    row.heading = row.style.bold && below(3) == 0;
    row.style.size = below(10) == 0 ? 12 : 0;
    table.rows.push_back(std::move(row));
  }
  for (int i = below(4); i > 0; --i) document.body.push_back(Paragraph{randomText(), {}});
  document.body.push_back(std::move(table));
  return document;
}

std::string withoutBlanks(const std::string& text) {
  std::string rest;
  for (const char letter : text)
    if (letter != ' ' && letter != '\n') rest += letter;
  return rest;
}

struct Reader {
  const ReportDocument& document;
  const report::Pages pages = report::paginate(document);
  const ReportTable& table = std::get<ReportTable>(document.body.back());
  report::PageFlow flow{document};
  report::ColumnPlan plan = report::planColumns(table, document.page, double(flow.width));

  bool isFooter(const report::TextMark& mark) const {
    return textOf(mark).find(" psl. iš ") != std::string::npos;
  }
  std::size_t columnOf(float x) const {
    float edge = flow.left;
    for (std::size_t c = 0; c < plan.widths.size(); ++c)
      if ((edge += plan.widths[c]) > x) return c;
    return plan.widths.size() - 1;
  }
  double rightOf(const report::TextMark& mark) const {
    return report::placeOf(pages, mark, 0, mark.text.size()).right();
  }
};

RC_GTEST_PROP(PagesProperty, EveryCellStandsOnceAndInOrder, ()) {
  const ReportDocument document = randomReport();
  const Reader reader{document};
  std::vector<std::string> written(reader.table.columns.size()), found(written.size());
  for (const ReportRow& row : reader.table.rows)
    for (std::size_t c = 0; c < row.cells.size(); ++c) written[c] += withoutBlanks(row.cells[c]);
  for (const report::PageMarks& page : reader.pages.pages)
    for (const report::TextMark& mark : page.texts) {
      if (page.fills.empty() || inHead(page, mark) || reader.isFooter(mark)) continue;
      if (mark.y < page.fills.front().y) continue;  // a paragraph above
      found[reader.columnOf(mark.x)] += withoutBlanks(textOf(mark));
    }
  RC_ASSERT(found == written);
}

RC_GTEST_PROP(PagesProperty, NothingStandsOutsideTheMargins, ()) {
  const ReportDocument document = randomReport();
  const Reader reader{document};
  const double right = double(reader.flow.left + reader.flow.width) + 1;
  const double bottom = double(reader.pages.height - report::twips(document.page.bottomMm)) + 1;
  for (const report::PageMarks& page : reader.pages.pages) {
    for (const report::TextMark& mark : page.texts) {
      RC_ASSERT(mark.x >= reader.flow.left - 1);
      RC_ASSERT(reader.rightOf(mark) <= right + (mark.text.size() == 1 ? 200 : 0));
      RC_ASSERT(mark.y > report::twips(document.page.topMm));
      RC_ASSERT(double(mark.y) <= bottom);
    }
    for (const report::LineMark& line : page.lines) {
      RC_ASSERT(line.x1 >= reader.flow.left - 1);
      RC_ASSERT(double(line.x2) <= right);
      RC_ASSERT(double(line.y2) <= bottom);
    }
  }
}

RC_GTEST_PROP(PagesProperty, PagesOfATableBeginWithItsHeadAndNeverWithATotal, ()) {
  const ReportDocument document = randomReport(false);
  const Reader reader{document};
  bool inTable = false;
  for (std::size_t page = 0; page < reader.pages.pages.size(); ++page) {
    const report::PageMarks& marks = reader.pages.pages[page];
    if (inTable) {
      RC_ASSERT(!marks.fills.empty());
      RC_ASSERT(std::abs(marks.fills.front().y - report::twips(document.page.topMm)) < 1);
      const auto body = bodyOf(marks);
      RC_ASSERT(!body.empty());
      if (body.front().rfind("#", 0) == 0) {
        double number = -1;
        RC_ASSERT(parsePlainNumber(body.front().substr(1), number));
        const auto row = static_cast<std::size_t>(number);
        const auto& rows = reader.table.rows;
        const bool total =
            row > 0 && rows[row].style.bold && !rows[row].heading && !rows[row - 1].style.bold;
        RC_ASSERT(!total);
      }
    }
    inTable = inTable || !marks.fills.empty();
  }
}

}  // namespace
}  // namespace tolvex::test
