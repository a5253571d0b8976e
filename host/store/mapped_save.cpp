// Writing by a map: checks, header, sets, identity; and deleting.
#include <cmath>
#include <limits>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/field_captions.h"
#include "host/store/guid.h"
#include "host/store/mapped_records.h"
#include "host/store/record_log.h"
#include "host/store/sql.h"
#include "host/store/sql_columns.h"
#include "host/store/whole_parts.h"

namespace tolvex::store {
namespace {

int versionIn(const Saving& saving) { return static_cast<int>(saving.row["RowVersion"].Number()); }

std::string quotedName(const FieldMap& field) { return "„" + fieldCaption(field.field) + "“"; }

void bindText(Statement& statement, int index, const FieldMap& field, Field value) {
  if (field.isKey && trim(value.Text()).empty()) value = newGuid();
  const std::string_view content = value.Text();
  if (field.isNeeded && trim(content).empty()) {
    refuseRule("Neužpildytas laukas " + quotedName(field) + "!");
  }
  if (field.size > 0 && length(content) > static_cast<std::size_t>(field.size)) {
    refuseRule("Laukas " + quotedName(field) + " per ilgas: leidžiama ženklų – " +
               std::to_string(field.size) + "!");
  }
  const bool none = value.IsAbsent() || (content.empty() && field.absent == Absent::NullIsZero);
  if (none && field.absent != Absent::Zero) {
    statement.bindNull(index);
  } else {
    statement.bind(index, content);
  }
}

void bindNumber(Statement& statement, int index, const FieldMap& field, Field value) {
  if (value.IsAbsent() && field.absent != Absent::Zero) {
    statement.bindNull(index);
    return;
  }
  const double given = value.Number();
  if (field.type == FieldType::Double && field.scale == 0) {
    statement.bind(index, given);
    return;
  }
  const std::int64_t limit = field.type == FieldType::SmallInt
                                 ? std::numeric_limits<std::int16_t>::max()
                                 : std::numeric_limits<std::int32_t>::max();
  const auto stored = wholeParts(given, std::pow(10, field.scale));
  if (!stored || *stored > limit || *stored < -limit) {
    refuseRule("Klaidinga lauko " + quotedName(field) + " reikšmė: " + plainNumber(given) + "!");
  }
  const bool nowhere = field.absent == Absent::NullIsZero || field.absent == Absent::ZeroIsNull;
  if (*stored == 0 && nowhere) {
    statement.bindNull(index);
  } else {
    statement.bind(index, *stored);
  }
}

// The stored id of what the field names by another text.
void bindFound(Database& db, Statement& statement, int index, const FieldMap& field, Field value,
               int owner) {
  const std::string name = trim(value.Text());
  if (name == field.unbound) {
    statement.bindNull(index);
    return;
  }
  auto query = bound(db, field.lookup, name);
  if (std::string_view(field.lookup).find("$2") != std::string_view::npos) query->bind(2, owner);
  if (!query->step()) {
    throw Refusal(kReferred, "Įraše nurodytas objektas neegzistuoja: " + name + " (" +
                                 fieldCaption(field.field) + ")!");
  }
  statement.bind(index, query->integer(0));
}

// Parameters of the fields from `index` on; the next free one.
int bindFields(Database& db, Statement& statement, int index, std::span<const FieldMap> fields,
               RowSet& row, int owner) {
  for (const FieldMap& field : fields) {
    if (field.isComputed) continue;
    const Field value = row[field.field];
    if (field.lookup) {
      bindFound(db, statement, index, field, value, owner);
    } else if (field.type == FieldType::Text) {
      bindText(statement, index, field, value);
    } else if (field.type == FieldType::Date && !value.IsAbsent()) {
      statement.bind(index, value.Value().AsDate().DayNumber());
    } else if (field.type == FieldType::Date) {
      statement.bindNull(index);
    } else {
      bindNumber(statement, index, field, value);
    }
    ++index;
  }
  return index;
}

SqlColumns columnsOf(std::span<const FieldMap> fields) {
  SqlColumns columns;
  for (const FieldMap& field : fields) {
    if (!field.isComputed) columns.add(field.column);
  }
  return columns;
}

int insertRow(Database& db, const ChildMap& child, RowSet& row, int owner) {
  SqlColumns columns = columnsOf(child.fields);
  if (child.ownerColumn) columns.add(child.ownerColumn);
  auto insert = db.prepare(columns.insertInto(child.table));
  const int next = bindFields(db, *insert, 1, child.fields, row, owner);
  if (child.ownerColumn) insert->bind(next, owner);
  const int id = insertedId(*insert);
  row["ID"] = Variant(id);
  return id;
}

int updateRow(Database& db, const ChildMap& child, RowSet& row, int owner) {
  const int id = row["ID"].Value().AsInt();
  if (row.State() != RowState::Changed) return id;
  SqlColumns columns = columnsOf(child.fields);
  auto update = db.prepare("UPDATE " + std::string(child.table) + " SET " + columns.pairs +
                           " WHERE id = $" + std::to_string(columns.count + 1));
  update->bind(bindFields(db, *update, 1, child.fields, row, owner), id);
  if (update->run() == 0) refuseEditedGone();
  return id;
}

void saveRows(Database& db, const ChildMap& child, RowSet& rows, int owner);

void saveChildren(Database& db, std::span<const ChildMap> children, RowSet& row, RowSet* second,
                  int owner) {
  for (const ChildMap& child : children) {
    if (child.field) {
      saveRows(db, child, *row[child.field].Rows(), owner);
    } else if (second) {
      saveRows(db, child, *second, owner);
    }
  }
}

void saveRows(Database& db, const ChildMap& child, RowSet& rows, int owner) {
  // What goes first makes room for keys that come back in a new row.
  ForEachRow(rows, [&](RowSet& row) {
    if (row.State() != RowState::Deleted || row["ID"].IsAbsent()) return;
    run(db, "DELETE FROM " + std::string(child.table) + " WHERE id = $1",
        row["ID"].Value().AsInt());
  });
  ForEachRow(rows, [&](RowSet& row) {
    if (row.State() == RowState::Deleted) return;
    const bool isNew = row.State() == RowState::Added;
    const int id = isNew ? insertRow(db, child, row, owner) : updateRow(db, child, row, owner);
    saveChildren(db, child.children, row, nullptr, id);
  });
}

// The rows of the kind whose `column` is the id.
StatementLease recordQuery(Database& db, const RecordMap& map, const std::string& selected,
                           const char* column, int id, std::string_view kind) {
  std::string sql = "SELECT " + selected + " FROM " + map.table + " t WHERE t." + column + " = $1";
  if (*map.where) sql += " AND " + std::string(map.where);
  if (!map.idsByKind) return bound(db, sql, id);
  return bound(db, sql + " AND t." + map.kindColumn + " = $2", id, kind);
}

std::string componentOf(const RecordMap& map, int id) {
  return map.componentByRecord && id != 0 ? map.component + std::to_string(id) : map.component;
}

void requireRight(const Saving& saving) {
  if (!*saving.map.component) return;
  const Flags flags = saving.session.rights(componentOf(saving.map, saving.id));
  if (!(saving.isNew ? flags.create : flags.edit)) {
    refuseSave();
  }
}

// The record above must stand, and not below the record itself.
void requireParent(const Saving& saving) {
  if (!saving.map.tree) return;
  int above = static_cast<int>(saving.row["ParentID"].Number());
  bool first = true;
  while (above != 0) {
    if (above == saving.id) refuseRule("Įrašas negali būti savo paties viduje!");
    auto query =
        recordQuery(saving.session.db(), saving.map, "t.parent_id", "id", above, saving.kind);
    if (!query->step()) {
      if (first) throw Refusal(kParentGone, "Aukštesnio lygio įrašas nebeegzistuoja!");
      break;
    }
    above = query->whole(0);
    first = false;
  }
}

int insertHeader(const Saving& saving, const std::string& kind) {
  Database& db = saving.session.db();
  const RecordMap& map = saving.map;
  SqlColumns columns = columnsOf(map.fields);
  if (map.kindColumn) columns.add(map.kindColumn);
  if (map.fixedColumn) columns.add(map.fixedColumn);
  int id = 0;
  if (map.idsByKind) {
    columns.add("id");
    id = 1 + static_cast<int>(integerFrom(db,
                                          "SELECT MAX(id) FROM " + std::string(map.table) +
                                              " WHERE " + map.kindColumn + " = $1",
                                          kind)
                                  .value_or(0));
  }
  auto insert = db.prepare(columns.insertInto(map.table));
  int next = bindFields(db, *insert, 1, map.fields, saving.row, 0);
  if (map.kindColumn) insert->bind(next++, kind);
  if (map.fixedColumn) insert->bind(next++, map.fixedValue);
  if (map.idsByKind) insert->bind(next, id);
  return insertedId(*insert);
}

// The record that was read must be the one that stands.
void requireVersion(const Saving& saving) {
  const RecordMap& map = saving.map;
  auto row = recordQuery(saving.session.db(), map, map.versioned ? "t.row_version" : "1", "id",
                         saving.id, saving.kind);
  if (!row->step()) refuseEditedGone();
  if (!map.versioned || row->integer(0) == versionIn(saving)) return;
  const std::string whoWhen = lastChange(saving.session.db(), saving.kind, saving.id);
  throw Refusal(kChangedByOther,
                "Įrašą pakeitė kitas vartotojas: " +
                    (whoWhen.empty() ? std::string(saving.row["Preview"].Text()) : whoWhen));
}

void updateHeader(const Saving& saving, const std::string& kind) {
  Database& db = saving.session.db();
  const RecordMap& map = saving.map;
  SqlColumns columns = columnsOf(map.fields);
  int mark = columns.count;
  const auto next = [&] { return "$" + std::to_string(++mark); };
  std::string sql = "UPDATE " + std::string(map.table) + " SET " + columns.pairs +
                    (map.versioned ? ", row_version = row_version + 1" : "") +
                    " WHERE id = " + next();
  if (map.versioned) sql += " AND row_version = " + next();
  if (map.idsByKind) sql += " AND " + std::string(map.kindColumn) + " = " + next();
  auto update = db.prepare(sql);
  int index = bindFields(db, *update, 1, map.fields, saving.row, saving.id);
  update->bind(index++, saving.id);
  if (map.versioned) update->bind(index++, versionIn(saving));
  if (map.idsByKind) update->bind(index, kind);
  if (update->run() > 0) return;
  requireVersion(saving);  // somebody was faster
  refuseEditedGone();
}

// The header as it is stored now: identity, version, and what the rules of the kind put in.
void tellStored(const MappedRecords& records, const Saving& saving) {
  const RowSetPtr stored = records.load(saving.session, saving.kind, saving.id);
  expect(stored != nullptr, "a record that was just saved is there");
  stored->MoveFirst();
  for (std::size_t i = 0; i < stored->Fields().size(); ++i) {
    const Field field = stored->Fields()[i];
    if (field.Type() != FieldType::Nested) saving.row[field.Name()] = field.Value();
  }
}

}  // namespace

std::string MappedRecords::guard(std::string_view, int id) const { return componentOf(map(), id); }

int MappedRecords::save(Session& session, std::string_view kind, std::string_view otype,
                        RowSet& changes, RowSet* second, RowSet*) const {
  const RecordMap& map = this->map();
  changes.MoveFirst();
  const bool isNew = changes.State() == RowState::Added;
  // In a table of one kind the type says something else: that a node is a group.
  std::string exact(map.kindColumn ? changes["OType"].Text() : kind);
  if (exact.empty()) exact = otype.empty() ? kind : otype;
  const int id = isNew ? 0 : changes["ID"].Value().AsInt();
  Saving saving{session, map, exact, changes, second, id, isNew};
  requireRight(saving);
  if (!isNew) requireVersion(saving);
  requireParent(saving);
  if (map.check) map.check(saving);
  const std::string detail = changedFields(map, changes);
  if (isNew) {
    saving.id = insertHeader(saving, exact);
  } else {
    updateHeader(saving, exact);
  }
  saveChildren(session.db(), map.children, changes, second, saving.id);
  if (map.stored) map.stored(saving);
  tellStored(*this, saving);
  writeRecordLog(session, isNew ? Action::Create : Action::Update,
                 {exact, saving.id, std::string(changes["Preview"].Text()), detail});
  return saving.id;
}

void MappedRecords::erase(Session& session, std::string_view kind, int id) const {
  const RecordMap& map = this->map();
  Database& db = session.db();
  const RowSetPtr record = load(session, kind, id);
  if (!record) refuseGone();
  if (*map.component && !session.rights(componentOf(map, id)).remove) {
    refuseErase();
  }
  record->MoveFirst();
  const std::string reference((*record)["OIDR"].Text());
  if (map.tree) {
    auto below = recordQuery(db, map, map.name, "parent_id", id, kind);
    if (below->step()) {
      throw Refusal(kReferred, "Įrašas turi pavaldžių įrašų: " + std::string(below->text(0)));
    }
  }
  for (const Referrer& referrer : map.referrers) {
    const std::string_view sql = referrer.query;
    auto query = referrer.byReference ? bound(db, sql, reference) : bound(db, sql, id);
    if (query->step()) throw Refusal(kReferred, referrer.text + std::string(query->text(0)));
  }
  if (map.erasing) map.erasing(session, id);
  writeRecordLog(session, Action::Delete, {kind, id, std::string((*record)["Preview"].Text())});
  std::string sql = "DELETE FROM " + std::string(map.table) + " WHERE id = $1";
  if (map.idsByKind) {
    run(db, sql + " AND " + map.kindColumn + " = $2", id, kind);
  } else {
    run(db, sql, id);
  }
}

}  // namespace tolvex::store
