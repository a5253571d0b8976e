#include "host/report/rtf.h"

#include <gtest/gtest.h>

#include "tests/report/file_reading.h"
#include "tests/report/file_test.h"
#include "tests/report/sample_reports.h"

namespace tolvex::test {
namespace {

class RtfTest : public FileTest {
 protected:
  RtfContents written(const ReportDocument& document, const report::FileNotes& notes = {}) {
    EXPECT_EQ(report::writeRtf(document, path("ataskaita.rtf"), notes), "");
    raw = readFile(path("ataskaita.rtf"));
    RtfContents found = readRtf(path("ataskaita.rtf"));
    EXPECT_TRUE(found.balanced);
    return found;
  }
  bool rawHas(const char* words) const { return raw.find(words) != std::string::npos; }
  std::string raw;
};

TEST_F(RtfTest, TablesKeepTheirRowsAndLetters) {
  const ReportDocument document = journal(3);
  const RtfContents found = written(document, {DateTime::Of(2004, 3, 31, 9), {}});
  const auto& table = std::get<ReportTable>(document.body[4]);
  ASSERT_EQ(found.rows.size(), 1 + table.rows.size());
  for (std::size_t c = 0; c < table.columns.size(); ++c)
    EXPECT_EQ(found.rows[0][c], table.columns[c].caption);
  for (std::size_t r = 0; r < table.rows.size(); ++r)
    EXPECT_EQ(found.rows[r + 1], table.rows[r].cells);
  ASSERT_FALSE(found.paragraphs.empty());
  EXPECT_EQ(found.paragraphs.front(), "UAB „Šėžėnų žuvėdra“");
  EXPECT_EQ(found.paragraphs.back(), "Sudarė: vyr. buhalterė Ona Žąsytienė");
  EXPECT_EQ(found.footer, "1 psl. iš 1");
  for (const char* words : {"\\ansicpg1257", "\\landscape", "\\paperw16838", "\\trhdr", "PAGE",
                            "NUMPAGES", "\\creatim\\yr2004\\mo3\\dy31"})
    EXPECT_TRUE(rawHas(words)) << words;
  for (const char byte : raw) ASSERT_LT(static_cast<unsigned char>(byte), 0x80U);
}

TEST_F(RtfTest, MarksOfTheFormatAreText) {
  const char* const texts[] = {
      "{a}\\b", "100 %", "eilutė\nkita", "Ąžuolas „x“ – €", "\U0001F4B6 pinigai",
      "a\tb",   "\\par", "ę?ė"};
  ReportDocument document;
  ReportTable table;
  table.columns = {{"a", "{Antraštė}", 5}};
  for (const char* text : texts) {
    document.body.emplace_back(Paragraph{text, {}, 0, 0});
    table.rows.push_back({{text}, {}});
  }
  document.body.push_back(table);
  document.title = "{\\}";
  const RtfContents found = written(document);
  ASSERT_EQ(found.paragraphs.size(), std::size(texts));
  ASSERT_EQ(found.rows.size(), std::size(texts) + 1);
  for (std::size_t i = 0; i < std::size(texts); ++i) {
    EXPECT_EQ(found.paragraphs[i], texts[i]);
    EXPECT_EQ(found.rows[i + 1][0], texts[i]);
  }
}

TEST_F(RtfTest, CaptionsOverColumnsReachDown) {
  const RtfContents found = written(grouped());
  ASSERT_GT(found.rows.size(), 2U);
  EXPECT_EQ(found.rows[0],
            (std::vector<std::string>{"Sąskaita", "Pavadinimas", "Likutis laikotarpio pradžioje",
                                      "Apyvarta per laikotarpį", "Likutis laikotarpio pabaigoje"}));
  EXPECT_EQ(found.rows[1], (std::vector<std::string>{"", "", "Debetas", "Kreditas", "Debetas",
                                                     "Kreditas", "Debetas", "Kreditas"}));
}

TEST_F(RtfTest, FormsKeepEveryTextOnce) {
  const ReportDocument document = paymentOrder();
  std::string want, got;
  for (const Block& block : document.body)
    if (const auto* form = std::get_if<Panel>(&block))
      for (const Box& box : form->boxes) want += box.text;
  for (const auto& row : written(document).rows)
    for (const std::string& cell : row) got += cell;
  std::sort(want.begin(), want.end());
  std::sort(got.begin(), got.end());
  EXPECT_EQ(got, want);
}

TEST_F(RtfTest, ATextTooLongForItsLineIsMadeSmaller) {
  ReportDocument document;
  document.footer = "";
  Panel form{
      60, 6, {{"a", 0, 0, 60, 6, "UAB „Lietuvos jūrų laivininkystės agentūra“", {10}, Bottom}}};
  document.body.push_back(form);
  (void)written(document);
  EXPECT_FALSE(rawHas("\\fs20 ")) << "the end would wrap out of sight";
}

TEST_F(RtfTest, TheFirstPageMayBeWithoutItsNumber) {
  ReportDocument document = journal(1);
  document.footer = "{page}";
  document.footerFrom = 2;
  (void)written(document);
  EXPECT_TRUE(rawHas("\\titlepg{\\footerf"));
  document.footer.clear();
  (void)written(document);
  EXPECT_FALSE(rawHas("\\footer\\"));
}

TEST_F(RtfTest, AFailureLeavesWhatStoodThere) { expectSafeWriting("rtf", report::writeRtf); }

}  // namespace
}  // namespace tolvex::test
