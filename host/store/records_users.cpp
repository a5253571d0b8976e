// Users, roles, the user's own password, and the protocol of administration.
#include "framework/references.h"
#include "framework/text.h"
#include "host/store/admin_log.h"
#include "host/store/answer.h"
#include "host/store/mapped_records.h"
#include "host/store/moments.h"
#include "host/store/record_table.h"
#include "host/store/rights.h"
#include "host/store/sql.h"
#include "host/store/users.h"

namespace tolvex::store {
namespace {

void requireView(Session& session) {
  if (!session.rights(kAdministration).view) refuseView();
}

// Users and roles: seen by those who may see them, written by administrators.
class AdministeredRecords : public MappedRecords {
 public:
  using MappedRecords::MappedRecords;
  RowSetPtr list(Session& session, std::string_view kind,
                 std::span<const std::string> arguments) const override {
    requireView(session);
    return MappedRecords::list(session, kind, arguments);
  }
  void erase(Session& session, std::string_view kind, int id) const override {
    const std::string name = textFrom(
        session.db(), "SELECT name FROM " + std::string(map().table) + " WHERE id = $1", id);
    if (!name.empty()) beginAdministration(session, kEditedGone);
    MappedRecords::erase(session, kind, id);
    requireAdministrator(session.db());
    writeAdminLog(session, AdminAct::Deleted, name);
  }
};

// --- users

constexpr const char* kRoleName = "(SELECT r.name FROM app_role r WHERE r.id = t.role_id)";
constexpr const char* kEmployeeRef =
    "CASE WHEN t.employee_id IS NULL THEN ''"
    " ELSE 'O0001401' || CAST(t.employee_id AS VARCHAR(12)) END";
constexpr const char* kEmployeeByRef =
    "SELECT id FROM employee WHERE 'O0001401' || CAST(id AS VARCHAR(12)) = $1";
constexpr const char* kHasPassword = "CASE WHEN COALESCE(t.secret, '') = '' THEN 0 ELSE 1 END";

constexpr const char* kLockedUntil = "REPLACE(t.locked_until, '-', '.')";

// Password and Unlock are wishes: they are read empty, and a save that brings them carries them
// out.
constexpr FieldMap kUserFields[] = {
    text("Login", "login", 60).needed(),
    text("Name", "name", 200).needed(),
    text("UserPref", "user_pref", 10).zero(),
    number("RoleID", "role_id"),
    text("EmployeeOIDR", "employee_id", 30).read(kEmployeeRef).find(kEmployeeByRef),
    small("Active", "active").preset("1").zero(),
    small("MustChange", "must_change").preset("1").zero(),
    computed("RoleName", FieldType::Text, kRoleName),
    computed("HasPassword", FieldType::SmallInt, kHasPassword),
    computed("LockedUntil", FieldType::Text, kLockedUntil),
    computed("Password", FieldType::Text, "''"),
    computed("Unlock", FieldType::SmallInt, "0"),
};
constexpr FieldMap kUserList[] = {
    text("Login", "login", 60),
    text("UserPref", "user_pref", 10),
    small("Active", "active"),
    computed("RoleName", FieldType::Text, kRoleName),
    computed("LockedUntil", FieldType::Text, kLockedUntil),
    computed("State", FieldType::Text,
             "CASE WHEN t.active = 0 THEN 'užblokuotas' WHEN t.locked_until <> '' THEN"
             " 'užrakintas' WHEN COALESCE(t.secret, '') = '' THEN 'be slaptažodžio' ELSE '' END"),
};
// The protocols tell of him by name; without him nobody could say who that was.
constexpr Referrer kUserReferrers[] = {
    {"Vartotojas minimas operacijų protokole, jį galima tik užblokuoti: ",
     "SELECT oper_name FROM oper_log WHERE user_id = $1 LIMIT 1"},
    {"Vartotojas užblokavo sąskaitą: ",
     "SELECT a.code FROM account_lock l JOIN account a ON a.id = l.account_id"
     " WHERE l.user_id = $1 LIMIT 1"},
};

// What administrators decide about a user, a line each.
std::string describeUser(Database& db, int id) {
  constexpr const char* kYesNo = "CASE WHEN t.%s = 0 THEN 'ne' ELSE 'taip' END";
  const auto yesNo = [&](const char* column) { return replaceAll(kYesNo, "%s", column); };
  const std::pair<const char*, std::string> lines[] = {
      {"Prisijungimo vardas", "t.login"},
      {"Vardas, pavardė", "t.name"},
      {"Numerių priešdėlis", "t.user_pref"},
      {"Rolė", kRoleName},
      {"Darbuotojas", kEmployeeRef},
      {"Gali prisijungti", yesNo("active")},
      {"Turi pasikeisti slaptažodį", yesNo("must_change")}};
  std::string sql;
  for (const auto& [name, expression] : lines) sql += (sql.empty() ? "SELECT " : ", ") + expression;
  auto row = bound(db, sql + " FROM app_user t WHERE t.id = $1", id);
  if (!row->step()) return "";
  std::string text;
  int column = 0;
  for (const auto& [name, expression] : lines) {
    text.append(column ? "\n" : "").append(name).append(": ").append(row->text(column));
    ++column;
  }
  return text;
}

// "field: old -> new" of the lines that differ.
std::string changesBetween(const std::string& before, const std::string& after) {
  const auto old = split(before, '\n'), now = split(after, '\n');
  std::string text;
  for (std::size_t i = 0; i < now.size() && i < old.size(); ++i) {
    if (old[i] == now[i]) continue;
    const std::string value = now[i].substr(now[i].find(": ") + 2);
    text.append(text.empty() ? "" : "\n").append(old[i]).append(" -> ").append(value);
  }
  return text;
}

void checkUser(const Saving& saving) {
  beginAdministration(saving.session);
  Database& db = saving.session.db();
  const std::string login = trim(saving.row["Login"].Text());
  saving.row["Login"] = login;
  auto others = bound(db, "SELECT login FROM app_user WHERE id <> $1", saving.id);
  while (others->step()) {
    if (equalNoCase(others->text(0), login)) {
      throw Refusal(kDuplicate, "Toks prisijungimo vardas jau yra: " + login);
    }
  }
  const int role = static_cast<int>(saving.row["RoleID"].Number());
  if (!anyRow(db, "SELECT 1 FROM app_role WHERE id = $1", role)) {
    throw Refusal(kReferred, "Nenurodyta vartotojo rolė!");
  }
  const std::string password(saving.row["Password"].Text());
  const std::string problem = password.empty() ? "" : passwordProblem(login, password);
  if (!problem.empty()) refuseRule(problem);
}

void carryOutWishes(const Saving& saving) {
  Database& db = saving.session.db();
  const std::string login(saving.row["Login"].Text());
  const std::string password(saving.row["Password"].Text());
  if (!password.empty()) {
    setPassword(db, login, password);
    writeAdminLog(saving.session, AdminAct::PasswordSet, login);
  }
  if (saving.row["Unlock"].Number() != 0) {
    run(db, "UPDATE app_user SET failures = 0, locked_until = '' WHERE id = $1", saving.id);
    writeAdminLog(saving.session, AdminAct::Unlocked, login);
  }
}

constexpr RecordMap kUsers = {.table = "app_user",
                              .fields = kUserFields,
                              .referrers = kUserReferrers,
                              .listFields = kUserList,
                              .component = kAdministration,
                              .check = checkUser,
                              .stored = carryOutWishes};

class UserRecords final : public AdministeredRecords {
 public:
  using AdministeredRecords::AdministeredRecords;
  int save(Session& session, std::string_view kind, std::string_view otype, RowSet& changes,
           RowSet* second, RowSet* third) const override {
    changes.MoveFirst();
    const bool isNew = changes.State() == RowState::Added;
    const std::string before =
        isNew ? std::string() : describeUser(session.db(), changes["ID"].Value().AsInt());
    const int id = AdministeredRecords::save(session, kind, otype, changes, second, third);
    requireAdministrator(session.db());
    const std::string now = describeUser(session.db(), id);
    const std::string detail = isNew ? now : changesBetween(before, now);
    if (!detail.empty()) {
      writeAdminLog(session, isNew ? AdminAct::Created : AdminAct::Changed, changes["Login"].Text(),
                    detail);
    }
    return id;
  }
  void erase(Session& session, std::string_view kind, int id) const override {
    if (id == session.user().id) refuseRule("Savęs panaikinti negalima!");
    AdministeredRecords::erase(session, kind, id);
    run(session.db(), "DELETE FROM user_setting WHERE user_id = $1", id);
  }
};

// --- roles; the second set of a save holds their rights, see GetRoleRights

constexpr FieldMap kRoleFields[] = {text("Name", "name", 100).needed()};
constexpr FieldMap kRoleList[] = {computed(
    "Users", FieldType::Integer, "(SELECT COUNT(*) FROM app_user u WHERE u.role_id = t.id)")};
constexpr Referrer kRoleReferrers[] = {
    {"Rolė priskirta vartotojui: ", "SELECT login FROM app_user WHERE role_id = $1 LIMIT 1"}};

void checkRole(const Saving& saving) {
  beginAdministration(saving.session);
  Database& db = saving.session.db();
  const std::string name = trim(saving.row["Name"].Text());
  if (anyRow(db, "SELECT 1 FROM app_role WHERE name = $1 AND id <> $2", name, saving.id)) {
    throw Refusal(kDuplicate, "Tokia rolė jau yra: " + name);
  }
  const std::string before = textFrom(db, "SELECT name FROM app_role WHERE id = $1", saving.id);
  saving.row["Name"] = name;
  if (saving.isNew) {
    writeAdminLog(saving.session, AdminAct::Created, name);
  } else if (before != name) {
    writeAdminLog(saving.session, AdminAct::Changed, before, "Name: " + before + " -> " + name);
  }
}

void storeRights(const Saving& saving) {
  if (saving.second) {
    saveGrants(saving.session, saving.id, saving.row["Name"].Text(), *saving.second);
  }
  requireAdministrator(saving.session.db());
}

constexpr RecordMap kRoles = {.table = "app_role",
                              .fields = kRoleFields,
                              .referrers = kRoleReferrers,
                              .listFields = kRoleList,
                              .component = kAdministration,
                              .check = checkRole,
                              .stored = storeRights};

// --- kinds of which nothing is changed as a record

class ReadOnlyRecords : public RecordHandler {
 public:
  int save(Session&, std::string_view, std::string_view, RowSet&, RowSet*, RowSet*) const override {
    refuseSave();
  }
  void erase(Session&, std::string_view, int) const override { refuseErase(); }
};

constexpr ColumnSpec kLog[] = {{"ID", FieldType::Integer},        {"OIDR", FieldType::Text},
                               {"OID", FieldType::Text},          {"ParentID", FieldType::Integer},
                               {"ParentOIDR", FieldType::Text},   {"OType", FieldType::Text},
                               {"GroupFlag", FieldType::Integer}, {"Name", FieldType::Text},
                               {"Preview", FieldType::Text},      {"At", FieldType::Text},
                               {"UserName", FieldType::Text},     {"Act", FieldType::Text},
                               {"Subject", FieldType::Text},      {"Detail", FieldType::Text},
                               {"RowVersion", FieldType::Integer}};

class LogRecords final : public ReadOnlyRecords {
 public:
  RowSetPtr load(Session& session, std::string_view kind, int id) const override {
    requireView(session);
    const RowSetPtr rows = read(session, kind, "WHERE id = $1", id);
    return rows->RecordCount() > 0 ? rows : nullptr;
  }
  RowSetPtr create(Session&, std::string_view, std::string_view) const override { refuseSave(); }
  // The newest first, as many as a list shows.
  RowSetPtr list(Session& session, std::string_view kind,
                 std::span<const std::string> arguments) const override {
    requireView(session);
    return finishList(
        read(session, kind, "ORDER BY id DESC LIMIT $1", static_cast<int>(kLongestList)),
        filterIn(arguments));
  }

