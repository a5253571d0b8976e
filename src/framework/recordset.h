// RowSet: an ordered table with named, typed fields, one current row, a filter and a sort.
//
// All data of the program travels in record sets: answers of the store, records of objects with
// their nested child sets, and sets that a screen makes for itself. The table is shared; a RowSet
// is a cursor on it, and Clone makes a second one in constant time.
//
// Field values: empty (never assigned in a row added here), null (stored without a value), or a
// value of the column's type. Column names and text comparisons ignore case.
//
// An assignment makes a stored row a changed one, also when it gives the same value again.
//
// Misuse throws RowSetError and changes nothing: a name that is no column, a field with no current
// row, a filter that does not parse, a closed set, moving past an end a second time.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/results.h"
#include "framework/variant.h"

namespace tolvex {

enum class FieldType : std::int16_t {
  SmallInt = 2,
  Integer = 3,
  Double = 5,
  Date = 7,
  Boolean = 11,
  Guid = 72,
  Nested = 136,
  Text = 200,
};

enum class RowState : std::uint8_t { Unchanged, Added, Changed, Deleted };

// One column as a record declares it. Columns of a record are declared once, in a constant table,
// from which sets in memory, the store and dumps are made.
struct ColumnSpec {
  const char* name;
  FieldType type;
  int size = 0;  // text: greatest length in characters (declared, not enforced)
  const ColumnSpec* nested = nullptr;  // Nested: the columns of the child set
  int nestedCount = 0;
};

class Table;
class View;

// A field of the current row; follows the cursor, so fetch it once and use it in the whole loop.
// Valid as long as its RowSet lives.
class Field {
 public:
  Field(RowSet& set, int column) : set_(&set), column_(column) {}
  Field(const Field&) = default;
  Field& operator=(const Field&) = delete;  // neither copies the value nor follows: say which

  Variant Value() const;
  void SetValue(const Variant& value);
  double Number() const;          // absent reads as 0
  std::string_view Text() const;  // absent reads as ""; valid as long as the set lives
  bool IsEmpty() const;
  bool IsNull() const;
  bool IsAbsent() const { return IsEmpty() || IsNull(); }
  RowSetPtr Rows() const;         // nested set of the current row, the same object every time
  Variant OriginalValue() const;  // as last read or stored; empty on an added row

  const std::string& Name() const;
  FieldType Type() const;
  int DefinedSize() const;
  int Attributes() const;
  int NumericScale() const;
  void SetNumericScale(int scale);

  Field& operator=(const Variant& value);
  Field& operator=(double value);
  Field& operator=(std::string_view value);
  Field& operator=(const char* value) { return *this = std::string_view(value); }
  Field& operator=(const std::string& value) { return *this = std::string_view(value); }
  template <std::integral Whole>
  Field& operator=(Whole value) {
    return *this = static_cast<double>(value);
  }

 private:
  RowSet* set_;
  int column_;
};

// The columns of a set, in order.
class FieldList {
 public:
  explicit FieldList(RowSet& set) : set_(&set) {}
  // Declares a column of a set that is not open yet.
  void Append(std::string_view name, FieldType type, int size = 0, int attributes = -1);
  // Declares a nested set with its columns.
  void AppendNested(std::string_view name, const ColumnSpec* columns, int count);
  std::size_t size() const;
  Field operator[](std::size_t index) const;
  Field operator[](std::string_view name) const;
  bool contains(std::string_view name) const;

 private:
  RowSet* set_;
};

class RowSet : public Object, public std::enable_shared_from_this<RowSet> {
 public:
  static RowSetPtr make();                                      // no columns, not open
  static RowSetPtr make(const ColumnSpec* columns, int count);  // with columns and open
  template <std::size_t N>
  static RowSetPtr make(const ColumnSpec (&columns)[N]) {
    return make(columns, static_cast<int>(N));
  }
  ~RowSet() override;

  FieldList& Fields() { return fields_; }
  Field operator[](std::string_view name);  // Fields()[name]

  void Open();
  void Close();
  bool IsOpen() const;

  void AddNew();                // appends a row and makes it current, even under a filter
  void Update();                // assignments act at once; kept for the contract
  void Delete(int affect = 1);  // the current row; the place is kept until the next move
  void MoveFirst();             // no visible rows: no error, Eof and Bof both true
  void MoveLast();
  void MoveNext();  // past the end already: NoCurrentRow
  void MovePrevious();
  void Move(std::ptrdiff_t rows);
  bool Eof() const;
  bool Bof() const;
  bool HasCurrent() const;          // a field may be read
  std::size_t RecordCount() const;  // rows that the filter lets through, in constant time

