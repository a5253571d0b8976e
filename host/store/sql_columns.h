// Lists of columns for statements that write a row: names and marks of an INSERT, pairs of an
// UPDATE, numbered in the order in which the values are bound.
#pragma once

#include <string>
#include <string_view>

namespace tolvex::store {

struct SqlColumns {
  std::string names, marks, pairs;
  int count = 0;  // of the last parameter

  void add(std::string_view column) {
    const std::string mark = "$" + std::to_string(++count);
    const char* comma = names.empty() ? "" : ", ";
    names.append(comma).append(column);
    marks.append(comma).append(mark);
    pairs.append(comma).append(column).append(" = ").append(mark);
  }
  std::string insertInto(std::string_view table) const {
    return "INSERT INTO " + std::string(table) + " (" + names + ") VALUES (" + marks +
           ") RETURNING id";
  }
};

}  // namespace tolvex::store
