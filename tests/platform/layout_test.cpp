#include "platform/layout.h"

#include <gtest/gtest.h>

#include "platform/controls.h"
#include "platform/form.h"
#include "tests/support/fake_host.h"

namespace tolvex::ui {
namespace {

class OrderForm final : public Form {
 public:
  OrderForm(HostContext& host, const char* picture) : Form(host, "frmOrder"), picture_(picture) {
    tabMain.tabs = {{"main", "Pagrindinis"}, {"more", "Kiti"}};
    mnuNew.visible = true;
  }
  const char* picture() const override { return picture_; }

  Panel SSFrame{this, "SSFrame", "Dokumentas"};
  TextBox txtSeries{this, "txtSeries", "Serija", 6};
  TextBox txtNumber{this, "txtNumber", "", 10};
  TabStrip tabMain{this, "tabMain"};
  ListView lvwRows{this, "lvwRows", {{"Sąskaita", 10}, {"Suma", 8, Align::Right}}};
  CheckBox chkAll{this, "chkAll", "&Visi"};
  Button cmdWrite{this, "cmdWrite", "Į&rašyti"};
  MenuItem mnuNew{this, "mnuNew", "Naujas"};
  Timer tmrWait{this, "tmrWait", 100};

 private:
  const char* picture_;
};

constexpr const char* kWhole = R"(
    [SSFrame]>
      "Serija, Nr. | data" txtSeries:8 txtNumber> | >>
    [tabs tabMain]>
      [main]
        lvwRows>
      [more]
        chkAll
    >> | cmdWrite
)";

TEST(Layout, BuildsTheTreeOfAPicture) {
  test::FakeHost host;
  OrderForm form(host, kWhole);
  const Node& root = form.layout();
  ASSERT_EQ(root.children.size(), 3u);

  const Node& frame = root.children[0];
  EXPECT_EQ(frame.type, Node::Type::Frame);
  EXPECT_EQ(frame.control, &form.SSFrame);
  EXPECT_TRUE(frame.grow);
  const Node& row = frame.children.at(0);
  ASSERT_EQ(row.children.size(), 2u);
  const Node& cell = row.children[0];
  ASSERT_EQ(cell.children.size(), 3u);
  EXPECT_EQ(cell.children[0].text, "Serija, Nr. | data");
  EXPECT_EQ(cell.children[1].chars, 8);
  EXPECT_FALSE(cell.children[1].grow);
  EXPECT_TRUE(cell.children[2].grow);
  EXPECT_TRUE(cell.grow);
  EXPECT_EQ(row.children[1].children[0].type, Node::Type::Space);

  const Node& tabs = root.children[1];
  EXPECT_EQ(tabs.control, &form.tabMain);
  ASSERT_EQ(tabs.children.size(), 2u);
  EXPECT_EQ(tabs.children[1].text, "more");

  EXPECT_EQ(form.txtSeries.parent, &form.SSFrame);
  EXPECT_EQ(form.lvwRows.parent, &form.tabMain);
  EXPECT_EQ(form.cmdWrite.parent, nullptr);
}

TEST(Layout, PanelsAndPagesDecideWhatIsShownAndUsable) {
  test::FakeHost host;
  OrderForm form(host, kWhole);
  form.layout();
  EXPECT_TRUE(form.lvwRows.shown());
  EXPECT_FALSE(form.chkAll.shown()) << "the second page lies behind the first";
  form.tabMain.current = std::string("more");
  EXPECT_TRUE(form.chkAll.shown());
  EXPECT_FALSE(form.lvwRows.shown());

  form.SSFrame.enabled = false;
  EXPECT_TRUE(form.txtSeries.shown());
  EXPECT_FALSE(form.txtSeries.usable());
  form.SSFrame.enabled = true;
  form.SSFrame.visible = false;
  EXPECT_FALSE(form.txtSeries.shown());
  EXPECT_TRUE(form.cmdWrite.usable());
}

struct WrongCase {
  const char* name;
  const char* picture;
  const char* error;
};

const WrongCase kWrong[] = {
    {"unknown name", "txtNothing", "frmOrder, line 1: \"txtNothing\" is no control of the form"},
    {"line counts from the picture's first", "\n\n txtSeries txtSeries",
     "frmOrder, line 3: \"txtSeries\" stands in the picture twice"},
    {"left out", "[SSFrame]\n  txtSeries txtNumber\ntabMain\nlvwRows>\nchkAll",
     "frmOrder: control cmdWrite is left out"},
    {"timer", "tmrWait", "frmOrder, line 1: \"tmrWait\" has no place in a picture"},
    {"frame of a field", "[txtSeries]", "frmOrder, line 1: \"txtSeries\" is no panel"},
    {"panel in a row", "SSFrame", "frmOrder, line 1: \"SSFrame\" is a panel; panels open a block"},
    {"tabs of a button", "[tabs cmdWrite]", "frmOrder, line 1: \"cmdWrite\" is no tab strip"},
    {"row among pages", "[tabs tabMain]\n  chkAll",
     "frmOrder, line 2: \"chkAll\" is no page of tabMain"},
    {"open bracket", "[SSFrame", "frmOrder, line 1: \"[SSFrame\" lacks its closing bracket"},
    {"open quote", "\"Serija txtSeries",
     "frmOrder, line 1: \"\"Serija txtSeries\" lacks its closing quote"},
    {"width", "txtSeries:x", "frmOrder, line 1: \"txtSeries:x\" has no width"},
    {"empty cell", "txtSeries | | chkAll",
     "frmOrder, line 1: \"txtSeries | | chkAll\" has an empty cell"},
    {"indented below a row", "txtSeries\n  chkAll",
     "frmOrder, line 2: \"chkAll\" is indented without a block above"},
    {"left of the first line", "  txtSeries\nchkAll",
     "frmOrder, line 2: \"chkAll\" stands left of the lines above"},
};

TEST(Layout, NamesFormLineAndWordOfAFault) {
  for (const auto& c : kWrong) {
    SCOPED_TRACE(c.name);
    test::FakeHost host;
    OrderForm form(host, c.picture);
    try {
      form.layout();
      ADD_FAILURE() << "built";
    } catch (const LayoutError& error) {
      EXPECT_STREQ(error.what(), c.error);
    }
  }
}

TEST(Layout, DescribesAFormAsText) {
  test::FakeHost host;
  OrderForm form(host, kWhole);
  form.setTitle("Orderis");
  form.txtSeries.text = "KPO";
  form.txtNumber.readOnly = true;
  form.cmdWrite.enabled = false;
  Row first, second;
  first.cells = {"2721", "1 250,50"};
  first.bold = true;
  second.cells = {"44301 ą", "7,00"};
  second.mark = Mark::Bad;
  form.lvwRows.setRows({first, second});
  form.lvwRows.current = 1;
  EXPECT_EQ(describe(form), R"(frmOrder "Orderis"
  SSFrame "Dokumentas"
    txtSeries "Serija" [KPO]
    txtNumber [] read-only
  tabMain [Pagrindinis] Kiti
    lvwRows
        Sąskaita |     Suma
        2721     | 1 250,50 bold
      > 44301 ą  |     7,00 bad
  -cmdWrite "Įrašyti"
)");
}

}  // namespace
}  // namespace tolvex::ui
