// The way from the working chart of accounts to the new one: each account's counterpart.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/store/database.h"

namespace tolvex::store {

struct MappedAccount {
  int id = 0, newId = 0;
  std::string code, newCode, newName;
};
// Accounts of the working plan that have a counterpart, by number.
std::vector<MappedAccount> readMapping(Database& db);

// Accounts that the books cannot be converted without: they have entries, stand in a template or
// bear a mark, and have no counterpart, or one that is a group. By number.
std::vector<std::string> withoutCounterpart(Database& db);

// Gives counterparts to the accounts of a branch (0: of the whole plan) that have none: the new
// account of the same number, else the one of the longest number that theirs begins with. Groups
// neither get nor become one. Answers how many were given.
int matchCounterparts(Database& db, int branch);

// What a conversion would do, read from the roll-ups. Turnovers are of both sides together.
struct ConversionPreview {
  int accounts = 0, targets = 0;  // with entries and a counterpart; how many counterparts they have
  std::int64_t entries = 0;
  std::int64_t turnover = 0, mapped = 0;  // in cents: of all entries; of what has a counterpart
};
ConversionPreview previewConversion(Database& db);

}  // namespace tolvex::store
