// What goes into the selection of operations and what comes out of it: one row of parameters, and a
// set of the selected lines with the payment split over them.
//
// A money document opens the selection over its parameters and makes entries of the answer
// (debt_entries.h); the screen in between is frmBROperSelect.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "debts/debt_rows.h"
#include "framework/recordset.h"
#include "platform/host.h"
#include "platform/objects.h"

namespace tolvex {

inline constexpr const char* kOperationSelect = "frmBROperSelect";

// What the screen is opened over. `parameters` holds one row of the shape of "SelectParameters".
struct OperationSelectRequest {
  HostContext& host;
  std::shared_ptr<VXObjectUIO> operation;
  RowSetPtr parameters;
  RowSetPtr& selected;  // the answer; stays null when the user gave up. Outlives the screen
};

// A selected line. Money is litas unless a name ends in Curr; a rate is litas per unit.
inline constexpr ColumnSpec kSelectedOperations[] = {
    {"OIDR", FieldType::Text, 30},  // the operation that the debt comes from
    {"FOIDR", FieldType::Text, 30},
    {"Comment", FieldType::Text, 1000},  // how a pointer to it reads: date, number, comment
    {"DateD", FieldType::Date},
    {"Number", FieldType::Text, 500},
    {"AccountD", FieldType::Text, 20},  // of the debt's first entry
    {"AccountC", FieldType::Text, 20},
    {"FullSum", FieldType::Double},  // the debt as it was made
    {"FullSumCurr", FieldType::Double},
    {"RestSum", FieldType::Double},  // open before this payment
    {"RestSumCurr", FieldType::Double},
    {"PaymentSum", FieldType::Double},      // covered by this payment, in litas
    {"PaymentSumCurr", FieldType::Double},  // the same in the payment's currency
    {"PaymentCurrCode", FieldType::Text, 3},
    {"PaymentCurrRate", FieldType::Double},
    {"DebtSumCurr", FieldType::Double},  // the same in the debt's currency
    {"DebtCurrRate", FieldType::Double},
    {"DebtCurrRatePrimary", FieldType::Double},  // at which the debt was booked
    {"DebtCurrCode", FieldType::Text, 3},
    {"DebtSign",
     FieldType::SmallInt},          // 1 when the debt lies on the credit of its account, else -1
    {"ExtSum", FieldType::Double},  // rate difference in litas: a gain above 0, a loss below
    {"AddrOIDR", FieldType::Text, 30},
    {"AddrName", FieldType::Text, 800},
    {"Acc536", FieldType::Text, 20},  // where gains and losses go
    {"Acc636", FieldType::Text, 20}};

// What the screen is asked, read from its row of parameters.
struct SelectionAsked {
  std::string account;  // "" and "*": the user chooses
  bool onDebit = true;  // the side on which the debts lie
  std::string addressee, addresseeName;
  DateTime date;
  DateTime rateDate;  // of the rates of other currencies; the first of the month unless given
  CoverMoney money;   // what is paid in
  double sum = 0;     // to be split, in that money; 0 when it is not fixed

  bool accountFree() const { return account.empty() || account == "*"; }
};
SelectionAsked readSelectParameters(RowSet& parameters, DateTime today);

// What there is to choose from: debts, or operations of the trade. Orders tell what is left of
// them, offers what is paid.
enum class ListedOperations { Debts, Orders, Offers };
// The trade's answer as debts: what is left to pay of each. `sign` is that of the side they are
// paid from.
std::vector<Debt> readTradeOperations(RowSet& rows, ListedOperations listed, int sign);

// The ticked rows in their order.
RowSetPtr selectedOperations(const std::vector<DebtRow>& rows, const CoverMoney& money,
                             const InfluenceAccounts& accounts);

}  // namespace tolvex
