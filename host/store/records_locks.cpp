// Lock dates of accounts. Every account has its lock record, stored only while it holds a date, so
// the record goes by the id of the account.
#include <algorithm>
#include <optional>
#include <vector>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/record_map.h"
#include "host/store/record_table.h"
#include "host/store/records.h"
#include "host/store/routines.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr const char* kKind = "O0201300";
constexpr const char* kComponent = "CAllAccLock";

constexpr ColumnSpec kRecord[] = {
    {"ID", FieldType::Integer},       {"OIDR", FieldType::Text},
    {"OID", FieldType::Text},         {"OType", FieldType::Text},
    {"Preview", FieldType::Text},     {"RowVersion", FieldType::Integer},
    {"Account", FieldType::Text, 20}, {"DateToHigh", FieldType::Date},
    {"DateToLow", FieldType::Date},   {"UserOIDR", FieldType::Text, 30},
    {"ParentID", FieldType::Integer}};
constexpr ColumnSpec kList[] = {{"OIDR", FieldType::Text},        {"OID", FieldType::Text},
                                {"ParentID", FieldType::Integer}, {"ParentOIDR", FieldType::Text},
                                {"OType", FieldType::Text},       {"GroupFlag", FieldType::Integer},
                                {"Name", FieldType::Text},        {"Preview", FieldType::Text},
                                {"ComponentID", FieldType::Text}, {"Account", FieldType::Text},
                                {"DateToHigh", FieldType::Date},  {"DateToLow", FieldType::Date},
                                {"BLOIDR", FieldType::Text},      {"UserOIDR", FieldType::Text}};

constexpr const char* kLocked =
    "SELECT a.id, a.code, a.name, l.day_high, l.day_low, l.row_version, u.employee_id, a.parent_id"
    " FROM account a LEFT JOIN account_lock l ON l.account_id = a.id"
    " LEFT JOIN app_user u ON u.id = l.user_id WHERE a.plan IN (0, -9)";

std::string shownName(int id, std::string_view name) {
  return id == 0 ? "Likutis" : std::string(name);
}

std::string userOf(const Statement& row) {
  return row.isNull(6) ? std::string() : refOf("O0001401", row.whole(6));
}

Variant dayOrNull(const Statement& row, int column) {
  return valueOf(row, column, {"", FieldType::Date});
}

std::optional<int> dayOf(const Variant& value) {
  if (value.IsAbsent()) return std::nullopt;
  return value.AsDate().DayNumber();
}

struct Days {
  std::optional<int> high, low;
  bool operator==(const Days&) const = default;
};

// One lock as it is to be, and as it was when it was read.
struct LockChange {
  int account = 0;
  std::string code;
  Days now;
  std::optional<Days> before;  // nothing: the record was made, not read
};

int accountNamed(Database& db, std::string_view code) {
  const auto id =
      integerFrom(db, "SELECT id FROM account WHERE plan IN (0, -9) AND code = $1", code);
  if (!id) throw Refusal(kReferred, "Sąskaita neegzistuoja: " + std::string(code));
  return static_cast<int>(*id);
}

void addChanges(Database& db, RowSet& rows, std::vector<LockChange>& changes) {
  ForEachRow(rows, [&](RowSet& row) {
    if (row.State() == RowState::Unchanged || row.State() == RowState::Deleted) return;
    LockChange change;
    change.code = row["Account"].Text();
    change.now = {dayOf(row["DateToHigh"].Value()), dayOf(row["DateToLow"].Value())};
    if (row.State() == RowState::Changed) {
      change.before = {dayOf(row["DateToHigh"].OriginalValue()),
                       dayOf(row["DateToLow"].OriginalValue())};
    }
    if (change.now.high && change.now.low && *change.now.high > *change.now.low) {
      refuseRule("Vadovo blokavimo data negali būti vėlesnė už vartotojo datą!");
    }
    const std::string_view reference = row["OIDR"].Text();
    change.account = isRef(reference) ? idOf(reference) : accountNamed(db, change.code);
    changes.push_back(std::move(change));
  });
}

// Holds the account, so that no save that knows the older dates can slip past.
void holdAccount(Database& db, const LockChange& change) {
  const bool server = db.engine() == Engine::Postgres;
  const std::string code = textFrom(db,
                                    "SELECT code FROM account WHERE plan IN (0, -9) AND id = $1" +
                                        std::string(server ? " FOR UPDATE" : ""),
                                    change.account);
  if (code != change.code) throw Refusal(kReferred, "Sąskaita neegzistuoja: " + change.code);
}

void checkUnchanged(Database& db, const LockChange& change) {
  if (!change.before) return;
  Days stored;
  auto query =
      bound(db, "SELECT day_high, day_low FROM account_lock WHERE account_id = $1", change.account);
  if (query->step()) {
    stored = {dayOf(dayOrNull(*query, 0)), dayOf(dayOrNull(*query, 1))};
  }
  if (stored != *change.before) {
    throw Refusal(kChangedByOther, "Įrašą pakeitė kitas vartotojas: sąskaita " + change.code);
  }
}

