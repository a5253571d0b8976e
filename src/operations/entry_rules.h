// Entry rules: what makes one accounting entry acceptable, on record sets alone.
//
// The screens ask these rules while an operation is typed, the store asks the same ones when it is
// saved. Nothing here shows a message, reads the store or changes a set; cursors of the nested sets
// move. Sign is 1 for the debit side and -1 for the credit side throughout.
// Money is litas with two decimals unless a name ends in Curr; a rate is litas per unit.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "framework/param_dictionary.h"
#include "framework/recordset.h"

namespace tolvex {

// --- the record of a financial operation -----------------------------------------------------

template <std::size_t N>
constexpr ColumnSpec nestedColumn(const char* name, const ColumnSpec (&columns)[N]) {
  return {name, FieldType::Nested, 0, columns, static_cast<int>(N)};
}

// Currency sides of an entry: at most one row a side. The base currency has no row, and a code
// that means no currency is three blanks.
inline constexpr ColumnSpec kBRCurrency[] = {
    {"ID", FieldType::Integer},     {"BRGUID", FieldType::Text, 36},
    {"Sign", FieldType::SmallInt},  {"RateCurr", FieldType::Double},
    {"SumCurr", FieldType::Double}, {"FCurrencyCode", FieldType::Text, 3}};

// Addressees of an entry, any number.
inline constexpr ColumnSpec kBRProperties[] = {{"ID", FieldType::Integer},
                                               {"BRGUID", FieldType::Text, 36},
                                               {"Sign", FieldType::SmallInt},
                                               {"FOIDR", FieldType::Text, 20},
                                               {"ShowString", FieldType::Text, 800}};

// Kinds of addressee that the accounts of an entry demand; reference data, never stored.
inline constexpr ColumnSpec kRequiredAddr[] = {{"GUID", FieldType::Text, 36},
                                               {"BRTemplateAccGUID", FieldType::Text, 36},
                                               {"FOID", FieldType::Text, 8},
                                               {"Sign", FieldType::SmallInt}};

// An entry: one sum in litas from a credit to a debit account; account "0" is no account.
inline constexpr ColumnSpec kBR[] = {{"ID", FieldType::Integer},
                                     {"GUID", FieldType::Text, 36},
                                     {"DateD", FieldType::Date},
                                     {"SumA", FieldType::Double},
                                     {"AccountD", FieldType::Text, 20},
                                     {"AccountC", FieldType::Text, 20},
                                     {"Info", FieldType::Text, 1000},
                                     {"Tag", FieldType::Text, 50},
                                     {"TradeOperationType", FieldType::SmallInt},
                                     {"RestoringSign", FieldType::SmallInt},
                                     {"VATIndication", FieldType::SmallInt},
                                     {"VATFlag", FieldType::SmallInt},
                                     {"VATTariff", FieldType::Double},
                                     {"FGUID", FieldType::Text, 36},
                                     {"BRTemplateAccID", FieldType::Integer},
                                     nestedColumn("BRCurrency", kBRCurrency),
                                     nestedColumn("BRProperties", kBRProperties),
                                     nestedColumn("RequiredAddr", kRequiredAddr)};

// The header row of an operation.
inline constexpr ColumnSpec kOperation[] = {{"ID", FieldType::Integer},
                                            {"OIDR", FieldType::Text, 20},
                                            {"OID", FieldType::Text, 20},
                                            {"OType", FieldType::Text, 8},
                                            {"FOIDR", FieldType::Text, 20},
                                            {"Preview", FieldType::Text, 200},
                                            {"RowVersion", FieldType::Integer},
                                            {"ClientOIDR", FieldType::Text, 20},
                                            {"ClientName", FieldType::Text, 800},
                                            {"DateD", FieldType::Date},
                                            {"Serija", FieldType::Text, 20},
                                            {"Number", FieldType::Text, 50},
                                            {"Comment", FieldType::Text, 1000},
                                            {"Parameters", FieldType::Text, 6000},
                                            {"BROperGroupID", FieldType::Integer},
                                            {"AutoNumber", FieldType::Integer},
                                            {"VATRegisterIndication", FieldType::SmallInt},
                                            {"LockGUID", FieldType::Text, 36},
                                            {"CreatedByUserOIDR", FieldType::Text, 20},
                                            {"CreatedByUserName", FieldType::Text, 200},
                                            {"CreationDate", FieldType::Date},
                                            {"ChangedByUserOIDR", FieldType::Text, 20},
                                            {"ChangedByUserName", FieldType::Text, 200},
                                            {"CorrectionDate", FieldType::Date},
                                            nestedColumn("BR", kBR)};

// --- rules -----------------------------------------------------------------------------------

// The messages in the order in which an entry is tested.
inline constexpr std::string_view kBadSum = "Klaidinga sumos reikšmė!";
inline constexpr std::string_view kBadAccount = "Klaidinga  balansinės sąskaitos reikšmė!";
inline constexpr std::string_view kNoCurrencyCode = "Nenurodytas valiutos tipas!";
inline constexpr std::string_view kNoCurrencyRate = "Nenurodytas valiutos kursas!";
inline constexpr std::string_view kRateMismatch = "Suma Lt neatitinka valiutos kurso!";
inline constexpr std::string_view kNoRequiredAddressee = "Nenurodyti būtini adresatai!";

// "D" or "C" by the sign and the kind of the addressee: "DO0000100".
std::string addresseeKey(int sign, std::string_view kindOrReference);

// Why the currency sides do not fit the litas sum, or "". Row by row: code, rate, sum; a row whose
// SumCurr is not above 0 is not tested. The comparison is exact on the rounded doubles, each side
// alone against the same sum.
std::string CheckValiuta(RowSet& BRCurrency, double sumLt);

// Required addressee keys with their FOID, each once.
ParamDictionary GetRequiredAddr(RowSet& RequiredAddr);

// Whether the attached addressees satisfy the required ones. Counts matching rows and compares
// with the number of required keys: two addressees of one kind on one side count twice.
bool CheckRequiredAddr(const ParamDictionary& required, RowSet* BRProperties);

// Whether an account may be posted to. "0" is never asked.
using KnowsAccount = std::function<bool(const std::string& account)>;

// Why the entry at the cursor of `BR` is not acceptable, or "". Order: sum, debit and credit
// account, currency sides, required addressees. The credit account is asked only when the debit
// account is known.
std::string testEntry(RowSet& BR, const KnowsAccount& knowsAccount);

// A failed test as the user reads it: the message, a line break, both accounts and the sum of the
// entry at the cursor. `sum` is SumA in the reader's number format.
std::string entryFailure(std::string_view message, RowSet& BR, std::string_view sum);

}  // namespace tolvex
