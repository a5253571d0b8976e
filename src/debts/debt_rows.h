// Open debts and what a cover takes of them: the arithmetic of every screen that covers debts.
//
// A debt stands in litas at the rate it was booked at and, as a rule, in a currency too. A cover
// first brings the debt to the rate of the day: what its worth in litas changes by is a gain or a
// loss (CurrInfluence). Then it takes a part or all of both rests. After a full cover both rests
// are zero and the differences are in the two influences.
//
// Sums are litas unless a name ends in Curr. Rates are litas per unit. The code of litas is three
// blanks. Nothing here shows a message or changes a row that it refuses.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "framework/recordset.h"
#include "operations/screen/preset_accounts.h"
#include "operations/screen/rate_book.h"

namespace tolvex {

// One open item as the store answers it; the last two are written by ComputeInfluence.
struct Debt {
  std::string OIDR;  // the operation that the debt comes from
  std::string FOIDR;
  DateTime DateD;
  std::string Number, Comment, Info, AccountD, AccountC;
  int InfluenceSign = 0;         // -1: the item lies on the debit of its account, 1: on the credit
  double SumA = 0, SumCurr = 0;  // the item's full sums
  std::string SumCurrCode;       // of SumCurr where it is not that of the rest: in trade operations
  double LikutisLt = 0, LikutisCurr = 0;  // rests, positive on the item's own side
  std::string FCurrencyCode = std::string(kNoCurrency);
  double RateCurr = 0;  // booked
  std::string AddrOIDR, AddrName;
  double CurrentRate = 0;    // of the day; 0 when there is none, and for litas
  double CurrInfluence = 0;  // gained (below 0: lost) since the debt was booked
};

// The rows of an answer of the store, in its order. Columns that are missing stay at their default.
std::vector<Debt> readDebts(RowSet& rows);

// Which list of debts answers for an addressee: one, all of a kind, or everybody. `sign` 1 and -1
// ask for the lists by side, 0 for those that take the side as a parameter.
std::string DebtsMethodName(std::string_view addressee, int sign);
// `direction` 1 asks for items on the debit, -1 on the credit; an empty addressee for all. `group`
// is the reference of a group of operations, "0" for any.
std::string debtsParameters(std::string_view account, DateTime date, std::string_view addressee,
                            int direction, std::string_view group = "0");

// The rate of a currency, 0 when there is none.
using RateOf = std::function<double(std::string_view code)>;
// Brings the debts in a currency to the rates of the day.
void ComputeInfluence(std::vector<Debt>& debts, const RateOf& rateOf);

// What a cover is paid in.
struct CoverMoney {
  std::string code = std::string(kNoCurrency);
  double rate = 0;
};

// A debt while it is covered.
struct DebtRow {
  Debt debt;
  double LikutisLt = 0;    // at the rate of the day, less what is covered
  double LikutisCurr = 0;  // less what is covered
  std::string LikutisCurrCode = std::string(kNoCurrency);
  double PaymentCurrRate = 0;  // of the debt's currency; 0 when none is known
  double PaymentLt = 0;        // covered, in litas
  double PaymentSumCurr = 0;   // covered, in the debt's currency
  double CoverSumCurr = 0;     // covered, in the currency of the cover
  std::string PaymentCurrCode = std::string(kNoCurrency);  // of the cover
  double CoverRate = 0;
  double InfluenceSum = 0;  // part of the rest that closes without being paid
  bool ticked = false;
  bool released = false;  // a tick was taken back: lists show no rate until the next one

  // The debt still counts in a currency.
  bool inCurrency() const { return isCurrency(LikutisCurrCode) && LikutisCurr != 0; }
  // Gained (below 0: lost) by this cover.
  double influence() const;
  bool covered() const { return PaymentLt > 0 || PaymentSumCurr > 0; }
  // What the cover took, in its own money.
  double taken() const { return isCurrency(PaymentCurrCode) ? CoverSumCurr : PaymentLt; }
};

// What is open of a row in the money of a cover; 0 when a rate is missing.
double restIn(const DebtRow& row, const CoverMoney& money);

struct Covered {
  double taken = 0;     // in the unit of the cover
  std::string message;  // why nothing could be taken, or ""
};
// Covers a row that is not covered yet by at most `offered` (0: all of it) in the unit of the
// cover. `offeredCurr` says what the litas are in the debt's currency, 0 when nobody said; it is
// taken when it comes to the same litas.
//
// Litas for a currency far below the litas are worth many units each: the quotient of two decimals
// then leaves, or takes too much, of the currency. Only `offeredCurr` closes such a row.
Covered CoverRow(DebtRow& row, const CoverMoney& money, double offered, double offeredCurr);

// The debts as rows, without those that are a posted rate difference themselves. A sum above 0 is
// spent on the rows in their order, which ticks them.
std::vector<DebtRow> FillDebtList(const std::vector<Debt>& debts, const InfluenceAccounts& accounts,
                                  const CoverMoney& money, double sum);

// Why a row may not be ticked. A missing rate is told once for each code of `toldCodes`.
struct DebtCheck {
  enum Code { Good = 0, BadRest = 1, NoRate = 2 };
  Code code = Good;
  std::string message;  // "" when good or told already
};
DebtCheck CheckDebtRow(const DebtRow& row, std::set<std::string>& toldCodes);

// Ticks a row, or covers a ticked one anew: takes it whole when `sum` is 0 or enough. The row is
// left unticked when nothing could be taken. `sumCurr` as in CoverRow; 0 keeps what the row had.
Covered ApplyCover(DebtRow& row, const CoverMoney& money, double sum, double sumCurr = 0);
// Gives back what the tick had taken.
void ReleaseCover(DebtRow& row);

// An entry took so much of a ticked row: it is off the debt and off what the tick would give back.
// A row of which all is posted is released with the rests that the cover left.
void partPosted(DebtRow& row, double lt, double curr);
// The row's gain or loss is in the books: the debt stands at the rate of the day.
void differencePosted(DebtRow& row);
// Whether all the currency of a ticked row is posted and some of its litas are not.
bool leavesLitas(const DebtRow& row);

// Whether a cover in litas took all the litas and left a rest of the currency: the case that only a
// cover in the debt's own currency closes.
bool leavesCurrency(const DebtRow& row);
// Covers such a row by its whole rest of currency; both rests are zero then.
Covered coverExactly(DebtRow& row, const CoverMoney& money);

}  // namespace tolvex
