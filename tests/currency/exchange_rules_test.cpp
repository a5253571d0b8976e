#include "currency/exchange_rules.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "framework/rounding.h"
#include "framework/text.h"
#include "operations/entry_rules.h"
#include "operations/entry_sums.h"
#include "tests/operations/operation_world.h"

namespace tolvex::test {
namespace {

ExchangeSide side(const char* account, const char* code, double rate, double sum) {
  return {account, code, rate, sum, {}};
}
ExchangeSide litas(const char* account, double sum) { return side(account, "   ", 0, sum); }

Exchange exchange(ExchangeSide debit, ExchangeSide credit) {
  return {std::move(debit), std::move(credit), "536", "636", DateTime::Of(2004, 3, 31)};
}

// "2713-2711: 100 on 1 USD 2.7, 0    0": accounts, the sum with its side, code and rate, the other.
std::string shown(const NewEntry& entry) {
  const EntrySums& sums = entry.sums;
  return entry.AccountD + "-" + entry.AccountC + ": " +
         join({plainNumber(roundHalfEven(sums.sum, 9)), "on", plainNumber(sums.sign), sums.code,
               plainNumber(sums.rate) + ",", plainNumber(sums.sumCurr2), sums.code2,
               plainNumber(sums.rate2)},
              " ");
}

TEST(ExchangeEntries, OneEntryAtTheSmallerValueAndOneForTheRest) {
  const struct {
    const char* name;
    ExchangeSide debit, credit;
    const char *called, *main, *difference;
  } cases[] = {
      {"bought below the day's rate", side("2713", "USD", 2.75, 100), litas("2711", 270),
       "Valiutos pirkimas", "2713-2711: 100 on 1 USD 2.7, 0     0", "2713-536: 5 on 1 USD 0, 0  0"},
      {"bought above it", side("2713", "USD", 2.75, 100), litas("2711", 280), "Valiutos pirkimas",
       "2713-2711: 100 on 1 USD 2.75, 0     0", "636-2711: 5 on -1     0, 0  0"},
      {"sold below the day's rate", litas("2711", 270), side("2713", "USD", 2.75, 100),
       "Valiutos pardavimas", "2711-2713: 100 on -1 USD 2.7, 0     0",
       "636-2713: 5 on -1 USD 0, 0  0"},
      {"sold above it", litas("2711", 280), side("2713", "USD", 2.75, 100), "Valiutos pardavimas",
       "2711-2713: 100 on -1 USD 2.75, 0     0", "2711-536: 5 on 1     0, 0  0"},
      {"changed with a gain: the debit rate is lowered", side("2712", "EUR", 3.4528, 100),
       side("2713", "USD", 2.75, 125), "Valiutos pirkimas/pardavimas",
       "2712-2713: 100 on 1 EUR 3.4375, 125 USD 2.75", "2712-536: 1.53 on 1 EUR 0, 0  0"},
      {"changed with a loss: the credit rate is lowered", side("2713", "USD", 2.75, 125),
       side("2712", "EUR", 3.4528, 100), "Valiutos pirkimas/pardavimas",
       "2713-2712: 125 on 1 USD 2.75, 100 EUR 3.4375", "636-2712: 1.53 on -1 EUR 0, 0  0"},
      {"a lowered rate has nine decimals", litas("2711", 100), side("2713", "USD", 3.01, 33.33),
       "Valiutos pardavimas", "2711-2713: 33.33 on -1 USD 3.00030003, 0     0",
       "636-2713: 0.32 on -1 USD 0, 0  0"},
      {"equal values", side("2713", "USD", 2.75, 100), litas("2711", 275), "Valiutos pirkimas",
       "2713-2711: 100 on 1 USD 2.75, 0     0", ""},
      {"the credit rate is set to equal values too", litas("2711", 100.32),
       side("2713", "USD", 3.01, 33.33), "Valiutos pardavimas",
       "2711-2713: 33.33 on -1 USD 3.00990099, 0     0", ""},
      {"litas for litas", litas("2721", 100), litas("2711", 90), "Valiutos pirkimas",
       "2721-2711: 90 on -1     0, 0     0", "2721-536: 10 on 1     0, 0  0"},
      {"a third decimal of a currency is rounded, of litas not", side("2713", "USD", 1, 100.005),
       litas("2711", 99.999), "Valiutos pirkimas", "2713-2711: 100 on 1 USD 0.99999, 0     0",
       "2713-536: 0.001 on 1 USD 0, 0  0"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const ExchangeEntries entries = exchangeEntries(exchange(c.debit, c.credit));
    EXPECT_EQ(entries.error, "");
    EXPECT_EQ(entries.name, c.called);
    EXPECT_EQ(shown(entries.main), c.main);
    EXPECT_EQ(entries.difference ? shown(*entries.difference) : "", c.difference);
    EXPECT_EQ(entries.main.arguments().size(), 13U);
    EXPECT_EQ(entries.main.date.AsText(), "2004.03.31");
    if (entries.difference) {
      EXPECT_EQ(entries.difference->arguments().size(), 13U);
    }
  }
}

TEST(ExchangeEntries, ValuesHaveABiasOfTheirOwn) {
  EXPECT_EQ(valueLt(side("2713", "USD", 3.6671, 249.88)), 916.34);
  EXPECT_EQ(roundLt(3.6671 * 249.88), 916.33) << "as the entry itself counts";
  EXPECT_EQ(valueLt(litas("2711", 12.345)), 12.345);
}

TEST(ExchangeEntries, ACurrencyWithoutRateOrSumIsRefused) {
  const auto error = [](ExchangeSide debit, ExchangeSide credit) {
    return exchangeEntries(exchange(std::move(debit), std::move(credit))).error;
  };
  EXPECT_EQ(error(side("2713", "USD", 0, 100), litas("2711", 270)), kNoCurrencyRate);
  EXPECT_EQ(error(litas("2711", 270), side("2713", "USD", 0, 100)), kNoCurrencyRate);
  EXPECT_EQ(error(litas("2711", 270), side("2713", "USD", 2.75, 0.004)), kBadSum);
}

TEST(ExchangeEntries, TheDifferenceCarriesTheBankOfItsSideTwice) {
  const RowSetPtr banks = table({{"AccOIDR", FieldType::Text},
                                 {"OIDR", FieldType::Text},
                                 {"Name", FieldType::Text},
                                 {"AccountNumber", FieldType::Text}},
                                {{"O00005001", "O00003001", "Bankas A", "LT1"},
                                 {"O00005003", "O00003002", "Bankas B", "LT3"}});
  EXPECT_TRUE(bankAddressees(1, *banks, "").empty());
  EXPECT_TRUE(bankAddressees(1, *banks, "O00005009").empty());
  Exchange deal = exchange(side("2713", "USD", 2.75, 100), litas("2711", 270));
  deal.debit.addressees = bankAddressees(1, *banks, "O00005003");
  deal.credit.addressees = bankAddressees(-1, *banks, "O00005001");
  const auto text = [](const Variant::Array& triples) {
    std::vector<std::string> cells;
    for (const Variant& value : triples) cells.push_back(value.Show());
    return join(cells, " ");
  };
  const ExchangeEntries gain = exchangeEntries(deal);
  EXPECT_EQ(text(gain.main.addressees),
            "1 O00003002 Bankas B 1 O00005003 LT3 -1 O00003001 Bankas A -1 O00005001 LT1");
  EXPECT_EQ(text(gain.difference->addressees),
            "1 O00003002 Bankas B 1 O00005003 LT3 -1 O00003002 Bankas B -1 O00005003 LT3");
  deal.credit.sum = 280;
  EXPECT_EQ(text(exchangeEntries(deal).difference->addressees),
            "-1 O00003001 Bankas A -1 O00005001 LT1 1 O00003001 Bankas A 1 O00005001 LT1");
}

// Whatever is exchanged, the entries move the value of each side over its account: the main entry
// the smaller value, the difference the rest. A cent may go astray where the value and the entry
// are lifted over a half by different biases.
RC_GTEST_PROP(ExchangeEntriesProperty, BothSidesAreMovedWhole, ()) {
  const auto someSide = [](const char* account) {
    const double sum = *rc::gen::inRange(1, 100'000'00) / 100.0;
    const double rate = *rc::gen::inRange(1, 9'9999) / 10000.0;
    return *rc::gen::inRange(0, 3) == 0 ? litas(account, sum) : side(account, "USD", rate, sum);
  };
  const Exchange deal = exchange(someSide("D"), someSide("C"));
  const double debitLt = valueLt(deal.debit), creditLt = valueLt(deal.credit);
  RC_PRE(debitLt > 0 && creditLt > 0);
  const ExchangeEntries entries = exchangeEntries(deal);
  RC_ASSERT(entries.error.empty());
  RC_ASSERT(sumsAreComplete(entries.main.sums));
  RC_ASSERT(std::abs(litasSum(entries.main.sums) - std::min(debitLt, creditLt)) < 0.0101);
  RC_ASSERT(entries.difference.has_value() == (debitLt != creditLt));
  if (!entries.difference) return;
  const bool gain = debitLt > creditLt;
  RC_ASSERT((gain ? entries.difference->AccountD : entries.difference->AccountC) ==
            (gain ? "D" : "C"));
  RC_ASSERT(litasSum(entries.difference->sums) == roundHalfEven(std::abs(debitLt - creditLt), 2));
}

}  // namespace
}  // namespace tolvex::test
