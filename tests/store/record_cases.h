// Valid records of every simple kind, filled at random, for properties that hold for all of them.
#pragma once

#include <map>
#include <random>
#include <string>
#include <vector>

#include "host/store/session.h"

namespace tolvex::store {

struct RecordCase {
  const char* kind;
  const char* otype = "";
  std::map<std::string, Variant> fixed;  // fields whose values must fit others
};
const std::vector<RecordCase>& recordCases();

// Fills the current row: fixed fields as told, texts with random Lithuanian letters up to their
// size, small numbers; identity and computed fields are left alone. Returns what was put in.
std::map<std::string, Variant> fill(RowSet& row, const RecordCase& about, std::mt19937& random);

}  // namespace tolvex::store
