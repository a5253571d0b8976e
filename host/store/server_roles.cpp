#include "host/store/server_roles.h"

#include <vector>

#include "host/store/schema.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

bool isProtocol(const std::string& table) {
  return table == "oper_log" || table == "admin_log" || table == "record_log";
}

}  // namespace

void grantWork(Database& db, const std::string& role) {
  const std::string name = textFrom(db, "SELECT quote_ident($1)", role);
  const std::string schema = textFrom(db, "SELECT quote_ident(current_schema())");
  db.execute("GRANT USAGE ON SCHEMA " + schema + " TO " + name);
  for (const std::string& table : allTables()) {
    // What the role had before goes first, so that no older and wider grant stays.
    db.execute("REVOKE ALL ON " + table + " FROM " + name);
    const char* rights = isProtocol(table) ? "SELECT, INSERT" : "SELECT, INSERT, UPDATE, DELETE";
    db.execute("GRANT " + std::string(rights) + " ON " + table + " TO " + name);
  }
}

void grantAnew(Database& db) {
  if (db.engine() != Engine::Postgres) return;
  std::vector<std::string> roles;
  auto granted = db.prepare(
      "SELECT DISTINCT grantee FROM information_schema.role_table_grants"
      " WHERE table_schema = current_schema() AND table_name = 'oper'"
      " AND privilege_type = 'INSERT' AND grantee <> grantor");
  while (granted->step()) roles.emplace_back(granted->text(0));
  for (const std::string& role : roles) grantWork(db, role);
}

}  // namespace tolvex::store
