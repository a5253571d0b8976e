#include <gtest/gtest.h>

#include "host/report/panel_pages.h"
#include "tests/report/page_reading.h"
#include "tests/report/sample_reports.h"
#include "tests/support/form_faults.h"

namespace tolvex::test {
namespace {

using Faults = std::vector<std::string>;

report::Pages pagesOf(const Box& box) {
  ReportDocument document;
  document.footer = "";
  document.body.push_back(Panel{170, 50, {box}});
  return report::paginate(document);
}

TEST(Panels, FormsOfTheSamplesAreSound) {
  for (const ReportDocument& document : {paymentOrder(), cashOrder()}) {
    report::FontSet fonts("Arial");
    for (const Block& block : document.body) {
      const auto* form = std::get_if<Panel>(&block);
      if (!form) continue;
      EXPECT_EQ(formFaults(*form), Faults{});
      for (const Box& box : form->boxes)
        EXPECT_EQ(report::fittingPoints(fonts, box, document.page),
                  box.style.size > 0 ? box.style.size : document.page.size)
            << box.name << box.text;
    }
  }
}

TEST(Panels, FaultsOfAFormAreFound) {
  Panel form{100, 50, {}};
  form.boxes = {{"a", 0, 0, 50, 10, "", {}},
                {"a", 50, 0, 50, 10, "", {}},
                {"b", 40, 5, 20, 10, "", {}},
                {"c", 90, 45, 10, 6, "", {}}};
  EXPECT_EQ(formFaults(form),
            (Faults{"a stands twice", "b overlaps a", "b overlaps a", "c leaves the form"}));
}

TEST(Panels, ALongTextShrinksAndIsCutAtLast) {
  Box box{"fld", 0, 0, 40, 6, "UAB „Šėžėnų žuvėdra“", {10}, Bottom};
  const report::Pages usual = pagesOf(box);
  EXPECT_EQ(usual.fonts[usual.pages[0].texts[0].font].pixelSize(), 200);
  box.text = "UAB „Šėžėnų žuvėdra ir partneriai“";
  const report::Pages smaller = pagesOf(box);
  const report::TextMark& mark = smaller.pages[0].texts[0];
  EXPECT_EQ(textOf(mark), box.text);
  EXPECT_LT(smaller.fonts[mark.font].pixelSize(), 200);
  EXPECT_EQ(mark.y, usual.pages[0].texts[0].y) << "the base line stays";
  for (int i = 0; i < 3; ++i) box.text += box.text;
  const report::Pages cut = pagesOf(box);
  const report::TextMark& rest = cut.pages[0].texts[0];
  EXPECT_EQ(cut.fonts[rest.font].pixelSize(), 110) << "not below 5.5 points";
  EXPECT_TRUE(rest.text.endsWith(u'…'));
  EXPECT_LE(report::placeOf(cut, rest, 0, rest.text.size()).right(),
            double(report::twips(25 + 40)));
}

TEST(Panels, LabelsAndFieldsShareTheirBaseLine) {
  ReportDocument document;
  document.body.push_back(
      Panel{170,
            50,
            {{"", 0, 0, 22, 6, "Suma:", {8}, Base}, {"f", 22, 0, 50, 6, "vienas", {11}, Bottom}}});
  const report::Pages pages = report::paginate(document);
  EXPECT_EQ(pages.pages[0].texts[0].y, pages.pages[0].texts[1].y);
}

TEST(Panels, ACombHoldsALetterABoxAndALongerTextStandsWhole) {
  Box box{"acc", 0, 0, 40, 7, "LT12", {11, false, false, ui::Align::Right}, Frame | Middle, 8};
  const report::Pages comb = pagesOf(box);
  const report::TextMark& mark = comb.pages[0].texts[0];
  EXPECT_NEAR(mark.pitch, report::twips(5), 0.1);
  EXPECT_NEAR(mark.x, report::twips(25 + 20), 1) << "four boxes are free at the left";
  EXPECT_EQ(comb.pages[0].lines.size(), 4u + 7u);
  box.text = "LT127044060007654321";
  const report::Pages plain = pagesOf(box);
  EXPECT_EQ(plain.pages[0].texts[0].pitch, 0);
  EXPECT_EQ(textOf(plain.pages[0].texts[0]), box.text);
  EXPECT_EQ(plain.pages[0].lines.size(), 4u);
}

TEST(Panels, AFormIsNeverSplit) {
  ReportDocument document = paymentOrder();
  document.body.push_back(document.body.front());
  document.body.push_back(document.body.front());
  const report::Pages pages = report::paginate(document);
  ASSERT_EQ(pages.pages.size(), 2u) << "two a sheet";
  EXPECT_EQ(pages.pages[0].texts.size(), pages.pages[1].texts.size());
}

}  // namespace
}  // namespace tolvex::test