  // "" removes the filter. Leaves the cursor on the first visible row. Filters are live: a row
  // edited out of it stays current but is not counted. On BadFilter nothing changes.
  void SetFilter(std::string_view filter);
  const std::string& Filter() const;
  // "Name" or "Name DESC", joined by commas; stable, absent values first, texts in Lithuanian
  // order. Taken at this moment: later edits do not move rows. "" gives back the order of adding.
  void SetSort(std::string_view sort);
  const std::string& Sort() const;

  Variant Bookmark() const;
  void SetBookmark(const Variant& bookmark);  // of a deleted row: BadBookmark
  RowSetPtr Clone(int lock = -1) const;       // same rows, no filter, no sort, first row
  // The same columns (nested ones too), no rows, open.
  RowSetPtr EmptyCopy() const;

  void SetMarshalOptions(int options);  // 1: only changed rows travel to the store
  int MarshalOptions() const;
  // Undoes adds, edits and deletes since the last read or accepted save: in a nested set those of
  // this parent row only, children included.
  void CancelBatch();

  // The store's side. LoadRow appends a stored row: state Unchanged, cells null until assigned,
  // and the assignments that follow before the next move count as loading.
  void LoadRow();
  // What is in the set now is what is stored: states Unchanged, originals renewed, deleted rows
  // gone; nested sets too.
  void AcceptChanges();
  bool HasChanges() const;  // here or in a nested set
  RowState State() const;   // of the current row
  // A set of its own with the rows that are new, changed or deleted, or that have such children:
  // all cells with their original values, deleted rows visible, State() as it was. Bookmarks are
  // those of the rows they come from, so that ids can be written back. Filters have no influence.
  RowSetPtr Changes() const;

 private:
  friend class Field;
  friend class FieldList;
  friend class KeepPlace;
  struct Key {};  // keeps the constructor to the makers below

 public:
  RowSet(Key, std::shared_ptr<Table> table);

 private:
  static constexpr std::uint32_t kBeforeFirst = 0xFFFFFFFE;
  static constexpr std::uint32_t kAfterLast = 0xFFFFFFFF;

  // As Eof just after a move, which never stops on a hidden row.
  bool isPastEnd() const { return row_ == kAfterLast; }
  template <class Body>
  friend void ForEachRow(RowSet& rows, Body body);

  static RowSetPtr over(std::shared_ptr<Table> table);
  Table& open() const;  // throws NotOpen
  bool hasRow() const;
  Table& current() const;  // throws NoCurrentRow
  bool noneVisible() const;
  [[noreturn]] void failNoRow() const;
  [[noreturn]] void failNoColumn(std::string_view name) const;
  View& view();
  void place(std::uint32_t row);
  std::uint32_t nextVisible(std::uint32_t row) const;
  std::uint32_t previousVisible(std::uint32_t row) const;
  RowSetPtr child(std::uint32_t row, int column) const;

  std::shared_ptr<Table> table_;
  std::unique_ptr<View> view_;  // only while there is a filter or a sort
  std::uint32_t row_ = kAfterLast;
  std::int16_t marshal_ = 0;
  bool loading_ = false;  // assignments fill a stored row and are no edits
  FieldList fields_;
};

// Walks the rows that the filter lets through, from the first; the only loop that callers write.
// `body` may edit and delete the current row; it must not move the cursor.
template <class Body>
void ForEachRow(RowSet& rows, Body body) {
  for (rows.MoveFirst(); !rows.isPastEnd(); rows.MoveNext()) body(rows);
}

// Remembers filter and place of a set and restores them at the end of the scope.
class KeepPlace {
 public:
  explicit KeepPlace(RowSet& rows);
  ~KeepPlace();
  KeepPlace(const KeepPlace&) = delete;
  KeepPlace& operator=(const KeepPlace&) = delete;

 private:
  RowSet& rows_;
  std::string filter_;
  std::uint32_t row_;
};

// A set as text for tests, traces and the debugger: a line of names, a line a row, cells parted by
// "|", nested sets that have rows indented below their row; empty prints as "~", null as "-". All
// rows in the order of adding, whatever the filter and sort; no cursor moves.
std::string dump(RowSet& rows);

}  // namespace tolvex
