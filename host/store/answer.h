// Answers of routines: declared columns, filled row by row in their order.
//
//   constexpr ColumnSpec kColumns[] = {col::text("Account", 20), col::number("SumA")};
//   Answer answer(kColumns);
//   answer.row().text(code).lt(cents);
//   return answer.done();
//
// Sums leave the store as doubles of their exact integer, so no rounding happens on the way.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "framework/recordset.h"
#include "host/store/database.h"

namespace tolvex::store {

namespace col {
constexpr ColumnSpec text(const char* name, int size = 300) {
  return {name, FieldType::Text, size};
}
constexpr ColumnSpec number(const char* name) { return {name, FieldType::Double}; }
constexpr ColumnSpec date(const char* name) { return {name, FieldType::Date}; }
constexpr ColumnSpec integer(const char* name) { return {name, FieldType::Integer}; }
constexpr ColumnSpec small(const char* name) { return {name, FieldType::SmallInt}; }
template <std::size_t N>
constexpr ColumnSpec rows(const char* name, const ColumnSpec (&columns)[N]) {
  return {name, FieldType::Nested, 0, columns, static_cast<int>(N)};
}
}  // namespace col

// The litas and currency sums of the module from the store's whole numbers.
inline double ltOf(std::int64_t cents) { return static_cast<double>(cents) / 100; }
inline double curOf(std::int64_t tenThousandths) {
  return static_cast<double>(tenThousandths) / 10000;
}
// The code as records and debt rows carry it: three blanks for the base currency.
std::string_view blankForBase(std::string_view currency);

class Answer {
 public:
  template <std::size_t N>
  explicit Answer(const ColumnSpec (&columns)[N]) : Answer(columns, static_cast<int>(N)) {}
  Answer(const ColumnSpec* columns, int count);
  explicit Answer(RowSetPtr set);  // goes on in a set that is there

  Answer& row();  // begins the next row; the one before must be complete
  Answer& text(std::string_view value);
  Answer& textOrNull(std::string_view value);  // "": null
  Answer& lt(std::int64_t cents) { return number(ltOf(cents)); }
  Answer& cur(std::int64_t tenThousandths) { return number(curOf(tenThousandths)); }
  Answer& number(double value);
  Answer& integer(std::int64_t value);
  Answer& day(std::int64_t yyyymmdd);        // 0: null
  Answer& moment(std::string_view written);  // "yyyy-mm-dd hh:mm:ss"
  Answer& null();
  // The nested set of this column, to be filled through an Answer of its own.
  RowSetPtr nested();

  RowSetPtr set() const { return set_; }
  Variant done();  // the cursor stands on the first row

 private:
  Field& next();
  RowSetPtr set_;
  std::vector<Field> fields_;
  std::size_t column_ = 0;
};

// All rows of a statement, for orders and sums that no engine knows, such as Lithuanian names.
template <class Row, class Read>
std::vector<Row> readAll(Statement& statement, Read read) {
  std::vector<Row> rows;
  while (statement.step()) rows.push_back(read(statement));
  return rows;
}

}  // namespace tolvex::store
