#include "host/store/rights.h"

#include <algorithm>
#include <set>
#include <vector>

#include "framework/text.h"
#include "host/store/admin_log.h"
#include "host/store/record_map.h"
#include "host/store/records.h"
#include "host/store/routine_table.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kRights[] = {
    {"Component", FieldType::Text, 60}, {"Parent", FieldType::Text, 60},
    {"Kind", FieldType::Integer},       {"Caption", FieldType::Text, 300},
    {"Granted", FieldType::SmallInt},   {"View", FieldType::SmallInt},
    {"Delete", FieldType::SmallInt},    {"Edit", FieldType::SmallInt},
    {"Create", FieldType::SmallInt},    {"Admin", FieldType::SmallInt}};

constexpr const char* kFlagFields[] = {"View", "Delete", "Edit", "Create", "Admin"};

// Components of groups bear the group's name of today, and go with it.
constexpr const char* kRoleRights =
    "SELECT c.component, c.parent, c.kind,"
    " CASE WHEN g.id IS NULL THEN c.caption ELSE g.name END,"
    " CASE WHEN r.role_id IS NULL THEN 0 ELSE 1 END, r.can_view, r.can_delete, r.can_edit,"
    " r.can_create, r.can_admin"
    " FROM right_component c"
    " LEFT JOIN right_grant r ON r.component = c.component AND r.role_id = $1"
    " LEFT JOIN oper_group g ON c.component = c.parent || CAST(g.id AS VARCHAR(12))"
    " AND c.parent IN ('CBROperRights', 'CBROperGroupRights')"
    " WHERE c.parent NOT IN ('CBROperRights', 'CBROperGroupRights') OR g.id IS NOT NULL";

struct RightRow {
  std::string component, parent, caption;
  int kind = 0;
  bool granted = false;
  int flags[5] = {};
};

std::vector<RightRow> readRights(Database& db, int roleId) {
  std::vector<RightRow> rows;
  auto query = bound(db, kRoleRights, roleId);
  while (query->step()) {
    RightRow& row = rows.emplace_back();
    row.component = query->text(0);
    row.parent = query->text(1);
    row.kind = query->whole(2);
    row.caption = query->text(3);
    row.granted = query->integer(4) != 0;
    for (int i = 0; i < 5; ++i) row.flags[i] = query->whole(5 + i);
  }
  // What stands below nothing known stands at the top: a right must never be out of reach.
  std::set<std::string> known;
  for (const RightRow& row : rows) known.insert(row.component);
  for (RightRow& row : rows) {
    if (!known.contains(row.parent)) row.parent.clear();
  }
  return rows;
}

// Parents before what stands below them, brothers by name.
void appendBelow(const std::vector<RightRow>& from, const std::string& parent,
                 std::vector<RightRow>& to) {
  std::vector<RightRow> level;
  for (const RightRow& row : from) {
    if (row.parent == parent) level.push_back(row);
  }
  std::sort(level.begin(), level.end(), [](const RightRow& a, const RightRow& b) {
    const int order = compareLithuanian(a.caption, b.caption);
    return order != 0 ? order < 0 : a.component < b.component;
  });
  for (const RightRow& row : level) {
    to.push_back(row);
    appendBelow(from, row.component, to);
  }
}

// 'role' (0: one that is not stored yet): every component in the order of the tree, with what the
// role is granted of it. A component that is not granted by itself has Granted 0.
Variant GetRoleRights(Session& session, const Arguments& arguments, std::string_view) {
  if (!session.rights(kAdministration).view) refuseView();
  std::vector<RightRow> ordered;
  appendBelow(readRights(session.db(), arguments[0].integer()), "", ordered);
  const RowSetPtr set = RowSet::make(kRights);
  RowSet& rows = *set;
  for (const RightRow& right : ordered) {
    rows.LoadRow();
    rows["Component"] = right.component;
    rows["Parent"] = right.parent;
    rows["Kind"] = Variant(right.kind);
    rows["Caption"] = right.caption;
    rows["Granted"] = Variant(int{right.granted});
    for (int i = 0; i < 5; ++i) rows[kFlagFields[i]] = Variant(right.flags[i]);
  }
  if (rows.RecordCount() > 0) rows.MoveFirst();
  return set;
}

constexpr Routine kRoutines[] = {{"O0000830", "GetRoleRights", "i", false, GetRoleRights}};

std::string flagLetters(bool granted, const int (&flags)[5]) {
  if (!granted) return "paveldima";
  std::string letters;
  for (int i = 0; i < 5; ++i) letters += flags[i] != 0 ? "PNKSA"[i] : '-';
  return letters;
}

