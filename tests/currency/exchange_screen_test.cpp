#include "currency/currency_forms.h"
#include "currency/frmCurrencyExchange.h"
#include "framework/text.h"
#include "tests/operations/screen_fixture.h"
#include "tests/support/screen_text.h"

namespace tolvex::test {
namespace {

using Texts = std::vector<std::string>;

// The screen below, as a list of what it was told.
struct Below final : OperationLink {
  void setDate(DateTime date) override { log.push_back("date " + date.Text()); }
  void setComment(std::string_view text) override { log.push_back("comment " + std::string(text)); }
  void refreshEntries() override { log.push_back("entries"); }
  Texts log;
};

class ExchangeScreen : public ScreenTest {
 protected:
  ExchangeScreen() {
    registerCurrencyForms(tables->forms);
    host.store().serve("GetMyFirmAccounts",
                       table({{"AccOIDR", FieldType::Text},
                              {"OIDR", FieldType::Text},
                              {"Name", FieldType::Text},
                              {"AccountNumber", FieldType::Text},
                              {"Preview", FieldType::Text},
                              {"MainAccountFlag", FieldType::SmallInt}},
                             {{"O00005002", "O00003001", "Bankas A", "LT2", "Bankas A, LT2", 0},
                              {"O00005001", "O00003001", "Bankas A", "LT1", "Bankas A, LT1", 1}}));
    servePresets({{"536", "500"}, {"636", "6001"}});
    host.store().serve("SaveDayRate", [](const std::string&) { return HostResult{}; });
  }
  void servePresets(std::initializer_list<std::pair<const char*, const char*>> marks) {
    const RowSetPtr rows = table({{"Code", FieldType::Text}, {"Account", FieldType::Text}});
    for (const auto& [code, account] : marks) {
      rows->AddNew();
      (*rows)["Code"] = code;
      (*rows)["Account"] = account;
    }
    host.store().serve("GetPresetAccounts", rows);
  }
  // USD has no rate on `day`.
  void serveNoRateOn(const std::string& day) {
    const auto rates = [](double usd) {
      return table({{"Code", FieldType::Text},
                    {"Rate", FieldType::Double},
                    {"BaseCurrency", FieldType::Integer}},
                   {{"LTL", 1.0, 1}, {"EUR", 3.4528, 0}, {"USD", usd, 0}});
    };
    host.store().serve("GetCurrencyList", [=](const std::string& parameters) {
      return HostResult{kDone, "", Variant(rates(parameters == "'" + day + "'" ? 0 : 2.75))};
    });
  }
  std::shared_ptr<frmCurrencyExchange> exchange(std::shared_ptr<VXObjectUIO> object) {
    auto form =
        std::make_shared<frmCurrencyExchange>(OperationToolRequest{host, std::move(object), below});
    form->markOpen(true);
    form->opened();
    return form;
  }
  static void fill(frmCurrencyExchange& form, ui::Input& user) {
    DO(user.typeCombo(form.debit.cmbAcc, "240"));
    DO(user.choose(form.debit.cmbCurr, form.debit.cmbCurr.find("USD")));
    DO(user.enter(form.debit.txtSum, "100"));
    DO(user.typeCombo(form.credit.cmbAcc, "2711"));
    DO(user.enter(form.credit.txtSum, "270"));
  }
  std::string entriesText(VXObjectUIO& object) {
    std::string text;
    ForEachRow(*entriesOf(object)->Clone(), [&](RowSet& row) {
      text += std::string(row["AccountD"].Text()) + "-" + std::string(row["AccountC"].Text()) +
              " " + plainNumber(row["SumA"].Number()) + "; ";
    });
    return text;
  }
  std::string saved() {
    std::string text;
    for (const auto& call : host.store().calls)
      if (call.method == "SaveDayRate") text += call.parameters;
    return text;
  }
  Below below;
};

TEST_F(ExchangeScreen, PostsAndNamesTheOperation) {
  auto object = newOperation();
  auto form = exchange(object);
  EXPECT_NO_THROW(form->layout());
  expectScreen(*form, "frmCurrencyExchange_new");
  ui::Input user(*form);
  EXPECT_EQ(form->cmbAcc536.text(), "500 Pardavimo pajamos");
  EXPECT_EQ(form->debit.cmbBankAcc.items()[0].text, "Bankas A, LT1") << "the main one first";
  EXPECT_FALSE(form->debit.txtRate.enabled);
  EXPECT_FALSE(form->cmdOK.enabled);
  fill(*form, user);
  EXPECT_EQ(form->debit.txtRate.text(), "2,7500");
  EXPECT_TRUE(form->debit.txtRate.enabled);
  EXPECT_EQ(form->lblDifference.caption(),
            "Debetas 275,00 Lt     Kreditas 270,00 Lt     Teigiama įtaka 5,00 Lt");
  DO(user.choose(form->debit.cmbBankAcc, 1));
  expectScreen(*form, "frmCurrencyExchange_filled");
  DO(user.click(form->cmdOK));
  EXPECT_EQ(told(), Texts{});
  EXPECT_FALSE(form->isOpen());
  EXPECT_EQ(below.log, (Texts{"comment Valiutos pirkimas", "entries"}));
  EXPECT_EQ(entriesText(*object), "240-2711 270; 240-500 5; ");
  EXPECT_EQ((*object->RsFields())["Comment"].Text(), "Valiutos pirkimas");
  EXPECT_EQ(saved(), "") << "the day has a rate";
  const auto last = [&](const char* key) { return host.settings().get("O0201500", key, ""); };
  EXPECT_EQ(last("Clone536") + " " + last("Clone636"), "500 6001");
}

TEST_F(ExchangeScreen, StaysClosedToWhatIsIncomplete) {
  auto form = exchange(newOperation());
  ui::Input user(*form);
  fill(*form, user);
  EXPECT_TRUE(form->cmdOK.enabled);
  const struct {
    ui::TextBox& box;
    const char *bad, *good;
  } boxes[] = {{form->debit.txtSum, "0", "100"}, {form->credit.txtSum, "", "270"}};
  for (const auto& c : boxes) {
    DO(user.enter(c.box, c.bad));
    EXPECT_FALSE(form->cmdOK.enabled) << c.box.name;
    DO(user.enter(c.box, c.good));
    EXPECT_TRUE(form->cmdOK.enabled);
  }
  for (ui::ComboBox* box : {&form->credit.cmbAcc, &form->cmbAcc536, &form->cmbAcc636}) {
    DO(user.typeCombo(*box, ""));
    EXPECT_FALSE(form->cmdOK.enabled) << box->name;
    DO(user.typeCombo(*box, "450"));
    EXPECT_TRUE(form->cmdOK.enabled);
  }
  DO(user.typeCombo(form->credit.cmbAcc, "999"));
  user.leave();
  EXPECT_EQ(told(), Texts{"Klaidinga  balansinės sąskaitos reikšmė !"});
  EXPECT_EQ(form->focus(), &form->credit.cmbAcc);
}

TEST_F(ExchangeScreen, ATypedRateKeepsItsDecimals) {
  auto form = exchange(newOperation());
  ui::Input user(*form);
  fill(*form, user);
  DO(user.enter(form->debit.txtRate, "0,02814"));
  DO(user.enter(form->debit.txtSum, "100000"));
  user.leave();
  EXPECT_EQ(form->debit.txtRate.text() + " " + form->debit.txtSum.text(), "0,02814 100000,00");
  EXPECT_EQ(form->lblDifference.caption(),
            "Debetas 2\u00a0814,00 Lt     Kreditas 270,00 Lt     Teigiama įtaka 2\u00a0544,00 Lt");
}

TEST_F(ExchangeScreen, StoresTheRateOfADayThatHasNone) {
  serveNoRateOn("2003.02.10");
  auto object = newOperation();
  auto form = exchange(object);
  ui::Input user(*form);
  fill(*form, user);
  DO(user.date(form->dtpDate, DateTime::Of(2003, 2, 10)));
  EXPECT_EQ((*object->RsFields())["DateD"].Value().Show(), "2003.02.10") << "follows at once";
  EXPECT_EQ(below.log, Texts{"date 2003.02.10"});
  EXPECT_EQ(form->debit.cmbCurr.text(), "USD");
  EXPECT_EQ(form->debit.txtRate.text(), "");
  DO(user.click(form->cmdOK));
  EXPECT_EQ(told(), Texts{"Nenurodytas valiutos kursas!"});
  EXPECT_EQ(form->focus(), &form->debit.txtRate);
  EXPECT_EQ(entriesText(*object), "");
  DO(user.enter(form->debit.txtRate, "2,8"));
  DO(user.click(form->cmdOK));
  EXPECT_EQ(saved(), "'USD','2003.02.10',2.8");
  EXPECT_EQ(entriesText(*object), "240-2711 270; 240-500 10; ");
}

TEST_F(ExchangeScreen, ARateThatCannotBeStoredIsToldAndTheEntriesStand) {
  serveNoRateOn("2003.02.09");
  host.store().serve("SaveDayRate", [](const std::string&) {
    return HostResult{1203, "Nėra teisės keisti valiutų kursų!", {}};
  });
  auto object = newOperation();
  auto form = exchange(object);
  ui::Input user(*form);
  fill(*form, user);
  DO(user.enter(form->debit.txtRate, "2,75"));
  DO(user.click(form->cmdOK));
  EXPECT_EQ(told(), Texts{"Nėra teisės keisti valiutų kursų!"});
  EXPECT_EQ(entriesText(*object), "240-2711 270; 240-500 5; ");
}

TEST_F(ExchangeScreen, BothEntriesOrNone) {
  auto object = newOperation();
  auto form = exchange(object);
  ui::Input user(*form);
  DO(user.typeCombo(form->debit.cmbAcc, "240"));
  DO(user.choose(form->debit.cmbCurr, form->debit.cmbCurr.find("EUR")));
  DO(user.typeCombo(form->credit.cmbAcc, "2711"));
  DO(user.choose(form->credit.cmbCurr, form->credit.cmbCurr.find("USD")));
  // Nine decimals do not bring a sum like this one back to the cent.
  DO(user.enter(form->debit.txtSum, "99999999,99"));
  DO(user.enter(form->credit.txtSum, "125555555,51"));
  DO(user.enter(form->debit.txtRate, "3,4529"));
  DO(user.click(form->cmdOK));
  EXPECT_EQ(told(), Texts{"Nesutampa dviejų valiutų litinė išraiška !"});
  EXPECT_TRUE(form->isOpen());
  EXPECT_EQ(entriesText(*object), "");
  EXPECT_EQ((*object->RsFields())["Comment"].Text(), "");
  EXPECT_EQ(below.log, Texts{});
}

TEST_F(ExchangeScreen, AMissingMarkWarnsOnly) {
  servePresets({{"536", "500"}});
  auto form = exchange(newOperation());
  EXPECT_EQ(told(),
            Texts{"Sąskaitų žinyne nepažymėta valiutos kursų pasikeitimo įtakos sąskaita!"});
  EXPECT_EQ(form->cmbAcc636.text(), "");
  EXPECT_TRUE(form->isOpen());
}

TEST_F(ExchangeScreen, ADocumentOfAnotherKindKeepsItsDate) {
  auto object = newOperation();
  (*object->RsFields())["DateD"] = DateTime::Of(2003, 2, 5);
  (*object->RsFields())["FOIDR"] = "O00001003";
  auto form = exchange(object);
  EXPECT_EQ(form->dtpDate.value()->Text(), "2003.02.05");
  ui::Input user(*form);
  DO(user.date(form->dtpDate, DateTime::Of(2003, 2, 10)));
  EXPECT_EQ((*object->RsFields())["DateD"].Value().Show(), "2003.02.05");
  EXPECT_EQ(below.log, Texts{});
}

TEST_F(ExchangeScreen, TheOperationTakesWhatItsToolDid) {
  auto form = open(newOperation());
  ui::Input user(*form);
  ASSERT_TRUE(form->mnuCurrencyExchange.enabled);
  DO(user.enter(form->header.txtComment, "Mano komentaras"));
  host.screens().users.push_back([](ui::Form& shown) {
    auto& tool = dynamic_cast<frmCurrencyExchange&>(shown);
    ui::Input inTool(tool);
    fill(tool, inTool);
    DO(inTool.date(tool.dtpDate, DateTime::Of(2003, 2, 10)));
    DO(inTool.click(tool.cmdOK));
  });
  DO(user.pick(form->mnuCurrencyExchange));
  EXPECT_EQ(told(), Texts{});
  EXPECT_EQ(form->lvwBRRecords.rows().size(), 2U);
  EXPECT_EQ(form->header.dtpDate.value()->Text(), "2003.02.10");
  EXPECT_EQ(form->header.txtComment.text(), "Mano komentaras");
  host.dialogs().answers.push_back(Answer::No);
  user.close();
  EXPECT_EQ(told().size(), 1U) << "entries are there to be saved";

  // A tool that is left without a result leaves no question.
  form = open(newOperation());
  ui::Input second(*form);
  host.screens().users.push_back([](ui::Form& shown) { DO(ui::Input(shown).close()); });
  DO(second.pick(form->mnuCurrencyExchange));
  DO(second.close());
  EXPECT_EQ(told(), Texts{});
}

}  // namespace
}  // namespace tolvex::test
