// Records: how each kind of object is loaded, created, saved, deleted and listed.
//
// One handler a family, in a table by kind. Handlers run inside the session's transaction and throw
// Refusal; the session rolls back.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/recordset.h"
#include "host/store/session.h"

namespace tolvex::store {

class RecordHandler {
 public:
  virtual ~RecordHandler() = default;
  // Null when there is no such record.
  virtual RowSetPtr load(Session& session, std::string_view kind, int id) const = 0;
  // The component whose view flag a user needs to read that record; "" where everybody may, or
  // where loading asks by itself.
  virtual std::string guard(std::string_view, int) const { return {}; }
  virtual RowSetPtr create(Session& session, std::string_view kind,
                           std::string_view otype) const = 0;
  // `changes` is RowSet::Changes of the header, never without its row; `second` and `third` are
  // those of the further sets, or null. Writes what is new (ids, version, number) into `changes`;
  // the session copies it back and accepts after the commit. Returns the id.
  virtual int save(Session& session, std::string_view kind, std::string_view otype, RowSet& changes,
                   RowSet* second, RowSet* third) const = 0;
  virtual void erase(Session& session, std::string_view kind, int id) const = 0;
  // Arguments as listArguments gives them.
  virtual RowSetPtr list(Session& session, std::string_view kind,
                         std::span<const std::string> arguments) const = 0;
};

// Null for a kind that the store does not keep.
const RecordHandler* recordHandler(std::string_view kind);

// A single record for the user of the session. Throws 1203 without the right to view it, 16 when it
// does not exist, 1206 for a kind that the store does not keep.
RowSetPtr readRecord(Session& session, std::string_view kind, int id);

// What a list is asked for, one text each. `first` may be a whole parameter text of its own
// ("'','filter'", "'from','to','parent','filter'"); then the others are not used.
std::vector<std::string> listArguments(std::string_view first, std::string_view second,
                                       std::string_view third);

// The columns that every list begins with.
inline constexpr ColumnSpec kListColumns[] = {
    {"OIDR", FieldType::Text},       {"OID", FieldType::Text},    {"ParentID", FieldType::Integer},
    {"ParentOIDR", FieldType::Text}, {"OType", FieldType::Text},  {"GroupFlag", FieldType::Integer},
    {"Name", FieldType::Text},       {"Preview", FieldType::Text}};

// The first argument that says something.
std::string filterIn(std::span<const std::string> arguments);
// Narrows a list by a filter text. A list that is longer than a tree can show is refused (1207).
RowSetPtr finishList(RowSetPtr rows, std::string_view filter);
inline constexpr std::size_t kLongestList = 100000;
void refuseLongList(std::size_t rows);

// A part of a list in the order of its ids: at most `rows` that follow the id `after`.
struct ListPage {
  int after = 0;
  int rows = 0;
};
// From "page:after;rows"; nothing when the argument is no page, refused (1207) when it is a bad
// one.
std::optional<ListPage> readListPage(std::string_view argument);

}  // namespace tolvex::store
