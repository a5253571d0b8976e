// MappedRecords: a record handler that does everything by a RecordMap.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/store/record_map.h"
#include "host/store/records.h"

namespace tolvex::store {

// The columns of a map's record: identity, fields, nested sets.
struct RecordShape {
  std::vector<ColumnSpec> columns;
  std::vector<std::unique_ptr<RecordShape>> nested;
};

class MappedRecords : public RecordHandler {
 public:
  explicit MappedRecords(const RecordMap& map);

  RowSetPtr load(Session& session, std::string_view kind, int id) const override;
  std::string guard(std::string_view kind, int id) const override;
  RowSetPtr create(Session& session, std::string_view kind, std::string_view otype) const override;
  int save(Session& session, std::string_view kind, std::string_view otype, RowSet& changes,
           RowSet* second, RowSet* third) const override;
  void erase(Session& session, std::string_view kind, int id) const override;
  RowSetPtr list(Session& session, std::string_view kind,
                 std::span<const std::string> arguments) const override;

 protected:
  // Rows of the list that meet a condition over t, with one whole number as $1 where it has one.
  RowSetPtr listWhere(Session& session, std::string_view kind, const std::string& condition,
                      const int* argument) const;
  const RecordMap& map() const { return map_; }

 private:
  RowSetPtr emptyRecord() const;

  const RecordMap& map_;
  RecordShape shape_;
  std::vector<ColumnSpec> listColumns_;
};

}  // namespace tolvex::store
