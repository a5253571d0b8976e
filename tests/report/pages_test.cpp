#include <gtest/gtest.h>

#include <QFontMetricsF>

#include "tests/report/page_reading.h"
#include "tests/report/sample_reports.h"

namespace tolvex::test {
namespace {

using report::FontSet;
using report::paginate;
using Texts = std::vector<std::string>;

Texts strings(const QStringList& lines) {
  Texts texts;
  for (const QString& line : lines) texts.push_back(line.toStdString());
  return texts;
}

TEST(Wrap, BreaksAtBlanksAndLineEndsAndInsideLongWords) {
  FontSet fonts("Arial");
  const report::Typeface& face = fonts[fonts.find(10)];
  const double word = face.width(u"mmmm");
  const struct {
    const char* text;
    double width;
    Texts lines;
  } cases[] = {
      {"", 100, {""}},
      {"mmmm", word, {"mmmm"}},
      {"mmmm mmmm", word, {"mmmm", "mmmm"}},
      {"mmmm   mmmm  ", word, {"mmmm", "mmmm"}},
      {"mmmmmm", word, {"mmmm", "mm"}},
      {"m mmmmmm", word, {"m", "mmmm", "mm"}},
      {"  m", word, {"  m"}},
      {"m\r\nm\n\nm", word, {"m", "m", "", "m"}},
      {"ab", 0, {"a", "b"}},
      {"1\u00A0234\u00A0567,00 m",
       face.width(u"1\u00A0234\u00A0567,00"),
       {"1\u00A0234\u00A0567,00", "m"}},
      {"\U0001F4B6\U0001F4B6", 0, {"\U0001F4B6", "\U0001F4B6"}},
  };
  for (const auto& one : cases)
    EXPECT_EQ(strings(report::wrap(QString::fromUtf8(one.text), one.width, face)), one.lines)
        << one.text;
}

TEST(Wrap, WidthsAreThoseOfTheDrawnText) {
  FontSet fonts("Arial");
  for (const float points : {7.5F, 10.0F, 13.0F}) {
    const report::Typeface& face = fonts[fonts.find(points, true)];
    for (const QString& words :
         {QStringLiteral("AVA Ūkinė finansų įmonė"), QStringLiteral("1 180,00")})
      EXPECT_NEAR(face.width(words), QFontMetricsF(face.font()).horizontalAdvance(words),
                  0.003 * face.width(words));
  }
}

TEST(Pages, AnEmptyDocumentIsOneEmptyPage) {
  ReportDocument document;
  const report::Pages pages = paginate(document);
  ASSERT_EQ(pages.pages.size(), 1u);
  EXPECT_EQ(textsOf(pages.pages[0]), Texts{"1 psl. iš 1"});
  EXPECT_NEAR(pages.width, 210 * 56.7, 1);
}

TEST(Pages, BreaksMakeNoEmptyPages) {
  ReportDocument document;
  document.footer = "";
  document.body = {PageBreak{}, Paragraph{"a", {}}, PageBreak{},
                   PageBreak{}, Paragraph{"b", {}}, PageBreak{}};
  const report::Pages pages = paginate(document);
  ASSERT_EQ(pages.pages.size(), 2u);
  EXPECT_EQ(textsOf(pages.pages[1]), Texts{"b"});
}

TEST(Pages, FootersCountAllPagesAndBeginWhereAsked) {
  ReportDocument document;
  document.footer = "{page} iš {pages}";
  document.footerFrom = 2;
  document.body = {Paragraph{"a", {}}, PageBreak{}, Paragraph{"b", {}}, PageBreak{},
                   Paragraph{"c", {}}};
  const report::Pages pages = paginate(document);
  ASSERT_EQ(pages.pages.size(), 3u);
  EXPECT_EQ(textsOf(pages.pages[0]), Texts{"a"});
  EXPECT_EQ(textsOf(pages.pages[2]), (Texts{"c", "3 iš 3"}));
}

TEST(Pages, ATableWithoutColumnsDrawsNothingAndOneWithoutRowsItsHead) {
  EXPECT_TRUE(paginate(documentOf({})).pages[0].lines.empty());
  const report::Pages head = paginate(documentOf(tableOf(2, 0)));
  EXPECT_EQ(textsOf(head.pages[0]), (Texts{"Stulpelis 0", "Stulpelis 1"}));
}

TEST(Pages, ATotalTakesOneRowAlongToANewPage) {
  const std::size_t fitting = bodyOf(paginate(documentOf(tableOf(1, 200))).pages[0]).size();
  ReportTable table = tableOf(1, static_cast<int>(fitting) + 1);
  table.rows.back().style.bold = true;
  const report::Pages pages = paginate(documentOf(table));
  ASSERT_EQ(pages.pages.size(), 2u);
  const std::string last = std::to_string(fitting - 1), total = std::to_string(fitting);
  EXPECT_EQ(bodyOf(pages.pages[1]), (Texts{"r" + last + "c0", "r" + total + "c0"}));
  const auto strong = std::count_if(pages.pages[1].lines.begin(), pages.pages[1].lines.end(),
                                    [](const auto& line) { return line.weight == 10; });
  EXPECT_EQ(strong, 3) << "two of the head, one above the total";
}

TEST(Pages, HeadingsStayWithTheirRows) {
  const std::size_t fitting = bodyOf(paginate(documentOf(tableOf(1, 200))).pages[0]).size();
  ReportTable table = tableOf(1, static_cast<int>(fitting) + 5);
  for (const std::size_t row : {fitting - 2, fitting - 1}) {
    table.rows[row].heading = true;
    table.rows[row].style.bold = true;
  }
  const report::Pages pages = paginate(documentOf(table));
  EXPECT_EQ(bodyOf(pages.pages[1]).front(), "r" + std::to_string(fitting - 2) + "c0");
}

TEST(Pages, ARowHigherThanAPageGoesOnWithTheHeadRepeated) {
  ReportTable table = tableOf(2, 3);
  std::string longText;
  for (int i = 0; i < 150; ++i) longText += "eilutė" + std::to_string(i) + "\n";
  table.rows[1].cells[1] = longText + "galas";
  const report::Pages pages = paginate(documentOf(table));
  ASSERT_GE(pages.pages.size(), 3u);
  EXPECT_GT(bodyOf(pages.pages[0]).size(), 40u) << "it begins on the page at hand";
  for (const report::PageMarks& page : pages.pages) EXPECT_EQ(textOf(page.texts[0]), "Stulpelis 0");
  const Texts last = bodyOf(pages.pages.back());
  EXPECT_EQ(last[last.size() - 3], "galas");
}

TEST(Pages, WideTablesShrinkWithTheirType) {
  ReportTable table = tableOf(10, 2);
  table.columns[9].kind = CellKind::Number;
  table.rows[0].cells[9] = "-123\u00A0456\u00A0789,00";
  const report::Pages pages = paginate(documentOf(table));
  const Texts body = bodyOf(pages.pages[0]);
  EXPECT_NE(std::find(body.begin(), body.end(), table.rows[0].cells[9]), body.end())
      << "a number is never broken";
  EXPECT_LT(pages.fonts[pages.pages[0].texts.front().font].pixelSize(), 120);
}

TEST(Pages, AHeadingParagraphGoesWithItsTable) {
  ReportDocument document;
  document.footer = "";
  for (int i = 0; i < 100; ++i) {
    document.body.push_back(Paragraph{"Diena " + std::to_string(i), {}});
    document.body.push_back(tableOf(1, 2));
  }
  for (const report::PageMarks& page : paginate(document).pages)
    EXPECT_NE(textOf(page.texts.back()).find("r1"), std::string::npos)
        << "no page ends with the name of a table";
}

TEST(Pages, StopsWhenAsked) {
  int asked = 0;
  const auto stop = [&](double share) {
    EXPECT_LT(share, 0.2);
    return ++asked < 2;
  };
  EXPECT_TRUE(paginate(journal(10000), stop).pages.empty());
  EXPECT_EQ(asked, 2);
}

}  // namespace
}  // namespace tolvex::test
