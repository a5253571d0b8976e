// The order of rows by one or more columns.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "framework/table.h"

namespace tolvex {

struct SortKey {
  int column;
  bool descending;
};

// "Name" or "Name DESC", joined by commas. Throws RowSetError (UnknownColumn, BadFilter).
std::vector<SortKey> parseSort(std::string_view sort, const Schema& schema);

// All places of the table, dead ones too, in the order of the keys; equal rows stay as they were.
// Absent values are the lowest; texts stand in Lithuanian order without case.
std::vector<std::uint32_t> sortedPlaces(const Table& table, const std::vector<SortKey>& keys);

}  // namespace tolvex
