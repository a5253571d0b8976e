#include "debts/debt_entries.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "debts/operation_select.h"
#include "framework/conversions.h"
#include "framework/references.h"
#include "framework/rounding.h"
#include "operations/document_form.h"
#include "operations/new_entry.h"
#include "operations/screen/pointers.h"
#include "operations/screen/preset_accounts.h"
#include "operations/screen/rate_book.h"

namespace tolvex {
namespace {

// Firms, banks, their accounts, employees and persons stand on both sides of a payment.
constexpr std::array<std::string_view, 5> kPartyKinds = {"O0001402", "O0000100", "O0001401",
                                                         "O0000300", "O0000500"};
constexpr std::size_t kTriple = 3;

std::string text(RowSet& rows, const char* column) { return std::string(rows[column].Text()); }

// Addressees on the other side too; the pointer to the debt's operation stays on its own.
void mirrorParties(Variant::Array& pointers) {
  const std::size_t end = pointers.size();
  for (std::size_t i = 0; i < end; i += kTriple) {
    const std::string reference = pointers[i + 1].AsText();
    if (std::ranges::find(kPartyKinds, kindOf(reference)) == kPartyKinds.end()) continue;
    const std::string shown = pointers[i + 2].AsText();
    addAddressee(pointers, -pointers[i].AsInt(), reference, shown);
  }
}

// False when the addressees of the debt could not be read.
bool readPointers(VXObjectUIO& object, const DebtsRequest& request, RowSet& selected,
                  Variant::Array& pointers) {
  const std::string debt = text(selected, "OIDR");
  if (!isRef(debt)) return true;
  const int sign = static_cast<int>(selected["DebtSign"].Number());
  addAddressee(pointers, sign, debt, selected["Comment"].Text());
  return AddDebtAddressees(object, pointers, debt, request.ownAccount(),
                           selected["AddrOIDR"].Text(), sign);
}

MethodResult add(UIO0201500& operation, const NewEntry& entry) {
  return operation.Methods("AddBR", entry.arguments());
}

// A gain or loss: litas alone, with the code of the currency that it belongs to.
NewEntry differenceEntry(std::string debit, std::string credit, double sumLt, int sign,
                         std::string code, Variant::Array pointers) {
  NewEntry entry;
  entry.AccountD = std::move(debit);
  entry.AccountC = std::move(credit);
  entry.sums.sum = sumLt;
  entry.sums.sign = sign;
  entry.sums.code = std::move(code);
  entry.addressees = std::move(pointers);
  return entry;
}

struct Party {
  std::string reference, name;
};

// What the document's rate makes of the whole payment beyond the litas of its debts.
MethodResult addRestOfRate(UIO0201500& operation, const DebtsRequest& request, const Party& party,
                           double difference, const InfluenceAccounts& accounts) {
  const int sign = request.byExpense == (difference > 0) ? 1 : -1;
  const std::string& money = request.byExpense ? request.AccountC : request.AccountD;
  Variant::Array pointers;
  addAddressee(pointers, -sign, party.reference, party.name);
  return add(operation,
             differenceEntry(sign == 1 ? money : accounts.loss, sign == 1 ? accounts.gain : money,
                             std::abs(difference), sign, request.code, std::move(pointers)));
}

// A selected line made ready: all that is read and computed before the first entry changes.
struct ReadyLine {
  DebtPayment payment;
  Variant::Array pointers;
  int debtSign = 0;
  double difference = 0;
  InfluenceAccounts accounts;
};

// Nothing when the addressees of a debt could not be read.
std::optional<std::vector<ReadyLine>> readyLines(UIO0201500& operation, const DebtsRequest& request,
                                                 RowSet& selected) {
  std::vector<ReadyLine> lines;
  bool complete = true;
  ForEachRow(selected, [&](RowSet& row) {
    if (!complete) return;
    ReadyLine& line = lines.emplace_back();
    line.payment = debtPayment(row);
    complete = readPointers(operation, request, row, line.pointers);
    line.debtSign = static_cast<int>(row["DebtSign"].Number());
    line.difference = row["ExtSum"].Number();
    line.accounts = {text(row, "Acc536"), text(row, "Acc636")};
  });
  if (!complete) return std::nullopt;
  return lines;
}

MethodResult addRateDifference(UIO0201500& operation, const DebtsRequest& request,
                               const ReadyLine& line) {
  if (line.difference == 0) return done();
  const int sign = line.difference < 0 ? -1 : 1;
  const std::string& own = request.ownAccount();
  return add(
      operation,
      differenceEntry(sign < 0 ? line.accounts.loss : own, sign < 0 ? own : line.accounts.gain,
                      std::abs(line.difference), sign, line.payment.debtCode,
                      sign == line.debtSign ? line.pointers : negated(line.pointers)));
}

MethodResult addPayment(UIO0201500& operation, const DebtsRequest& request, const ReadyLine& line) {
  const DebtPayment& payment = line.payment;
  NewEntry entry;
  entry.AccountD = request.AccountD;
  entry.AccountC = request.AccountC;
  entry.addressees = line.pointers;
  mirrorParties(entry.addressees);
  entry.sums.sum = payment.debtSumCurr > 0   ? payment.debtSumCurr
                   : payment.paidSumCurr > 0 ? payment.paidSumCurr
                                             : payment.sumLt;
  entry.sums.sign = line.debtSign;
  entry.sums.code = payment.debtCode;
  entry.sums.rate = payment.debtRate;
  entry.sums.sumCurr2 = payment.paidSumCurr;
  entry.sums.code2 = payment.paidCode;
  entry.sums.rate2 = payment.paidRate;
  return add(operation, entry);
}

MethodResult addLine(UIO0201500& operation, const DebtsRequest& request, const ReadyLine& line) {
  MethodResult added = addRateDifference(operation, request, line);
  if (added.Code != kDone || line.payment.sumLt <= 0) return added;
  return addPayment(operation, request, line);
}

// What the document's rate makes of the litas of all payments; 0 without a rate.
double restOfRate(const DebtsRequest& request, const std::vector<ReadyLine>& lines) {
  double sumLt = 0, sumCurr = 0;
  for (const ReadyLine& line : lines) {
    if (line.payment.sumLt <= 0) continue;
    sumLt += line.payment.sumLt;
    sumCurr += line.payment.paidSumCurr;
  }
  if (sumCurr <= 0 || request.rateLtPerUnit <= 0 || sumLt <= 0) return 0;
  return roundHalfEven(roundLt(sumCurr * request.rateLtPerUnit) - sumLt, 2);
}

// The answer of the selection screen over `parameters`; null when the user gave up.
RowSetPtr askSelection(UIO0201500& operation, const RowSetPtr& parameters) {
  RowSetPtr selected;
  const auto form = operation.tables().forms.make(
      kOperationSelect,
      OperationSelectRequest{hostContext(), operation.shared_from_this(), parameters, selected});
  if (!form) {
    tellMissingScreen();
    return nullptr;
  }
  hostContext().screens().runModal(*form);
  return selected;
}

// The given failure without the value that it may carry: callers look at the value alone.
MethodResult withoutValue(MethodResult failure) {
  failure.Value = {};
  return failure;
}

void writeParameters(RowSet& row, UIO0201500& operation, const DebtsRequest& request) {
  row["OIDR"] = operation.OIDR();
  row["FOIDR"] = request.clientReference;
  row["DateD"] = request.date;
  row["Comment"] = request.clientName;
  row[isCurrency(request.code) ? "PaymentSumCurr" : "PaymentSum"] = request.sum;
  row["PaymentCurrCode"] = request.code;
  row["PaymentCurrRate"] = request.rateLtPerUnit;
  // An expense covers what stands on the credit of its own account, an income what stands on the
  // debit.
  row[request.byExpense ? "AccountC" : "AccountD"] = request.ownAccount();
}

}  // namespace

DebtsRequest DebtsRequest::from(Arguments par) {
  DebtsRequest request;
  request.byExpense = NullToBool(argument(par, 0));
  request.AccountD = NullToText(argument(par, 1));
  request.AccountC = NullToText(argument(par, 2));
  request.clientReference = NullToText(argument(par, 3));
  request.date = NullToDate(argument(par, 4), hostContext().clock().today());
  request.sum = NullToDouble(argument(par, 5));
  request.clientName = NullToText(argument(par, 6));
  request.code = NullToText(argument(par, 7));
  if (!isCurrency(request.code)) request.code = kNoCurrency;
  request.rateLtPerUnit = NullToDouble(argument(par, 8));
  request.clearWholeAccount = NullToBool(argument(par, 9));
  return request;
}

DebtPayment debtPayment(RowSet& selected) {
  DebtPayment payment;
  payment.sumLt = selected["PaymentSum"].Number();
  payment.debtSumCurr = std::max(selected["DebtSumCurr"].Number(), 0.0);
  if (payment.debtSumCurr > 0) {
    payment.debtCode = text(selected, "DebtCurrCode");
    payment.debtRate = selected["DebtCurrRate"].Number();
    payment.sumLt = roundLt(payment.debtRate * payment.debtSumCurr);
  }
  const double paid = selected["PaymentSumCurr"].Number();
  if (paid <= 0) return payment;
  payment.paidCode = text(selected, "PaymentCurrCode");
  payment.paidRate = selected["PaymentCurrRate"].Number();
  if (payment.paidRate == 0) return payment;
  payment.paidSumCurr = roundHalfEven(payment.sumLt / payment.paidRate, 2);
  if (roundLt(payment.paidSumCurr * payment.paidRate) != payment.sumLt) {
    if (payment.paidSumCurr <= 0) {
      throw RowSetError(RowSetError::Unexpected,
                        "Mokama suma nesiekia " + payment.paidCode + " cento!");
    }
    payment.paidRate = roundHalfEven(payment.sumLt / payment.paidSumCurr, 9);
  } else if (roundHalfEven(payment.paidRate * paid, 2) == payment.sumLt) {
    payment.paidSumCurr = paid;
  }
  return payment;
}

MethodResult addDebtEntries(UIO0201500& operation, const DebtsRequest& request, RowSet& selected) {
  const auto lines = readyLines(operation, request, selected);
  if (!lines) return refused(kUnreadAddressees);
  selected.MoveFirst();
  const Party party{text(selected, "AddrOIDR"), text(selected, "AddrName")};
  MethodResult cleared = operation.Methods(
      "DeleteBR",
      {request.ownAccount(), request.ownSign(), request.clearWholeAccount ? "" : party.reference});
  if (cleared.Code != kDone) return withoutValue(std::move(cleared));
  for (const ReadyLine& line : *lines) {
    MethodResult added = addLine(operation, request, line);
    if (added.Code != kDone) return withoutValue(std::move(added));
  }
  if (const double rest = restOfRate(request, *lines); rest != 0) {
    MethodResult added = addRestOfRate(operation, request, party, rest, lines->back().accounts);
    if (added.Code != kDone) return withoutValue(std::move(added));
  }
  return done(true);
}

MethodResult Debts(UIO0201500& operation, Arguments par) {
  const DebtsRequest request = DebtsRequest::from(par);
  MethodResult read = operation.Properties("SelectParameters", "");
  if (read.Code != kDone) return withoutValue(std::move(read));
  const RowSetPtr parameters = read.Value.AsRows();
  parameters->AddNew();
  writeParameters(*parameters, operation, request);
  parameters->Update();
  const RowSetPtr selected = askSelection(operation, parameters);
  if (!selected || selected->RecordCount() == 0) return done();
  return addDebtEntries(operation, request, *selected);
}

MethodResult BROperSelect(UIO0201500& operation, Arguments par) {
  MethodResult read = operation.Properties("SelectParameters", "");
  if (read.Code != kDone) return withoutValue(std::move(read));
  const RowSetPtr parameters = read.Value.AsRows();
  RowSet& row = *parameters;
  row.AddNew();
  row["OIDR"] = operation.OIDR();
  row["AccountD"] = NullToText(argument(par, 0));
  row["AccountC"] = NullToText(argument(par, 1));
  row["FOIDR"] = NullToText(argument(par, 2));
  row["DateD"] = NullToDate(argument(par, 3), hostContext().clock().today());
  row["Comment"] = "";
  row["Info"] = "";
  row.Update();
  const RowSetPtr selected = askSelection(operation, parameters);
  return selected ? done(selected) : done();
}

}  // namespace tolvex
