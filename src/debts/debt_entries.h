// Entries from a selection of debts: a sum that a money document pays or receives is put on the
// debts that the user chose for it.
//
// Every debt gives up to two entries, its rate difference and then its payment, each pointing at
// the operation of the debt on the side that closes it. What the document's own rate makes of the
// whole sum stands in one more entry at the end.
#pragma once

#include <string>
#include <string_view>

#include "framework/recordset.h"
#include "operations/UIO0201500.h"

namespace tolvex {

// What a money document tells of the entry whose debts are to be chosen.
struct DebtsRequest {
  bool byExpense = false;          // the money goes out
  std::string AccountD, AccountC;  // of the marked entry
  std::string clientReference;
  DateTime date;
  double sum = 0;  // to be split; 0 when it is not fixed. In the document's currency
  std::string clientName;
  std::string code;  // of the document's currency; three blanks in litas
  double rateLtPerUnit = 0;
  bool clearWholeAccount = false;  // entries of other clients on the own account go too

  // From six to ten positions.
  static DebtsRequest from(Arguments par);
  // The account on the debt's side, and that side.
  const std::string& ownAccount() const { return byExpense ? AccountD : AccountC; }
  int ownSign() const { return byExpense ? 1 : -1; }
};

// How one selected debt is paid: litas, the debt's currency and the payment's. Codes are empty and
// sums and rates 0 where a currency has no part in it.
struct DebtPayment {
  double sumLt = 0;
  double debtSumCurr = 0;
  std::string debtCode;
  double debtRate = 0;
  double paidSumCurr = 0;
  std::string paidCode;
  double paidRate = 0;
};

// The payment of the current row of a selection (operation_select.h). The debt's own value at its
// rate overrides the litas that were paid; the payment's rate gives way, to nine decimals, until
// its currency sum comes to those litas. Throws RowSetError (Unexpected) when a payment is worth
// less than a cent of its currency.
DebtPayment debtPayment(RowSet& selected);

// Puts a selection into the operation in place of the entries of an earlier one. Value is true.
// Nothing changes when the addressees of a debt cannot be read. Stops at the first entry that is
// refused, with its code and text: what was added until then stays.
MethodResult addDebtEntries(UIO0201500& operation, const DebtsRequest& request, RowSet& selected);

// Lets the user choose debts and adds their entries. Value is true when they were made, empty when
// the user gave up or something was refused.
MethodResult Debts(UIO0201500& operation, Arguments par);

// The selection alone: debit account, credit account, addressee, date. Value is the set of
// operation_select.h, empty when the user gave up.
MethodResult BROperSelect(UIO0201500& operation, Arguments par);

}  // namespace tolvex
