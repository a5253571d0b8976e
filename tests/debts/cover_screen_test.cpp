#include <algorithm>

#include "debts/cover_forms.h"
#include "debts/frmCoverSum.h"
#include "debts/frmDebtsCover.h"
#include "framework/text.h"
#include "tests/operations/screen_fixture.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

using Texts = std::vector<std::string>;

struct Below final : OperationLink {
  void setDate(DateTime date) override { log.push_back("date " + date.Text()); }
  void setComment(std::string_view text) override { log.push_back("comment " + std::string(text)); }
  void refreshEntries() override { log.push_back("entries"); }
  Texts log;
};

constexpr ColumnSpec kColumns[] = {
    {"OIDR", FieldType::Text},          {"DateD", FieldType::Date},
    {"Number", FieldType::Text},        {"InfluenceSign", FieldType::Integer},
    {"LikutisLt", FieldType::Double},   {"LikutisCurr", FieldType::Double},
    {"FCurrencyCode", FieldType::Text}, {"AddrOIDR", FieldType::Text},
    {"AddrName", FieldType::Text}};

class CoverScreen : public ScreenTest {
 protected:
  CoverScreen() {
    registerCoverForms(tables->forms);
    servePresets(true);
    serveRates(2.75);
    host.store().serve("GetBRPropertiesByAcc",
                       table({{"FOIDR", FieldType::Text}, {"ShowString", FieldType::Text}}));
    host.store().serve("GetCoverFirms",
                       table({{"ShowString", FieldType::Text}, {"FOIDR", FieldType::Text}},
                             {{"UAB A", "O00001001"}, {"UAB B", "O00001002"}}));
    for (const char* list : {"GetDebts1", "GetDebts2", "GetDebts3"}) {
      host.store().serve(list, [](const std::string& parameters) {
        return HostResult{kDone, "", Variant(parameters.ends_with(",-1") ? owed() : claimed())};
      });
    }
  }
  static RowSetPtr debts(int sign,
                         std::initializer_list<std::tuple<int, double, double, const char*>> rows) {
    const RowSetPtr set = RowSet::make(kColumns);
    for (const auto& [number, lt, curr, code] : rows) {
      set->AddNew();
      (*set)["OIDR"] = "O0201500" + std::to_string(number);
      (*set)["DateD"] = DateTime::Of(2003, 1, static_cast<unsigned>(number));
      (*set)["Number"] = "N" + std::to_string(number);
      (*set)["InfluenceSign"] = sign;
      (*set)["LikutisLt"] = lt;
      (*set)["LikutisCurr"] = curr;
      (*set)["FCurrencyCode"] = code;
      (*set)["AddrOIDR"] = "O00001001";
      (*set)["AddrName"] = "UAB A";
    }
    return set;
  }
  static RowSetPtr owed() {
    return debts(1, {{1, 100, 0, "   "}, {2, 280, 100, "USD"}, {3, 5, 4, "SEK"}, {4, 6, 5, "SEK"}});
  }
  static RowSetPtr claimed() { return debts(-1, {{5, 50, 0, "   "}, {6, 0.03, 1.1, "JPY"}}); }
  void servePresets(bool both) {
    const RowSetPtr rows =
        table({{"Code", FieldType::Text}, {"Account", FieldType::Text}}, {{"536", "500"}});
    if (both) {
      rows->AddNew();
      (*rows)["Code"] = "636";
      (*rows)["Account"] = "6001";
    }
    host.store().serve("GetPresetAccounts", rows);
  }
  void serveRates(double usd) {
    host.store().serve(
        "GetCurrencyList",
        table({{"Code", FieldType::Text},
               {"Rate", FieldType::Double},
               {"BaseCurrency", FieldType::Integer}},
              {{"LTL", 1.0, 1}, {"USD", usd, 0}, {"JPY", 0.023, 0}, {"SEK", 0.0, 0}}));
  }
  std::shared_ptr<frmDebtsCover> cover(std::shared_ptr<VXObjectUIO> object) {
    auto form =
        std::make_shared<frmDebtsCover>(OperationToolRequest{host, std::move(object), below});
    form->markOpen(true);
    form->opened();
    return form;
  }
  std::shared_ptr<frmDebtsCover> filled(std::shared_ptr<VXObjectUIO> object) {
    auto form = cover(std::move(object));
    ui::Input user(*form);
    DO(user.typeCombo(form->primary.cmbAcc, "450"));
    DO(user.typeCombo(form->secondary.cmbAcc, "240"));
    DO(user.click(form->cmdGo));
    return form;
  }
  static std::string sumsOf(VXObjectUIO& object) {
    std::string sums;
    ForEachRow(*entriesOf(object)->Clone(), [&](RowSet& entry) {
      sums += (sums.empty() ? "" : " ") + plainNumber(entry["SumA"].Number());
    });
    return sums;
  }
  static std::string cell(const CoverSideBox& side, int row, int column) {
    return side.lvw.rows()
        .at(static_cast<std::size_t>(row))
        .cells.at(static_cast<std::size_t>(column))
        .text;
  }
  Below below;
};

