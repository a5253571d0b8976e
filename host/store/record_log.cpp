#include "host/store/record_log.h"

#include "host/store/moments.h"
#include "host/store/sql.h"

namespace tolvex::store {

void writeRecordLog(Session& session, Action action, const RecordEntry& entry) {
  run(session.db(),
      "INSERT INTO record_log (kind, record_id, name, act, user_id, user_name, at, detail)"
      " VALUES ($1, $2, $3, $4, $5, $6, $7, $8)",
      entry.kind, entry.id, entry.name, std::string(1, static_cast<char>(action)),
      session.user().id, session.user().name, storedMoment(session.now()), entry.detail);
}

std::string changedFields(const RecordMap& map, RowSet& row) {
  std::string detail;
  if (row.State() != RowState::Changed) return detail;
  for (const FieldMap& about : map.fields) {
    if (about.isComputed) continue;
    const Field field = row[about.field];
    const std::string before = field.OriginalValue().Show(), after = field.Value().Show();
    if (before == after) continue;
    if (!detail.empty()) detail += '\n';
    detail += std::string(about.field) + ": " + before + " -> " + after;
  }
  return detail;
}

std::string lastChange(Database& db, std::string_view kind, int id) {
  auto select = bound(db,
                      "SELECT user_name, at FROM record_log WHERE kind = $1 AND record_id = $2"
                      " ORDER BY id DESC LIMIT 1",
                      kind, id);
  if (!select->step()) return "";
  return std::string(select->text(0)) + ", " + shownMoment(std::string(select->text(1)));
}

}  // namespace tolvex::store
