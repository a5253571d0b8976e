#include "debts/setoff_act.h"

#include <gtest/gtest.h>

#include "framework/text.h"

namespace tolvex::test {
namespace {

DebtRow row(const char* number, double paidLt, double restLt, const char* whose) {
  DebtRow row;
  row.debt.Number = number;
  row.debt.DateD = DateTime::Of(2004, 1, 10);
  row.debt.AddrOIDR = whose;
  row.PaymentLt = paidLt;
  row.LikutisLt = restLt;
  row.ticked = paidLt > 0;
  return row;
}

// The rows of the table, its cells joined by "|".
std::string tableOf(const SetOffAct& act) {
  const ReportDocument document = setOffAct(act, {});
  std::string text;
  for (const auto& block : document.body) {
    const auto* table = std::get_if<ReportTable>(&block);
    if (!table) continue;
    for (const ReportRow& line : table->rows) {
      for (const std::string& cell : line.cells) text += cell + "|";
      text += "\n";
    }
  }
  return text;
}

TEST(SetOffActTest, SidesStandInTheirColumnsAndOnlyTheClientsDebtsCount) {
  std::vector<DebtRow> owed{row("P-1", 100, 20, "O00001001"), row("P-2", 0, 70, "O00001001"),
                            row("P-3", 0, 999, "O00001002")};
  std::vector<DebtRow> claimed{row("S-1", 60.5, 0, "O00001001"), row("S-2", 39.5, 5, "O00001001")};
  SetOffAct act;
  act.date = DateTime::Of(2004, 3, 31);
  act.clientReference = "O00001001";
  act.primary = {"450", "", 1, &owed};
  act.secondary = {"240", "", -1, &claimed};
  EXPECT_EQ(tableOf(act),
            "P-1|2004.01.10||100,00|\n"
            "S-1|2004.01.10|60,50||\n"
            "S-2|2004.01.10|39,50||\n"
            "Viso:||100,00|100,00|\n"
            "Skolos likutis datai 2004.03.31 po tarpusavio užskaitymų:||5,00|90,00|\n");
  // Debts of two addressees that were chosen on either side all count.
  act.clientReference.clear();
  EXPECT_NE(tableOf(act).find("089,00|"), std::string::npos) << tableOf(act);
}

}  // namespace
}  // namespace tolvex::test
