// The table of routines: every name that CallBO may carry, each answered by one function of the
// same name. A name that is not in the table is answered 1206, arguments that do not fit its
// declared parameters 1207; both before any work.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/recordset.h"
#include "host/store/session.h"

namespace tolvex::store {

// One argument of a routine after parsing: text, number, or left out.
class Argument {
 public:
  enum class Kind { Absent, Text, Number };
  Argument() = default;
  static Argument text(std::string value);
  static Argument number(double value, std::string asWritten);
  Kind kind() const { return kind_; }
  bool absent() const { return kind_ == Kind::Absent; }
  const std::string& str() const { return text_; }  // a number as it was written
  int integer() const;                              // absent: 0
  double real() const { return number_; }
  int day() const;  // yyyymmdd; absent or "": 0
  // What a reference or a number names, quoted or bare; nothing for any other text.
  std::optional<int> id() const;

 private:
  Kind kind_ = Kind::Absent;
  std::string text_;
  double number_ = 0;
};

// Splits a parameter text. "None", "" and blanks are no arguments; arguments are parted by commas;
// a quoted text ends at the first quote that a comma or the end follows. A bare token that is a
// number is one, any other bare token is text. Throws Refusal 1207 for a text that does not part.
std::vector<Argument> parseParameters(std::string_view text);

// Declared parameters, one letter each: t text, n number, i whole number, d date, r reference
// (text, bare or quoted, or a number); capital letters and what follows them are optional; "*" any
// number.
struct Routine {
  std::string_view kinds;       // object codes that answer it, joined by blanks
  std::string_view name;        // without the "DO…_" in front
  std::string_view parameters;  // "tdtI"
  bool writes;                  // needs a write transaction
  Variant (*answer)(Session& session, const std::vector<Argument>& arguments,
                    std::string_view kind);
  bool alone = false;  // needs the books to itself
};

// Of all files routines_*.cpp, joined in routine_table.cpp.
const std::vector<Routine>& routineTable();
// Null when there is none. Kind and name without regard to case; narrow codes ("O0201504") find
// the routine of their family.
const Routine* findRoutine(std::string_view kind, std::string_view method);
// The family whose table and routines a kind shares: "O0201504" -> "O0201500".
std::string_view familyOf(std::string_view kind);

// The arguments of a call, as many as the routine declares (those left out are absent). Throws
// Refusal 1207, which names the routine and shows the parameters, when they do not fit.
std::vector<Argument> argumentsFor(const Routine& routine, std::string_view kind,
                                   std::string_view parameters);

// Answer of a query as a set: makes a set of the columns, then a loaded row for each row of the
// statement, column by column. A Double column with a size is kept as an integer of that
// many decimals (2: cents); a Date column as yyyymmdd.
RowSetPtr rowsOf(Statement& statement, const ColumnSpec* columns, int count);
template <std::size_t N>
RowSetPtr rowsOf(Statement& statement, const ColumnSpec (&columns)[N]) {
  return rowsOf(statement, columns, static_cast<int>(N));
}
// The value of one column of a statement's row, by the same rule.
Variant valueOf(const Statement& statement, int column, const ColumnSpec& spec);

}  // namespace tolvex::store
