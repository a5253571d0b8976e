#include "tests/desktop/sample_form.h"

namespace tolvex::test {
namespace {

ui::Row entry(const char* debit, const char* sum, const char* currency, const char* paid) {
  ui::Row row;
  row.key = std::string(debit) + sum;
  row.cells = {debit, "2411", sum, currency, currency, paid};
  return row;
}

}  // namespace

SampleForm::SampleForm(HostContext& host) : Form(host, "frmSample") {
  setTitle("Naujas kasos pajamų orderis");
  SOPanel.titleBand = true;
  dtpDate.value = DateTime::Of(2008, 3, 14);
  txtSeries.text = "KPO";
  txtNumber.text = "000137";
  txtClient.text = "UAB „Žaliasis krantas“, įmonės kodas: 123456789";
  txtClient.readOnly = true;
  txtDetails.readOnly = true;
  txtSum.text = "21885,00";
  cmbCurr.setTexts({"LTL", "EUR", "USD"});
  cmbCurr.index = 1;
  cmbAccount.editable = true;
  cmbAccount.setTexts({"2411 Pirkėjai", "2721 Kasa", "271 Bankas", "4430 Skolos tiekėjams"});
  txtRate.text = "3,4528";
  txtFoundation.text = "Už prekes pagal PVM sąskaitą faktūrą SS Nr. 10482";
  txtNote.lines = 4;
  txtNote.text = "Pirma eilutė\r\nAntra eilutė";
  txtSecret.password = true;
  optEntries.choose();
  tabMain.tabs = {{"entries", "Įrašai"}, {"more", "Grupė ir pastabos"}};
  const char* paid = "2008.02.11 SS Nr. 10482 UAB „Žaliasis krantas“";
  lvwEntries.checkBoxes = true;
  lvwEntries.setRows(
      {entry("2721", "1 250,50", "362,17 EUR", paid), entry("2721", "11 567,75", "", ""),
       entry("2722", "21 885,00", "", "2008.02.28 SS Nr. 10519 Prekės, Šiauliai"),
       entry("2721", "42 519,50", "362,17 EUR", ""), entry("2721", "7,00", "", paid)});
  auto& rows = lvwEntries.edit();
  rows[0].cells[0].bold = true;
  rows[0].mark = rows[1].mark = ui::Mark::Good;
  rows[2].mark = ui::Mark::Bad;
  rows[2].hint = "Neparuošta valiuta";
  rows[3].mark = ui::Mark::Grey;
  rows[3].checked = true;
  rows[4].bold = true;
  lvwEntries.current = 1;
  tvwGroups.nodes = {{"a", "", "Buhalterinė apskaita", "", "L02020011", true, true},
                     {"b", "a", "Kasos pajamų orderiai", "", "C0201504", false, true},
                     {"c", "b", "Vilniaus skyrius", "", "C0201400"},
                     {"d", "a", "Žurnalai", "", "C0200500"}};
  tvwGroups.current = std::string("b");
  menuClient.items = {&mnuFirm, nullptr, &mnuPerson};
  cmdClient.menu = &menuClient;
  lvwEntries.menu = &menuClient;
  mnuFirm.shortcut = "F4";
  cmdCancel.isCancel = true;
  cmdWrite.isDefault = true;
  cmdPrint.shortcut = "Ctrl+P";
  cmdPrint.enabled = false;
  for (ui::Control* control : controls()) {
    control->onChange = [this, control] { log += control->name + "! "; };
    if (control->kind == ui::Kind::Button || control->kind == ui::Kind::MenuItem) {
      if (!control->menu) control->onClick = [this, control] { log += control->name + "() "; };
    }
  }
  lvwEntries.onActivate = [this] { log += "open " + lvwEntries.currentRow()->key + " "; };
  lvwEntries.onInsert = [this] { log += "insert "; };
  lvwEntries.onDelete = [this] { log += "delete "; };
  lvwEntries.onCheck = [this] { log += "tick "; };
  tvwGroups.onActivate = [this] { log += "node " + tvwGroups.current() + " "; };
}

const char* SampleForm::picture() const {
  return R"(
    [SOPanel]>
      [columns]
        [SSFrame]
          dtpDate | txtCode
          "Serija, Nr." txtSeries txtNumber
        [SSFrameClient]>
          txtClient> cmdClient
          txtDetails>
      [SSFrameSum]
        txtSum | cmbCurr | txtRate | cmbAccount | >> | cmdDebts
        txtFoundation> cmdComments
        chkPrint | >> | lblState
      optEntries | optLinks | optBalance
      [tabs tabMain]>
        [entries]
          lvwEntries>
        [more]
          tvwGroups> | txtNote>
          txtSecret
    cmdClose | >> | cmdDelete | cmdPrint | cmdCancel | cmdWrite
  )";
}

}  // namespace tolvex::test
