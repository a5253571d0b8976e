// The entries of a cover: two lists of ticked debts, set off against each other row by row.
//
// Each entry closes a part of one row on either side; an item on the credit is closed by a debit.
// A row's currency sum is shared out so that its last part takes what is left of it: the row closes
// to the cent in both its sums. Differences of rates go to the accounts of gains and losses.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "debts/debt_rows.h"
#include "framework/results.h"
#include "platform/objects.h"

namespace tolvex {

// One side of a cover.
struct CoverParty {
  std::string account;
  std::string addressee;  // a reference, a kind or "", as the debts were asked for
  int sign = 1;           // 1: its debts lie on the credit and are closed by a debit; -1 opposite
  std::vector<DebtRow>* rows = nullptr;  // those that are ticked are covered
};

struct CoverPosting {
  CoverParty primary, secondary;
  InfluenceAccounts accounts;
  DateTime date;
  bool dateOfDebts = false;  // entries take the later date of the two debts instead
};

// Adds the entries. The first refusal ends it and is returned; entries added until then stay.
// What an entry took is taken off the rows as soon as it stands, so that what is still ticked is
// what is not posted yet: the same call again goes on from there.
MethodResult PostCover(VXObjectUIO& operation, const CoverPosting& posting);

// A gain (above 0) or loss (below 0) of a debt on `account` that is closed on side `sign`.
struct Influence {
  std::string account;
  Variant::Array pointers;
  int sign = 1;
  // Of the debt; the entry carries it with a sum of zero, so that the difference counts with the
  // debt in that currency also where the operation has debts in others.
  std::string code = std::string(kNoCurrency);
  DateTime date;
  double amount = 0;
};
MethodResult PostInfluence(VXObjectUIO& operation, const InfluenceAccounts& accounts,
                           const Influence& influence);

// The comment of an operation that covers debts: the first pair of addressees names it, the others
// are added while the comment keeps within its 1000 characters.
std::string coverComment(std::string_view comment, bool firstPair, std::string_view primary,
                         std::string_view secondary);

}  // namespace tolvex