TEST_F(CoverScreen, TicksAndSums) {
  auto form = filled(newOperation());
  ui::Input user(*form);
  expectScreen(*form, "frmDebtsCover_filled");
  EXPECT_EQ(cell(form->primary, 1, 9), "5,00") << "owed 280, worth 275";
  DO(user.click(form->primary.optAll));
  EXPECT_EQ(told(), Texts{"Nenurodytas SEK kursas!"}) << "once for both rows";
  EXPECT_EQ(form->primary.txtSum.text(), "375,00");
  DO(user.check(form->primary.lvw, 0, false));
  EXPECT_EQ(form->primary.txtSum.text(), "275,00");
  EXPECT_EQ(cell(form->primary, 0, 2), "100,00");
  DO(user.check(form->primary.lvw, 1, false));
  EXPECT_EQ(cell(form->primary, 1, 8), " ") << "a debt that is released shows no rate";
  DO(user.check(form->primary.lvw, 1, true));
  EXPECT_EQ(cell(form->primary, 1, 8), "2,75");
  // A sum that was typed is spent, and a spent sum ticks nothing more.
  DO(user.click(form->primary.optDrop));
  DO(user.enter(form->primary.txtSum, "20*3"));
  DO(user.check(form->primary.lvw, 0, true));
  EXPECT_EQ(cell(form->primary, 0, 5), "60,00");
  DO(user.check(form->primary.lvw, 1, true));
  EXPECT_FALSE(form->primary.lvw.rows()[1].checked);
  EXPECT_EQ(told(), Texts{});
}

TEST_F(CoverScreen, ARestOfCheapCurrencyIsShownAndClosedExactly) {
  auto form = filled(newOperation());
  ui::Input user(*form);
  DO(user.check(form->secondary.lvw, 1, true));
  EXPECT_EQ(cell(form->secondary, 1, 3), "-0,20");
  EXPECT_EQ(form->secondary.lvw.rows()[1].mark, ui::Mark::Bad);
  EXPECT_EQ(form->lblStatus.caption(),
            "Litais nepadengta -0,20 JPY (N6): eilutės meniu „Padengti visą valiutos likutį“");
  form->mnuInput.onPopup();
  ASSERT_TRUE(form->mnuExact.enabled);
  EXPECT_EQ(form->mnuSum.caption(), "JPY   sumos įvedimas");
  DO(user.pick(form->mnuExact));
  EXPECT_EQ(cell(form->secondary, 1, 3), " ");
  EXPECT_EQ(cell(form->secondary, 1, 6), "1,10");
}

