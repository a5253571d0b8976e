// Record sets from small text tables, the form that dump() prints.
//
// The first line names the columns, cells are parted by "|"; "~" is empty, "-" null. All other
// text stands for itself, blanks included.
#pragma once

#include <string_view>

#include "framework/recordset.h"

namespace tolvex::test {

// Appends the lines of `table` to a set that has the named columns, as stored or as new rows.
enum class As { Stored, Added };
void fill(RowSet& rows, std::string_view table, As as = As::Stored);

// A new set; a name may carry its type, "SumA:double", "Sign:int", "DateD:date", "Bold:bool".
RowSetPtr rowsOf(std::string_view table, As as = As::Stored);

// The values of one column over the rows that the filter lets through, joined by blanks.
std::string column(RowSet& rows, std::string_view name);

}  // namespace tolvex::test
