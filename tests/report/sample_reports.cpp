#include "tests/report/sample_reports.h"

namespace tolvex::test {
namespace {

using enum ui::Align;

Paragraph line(std::string text, float size = 10, bool bold = false,
               ui::Align align = ui::Align::Left) {
  return {std::move(text), {size, bold, false, align}, 0, 0};
}

std::string money(long cents) {
  std::string whole = std::to_string(cents / 100);
  for (auto at = static_cast<int>(whole.size()) - 3; at > 0; at -= 3)
    whole.insert(static_cast<std::size_t>(at), "\u00A0");
  return whole + "," + std::to_string(100 + cents % 100).substr(1);
}

constexpr BoxSpec kPaymentOrder[] = {
    {"", 0, 0, 38, 6, 8, Base, Left, "Forma Nr. 0402"},
    {"fldTitle", 40, 0, 70, 6, 12, Base | Bold, Center, "MOKĖJIMO NURODYMAS Nr."},
    {"fldNumber", 110, 0, 25, 6, 12, Bottom | Bold, Center, ""},
    {"fldDate", 135, 0, 35, 6, 10, Base, Right, ""},
    {"", 0, 10, 38, 6, 9, Base, Left, "Mokėtojas"},
    {"fldPayer", 40, 10, 130, 6, 10, Bottom, Left, ""},
    {"", 0, 18, 38, 7, 9, Middle, Left, "Mokėtojo sąskaita"},
    {"fldPayerAcc", 40, 18, 120, 7, 11, Frame | Middle, Center, "", 20},
    {"", 0, 27, 38, 6, 9, Base, Left, "Gavėjas"},
    {"fldReceiver", 40, 27, 130, 6, 10, Bottom, Left, ""},
    {"", 0, 35, 38, 7, 9, Middle, Left, "Gavėjo sąskaita"},
    {"fldReceiverAcc", 40, 35, 120, 7, 11, Frame | Middle, Center, "", 20},
    {"", 0, 44, 38, 7, 9, Middle, Left, "Suma"},
    {"fldSum", 40, 44, 72, 7, 11, Frame | Middle | Bold, Right, "", 12},
    {"fldCurrency", 114, 44, 18, 7, 11, Frame | Middle, Center, "", 3},
    {"", 0, 53, 38, 12, 9, 0, Left, "Mokėjimo paskirtis"},
    {"fldPurpose", 40, 53, 130, 12, 10, Frame | Wrap, Left, ""},
    {"", 0, 75, 40, 6, 9, Base, Left, "Vadovas"},
    {"", 40, 75, 50, 6, 9, Bottom, Left, ""},
    {"", 40, 81, 50, 4, 7, Middle, Center, "(parašas)"},
    {"", 100, 75, 30, 6, 9, Base, Left, "A. V."},
};

constexpr BoxSpec kCashOrder[] = {
    {"lblFirmName", 0, 0, 110, 6, 10, Bottom, Left, ""},
    {"", 0, 6, 110, 4, 7, Middle, Center, "(įmonės pavadinimas)"},
    {"lblTitle", 0, 14, 170, 8, 13, Middle | Bold, Center, "KASOS IŠLAIDŲ ORDERIS"},
    {"lblNumber", 50, 22, 70, 6, 10, Middle, Center, ""},
    {"", 0, 36, 22, 6, 10, Base, Left, "Išmokėta:"},
    {"lblClient", 22, 36, 148, 6, 10, Bottom, Left, ""},
    {"", 0, 46, 22, 6, 10, Base, Left, "Pagal:"},
    {"lblFoundation", 22, 46, 148, 6, 10, Bottom, Left, ""},
    {"", 0, 56, 22, 6, 10, Base, Left, "Suma:"},
    {"lblSumWords", 22, 56, 110, 6, 10, Bottom, Left, ""},
    {"lblSum", 134, 56, 36, 6, 11, Frame | Middle | Bold, Right, ""},
    {"", 0, 76, 35, 6, 9, Base, Left, "Vyriausiasis buhalteris"},
    {"lblFinancier", 36, 76, 60, 6, 9, Bottom, Center, ""},
    {"", 36, 82, 60, 4, 7, Middle, Center, "(parašas, vardas ir pavardė)"},
};

}  // namespace

ReportDocument journal(int rows) {
  ReportDocument report;
  report.layout = "journal";
  report.title = "Sąskaitos žurnalas";
  report.exportStem = "Zurnalas";
  report.page = {true, 13.5, 15, 13.5, 12, "Arial", 8};
  report.body.push_back(line("UAB „Šėžėnų žuvėdra“", 12));
  report.body.push_back(line("Sąskaitos žurnalas: 2711 Kasa litais", 12, true));
  report.body.push_back(line("už laikotarpį nuo  2004.01.01  iki  2004.03.31", 10));
  report.body.push_back(line(""));
  ReportTable table;
  table.columns = {{"date", "Data", 1.9F},
                   {"number", "Numeris", 2.2F},
                   {"client", "Klientas", 6},
                   {"comment", "Ūkinė operacija", 5.5F},
                   {"account", "Koresp. sąskaita", 1.9F, Center},
                   {"debit", "Debetas", 2.5F, Right, CellKind::Number},
                   {"credit", "Kreditas", 2.5F, Right, CellKind::Number},
                   {"currency", "Valiuta", 1.4F, Center},
                   {"rest", "Likutis", 2.8F, Right, CellKind::Number}};
  table.columns[0].kind = CellKind::Date;
  long debits = 0, credits = 0;
  constexpr const char* kClients[] = {"UAB „Česlovo ąžuolai“",
                                      "AB „Šiaulių gręžiniai ir gręžimo darbai“", "Žemaitė Ūla",
                                      "IĮ „Jėga“"};
  for (int i = 0; i < rows; ++i) {
    const long sum = 1180 + 4799L * i % 1000000;
    (i % 3 == 0 ? credits : debits) += sum;
    table.rows.push_back(
        {{"2004.0" + std::to_string(1 + i % 3) + "." + std::to_string(10 + i % 18),
          "KPO " + std::to_string(i + 1), kClients[i % 4],
          i % 5 == 0 ? "Gauta į kasą už parduotas prekes ir suteiktas paslaugas" : "Apmokėjimas",
          "2411", i % 3 == 0 ? "" : money(sum), i % 3 == 0 ? money(sum) : "", "LTL",
          money(debits + 1000000 - credits % 900000)},
         {}});
  }
  table.rows.push_back(
      {{"", "", "Iš viso", "", "", money(debits), money(credits), "", ""}, {0, true}});
  report.body.push_back(std::move(table));
  report.body.push_back(line(""));
  report.body.push_back(line("Sudarė: vyr. buhalterė Ona Žąsytienė"));
  return report;
}

ReportDocument accountPlan() {
  ReportDocument report;
  report.layout = "ActRepAccPlan";
  report.title = "Sąskaitų planas";
  report.exportStem = "Saskaita";
  report.body.push_back(line("UAB „Šėžėnų žuvėdra“", 12));
  report.body.push_back(line("Sąskaitų planas", 12, true, Center));
  report.body.push_back(line(""));
  ReportTable table;
  table.columns = {
      {"account", "Sąskaita", 3}, {"name", "Pavadinimas", 11}, {"mark", "Požymiai", 3, Center}};
  for (int group = 1; group <= 6; ++group) {
    const std::string head = std::to_string(group);
    table.rows.push_back({{head, "ILGALAIKIS TURTAS " + head, ""}, {0, true}});
    table.rows.back().heading = true;
    for (int sub = 1; sub <= 3; ++sub) {
      const std::string mid = head + std::to_string(sub);
      table.rows.push_back({{"   " + mid, "Nematerialusis turtas " + mid, ""}, {0, true}});
      table.rows.back().heading = true;
      for (int leaf = 0; leaf < 5; ++leaf)
        table.rows.push_back({{"      " + mid + std::to_string(leaf),
                               "Formavimo savikaina ir kitos išlaidos", leaf % 2 ? "V" : "A V"},
                              {}});
    }
  }
  report.body.push_back(std::move(table));
  return report;
}

ReportDocument grouped() {
  ReportDocument report;
  report.layout = "turnover";
  report.title = "Apyvartos žiniaraštis";
  report.exportStem = "Apyvarta";
  report.page.landscape = true;
  report.page.leftMm = report.page.rightMm = 13.5F;
  report.body.push_back(line("Apyvartos žiniaraštis", 12, true, Center));
  ReportTable table;
  table.columns = {{"account", "Sąskaita", 2}, {"name", "Pavadinimas", 9}};
  for (const char* key : {"Debetas", "Kreditas", "Debetas", "Kreditas", "Debetas", "Kreditas"})
    table.columns.push_back({key, key, 4, Right, CellKind::Number});
  table.groups = {{2, 2, "Likutis laikotarpio pradžioje"},
                  {4, 2, "Apyvarta per laikotarpį"},
                  {6, 2, "Likutis laikotarpio pabaigoje"}};
  for (int i = 0; i < 60; ++i) {
    std::vector<std::string> cells = {std::to_string(2000 + i), "Prekės, skirtos perparduoti"};
    for (int c = 0; c < 6; ++c) cells.push_back(money(1234567890123L + i * 11 + c));
    table.rows.push_back({std::move(cells), {}});
  }
  report.body.push_back(std::move(table));
  return report;
}

ReportDocument paymentOrder() {
  ReportDocument report;
  report.layout = "102";
  report.title = "Mokėjimo nurodymas";
  report.exportStem = "Pavedimas";
  report.footer = "";
  const Panel order = panel(
      170, 90, kPaymentOrder,
      {{"fldNumber", "137"},
       {"fldDate", "2004 m. kovo 31 d."},
       {"fldPayer", "UAB „Šėžėnų žuvėdra ir Lietuvos jūrų laivininkystės agentūra Klaipėdoje“"},
       {"fldPayerAcc", "LT127044060007654321"},
       {"fldReceiver", "AB „Lietuvos energija“"},
       {"fldReceiverAcc", "LT60101001234567891"},
       {"fldSum", "1180,00"},
       {"fldCurrency", "LTL"},
       {"fldPurpose",
        "Už elektros energiją pagal sąskaitą LE Nr. 0012345, sutartis "
        "2003/118; delspinigiai neskaičiuojami. Įmokos kodas 112233"}});
  report.body.push_back(order);
  report.body.push_back(line(""));
  report.body.push_back(line(""));
  report.body.push_back(order);
  return report;
}

ReportDocument cashOrder() {
  ReportDocument report;
  report.layout = "ActRepPayedCash";
  report.title = "Kasos išlaidų orderis";
  report.exportStem = "IslaiduOrderis";
  report.footer = "";
  report.body.push_back(
      panel(170, 90, kCashOrder,
            {{"lblFirmName", "UAB „Šėžėnų žuvėdra“"},
             {"lblNumber", "2004.03.31   Nr. KIO 000138"},
             {"lblClient", "Česlovui Jurgaičiui"},
             {"lblFoundation", "avanso apyskaitą Nr. 12"},
             {"lblSumWords", "Vienas tūkstantis vienas šimtas aštuoniasdešimt litų 00 ct"},
             {"lblSum", "1\u00A0180,00"},
             {"lblFinancier", "Ona Žąsytienė"}}));
  return report;
}

std::vector<ReportDocument> sampleReports() {
  return {journal(300), accountPlan(), grouped(), paymentOrder(), cashOrder()};
}

}  // namespace tolvex::test