void writeLock(Session& session, const LockChange& change) {
  Database& db = session.db();
  if (change.now == Days{}) {
    run(db, "DELETE FROM account_lock WHERE account_id = $1", change.account);
    return;
  }
  run(db,
      "INSERT INTO account_lock (account_id, day_high, day_low, user_id)"
      " VALUES ($1, $2, $3, $4) ON CONFLICT (account_id) DO UPDATE SET"
      " day_high = excluded.day_high, day_low = excluded.day_low,"
      " user_id = excluded.user_id, row_version = account_lock.row_version + 1",
      change.account, change.now.high, change.now.low, session.user().id);
}

class LockRecords final : public RecordHandler {
 public:
  RowSetPtr load(Session& session, std::string_view, int id) const override {
    auto query = bound(session.db(), kLocked + std::string(" AND a.id = $1"), id);
    if (!query->step()) return nullptr;
    const RowSetPtr record = RowSet::make(kRecord);
    RowSet& row = *record;
    row.LoadRow();
    row["ID"] = Variant(id);
    row["OIDR"] = refOf(kKind, id);
    row["OID"] = refOf(kKind, id);
    row["OType"] = kKind;
    row["Preview"] = shownName(id, query->text(2));
    row["RowVersion"] = Variant(query->whole(5));
    row["Account"] = query->text(1);
    row["DateToHigh"] = dayOrNull(*query, 3);
    row["DateToLow"] = dayOrNull(*query, 4);
    row["UserOIDR"] = userOf(*query);
    row["ParentID"] = valueOf(*query, 7, {"", FieldType::Integer});
    return record;
  }

  RowSetPtr create(Session&, std::string_view, std::string_view) const override {
    const RowSetPtr record = RowSet::make(kRecord);
    record->AddNew();
    (*record)["OType"] = kKind;
    return record;
  }

  // The record itself, and with it any number of rows of the list: all or none.
  int save(Session& session, std::string_view, std::string_view, RowSet& row, RowSet* further,
           RowSet*) const override {
    Database& db = session.db();
    if (!session.rights(kComponent).edit) refuseSave();
    std::vector<LockChange> changes;
    addChanges(db, row, changes);
    if (further) addChanges(db, *further, changes);
    // Ascending, as those who save entries hold them.
    std::sort(changes.begin(), changes.end(),
              [](const LockChange& a, const LockChange& b) { return a.account < b.account; });
    for (const LockChange& change : changes) holdAccount(db, change);
    for (const LockChange& change : changes) {
      checkUnchanged(db, change);
      writeLock(session, change);
    }
    row.MoveFirst();
    const std::string_view reference = row["OIDR"].Text();
    const int account =
        isRef(reference) ? idOf(reference) : accountNamed(db, row["Account"].Text());
    const RowSetPtr now = load(session, kKind, account);
    if (!now) refuseEditedGone();
    now->MoveFirst();
    for (const char* field : {"ID", "OIDR", "OID", "OType", "Preview", "RowVersion", "UserOIDR"}) {
      row[field] = (*now)[field].Value();
    }
    return account;
  }

  void erase(Session& session, std::string_view, int id) const override {
    if (!session.rights(kComponent).remove) {
      refuseErase();
    }
    if (run(session.db(), "DELETE FROM account_lock WHERE account_id = $1", id) == 0) {
      refuseGone();
    }
  }

  RowSetPtr list(Session& session, std::string_view,
                 std::span<const std::string> arguments) const override {
    auto query = session.db().prepare(kLocked +
                                      std::string(" AND a.group_flag = 0 ORDER BY a.plan, a.code"));
    const RowSetPtr rows = RowSet::make(kList);
    RowSet& row = *rows;
    while (query->step()) {
      const int id = query->whole(0);
      row.LoadRow();
      for (const char* field : {"OIDR", "OID", "BLOIDR"}) row[field] = refOf(kKind, id);
      row["ParentID"] = Variant(Null{});
      row["ParentOIDR"] = "";
      row["OType"] = kKind;
      row["GroupFlag"] = Variant(0);
      row["Name"] = shownName(id, query->text(2));
      row["Preview"] = shownName(id, query->text(2));
      row["ComponentID"] = kComponent;
      row["Account"] = query->text(1);
      row["DateToHigh"] = dayOrNull(*query, 3);
      row["DateToLow"] = dayOrNull(*query, 4);
      row["UserOIDR"] = userOf(*query);
    }
    return finishList(rows, filterIn(arguments));
  }
};

}  // namespace

std::span<const HandlerRow> lockRecords() {
  static const LockRecords handler;
  static const HandlerRow rows[] = {{kKind, &handler}};
  return rows;
}

}  // namespace tolvex::store
