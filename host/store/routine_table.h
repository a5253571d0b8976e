// The parts of the table of routines, one for each file routines_*.cpp.
#pragma once

#include <span>
#include <vector>

#include "host/store/routines.h"

namespace tolvex::store {

using Arguments = std::vector<Argument>;

std::span<const Routine> hostRoutines();
std::span<const Routine> listRoutines();
std::span<const Routine> operationRoutines();
std::span<const Routine> referenceRoutines();
std::span<const Routine> commentRoutines();
std::span<const Routine> numberRoutines();
std::span<const Routine> debtRoutines();
std::span<const Routine> advanceRoutines();
std::span<const Routine> balanceRoutines();
std::span<const Routine> bankRoutines();
std::span<const Routine> planRoutines();
std::span<const Routine> lockRoutines();
std::span<const Routine> conversionRoutines();
std::span<const Routine> groupRoutines();
std::span<const Routine> templateRoutines();
std::span<const Routine> currencyRoutines();
std::span<const Routine> vatRoutines();
std::span<const Routine> rightRoutines();
std::span<const Routine> cardRoutines();
std::span<const Routine> logRoutines();

}  // namespace tolvex::store
