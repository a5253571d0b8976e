// Maps of records: which column keeps which field, so that simple kinds need no code of their own.
//
// A map names a table, its fields, nested sets and referrers; MappedRecords loads, creates, saves,
// deletes and lists by it. What a kind does beyond that stands in its two hooks.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "framework/recordset.h"
#include "host/store/session.h"

namespace tolvex::store {

// What an absent value is stored as, and how it is read.
enum class Absent {
  Null,        // null, and back
  Zero,        // "" or 0: the column takes no null
  ZeroIsNull,  // null, and back; so is 0, an id that points nowhere
  NullIsZero   // as ZeroIsNull, but read as 0 or ""
};

// One field. Made by the functions below; the calls behind them may follow in any order.
struct FieldMap {
  const char* field;
  FieldType type;
  const char* column;             // of a computed field: an expression over the table, called t
  int size = 0;                   // text: greatest number of characters
  const char* initial = nullptr;  // of a new record
  Absent absent = Absent::Null;
  bool isNeeded = false, isComputed = false, isKey = false;
  int scale = 0;                 // a number kept as an integer of so many decimals
  const char* readAs = nullptr;  // expression in place of the column
  const char* lookup = nullptr;  // query for the stored id: $1 the field's text, $2 the record's id
  const char* unbound = "";      // text that is stored as null without a look

  constexpr FieldMap preset(const char* value) const { return with(&FieldMap::initial, value); }
  constexpr FieldMap needed() const { return with(&FieldMap::isNeeded, true); }
  constexpr FieldMap zero() const { return with(&FieldMap::absent, Absent::Zero); }
  constexpr FieldMap zeroIsNull() const { return with(&FieldMap::absent, Absent::ZeroIsNull); }
  constexpr FieldMap nullIsZero() const { return with(&FieldMap::absent, Absent::NullIsZero); }
  constexpr FieldMap decimals(int count) const { return with(&FieldMap::scale, count); }
  constexpr FieldMap read(const char* expression) const {
    return with(&FieldMap::readAs, expression);
  }
  constexpr FieldMap find(const char* query, const char* none = "") const {
    return with(&FieldMap::lookup, query).with(&FieldMap::unbound, none);
  }

 private:
  template <class Value>
  constexpr FieldMap with(Value FieldMap::*member, Value value) const {
    FieldMap copy = *this;
    copy.*member = value;
    return copy;
  }
  friend constexpr FieldMap computed(const char*, FieldType, const char*);
  friend constexpr FieldMap key(const char*, const char*);
};

constexpr FieldMap text(const char* field, const char* column, int size) {
  return {field, FieldType::Text, column, size};
}
constexpr FieldMap number(const char* field, const char* column) {
  return {field, FieldType::Integer, column};
}
constexpr FieldMap small(const char* field, const char* column) {
  return {field, FieldType::SmallInt, column};
}
constexpr FieldMap real(const char* field, const char* column) {
  return {field, FieldType::Double, column};
}
constexpr FieldMap day(const char* field, const char* column) {
  return {field, FieldType::Date, column};
}
// Read only; ignored on save.
constexpr FieldMap computed(const char* field, FieldType type, const char* expression) {
  return FieldMap{field, type, expression}.with(&FieldMap::isComputed, true);
}
// The key of a row: a fresh one is given where the field is blank.
constexpr FieldMap key(const char* field, const char* column) {
  return FieldMap{field, FieldType::Text, column, 40}.with(&FieldMap::isKey, true).needed();
}

// A set of rows that belong to a record (or to a row of another set).
struct ChildMap {
  const char* field;  // the nested set; nullptr: the second set of the save
  const char* table;
  const char* owned;        // condition over t, with the owner's id as $1
  const char* ownerColumn;  // takes the owner's id; nullptr: a lookup of a field finds the place
  std::span<const FieldMap> fields;
  std::span<const ChildMap> children = {};
};

// Who else may name a record. The query takes the id (or the reference) and gives a name.
struct Referrer {
  const char* text;  // shown before the name
  const char* query;
  bool byReference = false;
};

struct RecordMap;

// A save under way, for the hooks of a kind.
struct Saving {
  Session& session;
  const RecordMap& map;
  std::string_view kind;
  RowSet& row;  // on the header row
  RowSet* second;
  int id;  // 0 before a new record is written
  bool isNew;
};

struct RecordMap {
  const char* table;
  std::span<const FieldMap> fields;
  std::span<const ChildMap> children = {};
  std::span<const Referrer> referrers = {};
  std::span<const FieldMap> listFields = {};  // columns of the list beyond the common ones
  const char* component = "";                 // of rights; "" asks for none
  bool componentByRecord = false;             // the record's id is added to the component
  bool tree = false;                          // parent_id and group_flag
  bool versioned = true;                      // row_version
  const char* preview = "t.name";
  const char* name = "t.name";
  const char* where = "";             // condition over t that every record of the map meets
  const char* fixedColumn = nullptr;  // given `fixedValue` in a new record, to meet `where`
  int fixedValue = 0;
  const char* kindColumn = nullptr;   // keeps the exact kind; nullptr: the table is of one kind
  bool idsByKind = false;             // the key is kind and id, and ids are counted for each kind
  const char* kindOfRow = nullptr;    // expression; nullptr: the kind that was asked
  const char* kindOfGroup = nullptr;  // of references to the parent; nullptr: the row's own kind
  const char* listType = nullptr;     // expression for OType in lists
  const char* order = "t.id";
  void (*check)(const Saving&) = nullptr;               // before anything is written
  void (*stored)(const Saving&) = nullptr;              // after the record and its sets
  void (*erasing)(Session& session, int id) = nullptr;  // before it goes: what goes with it
};

}  // namespace tolvex::store
