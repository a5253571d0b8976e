// Entries made at random from meaningful values: rates of the day, sums at the edge of a cent.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <tuple>
#include <utility>

#include "operations/entry_rules.h"
#include "tests/operations/operation_world.h"

namespace tolvex::test {
namespace {

// A sum that is not negative, often with a third decimal at or beside the half cent.
rc::Gen<double> sums() {
  return rc::gen::map(rc::gen::inRange(0, 100000000), [](int n) { return n / 1000.0; });
}
rc::Gen<double> rates() {
  return rc::gen::map(rc::gen::inRange(1, 99999), [](int n) { return n / 10000.0; });
}
// A currency with its rate, as a rule whole: a code and a rate, or neither.
rc::Gen<std::pair<std::string, double>> currencies() {
  using rc::gen::pair;
  const auto foreign = rc::gen::element<std::string>("USD", "EUR", "LTL", "   ");
  const auto none = rc::gen::element<std::string>("", "   ");
  return rc::gen::weightedOneOf<std::pair<std::string, double>>(
      {{6, pair(foreign, rates())},
       {4, pair(none, rc::gen::just(0.0))},
       {1, pair(rc::gen::element<std::string>("", "US", "USD"), rates())},
       {1, pair(foreign, rc::gen::just(0.0))}});
}
rc::Gen<std::string> accounts() {
  return rc::gen::weightedElement<std::string>({{8, "240"}, {8, "500"}, {4, "0"}, {1, ""}});
}

NewEntry anyEntry() {
  NewEntry entry;
  entry.AccountD = *accounts();
  entry.AccountC = *accounts();
  entry.sums.sum = *sums();
  entry.sums.sign = *rc::gen::weightedElement<int>({{6, 1}, {6, -1}, {6, 0}, {1, 2}});
  std::tie(entry.sums.code, entry.sums.rate) = *currencies();
  std::tie(entry.sums.code2, entry.sums.rate2) = *currencies();
  // The second currency comes to the litas of the first, or to the cent beside it.
  if (entry.sums.rate2 > 0) {
    const double litas = entry.sums.rate > 0 ? entry.sums.sum * entry.sums.rate : entry.sums.sum;
    const double near = *rc::gen::weightedElement<double>({{4, 0.0}, {1, 0.004}, {1, 0.01}});
    entry.sums.sumCurr2 = (litas + near) / entry.sums.rate2;
  }
  const int elements = *rc::gen::weightedElement<int>({{6, 0}, {4, 3}, {2, 6}, {1, 1}, {1, 4}});
  for (int i = 0; i < elements; ++i) {
    entry.addressees.push_back(i % 3 == 0 ? Variant(*rc::gen::inRange(-1, 2)) : "O00001007");
  }
  return entry;
}

// A fixture of its own for each run of a property.
struct World final : OperationWorld {
  void TestBody() override {}
  using OperationWorld::BR;
  using OperationWorld::operation;
  using OperationWorld::printed;
};

RC_GTEST_PROP(EntryProperties, WhatAddBRMadePassesAndWhatItRefusedLeftNoTrace, ()) {
  World world;
  const int count = *rc::gen::inRange(1, 6);
  for (int i = 0; i < count; ++i) {
    const NewEntry entry = anyEntry();
    const std::string before = world.printed();
    const std::vector<Variant> par = entry.arguments();
    const MethodResult result = world.operation->Methods("AddBR", std::span<const Variant>(par));
    RC_TAG(result.Code == kDone ? "added" : "refused");
    if (result.Code != kDone) {
      RC_ASSERT(world.printed() == before);
      RC_ASSERT(result.Value == Variant(""));
    }
  }
  ForEachRow(world.BR(), [&](RowSet& row) {
    const RowSetPtr currency = row["BRCurrency"].Rows();
    RC_ASSERT(CheckValiuta(*currency, row["SumA"].Number()) == "");
    RC_ASSERT(currency->RecordCount() <= 2u);
    double signs = 0;
    ForEachRow(*currency, [&](RowSet& side) {
      RC_ASSERT(side["FCurrencyCode"].Text() != "LTL");
      RC_ASSERT(side["FCurrencyCode"].Text() != "   ");
      signs += side["Sign"].Number();
    });
    if (currency->RecordCount() == 2u) RC_ASSERT(signs == 0);
  });
}

}  // namespace
}  // namespace tolvex::test
