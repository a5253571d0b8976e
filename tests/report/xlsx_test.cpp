#include "host/report/xlsx.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "host/report/parts.h"
#include "tests/report/file_test.h"

namespace tolvex::test {
namespace {

class XlsxTest : public FileTest {
 protected:
  void write(const ReportDocument& document, Sheet& sheet) {
    const report::FileNotes notes{DateTime::Of(2004, 3, 31, 9), {}};
    ASSERT_EQ(report::writeXlsx(document, path("ataskaita.xlsx"), notes), "");
    readSheet(path("ataskaita.xlsx"), sheet);
  }
};

TEST_F(XlsxTest, CellsAreWhatTheirColumnsSay) {
  Sheet sheet;
  write(journal(30), sheet);
  struct Case {
    const char* place;
    std::optional<double> number;
    const char *text, *format, *align;
  };
  const Case cases[] = {
      {"A1", {}, "UAB „Šėžėnų žuvėdra“", "@", "left"},
      {"A5", {}, "Data", "@", "center"},
      {"A6", 37996, "", "yyyy.mm.dd", "left"},  // 2004.01.10
      {"B6", {}, "KPO 1", "@", "left"},
      {"E6", {}, "2411", "@", "center"},  // an account is no sum
      {"F6", {}, "", "@", "right"},       // nothing there
      {"G6", 11.8, "", "#,##0.00", "right"},
      {"F7", 59.79, "", "#,##0.00", "right"},
      {"A36", {}, "", "@", "left"},
      {"C36", {}, "Iš viso", "@", "left"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.place);
    ASSERT_TRUE(sheet.cells.contains(one.place));
    const SheetCell& cell = sheet.cells[one.place];
    EXPECT_EQ(cell.number, one.number);
    EXPECT_EQ(cell.text, one.text);
    EXPECT_EQ(cell.format, one.format);
    EXPECT_EQ(cell.align, one.align);
    EXPECT_EQ(cell.bold, cell.place == "A5" || cell.place == "A36" || cell.place == "C36");
  }
}

TEST_F(XlsxTest, TheSheetIsReadyForScreenAndPaper) {
  Sheet sheet;
  write(journal(30), sheet);
  const pugi::xml_node root = sheet.xml.child("worksheet");
  const pugi::xml_node pane = root.child("sheetViews").child("sheetView").child("pane");
  EXPECT_STREQ(pane.attribute("ySplit").value(), "5");
  EXPECT_STREQ(pane.attribute("state").value(), "frozen");
  EXPECT_STREQ(sheet.workbook.select_node("//definedName").node().text().get(), "Ataskaita!$5:$5");
  const pugi::xml_node page = root.child("pageSetup");
  EXPECT_STREQ(page.attribute("orientation").value(), "landscape");
  EXPECT_STREQ(page.attribute("paperSize").value(), "9");
  EXPECT_STREQ(page.attribute("fitToHeight").value(), "0");
  EXPECT_STREQ(root.child("headerFooter").child("oddFooter").text().get(),
               "&R&8&\"Arial,Regular\"&P psl. iš &N");
  EXPECT_STREQ(root.child("ignoredErrors").child("ignoredError").attribute("sqref").value(),
               "E6:E36");
  EXPECT_EQ(sheet.merged, std::vector<std::string>());
  const std::string notes = partOf(path("ataskaita.xlsx"), "docProps/core.xml");
  EXPECT_NE(notes.find("2004-03-31T09:00:00Z"), std::string::npos) << notes;
  EXPECT_NE(notes.find("Sąskaitos žurnalas"), std::string::npos);
}

TEST_F(XlsxTest, ARowThatTakesTwoLinesIsHigher) {
  Sheet sheet;
  write(journal(30), sheet);
  EXPECT_TRUE(sheet.heights.contains(6)) << "the longest comment breaks";
  EXPECT_GT(sheet.heights[6], 18);
  EXPECT_FALSE(sheet.heights.contains(9)) << "one line";
}

TEST_F(XlsxTest, FormsAreCellsThatDoNotOverlap) {
  Sheet sheet;
  write(paymentOrder(), sheet);
  std::string letters;
  for (const auto& row : sheet.rows)
    for (const SheetCell& cell : row)
      if (cell.text.size() == 1) letters += cell.text;
  const std::string order = "LT127044060007654321LT601010012345678911180,00LTL";
  EXPECT_EQ(letters, order + order);
  std::set<std::pair<int, int>> taken;
  for (const std::string& range : sheet.merged) {
    int columns[2] = {}, rows[2] = {}, end = 0;
    for (const char c : range) {
      if (c == ':') ++end;
      if (c >= 'A' && c <= 'Z') columns[end] = columns[end] * 26 + (c - 'A' + 1);
      if (c >= '0' && c <= '9') rows[end] = rows[end] * 10 + (c - '0');
    }
    for (int row = rows[0]; row <= rows[1]; ++row)
      for (int column = columns[0]; column <= columns[1]; ++column)
        EXPECT_TRUE(taken.emplace(row, column).second) << range;
  }
}

TEST_F(XlsxTest, PagesBrokenByHandStayBroken) {
  ReportDocument document;
  for (const char* day : {"2004.03.01", "2004.03.02"}) {
    if (!document.body.empty()) document.body.emplace_back(PageBreak{});
    ReportTable table;
    table.columns = {{"a", "Data", 3, ui::Align::Left, CellKind::Date}};
    table.rows = {{{day}, {}}};
    document.body.push_back(table);
  }
  Sheet sheet;
  write(document, sheet);
  const pugi::xml_node root = sheet.xml.child("worksheet");
  EXPECT_STREQ(root.child("rowBreaks").child("brk").attribute("id").value(), "2");
  EXPECT_FALSE(root.child("pageSetup").attribute("fitToHeight"));
}

TEST_F(XlsxTest, AFailureLeavesWhatStoodThere) { expectSafeWriting("xlsx", report::writeXlsx); }

// What stands in a table stands in its file, in order, whatever letters it is made of.
rc::Gen<std::string> anyText() {
  return rc::gen::map(
      rc::gen::container<std::vector<const char*>>(rc::gen::element(
          "a", "Ž", " ", "<", "&", ">", "\"", "'", "\n", "\t", "_x0041_", "{", "}", "\\", "=", "-",
          "1", ",", "€", "\U0001F4B6", "2004.01.31", "ilgas žodis ")),
      [](const std::vector<const char*>& parts) {
        std::string text;
        for (const char* part : parts) text += part;
        return text;
      });
}

RC_GTEST_FIXTURE_PROP(XlsxTest, EveryCellIsThere, ()) {
  ReportTable table;
  const int columns = *rc::gen::inRange(1, 6), rows = *rc::gen::inRange(0, 20);
  for (int c = 0; c < columns; ++c)
    table.columns.push_back({"", *anyText(), static_cast<float>(*rc::gen::inRange(1, 60)) / 10,
                             *rc::gen::element(ui::Align::Left, ui::Align::Right),
                             *rc::gen::element(CellKind::Text, CellKind::Number, CellKind::Date),
                             *rc::gen::inRange(0, 5)});
  for (int r = 0; r < rows; ++r) {
    ReportRow row;
    const int cells = *rc::gen::inRange(0, columns + 1);
    for (int c = 0; c < cells; ++c)
      row.cells.push_back(*rc::gen::oneOf(
          anyText(), rc::gen::map(rc::gen::inRange(-1000000, 1000000),
                                  [](int number) { return std::to_string(number) + ",50"; })));
    table.rows.push_back(row);
  }
  ReportDocument document;
  document.body = {Paragraph{*anyText(), {}, 0, 0}, table};
  if (*rc::gen::arbitrary<bool>())
    document.body.emplace_back(Panel{90, 8, {{"a", 0, 0, 33, 8, *anyText(), {}, Frame}}});

  Sheet sheet;
  write(document, sheet);
  std::vector<std::string> want, got;
  const auto add = [&](const std::string& text, CellKind kind) {
    if (text.empty()) return;
    const auto number = report::numberIn(text);
    const auto day = report::dayIn(text);
    if (kind == CellKind::Number && number)
      want.push_back(std::to_string(*number));
    else if (kind == CellKind::Date && day)
      want.push_back(std::to_string(double(day->Seconds() / 86400 + 25569)));
    else
      want.push_back(text);
  };
  add(std::get<Paragraph>(document.body[0]).text, CellKind::Text);
  if (report::headRows(table) > 0)
    for (const ReportColumn& column : table.columns) add(column.caption, CellKind::Text);
  for (const ReportRow& row : table.rows)
    for (std::size_t c = 0; c < row.cells.size(); ++c) add(row.cells[c], table.columns[c].kind);
  if (document.body.size() > 2)
    add(std::get<Panel>(document.body[2]).boxes[0].text, CellKind::Text);
  for (const auto& row : sheet.rows)
    for (const SheetCell& cell : row)
      got.push_back(cell.number ? std::to_string(*cell.number) : cell.text);
  RC_ASSERT(got == want);
}

}  // namespace
}  // namespace tolvex::test
