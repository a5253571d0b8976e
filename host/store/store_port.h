// StorePort: all that the program asks of the books, in seven calls.
//
// The real store (session.h), the trace and the faulty store of tests implement it. Every call is
// one transaction over one snapshot; a failing call changes nothing and says why in Code and Text
// (codes: docs/internals/store.md). Nothing throws across this interface.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "framework/recordset.h"
#include "framework/results.h"
#include "platform/objects.h"

namespace tolvex::store {

struct [[nodiscard]] SaveOutcome {
  std::int32_t Code = kDone;
  std::string Text;
  std::string reference;  // of the stored record, on success
};

class StorePort {
 public:
  virtual ~StorePort() = default;

  // A routine: `kind` is the kind whose business object was asked ("O0201500"); `method` may carry
  // a kind of its own ("DO0200400_GetVXObject"). 1206: unknown routine; 1207: wrong parameters.
  virtual HostResult call(std::string_view kind, std::string_view method,
                          std::string_view parameters) = 0;

  // The record of a reference: Data is a set with one header row and its nested sets.
  virtual HostResult load(std::string_view kind, std::string_view reference) = 0;
  // The record of a new object: one row, added, all columns empty but the defaults, nested sets
  // with their columns.
  virtual HostResult create(std::string_view kind, std::string_view otype) = 0;
  // Stores what changed in `header` (see RowSet::Changes) and in up to two further sets. On success
  // ids, reference, version and number are written into the given rows and their changes are
  // accepted; on failure they are as they were.
  virtual SaveOutcome save(std::string_view kind, std::string_view otype, RowSet& header,
                           RowSet* second, RowSet* third) = 0;
  // Code: 0 deleted, 16 gone, 32 no right, 547 still referred to, …
  virtual HostResult erase(std::string_view kind, std::string_view reference) = 0;
  // Rows for the host's trees, lists and pickers.
  virtual HostResult list(std::string_view kind, std::string_view first, std::string_view second,
                          std::string_view third) = 0;
};

// The door of CallBO for one kind.
std::shared_ptr<BusinessObject> businessObject(StorePort& port, std::string kind);

}  // namespace tolvex::store
