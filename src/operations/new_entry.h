// NewEntry and TemplateEntries: what a new entry is made of, by name instead of by position.
//
// The keyed actions "AddBR" and "AddTemplate" take their values by position; these two records are
// the one place that knows the positions. Callers fill a record and pass arguments() on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/method_table.h"
#include "framework/variant.h"

namespace tolvex {

// Sum and currency sides as a caller gives them. `sum` is in the first currency when `rate` is
// above 0, otherwise in litas; there is no separate sum of the first currency.
struct EntrySums {
  double sum = 0;
  int sign = 0;  // side of the first currency: 1 debit, -1 credit, 0 not said
  std::string code;
  double rate = 0;
  double sumCurr2 = 0;  // the second currency, on the other side
  std::string code2;
  double rate2 = 0;
};

// What the books say besides sums: the VAT kind of the entry and its tariff.
struct EntryTrade {
  int TradeOperationType = 0;
  double VATTariff = -1;  // below 0: none
  int RestoringSign = 1;
};

// Addressees travel as one flat list of triples: sign, reference, shown text.
void addAddressee(Variant::Array& triples, int sign, std::string_view reference,
                  std::string_view shown);

struct NewEntry {
  std::string AccountD, AccountC;
  EntrySums sums;
  Variant::Array addressees;
  std::string Info, Tag;
  Variant date;  // a date or its text; empty: the date of the operation
  std::string FGUID;
  EntryTrade trade;

  // From 4, 7 or 10 to 17 positions; missing ones take the values above.
  static NewEntry from(Arguments par);
  // The shortest allowed list that says all that differs from the defaults.
  std::vector<Variant> arguments() const;
};

struct TemplateEntries {
  int BRTemplateID = 0;
  EntrySums sums;
  Variant::Array addressees;
  EntryTrade trade;

  static TemplateEntries from(Arguments par);  // 3, 6, 9, 10, 11 or 12 positions
  std::vector<Variant> arguments() const;      // all of them
};

}  // namespace tolvex
