// The protocol of records other than operations: who made, changed and deleted which, and from
// what to what. Written inside the save and never changed afterwards; a row outlives its record.
#pragma once

#include <string>
#include <string_view>

#include "host/store/protocol.h"
#include "host/store/record_map.h"
#include "host/store/session.h"

namespace tolvex::store {

struct RecordEntry {
  std::string_view kind;  // exact
  int id = 0;
  std::string name;
  std::string detail = {};  // lines "field: old -> new"
};
void writeRecordLog(Session& session, Action action, const RecordEntry& entry);

// What a save changes in the fields of the header, as it was sent.
std::string changedFields(const RecordMap& map, RowSet& row);

// Who changed the record last, "name, yyyy.mm.dd hh:mm:ss"; "" when nobody did.
std::string lastChange(Database& db, std::string_view kind, int id);

}  // namespace tolvex::store
