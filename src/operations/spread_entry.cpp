#include "operations/spread_entry.h"

#include <string>
#include <vector>

#include "framework/conversions.h"
#include "operations/entries.h"

namespace tolvex {
namespace {

struct CurrencyRow {
  int sign = 0;
  std::string code;
};

// The currency rows as they stand, those without a sum too: they say in what the litas count.
std::vector<CurrencyRow> currenciesOf(RowSet& entry) {
  std::vector<CurrencyRow> rows;
  ForEachRow(*entry["BRCurrency"].Rows(), [&](RowSet& row) {
    rows.push_back({row["Sign"].Number() == 1 ? 1 : -1, std::string(row["FCurrencyCode"].Text())});
  });
  return rows;
}

Variant::Array addresseesOf(RowSet& entry) {
  Variant::Array triples;
  ForEachRow(*entry["BRProperties"].Rows(), [&](RowSet& row) {
    addAddressee(triples, static_cast<int>(row["Sign"].Number()), row["FOIDR"].Text(),
                 row["ShowString"].Text());
  });
  return triples;
}

const SpreadSide& sideOf(const SpreadPart& part, int sign) {
  return sign == 1 ? part.debit : part.credit;
}

// A rate tells the new entry that its sum is in currency, so the side that has one comes first.
EntrySums sumsOf(const SpreadPart& part, std::vector<CurrencyRow> currencies) {
  EntrySums sums;
  sums.sum = part.sumLt;
  if (currencies.size() == 2 && !sideOf(part, currencies[0].sign).counts()) {
    std::swap(currencies[0], currencies[1]);
  }
  if (currencies.empty()) return sums;
  const SpreadSide& first = sideOf(part, currencies[0].sign);
  sums.sign = currencies[0].sign;
  sums.code = currencies[0].code;
  if (first.counts()) {
    sums.rate = first.rate;
    sums.sum = first.sumCurr;
  }
  if (currencies.size() < 2) return sums;
  const SpreadSide& second = sideOf(part, currencies[1].sign);
  sums.code2 = currencies[1].code;
  if (second.counts()) {
    sums.rate2 = second.rate;
    sums.sumCurr2 = second.sumCurr;
  }
  return sums;
}

void writePart(RowSet& entry, const SpreadPart& part) {
  entry["DateD"] = Variant(part.date);
  entry["SumA"] = part.sumLt;
  ForEachRow(*entry["BRCurrency"].Rows(), [&](RowSet& row) {
    const SpreadSide& side = sideOf(part, row["Sign"].Number() == 1 ? 1 : -1);
    if (!side.counts()) return;
    row["SumCurr"] = side.sumCurr;
    row["RateCurr"] = side.rate;
  });
}

}  // namespace

SpreadEntry spreadEntryOf(RowSet& BR) {
  SpreadEntry entry;
  entry.date = BR["DateD"].Value().AsDate();
  entry.sumLt = BR["SumA"].Number();
  ForEachRow(*BR["BRCurrency"].Rows(), [&](RowSet& row) {
    SpreadSide& side = row["Sign"].Number() == 1 ? entry.debit : entry.credit;
    side = {row["RateCurr"].Number(), row["SumCurr"].Number()};
  });
  return entry;
}

MethodResult SpreadOverMonths(VXObjectUIO& operation, std::string_view guid,
                              const SpreadTerms& terms) {
  const RowSetPtr entry = entryOf(operation, guid);
  if (!entry || !(*entry)["DateD"].Value().IsDate()) return refused("Nėra įrašo!");
  const std::vector<SpreadPart> parts = spread(spreadEntryOf(*entry), terms);
  if (parts.empty()) return refused("Sumos išdėstyti pagal mėnesius nepavyko!");

  NewEntry later;
  later.AccountD = (*entry)["AccountD"].Text();
  later.AccountC = (*entry)["AccountC"].Text();
  later.addressees = addresseesOf(*entry);
  if (terms.withComment) later.Info = (*entry)["Info"].Text();
  const std::vector<CurrencyRow> currencies = currenciesOf(*entry);

  std::vector<std::string> added;
  for (auto part = parts.begin() + 1; part != parts.end(); ++part) {
    later.sums = sumsOf(*part, currencies);
    later.date = part->date.Text();
    MethodResult made = operation.Methods("AddBR", later.arguments());
    if (made.Code != kDone) {
      for (const std::string& one : added) (void)operation.Methods("DeleteBR", {one});
      return made;
    }
    added.push_back(made.Value.AsText());
  }
  writePart(*entryOf(operation, guid), parts.front());
  return done(static_cast<int>(parts.size()));
}

}  // namespace tolvex
