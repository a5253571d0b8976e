// Buying and selling of currency: what the user typed becomes an entry between the two sides, and a
// second one for what their values in litas differ by.
//
// The entry is made at the smaller of the two values; the rate of the side of greater value is
// lowered to it, so that both sides of the entry come to the same litas, and the rest is a gain or
// a loss.
#pragma once

#include <optional>
#include <string>

#include "operations/new_entry.h"
#include "operations/screen/rate_book.h"

namespace tolvex {

struct ExchangeSide {
  std::string account;
  std::string code = std::string(kNoCurrency);
  double rateLtPerUnit = 0;   // not looked at in litas
  double sum = 0;             // as typed: in the currency, or in litas
  Variant::Array addressees;  // triples of the own bank and its account, or none
};

struct Exchange {
  ExchangeSide debit, credit;
  std::string gainAccount, lossAccount;
  DateTime date;
};

// The value of a side in litas: a typed sum of litas as it is, a currency sum at its rate.
double valueLt(const ExchangeSide& side);

struct ExchangeEntries {
  std::string error;  // why there are none, or ""
  std::string name;   // of the operation
  NewEntry main;
  std::optional<NewEntry> difference;  // none when the sides are worth the same
};
ExchangeEntries exchangeEntries(const Exchange& exchange);

// The addressees of one side of an entry: the bank and its account.
Variant::Array bankAddressees(int sign, RowSet& MyFirmAccounts, std::string_view AccOIDR);

}  // namespace tolvex
