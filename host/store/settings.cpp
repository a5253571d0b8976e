#include "host/store/settings.h"

#include "host/store/sql.h"

namespace tolvex::store {

namespace {
constexpr int kForAll = 0;
}

std::optional<std::string> settingOf(Session& session, std::string_view object,
                                     std::string_view name) {
  auto stored = bound(session.db(),
                      "SELECT value FROM user_setting WHERE user_id IN ($1, $2)"
                      " AND object_code = $3 AND name = $4 ORDER BY user_id DESC",
                      session.user().id, kForAll, object, name);
  if (!stored->step()) return std::nullopt;
  return std::string(stored->text(0));
}

void storeSetting(Session& session, std::string_view object, std::string_view name,
                  std::string_view value) {
  if (session.user().id == kForAll) refuseSave();  // he went with a restore
  run(session.db(),
      "INSERT INTO user_setting (user_id, object_code, name, value) VALUES ($1, $2, $3, $4)"
      " ON CONFLICT (user_id, object_code, name) DO UPDATE SET value = excluded.value",
      session.user().id, object, name, value);
}

}  // namespace tolvex::store
