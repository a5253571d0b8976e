// What the conversion screen shows of the two plans: the list of accounts with their counterparts,
// and whether the books may be converted.
#pragma once

#include <string>
#include <vector>

#include "framework/recordset.h"
#include "platform/controls.h"
#include "platform/numbers.h"

namespace tolvex {

struct ConversionList {
  // By number, as the table gives them: the key is the account's reference; cells are its text and
  // its counterpart's. A group is bold, an account that lacks a counterpart is marked bad.
  std::vector<ui::Row> rows;
  bool mayConvert = true;  // every account that needs a counterpart has one
};

// An account with entries needs a counterpart, and so does every account of the branch below it: up
// to the next row of its own level or a higher one. Groups have none.
ConversionList conversionList(RowSet& convertingTable);

// What a conversion would do, by the store's answer on its one row: entries, accounts and how many
// they become, the turnover before and after.
std::string conversionSummary(RowSet& preview, const NumberFormat& format);
// How many accounts in use lack a counterpart, "" when none does.
std::string conversionMissing(RowSet& preview);

}  // namespace tolvex
