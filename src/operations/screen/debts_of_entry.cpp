#include "operations/screen/debts_of_entry.h"

#include <algorithm>
#include <array>
#include <string>

#include "framework/references.h"
#include "operations/screen/operation_rows.h"
#include "operations/screen/rate_book.h"

namespace tolvex {
namespace {

constexpr std::array<std::string_view, 3> kClients = {"O0000100", "O0001402", "O0001401"};

struct Client {
  std::string reference, name;
};

Client clientOf(RowSet& entry) {
  Client client;
  ForEachRow(*entry["BRProperties"].Rows(), [&](RowSet& row) {
    const std::string_view reference = row["FOIDR"].Text();
    if (!client.reference.empty() || !isRef(reference)) return;
    if (std::ranges::find(kClients, kindOf(reference)) == kClients.end()) return;
    client = {std::string(reference), std::string(row["ShowString"].Text())};
  });
  return client;
}

struct Money {
  double sum = 0;
  std::string code = std::string(kNoCurrency);
  double rate = 0;
};

Money moneyOf(RowSet& entry, int sign) {
  Money money;
  money.sum = entry["SumA"].Number();
  ForEachRow(*entry["BRCurrency"].Rows(), [&](RowSet& row) {
    if (row["Sign"].Number() != sign || !isCurrency(row["FCurrencyCode"].Text())) return;
    money = {row["SumCurr"].Number(), std::string(row["FCurrencyCode"].Text()),
             row["RateCurr"].Number()};
  });
  return money;
}

}  // namespace

std::vector<Variant> debtsArguments(VXObjectUIO& operation, std::string_view guid, MoneyGoes way) {
  const RowSetPtr entry = entryOf(operation, guid);
  if (!entry) return {};
  const bool expense = way == MoneyGoes::Out;
  const Client client = clientOf(*entry);
  const Money money = moneyOf(*entry, expense ? -1 : 1);
  return {expense,
          std::string((*entry)["AccountD"].Text()),
          std::string((*entry)["AccountC"].Text()),
          client.reference,
          (*operation.RsFields())["DateD"].Value(),
          money.sum,
          client.name,
          money.code,
          money.rate};
}

}  // namespace tolvex
