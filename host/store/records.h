// Records: how each kind of object is loaded, created, saved, deleted and listed.
//
// One handler a family, in a table by kind. Handlers run inside the session's transaction and throw
// Refusal; the session rolls back.
#pragma once

#include <string_view>

#include "framework/recordset.h"
#include "host/store/session.h"

namespace tolvex::store {

class RecordHandler {
 public:
  virtual ~RecordHandler() = default;
  virtual RowSetPtr load(Session& session, std::string_view kind, int id) const = 0;
  virtual RowSetPtr create(Session& session, std::string_view kind, std::string_view otype) const = 0;
  // `changes` is RowSet::Changes of the header. Writes what is new (ids, version, number) into
  // `changes`; the session copies it back and accepts after the commit. Returns the id.
  virtual int save(Session& session, std::string_view kind, std::string_view otype, RowSet& changes,
                   RowSet* second, RowSet* third) const = 0;
  virtual void erase(Session& session, std::string_view kind, int id) const = 0;
  virtual RowSetPtr list(Session& session, std::string_view kind, std::string_view first,
                         std::string_view second, std::string_view third) const = 0;
};

// Null for a kind that the store does not keep.
const RecordHandler* recordHandler(std::string_view kind);

}  // namespace tolvex::store