TEST_F(CoverScreen, ASideIsCoveredInACurrency) {
  auto form = filled(newOperation());
  CoverSideBox& side = form->primary;
  ui::Input user(*form);
  const auto pay = [&](const char* code) {
    DO(user.click(side.cmdCurr));
    const auto& items = side.menuCurr.items;
    const auto item =
        std::ranges::find(items, code, [](ui::MenuItem* one) { return one->caption(); });
    ASSERT_NE(item, items.end()) << code;
    DO(user.pick(**item));
  };
  pay("USD");
  EXPECT_EQ(side.lblCurrCode.caption(), "USD");
  EXPECT_EQ(side.lvw.columns.back().caption, "USD");
  EXPECT_EQ(form->secondary.lvw.columns.size(), 10U);
  DO(user.check(side.lvw, 0, true));
  EXPECT_EQ(cell(side, 0, 5), "99,99") << "36,36 dollars";
  EXPECT_EQ(cell(side, 0, 9), "0,01");
  EXPECT_EQ(cell(side, 0, 10), "36,36");
  DO(user.check(side.lvw, 1, true));
  EXPECT_EQ(side.txtSum.text(), "136,36");
  DO(user.click(side.optDrop));
  DO(user.enter(side.txtSum, "50"));
  DO(user.click(side.optAll));
  (void)told();
  EXPECT_EQ(cell(side, 1, 10), "13,64") << "what the first debt leaves of the sum";
  EXPECT_EQ(cell(side, 1, 5), "37,51");
  DO(user.click(form->cmdGo));
  EXPECT_EQ(side.txtSum.text(), "50,00") << "the sum and its currency stay";
  // The sum of one debt: 20 of the dollars, then all of it by its litas.
  host.screens().users.push_back([](ui::Form& shown) {
    auto& dialog = dynamic_cast<frmCoverSum&>(shown);
    ui::Input typing(dialog);
    EXPECT_EQ(dialog.txtSumCurr.caption(), "Suma, USD");
    DO(typing.enter(dialog.txtSumCurr, "36,37"));
    EXPECT_FALSE(dialog.cmdOK.enabled) << "more than the debt";
    DO(typing.enter(dialog.txtSumLt, "100"));
    EXPECT_EQ(dialog.txtSumCurr.text(), "36,36");
    DO(typing.enter(dialog.txtSumCurr, "20"));
    EXPECT_EQ(dialog.txtSumLt.text(), "55,00");
    DO(typing.click(dialog.cmdOK));
  });
  DO(user.activate(side.lvw, 0));
  EXPECT_EQ(cell(side, 0, 2), "45,00");
  EXPECT_EQ(cell(side, 0, 10), "20,00");
  // A currency without a rate is told, or is given one.
  host.dialogs().inputs = {std::nullopt, "0,3"};
  pay("SEK");
  EXPECT_EQ(told(), Texts{"Nenurodytas SEK kursas !"});
  EXPECT_EQ(side.lblCurrCode.caption(), "USD");
  pay("SEK");
  EXPECT_EQ(side.txtSum.text(), "") << "the sum was in dollars";
  DO(user.click(side.optAll));
  EXPECT_EQ(told(), Texts{});
  EXPECT_EQ(cell(side, 2, 10), "4,00") << "its own currency";
  EXPECT_EQ(cell(side, 2, 5), "1,20");
  pay("Lt");
  EXPECT_EQ(side.lblCurrCode.caption(), "   ");
  EXPECT_EQ(side.lvw.columns.size(), 10U);
}

TEST_F(CoverScreen, SumsAndRatesByHand) {
  auto form = filled(newOperation());
  ui::Input user(*form);
  DO(user.select(form->primary.lvw, 1));
  host.screens().users.push_back([](ui::Form& shown) {
    auto& dialog = dynamic_cast<frmCoverSum&>(shown);
    ui::Input typing(dialog);
    EXPECT_EQ(dialog.txtSumLt.text(), "275,00");
    DO(typing.enter(dialog.txtSumCurr, "100,01"));
    EXPECT_FALSE(dialog.cmdOK.enabled) << "more than the debt";
    DO(typing.enter(dialog.txtSumCurr, "40"));
    EXPECT_EQ(dialog.txtSumLt.text(), "110,00");
    DO(typing.click(dialog.cmdOK));
  });
  DO(user.activate(form->primary.lvw, 1));
  EXPECT_EQ(cell(form->primary, 1, 6), "40,00");
  EXPECT_EQ(cell(form->primary, 1, 3), "60,00");
  host.dialogs().inputs.push_back("2,9");
  DO(user.pick(form->mnuRates));
  EXPECT_EQ(host.dialogs().inputsShown.back(),
            (Texts{"USD kursas, Lt:", "Kurso įvedimas", "2,75"}));
  EXPECT_EQ(cell(form->primary, 1, 9), "-10,00") << "filled anew at the rate";
  EXPECT_FALSE(form->primary.lvw.rows()[1].checked);
}

TEST_F(CoverScreen, PairsAreCoveredOnceAndTheNextFollows) {
  auto object = newOperation();
  auto form = filled(object);
  ui::Input user(*form);
  DO(user.choose(form->addressees.cmbAddr, 0));
  DO(user.check(form->primary.lvw, 0, true));
  DO(user.check(form->secondary.lvw, 0, true));
  DO(user.click(form->cmdOK));
  EXPECT_EQ(told(), Texts{});
  EXPECT_EQ(below.log, (Texts{"comment Skolų dengimas - UAB A", "date 2003.02.09", "entries"}));
  EXPECT_EQ(entriesOf(*object)->RecordCount(), 1U);
  EXPECT_EQ(form->primary.txtAddr.text(), "UAB B");
  EXPECT_EQ(form->addressees.cmbAddr.items()[0].text, "*** UAB A");
  EXPECT_EQ(form->cmdExit.caption(), "Užbaigti");
  EXPECT_FALSE(form->dtpDate.enabled);
  DO(user.choose(form->addressees.cmbAddr, 0));
  DO(user.check(form->primary.lvw, 0, true));
  DO(user.check(form->secondary.lvw, 0, true));
  DO(user.click(form->cmdOK));
  EXPECT_EQ(told(), Texts{"Toks variantas jau išsaugotas !"});
  EXPECT_EQ(entriesOf(*object)->RecordCount(), 1U);
}