RightRow storedGrant(Database& db, int roleId, const std::string& component) {
  RightRow row;
  row.component = component;
  auto query = bound(db,
                     "SELECT c.caption, r.role_id, r.can_view, r.can_delete, r.can_edit,"
                     " r.can_create, r.can_admin FROM right_component c"
                     " LEFT JOIN right_grant r ON r.component = c.component AND r.role_id = $2"
                     " WHERE c.component = $1",
                     component, roleId);
  if (!query->step()) throw Refusal(kReferred, "Tokios teisės nebėra: " + component);
  row.caption = query->text(0);
  row.granted = !query->isNull(1);
  for (int i = 0; i < 5; ++i) row.flags[i] = query->whole(2 + i);
  return row;
}

void grant(Database& db, int roleId, const std::string& component, const int (&flags)[5]) {
  run(db,
      "INSERT INTO right_grant (role_id, component, can_view, can_delete, can_edit, can_create,"
      " can_admin) VALUES ($1, $2, $3, $4, $5, $6, $7) ON CONFLICT (role_id, component) DO UPDATE"
      " SET can_view = excluded.can_view, can_delete = excluded.can_delete,"
      " can_edit = excluded.can_edit, can_create = excluded.can_create,"
      " can_admin = excluded.can_admin",
      roleId, component, flags[0], flags[1], flags[2], flags[3], flags[4]);
}

void addComponent(Session& session, const SecurityEntry& entry) {
  const bool root = entry.parent.find('|') != std::string::npos;  // "DLL|" and the module itself
  const int added = run(session.db(),
                        "INSERT INTO right_component (component, parent, kind, caption)"
                        " VALUES ($1, $2, $3, $4) ON CONFLICT (component) DO NOTHING",
                        entry.key, root ? std::string() : entry.parent, entry.kind, entry.caption);
  if (added == 0) return;
  run(session.db(),
      "INSERT INTO right_grant (role_id, component, can_view, can_delete, can_edit, can_create,"
      " can_admin) SELECT role_id, $1, 1, 1, 1, 1, 1 FROM right_grant"
      " WHERE component = $2 AND can_admin = 1",
      entry.key, kAdministration);
  writeAdminLog(session, AdminAct::Created, entry.caption, entry.key);
}

}  // namespace

std::span<const Routine> rightRoutines() { return kRoutines; }

void beginAdministration(Session& session, StoreCode refusal) {
  if (session.db().engine() == Engine::Postgres) {
    session.db().execute("LOCK TABLE app_role IN SHARE ROW EXCLUSIVE MODE");
  }
  if (!session.rights(kAdministration).admin) {
    throw Refusal(refusal, "Nėra teisės administruoti!");
  }
}

void requireAdministrator(Database& db) {
  if (!anyRow(db,
              "SELECT 1 FROM app_user u JOIN right_grant g ON g.role_id = u.role_id"
              " WHERE u.active = 1 AND g.component = $1 AND g.can_admin = 1 AND g.can_view = 1"
              " AND g.can_edit = 1",
              kAdministration)) {
    refuseRule("Turi likti bent vienas neužblokuotas vartotojas, galintis administruoti!");
  }
}

void saveGrants(Session& session, int roleId, std::string_view roleName, RowSet& rights) {
  Database& db = session.db();
  std::string detail;
  ForEachRow(rights, [&](RowSet& row) {
    if (row.State() != RowState::Changed && row.State() != RowState::Added) return;
    const RightRow before = storedGrant(db, roleId, std::string(row["Component"].Text()));
    const bool granted = row["Granted"].Number() != 0;
    int flags[5];
    for (int i = 0; i < 5; ++i) flags[i] = granted && row[kFlagFields[i]].Number() != 0 ? 1 : 0;
    if (before.granted == granted && std::equal(flags, flags + 5, before.flags)) return;
    if (!session.rights(before.component).admin) {
      throw Refusal(kNoSaveRight, "Nėra teisės suteikti: " + before.caption);
    }
    if (granted) {
      grant(db, roleId, before.component, flags);
    } else {
      run(db, "DELETE FROM right_grant WHERE role_id = $1 AND component = $2", roleId,
          before.component);
    }
    if (!detail.empty()) detail += '\n';
    detail += before.caption + " (" + before.component +
              "): " + flagLetters(before.granted, before.flags) + " -> " +
              flagLetters(granted, flags);
  });
  if (!detail.empty()) writeAdminLog(session, AdminAct::RightsChanged, roleName, detail);
}

HostResult registerComponents(Session& session, std::span<const SecurityEntry> components) {
  Database& db = session.db();
  const auto known = [&](const SecurityEntry& entry) {
    return anyRow(db, "SELECT 1 FROM right_component WHERE component = $1", entry.key);
  };
  // As a rule nothing is missing, and opening writes nothing.
  const HostResult all = session.guarded(Transaction::For::Read, [&]() -> Variant {
    return Variant(int{std::all_of(components.begin(), components.end(), known)});
  });
  if (all.Code != kDone || all.Data.AsInt() != 0) return all;
  return session.guarded(Transaction::For::Write, [&]() -> Variant {
    for (const SecurityEntry& entry : components) addComponent(session, entry);
    return {};
  });
}

}  // namespace tolvex::store
