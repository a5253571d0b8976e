#include "platform/list_report.h"

#include <gtest/gtest.h>

#include "platform/form.h"
#include "tests/support/fake_host.h"

namespace tolvex::test {
namespace {

class ListForm final : public ui::Form {
 public:
  explicit ListForm(HostContext& host) : Form(host, "frmRows") {}
  const char* picture() const override { return "lvwRows>\n"; }
  ui::ListView lvwRows{this, "lvwRows", {}};
};

class ListReportTest : public testing::Test {
 protected:
  ui::Row row(std::vector<ui::Cell> cells, bool bold = false) {
    ui::Row made;
    made.cells = std::move(cells);
    made.bold = bold;
    return made;
  }
  float widthCm() const {
    float sum = 0;
    for (const ReportColumn& column : listTable(list).columns) sum += column.cm;
    return sum;
  }
  FakeHost host;
  ListForm form{host};
  ui::ListView& list = form.lvwRows;
};

TEST_F(ListReportTest, ColumnsHoldWhatTheyAreMadeFor) {
  struct Case {
    const char* name;
    ui::Align align;
    std::vector<std::string> cells;
    CellKind kind;
    int decimals;
  };
  const Case cases[] = {
      {"accounts stay texts", ui::Align::Left, {"2711", "443"}, CellKind::Text, 2},
      {"sums", ui::Align::Right, {"1\u00A0234,50", "", "-0,01"}, CellKind::Number, 2},
      {"rates need more places", ui::Align::Right, {"3,4528", "1"}, CellKind::Number, 4},
      {"a sum with its currency", ui::Align::Right, {"29,00 EUR", "1,5"}, CellKind::Number, 1},
      {"counts", ui::Align::Right, {"15", "1200"}, CellKind::Number, 0},
      {"days", ui::Align::Left, {"2004.03.31", "", "2004.01.01"}, CellKind::Date, 2},
      {"a word among days", ui::Align::Left, {"2004.03.31", "nėra"}, CellKind::Text, 2},
      {"no such day", ui::Align::Left, {"2004.02.31"}, CellKind::Text, 2},
      {"nothing at all", ui::Align::Left, {"", ""}, CellKind::Text, 2},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    list.columns = {{"Stulpelis", 10, one.align}};
    std::vector<ui::Row> rows;
    for (const std::string& cell : one.cells) rows.push_back(row({cell}));
    list.setRows(rows);
    const ReportColumn column = listTable(list).columns[0];
    EXPECT_EQ(column.kind, one.kind);
    EXPECT_EQ(column.decimals, one.decimals);
    EXPECT_EQ(column.align, one.align);
  }
}

TEST_F(ListReportTest, APageIsTurnedWhenItsColumnsNeedIt) {
  struct Case {
    const char* name;
    std::vector<ui::Column> columns;
    bool landscape;
    float cm;  // of all columns; 0: less than a page
  };
  const Case cases[] = {
      {"few", {{"A", 10}, {"B", 20}}, false, 0},
      {"one that grows", {{"A", 10}, {"B", 20, ui::Align::Left, true}}, false, 17},
      {"one that gives some room", {{"A", 37}, {"B", 50, ui::Align::Left, true}}, false, 17},
      {"one that would give too much", {{"A", 70}, {"B", 50, ui::Align::Left, true}}, true, 27},
      {"many", {{"A", 60}, {"B", 60}}, true, 0},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    list.columns = one.columns;
    const ReportDocument report = listReport("", {"Sąrašas", {}}, list);
    EXPECT_EQ(report.page.landscape, one.landscape);
    if (one.cm > 0)
      EXPECT_NEAR(widthCm(), one.cm, 0.01);
    else
      EXPECT_LT(widthCm(), one.landscape ? kLandscapeCm : kPortraitCm);
    const float room = (one.landscape ? 297.0F : 210.0F) - report.page.leftMm - report.page.rightMm;
    EXPECT_NEAR(room, one.landscape ? 270 : 170, 0.01);
  }
  EXPECT_FALSE(listPage(kPortraitCm).landscape);
  EXPECT_TRUE(listPage(kPortraitCm + 0.1F).landscape);
}

TEST_F(ListReportTest, RowsKeepTheirLook) {
  list.columns = {{"Sąskaita", 10}, {"Suma", 10, ui::Align::Right}};
  ui::Cell bold("27");
  bold.bold = true;
  list.setRows({row({"2", "30,00"}, true), row({bold, ""}), row({bold, "30,00"}), row({"271"}),
                row({"Iš viso", "30,00"}, true)});
  const ReportTable table = listTable(list);
  std::string looks;
  for (const ReportRow& one : table.rows) looks += one.heading ? 'H' : one.style.bold ? 'B' : '-';
  EXPECT_EQ(looks, "HH--B") << "a bold row at the end is a total";
  EXPECT_EQ(table.rows[3].cells, (std::vector<std::string>{"271", ""}));
}

TEST_F(ListReportTest, TicksArePrinted) {
  list.columns = {{"Sąskaita", 10}};
  list.checkBoxes = true;
  std::vector<ui::Row> rows = {row({"240"}), row({"443"})};
  rows[1].checked = true;
  list.setRows(rows);
  EXPECT_EQ(dump(listReport("UAB Demo", {"Sąskaitos", {"iki 2004.03.31"}}, list)),
            "Sąskaitos\n"
            "UAB Demo\n"
            "Sąskaitos\n"
            "iki 2004.03.31\n"
            "|  | Sąskaita\n"
            "|  | 240\n"
            "| x | 443\n");
}

TEST(FileStem, IsAName) {
  EXPECT_EQ(fileStem("2004.03.31 P/1: \"Ąžuolas\"?"), "2004.03.31 P 1   Ąžuolas");
  EXPECT_EQ(fileStem("../.."), "Sarasas") << "no way up";
  EXPECT_EQ(fileStem("..\\slaptas."), "slaptas");
}

}  // namespace
}  // namespace tolvex::test
