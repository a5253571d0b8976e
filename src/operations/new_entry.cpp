#include "operations/new_entry.h"

#include "framework/conversions.h"
#include "framework/rounding.h"

namespace tolvex {

namespace {

int whole(const Variant& value, int fallback) {
  return value.IsAbsent() ? fallback : static_cast<int>(roundHalfEven(NullToDouble(value), 0));
}

Variant::Array list(const Variant& value) {
  return value.IsArray() ? value.AsArray() : Variant::Array{};
}

// Sign, first code and rate, second sum, code and rate: six positions in a row from `first` on.
void readCurrencies(EntrySums& sums, Arguments par, std::size_t first) {
  sums.sign = whole(argument(par, first), 0);
  sums.code = NullToText(argument(par, first + 1));
  sums.rate = NullToDouble(argument(par, first + 2));
  sums.sumCurr2 = NullToDouble(argument(par, first + 3));
  sums.code2 = NullToText(argument(par, first + 4));
  sums.rate2 = NullToDouble(argument(par, first + 5));
}

void writeCurrencies(const EntrySums& sums, std::vector<Variant>& out) {
  out.insert(out.end(), {sums.sign, sums.code, sums.rate, sums.sumCurr2, sums.code2, sums.rate2});
}

EntryTrade readTrade(Arguments par, std::size_t first) {
  EntryTrade trade;
  trade.TradeOperationType = whole(argument(par, first), trade.TradeOperationType);
  const Variant& tariff = argument(par, first + 1);
  if (!tariff.IsAbsent() && !(tariff.IsText() && tariff.AsText().empty())) {
    trade.VATTariff = NullToDouble(tariff);
  }
  trade.RestoringSign = whole(argument(par, first + 2), trade.RestoringSign);
  return trade;
}

}  // namespace

void addAddressee(Variant::Array& triples, int sign, std::string_view reference,
                  std::string_view shown) {
  triples.insert(triples.end(), {Variant(sign), Variant(reference), Variant(shown)});
}

NewEntry NewEntry::from(Arguments par) {
  NewEntry entry;
  entry.AccountD = NullToText(argument(par, 0));
  entry.AccountC = NullToText(argument(par, 1));
  entry.sums.sum = NullToDouble(argument(par, 2));
  entry.addressees = list(argument(par, 3));
  readCurrencies(entry.sums, par, 4);
  entry.Info = NullToText(argument(par, 10));
  entry.Tag = NullToText(argument(par, 11));
  entry.date = argument(par, 12);
  entry.FGUID = NullToText(argument(par, 13));
  entry.trade = readTrade(par, 14);
  return entry;
}

std::vector<Variant> NewEntry::arguments() const {
  std::vector<Variant> all = {AccountD, AccountC, sums.sum, Variant(addressees)};
  writeCurrencies(sums, all);
  all.insert(all.end(),
             {Variant(Info), Variant(Tag), date, Variant(FGUID), Variant(trade.TradeOperationType),
              Variant(trade.VATTariff), Variant(trade.RestoringSign)});
  static const std::vector<Variant> kDefaults = {"",  "", 0.0, Variant(), 0,  "", 0.0,  0.0, "",
                                                 0.0, "", "",  Variant(), "", 0,  -1.0, 1};
  std::size_t count = all.size();
  while (count > 4 && all[count - 1] == kDefaults[count - 1]) --count;
  while (count < 10 && count != 4 && count != 7) ++count;
  all.resize(count);
  return all;
}

TemplateEntries TemplateEntries::from(Arguments par) {
  TemplateEntries entries;
  entries.BRTemplateID = whole(argument(par, 0), 0);
  entries.sums.sum = NullToDouble(argument(par, 1));
  entries.addressees = list(argument(par, 2));
  readCurrencies(entries.sums, par, 3);
  entries.trade = readTrade(par, 9);
  return entries;
}

std::vector<Variant> TemplateEntries::arguments() const {
  std::vector<Variant> all = {BRTemplateID, sums.sum, Variant(addressees)};
  writeCurrencies(sums, all);
  all.insert(all.end(), {Variant(trade.TradeOperationType), Variant(trade.VATTariff),
                         Variant(trade.RestoringSign)});
  return all;
}

}  // namespace tolvex
