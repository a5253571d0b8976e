// The record of a financial operation: rows of the store as the screens read them.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "framework/recordset.h"
#include "host/store/oper_rows.h"
#include "host/store/session.h"

namespace tolvex::store {

struct RequiredRow {
  std::string lineGuid, foid;
  int sign = 1;
};

// Required addressees by template line, read once each.
class RequiredAddressees {
 public:
  explicit RequiredAddressees(Database& db) : db_(db) {}
  const std::vector<RequiredRow>& of(int templateLineId);  // Refusal 547 for a line that is gone

 private:
  Database& db_;
  std::map<int, std::vector<RequiredRow>> lines_;
};

// Appends the entry to a set of the columns kBR.
void loadEntry(RowSet& BR, const EntryRow& entry, const std::vector<RequiredRow>& required);

// The record of an operation; of one that does not exist, a row whose OIDR and FOIDR are null,
// which is how a deleted operation is known. Refusal 1203 without the right to view its group.
RowSetPtr loadOperation(Session& session, int id);
RowSetPtr createOperation(std::string_view kind, std::string_view otype);

// "CBROperRights5"
std::string operComponent(int groupId);

}  // namespace tolvex::store
