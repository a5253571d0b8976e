// Screens of rates over doubles: what is shown, asked and sent, and what stays after a refusal.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "framework/text.h"
#include "host/cards/frm_rate_day.h"
#include "host/cards/frm_rates_import.h"
#include "platform/input.h"
#include "platform/layout.h"
#include "tests/support/fake_host.h"
#include "tests/support/screen_text.h"

namespace tolvex {
namespace {

using test::table;
using Texts = std::vector<std::string>;
#define DO(act) EXPECT_EQ(act, "")

class RateScreens : public testing::Test {
 protected:
  RateScreens() {
    host.store().serve("DO0200500_GetCurrencyCodeList", table({{"Code", FieldType::Text},
                                                               {"Name", FieldType::Text},
                                                               {"BaseCurrency", FieldType::Integer},
                                                               {"FixedRate", FieldType::Double}},
                                                              {{"LTL", "litas", 1, 0.0},
                                                               {"EUR", "euras", 0, 3.4528},
                                                               {"GBP", "svaras", 0, 0.0},
                                                               {"USD", "doleris", 0, 0.0}}));
    host.store().serve(
        "DO0200500_GetCurrencyRates",
        table({{"Code", FieldType::Text}, {"Rate", FieldType::Double}, {"Date", FieldType::Date}},
              {{"USD", 2.5, DateTime::Of(2003, 2, 5)},
               {"USD", 2.75, DateTime::Of(2003, 2, 6)},
               {"USD", 2.8, DateTime::Of(2003, 2, 7)}}));
    answerWith({});
  }
  void answerWith(HostResult result) {
    host.store().serve("SaveDayRates", [result](const std::string&) { return result; });
  }
  // What was sent to be stored, and is forgotten.
  Texts sent() {
    Texts all;
    for (const auto& call : host.store().calls)
      if (call.method == "SaveDayRates") all.push_back(call.parameters);
    host.store().calls.clear();
    return all;
  }
  template <class Form>
  Form& opened(Form& form) {
    form.markOpen(true);
    form.opened();
    return form;
  }
  static std::string cells(const ui::ListView& list) {
    std::string text;
    for (const ui::Row& row : list.rows()) {
      for (const ui::Cell& cell : row.cells) text += cell.text + "|";
      text += row.mark == ui::Mark::Bad ? "!\n" : "\n";
    }
    return text;
  }

