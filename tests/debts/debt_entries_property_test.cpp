// Whatever is owed, in whatever it is paid and at whatever rates: the entries of a payment take
// from each debt what its row said, and the last payment leaves neither litas nor currency of it
// open.
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

#include "debts/debt_entries.h"
#include "debts/operation_select.h"
#include "framework/references.h"
#include "framework/rounding.h"
#include "tests/operations/operation_world.h"
#include "tests/support/rows.h"

namespace tolvex::test {
namespace {

double cents(int limit) { return roundHalfEven(*rc::gen::inRange(1, limit) * 0.01, 2); }
double someRate() { return roundHalfEven(*rc::gen::inRange(10200, 60000) * 0.0001, 4); }

Debt someDebt(int id, int sign) {
  Debt debt;
  debt.OIDR = refOf(kOperationKind, id);
  debt.DateD = DateTime::Of(2004, 1, 10);
  debt.InfluenceSign = sign;
  debt.AddrOIDR = "O00001003";
  debt.FCurrencyCode = *rc::gen::element<std::string>("   ", "USD", "EUR");
  if (isCurrency(debt.FCurrencyCode)) {
    debt.LikutisCurr = cents(10'000'000);
    debt.LikutisLt = roundLt(debt.LikutisCurr * someRate());
  } else {
    debt.LikutisLt = cents(10'000'000);
  }
  return debt;
}

class DebtEntriesProperty : public OperationWorld {
 protected:
  DebtEntriesProperty() {
    host.store().serve("GetBRPropertiesByAcc", rowsOf("FOIDR|ShowString\nO00001003|UAB Beržas"));
  }

  // Puts the ticked rows into an empty operation.
  MethodResult put(const DebtsRequest& request, const std::vector<DebtRow>& rows,
                   const CoverMoney& money) {
    (void)call("DeleteBR", {""});
    const RowSetPtr selected = selectedOperations(rows, money, {"536", "636"});
    if (selected->RecordCount() == 0) return done();
    return addDebtEntries(*operation, request, *selected);
  }

  // What the entries leave of a debt: an entry counts on the side where it points at the debt.
  void take(Debt& debt, const std::string& account) {
    ForEachRow(BR(), [&](RowSet& entry) {
      ForEachRow(*entry["BRProperties"].Rows(), [&](RowSet& pointer) {
        const int sign = static_cast<int>(pointer["Sign"].Number());
        if (pointer["FOIDR"].Text() != debt.OIDR ||
            entry[sign == 1 ? "AccountD" : "AccountC"].Text() != account)
          return;
        const int closes = sign * debt.InfluenceSign;
        debt.LikutisLt = roundHalfEven(debt.LikutisLt - closes * entry["SumA"].Number(), 2);
        ForEachRow(*entry["BRCurrency"].Rows(), [&](RowSet& currency) {
          if (currency["Sign"].Number() != sign ||
              currency["FCurrencyCode"].Text() != debt.FCurrencyCode)
            return;
          debt.LikutisCurr =
              roundHalfEven(debt.LikutisCurr - closes * currency["SumCurr"].Number(), 2);
        });
      });
    });
  }
};

RC_GTEST_FIXTURE_PROP(DebtEntriesProperty, PaymentsTakeWhatTheirRowsSay, ()) {
  DebtsRequest request;
  request.byExpense = *rc::gen::arbitrary<bool>();
  request.AccountD = request.byExpense ? "443" : "2711";
  request.AccountC = request.byExpense ? "2711" : "240";
  std::vector<Debt> debts;
  for (int id = *rc::gen::inRange(1, 4); id > 0; --id)
    debts.push_back(someDebt(id, request.byExpense ? 1 : -1));
  for (const bool last : {false, true}) {
    const double dollar = someRate(), euro = someRate();
    const CoverMoney money =
        *rc::gen::element(CoverMoney{}, CoverMoney{"USD", dollar}, CoverMoney{"EUR", euro});
    request.code = money.code;
    request.rateLtPerUnit = money.rate;
    ComputeInfluence(debts, [&](std::string_view code) { return code == "USD" ? dollar : euro; });
    std::vector<DebtRow> rows =
        FillDebtList(debts, {"536", "636"}, money, last ? 0 : cents(10'000'000));
    if (last)
      for (DebtRow& row : rows) (void)ApplyCover(row, money, 0);
    const MethodResult made = put(request, rows, money);
    // A rest of a cent or two is no sum of the currency that is to pay it.
    if (made.Text.find("nesiekia") != std::string::npos) return;
    RC_ASSERT(made.Text == "");
    for (std::size_t i = 0; i < debts.size(); ++i) {
      if (!rows[i].ticked) continue;
      take(debts[i], request.ownAccount());
      RC_ASSERT(debts[i].LikutisLt == rows[i].LikutisLt);
      RC_ASSERT(debts[i].LikutisCurr == rows[i].LikutisCurr);
      if (last) RC_ASSERT(debts[i].LikutisLt == 0.0 && debts[i].LikutisCurr == 0.0);
    }
  }
}

}  // namespace
}  // namespace tolvex::test
