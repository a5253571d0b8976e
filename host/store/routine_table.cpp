// Joins the routines of all files routines_*.cpp.
#include "host/store/routine_table.h"

namespace tolvex::store {

const std::vector<Routine>& routineTable() {
  static const std::vector<Routine> table = [] {
    std::vector<Routine> all;
    for (const std::span<const Routine> part : {hostRoutines()}) {
      all.insert(all.end(), part.begin(), part.end());
    }
    return all;
  }();
  return table;
}

}  // namespace tolvex::store