  test::FakeHost host;
};

TEST_F(RateScreens, ADayShowsEveryCurrencyBesideItsRateBefore) {
  frmRateDay form(host, DateTime::Of(2003, 2, 7));
  opened(form);
  EXPECT_NO_THROW(form.layout());
  test::expectScreen(form, "frmRateDay");
  EXPECT_EQ(cells(form.table.lvwRates),
            "EUR|euras||3,4528||\n"
            "GBP|svaras||||\n"
            "USD|doleris|2,8|2,75|1,82|\n");
  const std::string missing = form.lblMissing.caption();
  EXPECT_TRUE(missing.starts_with("Trūksta kursų: GBP 2003.01.07, ")) << missing;
  EXPECT_TRUE(containsNoCase(missing, "; USD 2003.01.07, ")) << missing;
  EXPECT_FALSE(containsNoCase(missing, "EUR")) << "a fixed rate needs none by the day";
}

TEST_F(RateScreens, OnlyWhatWasChangedIsSentAndAFailureKeepsIt) {
  frmRateDay form(host, DateTime::Of(2003, 2, 7));
  opened(form);
  ui::Input user(form);
  DO(user.select(form.table.lvwRates, 1));
  DO(user.enter(form.table.txtRate, "4.9"));
  EXPECT_EQ(form.table.txtRate.text(), "4,9");
  DO(user.select(form.table.lvwRates, 2));
  DO(user.click(form.table.cmdRemoveRate));
  answerWith({1203, "Nėra teisės keisti valiutų kursų!", {}});
  DO(user.click(form.cmdWrite));
  EXPECT_EQ(host.dialogs().takeTexts(),
            Texts{"Nėra teisės keisti valiutų kursų!\r\n\r\nĮrašymas neatliktas !"});
  EXPECT_EQ(cells(form.table.lvwRates),
            "EUR|euras||3,4528||\nGBP|svaras|4,9|||\nUSD|doleris||2,75||\n");
  sent();
  answerWith({});
  DO(user.click(form.cmdWrite));
  EXPECT_EQ(sent(), Texts{"'2003.02.07;GBP;4.9#2003.02.07;USD;'"});
  EXPECT_EQ(host.tree().log, Texts{"redraw O0002201"});
  DO(user.close());
  EXPECT_EQ(host.dialogs().takeTexts(), Texts{});
}

TEST_F(RateScreens, ALeapIsMarkedAndABadRateIsNotSent) {
  frmRateDay form(host, DateTime::Of(2003, 2, 7));
  opened(form);
  ui::Input user(form);
  DO(user.select(form.table.lvwRates, 2));
  DO(user.enter(form.table.txtRate, "28"));
  EXPECT_TRUE(cells(form.table.lvwRates).ends_with("USD|doleris|28|2,75|918,18|!\n"));
  DO(user.enter(form.table.txtRate, "2,8,1"));
  DO(user.click(form.cmdWrite));
  EXPECT_EQ(host.dialogs().takeTexts(), Texts{"Klaidingas kursas: 2003.02.07 2,8,1!"});
  EXPECT_EQ(form.focus(), &form.table.txtRate);
  EXPECT_EQ(sent(), Texts{});
  host.dialogs().answers.push_back(Answer::No);
  user.click(form.cmdNext);
  EXPECT_EQ(form.dtpDate.value()->Text(), "2003.02.07");
}

TEST_F(RateScreens, WithoutRightsNothingCanBeTyped) {
  host.rights().table["CCurrency"] = {1, 0, 0, 0, 0};
  frmRateDay form(host, DateTime::Of(2003, 2, 7));
  opened(form);
  EXPECT_TRUE(form.table.txtRate.readOnly);
  for (const ui::Button* button :
       {&form.cmdWrite, &form.cmdImport, &form.cmdNextRate, &form.table.cmdRemoveRate})
    EXPECT_FALSE(button->enabled) << button->name;
}

TEST_F(RateScreens, AFileIsReadIntoTheBoxAndStoredWhole) {
  frmRatesImport form(host, {{"USD", "GBP"}, "", std::nullopt});
  opened(form);
  EXPECT_NO_THROW(form.layout());
  ui::Input user(form);
  EXPECT_FALSE(form.cmdOK.enabled);
  host.dialogs().files.push_back("/no/such/folder/rates.txt");
  DO(user.click(form.cmdFile));
  EXPECT_EQ(host.dialogs().takeTexts(), Texts{"Byla neperskaityta: /no/such/folder/rates.txt"});

  const std::string path = testing::TempDir() + "rates_import_test.txt";
  std::ofstream(path) << "2003.02.07\tUSD\t2.81\r\n2003.02.07\tGBP\t4.9\r\n";
  host.dialogs().files.push_back(path);
  DO(user.click(form.cmdFile));
  std::remove(path.c_str());
  EXPECT_EQ(form.lblFound.caption(), "Kursų: 2");
  test::expectScreen(form, "frmRatesImport");
  answerWith({1205, "Duomenų bazė užimta", {}});
  DO(user.click(form.cmdOK));
  EXPECT_EQ(host.dialogs().takeTexts().size(), 1U);
  EXPECT_TRUE(form.isOpen()) << "what was read stays";
  sent();
  answerWith({});
  DO(user.click(form.cmdOK));
  EXPECT_EQ(sent(), Texts{"'2003.02.07;USD;2.81#2003.02.07;GBP;4.9'"});
  EXPECT_EQ(form.result, 1);
}

}  // namespace
}  // namespace tolvex
