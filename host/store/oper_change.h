// One save of an operation as plain data: what stood, what shall stand, entry by entry.
//
// The steps of a save (oper_save.h) work on it one after another; the record that came from the
// screen is read at the beginning and gets its ids at the end.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "framework/recordset.h"
#include "host/store/oper_rows.h"
#include "host/store/session.h"

namespace tolvex::store {

struct EntryChange {
  std::optional<EntryRow> before, after;
  // For each reference row of the record that is not deleted: its place in after->refs, or -1.
  std::vector<int> refPlaces;
  // A date, sum, account, currency or reference differs: lock dates and rules are asked.
  bool touched() const;
};

struct OperChange {
  std::optional<HeaderRow> before;
  HeaderRow after;
  std::vector<EntryChange> entries;
  bool isNew() const { return !before; }
};

// Header as the record has it now; `before` (null for a new operation) gives what a record does not
// carry. Throws Refusal 1204 for a text that is too long or a missing date.
HeaderRow headerFrom(RowSet& changes, std::string_view otype, const HeaderRow* before);

// The entries that the record brings, with their stored state. Account ids stay open. Throws
// Refusal 1204 for sums with too many decimals, negative sums or rates, two currencies on a side.
std::vector<EntryChange> entriesFrom(Session& session, RowSet& changes, const OperChange& change);

// Operations that old or new pointers of the record name, ascending, each once.
std::vector<int> pointersIn(RowSet& changes);

// Ids, version, number and references of what was stored, written into the record.
void writeBack(RowSet& changes, const OperChange& change);

}  // namespace tolvex::store