TEST_F(CoverScreen, AFailureInTheMiddleKeepsWhatWasMadeAndSaysSo) {
  servePresets(false);
  auto object = newOperation();
  auto form = filled(object);
  EXPECT_EQ(told(),
            Texts{"Sąskaitų žinyne nepažymėta valiutos kursų pasikeitimo įtakos sąskaita!"});
  serveRates(2.9);  // a loss, which has no account
  form = filled(object);
  (void)told();
  ui::Input user(*form);
  DO(user.enter(form->primary.txtSum, "120"));
  DO(user.check(form->primary.lvw, 0, true));
  DO(user.check(form->primary.lvw, 1, true));
  DO(user.click(form->secondary.optAll));
  DO(user.select(form->primary.lvw, 0));
  DO(user.check(form->primary.lvw, 0, false));
  DO(user.enter(form->primary.txtSum, "30"));
  DO(user.click(form->primary.optDrop));
  DO(user.check(form->primary.lvw, 0, true));
  DO(user.enter(form->primary.txtSum, "60"));
  DO(user.check(form->primary.lvw, 1, true));
  DO(user.click(form->cmdOK));
  const Texts texts = told();
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_TRUE(texts[0].starts_with("Method AddBR_1:")) << texts[0];
  EXPECT_TRUE(texts[0].ends_with("Iki tol padaryti įrašai liko operacijoje.")) << texts[0];
  EXPECT_EQ(entriesOf(*object)->RecordCount(), 1U);
  EXPECT_EQ(below.log.back(), "entries");
}

TEST_F(CoverScreen, ASecondSaveGoesOnWhereTheFirstWasRefused) {
  int untilRefusal = 2;
  tables->methods.add({"AddBR", {}, "", [&](UIO0201500& o, Arguments par) {
                         if (--untilRefusal == 0) return refused("Ne dabar");
                         return AddBR(o, NewEntry::from(par));
                       }});
  auto object = newOperation();
  auto form = filled(object);
  ui::Input user(*form);
  DO(user.choose(form->addressees.cmbAddr, 0));
  DO(user.check(form->primary.lvw, 0, true));
  DO(user.enter(form->secondary.txtSum, "50,03"));
  DO(user.click(form->secondary.optAll));
  DO(user.click(form->cmdOK));
  EXPECT_EQ(told(), Texts{"Ne dabar\r\n\r\nIki tol padaryti įrašai liko operacijoje."});
  // The first 50 stand in the operation: nothing offers them any more.
  EXPECT_EQ(cell(form->primary, 0, 5), "50,00") << "of 100";
  EXPECT_EQ(cell(form->secondary, 0, 2), " ");
  EXPECT_FALSE(form->secondary.lvw.rows()[0].checked);
  EXPECT_EQ(form->secondary.txtSum.text(), "0,03");
  EXPECT_FALSE(form->dtpDate.enabled);
  DO(user.click(form->cmdOK));
  EXPECT_EQ(told(), Texts{});
  EXPECT_EQ(sumsOf(*object), "50 0.03");
  EXPECT_EQ(below.log,
            (Texts{"comment Skolų dengimas - UAB A", "date 2003.02.09", "entries", "entries"}));
}

TEST_F(CoverScreen, VariantsAreKeptAndChosen) {
  auto form = cover(newOperation());
  ui::Input user(*form);
  DO(user.pick(form->mnuAddVariant));
  EXPECT_EQ(told(), Texts{"Neužduota sąskaita !"});
  DO(user.typeCombo(form->primary.cmbAcc, "450"));
  DO(user.typeCombo(form->secondary.cmbAcc, "240"));
  DO(user.pick(form->mnuAddVariant));
  DO(user.pick(form->mnuAddVariant));
  EXPECT_EQ(told(), Texts{"Toks variantas jau išsaugotas !"});
  DO(user.choose(form->primary.optDeb));
  EXPECT_TRUE(form->secondary.optCred.on()) << "the lists oppose each other";
  DO(user.pick(form->mnuAddVariant));
  EXPECT_EQ(host.settings().get("O0201500", "DebtsCoverParameters", ""),
            "450 K - 240 D#450 D - 240 K");
  form = cover(newOperation());
  ui::Input second(*form);
  DO(second.choose(form->cmbVariants, 1));
  EXPECT_TRUE(form->primary.optDeb.on());
  EXPECT_EQ(form->secondary.account(), "240");
  EXPECT_EQ(form->addressees.cmbAddr.items().size(), 2U);
  DO(second.pick(form->mnuDeleteVariant));
  EXPECT_EQ(host.settings().get("O0201500", "DebtsCoverParameters", ""), "450 K - 240 D");
}

}  // namespace
}  // namespace tolvex::test
