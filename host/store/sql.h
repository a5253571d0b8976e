// Short forms for statements that are run once, or asked for one value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/store/database.h"

namespace tolvex::store {

template <class... Values>
StatementLease bound(Database& db, std::string_view sql, const Values&... values) {
  StatementLease statement = db.prepare(sql);
  int index = 0;
  (statement->bind(++index, values), ...);
  return statement;
}

// Rows changed.
template <class... Values>
int run(Database& db, std::string_view sql, const Values&... values) {
  return bound(db, sql, values...)->run();
}

template <class... Values>
bool anyRow(Database& db, std::string_view sql, const Values&... values) {
  return bound(db, sql, values...)->step();
}

// The first column of the first row; nothing when there is no row or it is null.
template <class... Values>
std::optional<std::int64_t> integerFrom(Database& db, std::string_view sql,
                                        const Values&... values) {
  auto statement = bound(db, sql, values...);
  if (!statement->step() || statement->isNull(0)) return std::nullopt;
  return statement->integer(0);
}

template <class... Values>
std::string textFrom(Database& db, std::string_view sql, const Values&... values) {
  auto statement = bound(db, sql, values...);
  return statement->step() ? std::string(statement->text(0)) : std::string();
}

// The id that an "INSERT … RETURNING id" gives; ready for the next row.
inline int insertedId(Statement& insert) {
  if (!insert.step()) throw DatabaseError(DatabaseError::Kind::Other, "insert gave no id");
  const int id = insert.whole(0);
  insert.reset();
  return id;
}
template <class... Values>
int insertedId(Database& db, std::string_view sql, const Values&... values) {
  return insertedId(*bound(db, sql, values...));
}

}  // namespace tolvex::store
