// The check before every access to the current row, inline in the files of the cursor and its
// fields.
#pragma once

#include "framework/recordset.h"
#include "framework/table.h"

namespace tolvex {

inline bool RowSet::hasRow() const { return row_ < table_->size() && table_->alive(row_); }

inline Table& RowSet::current() const {
  if (!hasRow()) failNoRow();
  return *table_;
}

}  // namespace tolvex
