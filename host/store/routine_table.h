// The parts of the table of routines, one for each file routines_*.cpp.
#pragma once

#include <span>

#include "host/store/routines.h"

namespace tolvex::store {

std::span<const Routine> hostRoutines();

}  // namespace tolvex::store
