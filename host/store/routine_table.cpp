// Joins the routines of all files routines_*.cpp.
#include "host/store/routine_table.h"

namespace tolvex::store {
namespace {

using Part = std::span<const Routine> (*)();

// What a kind answers in its own way stands before what every kind answers.
// clang-format off
constexpr Part kParts[] = {
    listRoutines,
    operationRoutines,
    logRoutines,
    referenceRoutines,
    commentRoutines,
    numberRoutines,
    debtRoutines,
    advanceRoutines,
    balanceRoutines,
    bankRoutines,
    planRoutines,
    conversionRoutines,
    lockRoutines,
    groupRoutines,
    templateRoutines,
    currencyRoutines,
    vatRoutines,
    cardRoutines,
    rightRoutines,
    hostRoutines,
};
// clang-format on

}  // namespace

const std::vector<Routine>& routineTable() {
  static const std::vector<Routine> table = [] {
    std::vector<Routine> all;
    for (const Part part : kParts) {
      const std::span<const Routine> routines = part();
      all.insert(all.end(), routines.begin(), routines.end());
    }
    return all;
  }();
  return table;
}

}  // namespace tolvex::store