 private:
  static RowSetPtr read(Session& session, std::string_view kind, const char* which, int argument) {
    auto query =
        bound(session.db(),
              "SELECT id, at, user_name, act, subject, detail FROM admin_log " + std::string(which),
              argument);
    const RowSetPtr set = RowSet::make(kLog);
    RowSet& row = *set;
    while (query->step()) {
      const int id = query->whole(0);
      const std::string act = adminActText(query->text(3)), subject(query->text(4));
      row.LoadRow();
      row["ID"] = Variant(id);
      for (const char* field : {"OIDR", "OID"}) row[field] = refOf(kind, id);
      row["ParentID"] = Variant(Null{});
      row["ParentOIDR"] = "";
      row["OType"] = kind;
      row["GroupFlag"] = Variant(0);
      row["At"] = shownMoment(std::string(query->text(1)));
      row["UserName"] = query->text(2);
      row["Act"] = act;
      row["Subject"] = subject;
      row["Detail"] = query->text(5);
      for (const char* field : {"Name", "Preview"}) row[field] = act + ": " + subject;
      row["RowVersion"] = Variant(1);
    }
    return set;
  }
};

// --- the user's own password: a record that is always new and carries one wish

constexpr ColumnSpec kOwnPassword[] = {
    {"ID", FieldType::Integer},       {"OIDR", FieldType::Text},
    {"OID", FieldType::Text},         {"OType", FieldType::Text},
    {"Preview", FieldType::Text},     {"RowVersion", FieldType::Integer},
    {"Login", FieldType::Text},       {"HasPassword", FieldType::SmallInt},
    {"OldPassword", FieldType::Text}, {"NewPassword", FieldType::Text}};

class OwnPassword final : public ReadOnlyRecords {
 public:
  RowSetPtr load(Session&, std::string_view, int) const override { return nullptr; }
  RowSetPtr list(Session&, std::string_view, std::span<const std::string>) const override {
    return RowSet::make(kListColumns);
  }
  RowSetPtr create(Session& session, std::string_view kind, std::string_view) const override {
    const RowSetPtr record = RowSet::make(kOwnPassword);
    record->AddNew();
    (*record)["OType"] = kind;
    (*record)["Login"] = session.user().login;
    const bool has =
        anyRow(session.db(), "SELECT 1 FROM app_user WHERE id = $1 AND COALESCE(secret, '') <> ''",
               session.user().id);
    (*record)["HasPassword"] = Variant(int{has});
    return record;
  }
  int save(Session& session, std::string_view kind, std::string_view, RowSet& row, RowSet*,
           RowSet*) const override {
    const User& user = session.user();
    Database& db = session.db();
    if (!isPasswordOf(db, user.id, row["OldPassword"].Text())) {
      refuseRule("Neteisingas dabartinis slaptažodis!");
    }
    const std::string password(row["NewPassword"].Text());
    const std::string problem = passwordProblem(user.login, password);
    if (!problem.empty()) refuseRule(problem);
    if (password == row["OldPassword"].Text()) {
      refuseRule("Naujas slaptažodis turi skirtis nuo dabartinio!");
    }
    if (run(db,
            "UPDATE app_user SET secret = $2, must_change = 0, row_version = row_version + 1"
            " WHERE id = $1 AND active = 1",
            user.id, hashOf(password)) == 0) {
      refuseSave();
    }
    writeAdminLog(session, AdminAct::PasswordChanged, user.login);
    for (const char* wish : {"OldPassword", "NewPassword"}) row[wish] = "";
    row["OIDR"] = refOf(kind, user.id);
    return user.id;
  }
};

}  // namespace

std::span<const HandlerRow> userRecords() {
  static const UserRecords users(kUsers);
  static const AdministeredRecords roles(kRoles);
  static const LogRecords log;
  static const OwnPassword own;
  static const HandlerRow rows[] = {
      {"O0000800", &users}, {"O0000830", &roles}, {"O0000810", &log}, {"O0000820", &own}};
  return rows;
}

}  // namespace tolvex::store
