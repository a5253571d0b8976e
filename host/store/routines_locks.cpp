#include <algorithm>

#include "host/store/answer.h"
#include "host/store/routine_table.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kLockedTo[] = {col::date("Date")};

// The latest day that is closed on any account, for the head or for everybody else; null when none
// is.
Variant GetLockedTo(Session& session, const Arguments&, std::string_view) {
  auto latest = session.db().prepare(
      "SELECT l.day_high, l.day_low FROM account_lock l JOIN account a ON a.id = l.account_id"
      " WHERE a.plan IN (0, -9)");
  std::int64_t day = 0;
  while (latest->step()) day = std::max({day, latest->integer(0), latest->integer(1)});
  Answer answer(kLockedTo);
  answer.row().day(day);
  return answer.done();
}

constexpr Routine kRoutines[] = {{"O0201300", "GetLockedTo", "", false, GetLockedTo}};

}  // namespace

std::span<const Routine> lockRoutines() { return kRoutines; }

}  // namespace tolvex::store
