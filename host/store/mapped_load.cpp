// Reading by a map: records, new records, lists.
#include "framework/references.h"
#include "framework/text.h"
#include "host/store/mapped_records.h"
#include "host/store/routines.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr ColumnSpec kIdentity[] = {
    {"ID", FieldType::Integer}, {"OIDR", FieldType::Text},    {"OID", FieldType::Text},
    {"OType", FieldType::Text}, {"Preview", FieldType::Text}, {"RowVersion", FieldType::Integer}};

ColumnSpec columnOf(const FieldMap& field) { return {field.field, field.type, field.size}; }

std::unique_ptr<RecordShape> shapeOf(const ChildMap& child);

void addFields(RecordShape& shape, std::span<const FieldMap> fields,
               std::span<const ChildMap> children) {
  for (const FieldMap& field : fields) shape.columns.push_back(columnOf(field));
  for (const ChildMap& child : children) {
    if (!child.field) continue;
    auto nested = shapeOf(child);
    shape.columns.push_back({child.field, FieldType::Nested, 0, nested->columns.data(),
                             static_cast<int>(nested->columns.size())});
    shape.nested.push_back(std::move(nested));
  }
}

std::unique_ptr<RecordShape> shapeOf(const ChildMap& child) {
  auto shape = std::make_unique<RecordShape>();
  shape->columns.push_back({"ID", FieldType::Integer});
  addFields(*shape, child.fields, child.children);
  return shape;
}

std::string selected(std::span<const FieldMap> fields) {
  std::string out;
  for (const FieldMap& field : fields) {
    const bool expression = field.isComputed || field.readAs;
    out += ", ";
    out += expression ? (field.readAs ? field.readAs : field.column)
                      : "t." + std::string(field.column);
  }
  return out;
}

Variant valueIn(const Statement& statement, int column, const FieldMap& field) {
  if (statement.isNull(column) && field.absent == Absent::NullIsZero) {
    return field.type == FieldType::Text ? Variant("") : Variant(0);
  }
  return valueOf(statement, column, {field.field, field.type, field.scale});
}

void loadFields(const Statement& statement, int column, std::span<const FieldMap> fields,
                RowSet& row) {
  for (const FieldMap& field : fields) {
    row[field.field] = valueIn(statement, column, field);
    ++column;
  }
}

void loadChildren(Database& db, std::span<const ChildMap> children, RowSet& row, int owner) {
  for (const ChildMap& child : children) {
    if (!child.field) continue;
    const RowSetPtr rows = row[child.field].Rows();
    auto query = bound(db,
                       "SELECT t.id" + selected(child.fields) + " FROM " + child.table +
                           " t WHERE " + child.owned + " ORDER BY t.id",
                       owner);
    while (query->step()) {
      const int id = query->whole(0);
      rows->LoadRow();
      (*rows)["ID"] = Variant(id);
      loadFields(*query, 1, child.fields, *rows);
      loadChildren(db, child.children, *rows, id);
    }
    if (rows->RecordCount() > 0) rows->MoveFirst();
  }
}

std::string fromTable(const RecordMap& map) {
  return " FROM " + std::string(map.table) + " t WHERE " + (*map.where ? map.where : "1 = 1");
}

}  // namespace

MappedRecords::MappedRecords(const RecordMap& map) : map_(map) {
  shape_.columns.assign(std::begin(kIdentity), std::end(kIdentity));
  addFields(shape_, map.fields, map.children);
  listColumns_.assign(std::begin(kListColumns), std::end(kListColumns));
  for (const FieldMap& field : map.listFields) listColumns_.push_back(columnOf(field));
}

RowSetPtr MappedRecords::emptyRecord() const {
  return RowSet::make(shape_.columns.data(), static_cast<int>(shape_.columns.size()));
}

RowSetPtr MappedRecords::load(Session& session, std::string_view kind, int id) const {
  std::string sql = "SELECT " + std::string(map_.kindOfRow ? map_.kindOfRow : "''") + ", " +
                    map_.preview + ", " + (map_.versioned ? "t.row_version" : "1") +
                    selected(map_.fields) + fromTable(map_) + " AND t.id = $1";
  if (map_.idsByKind) sql += " AND t." + std::string(map_.kindColumn) + " = $2";
  auto query = bound(session.db(), sql, id);
  if (map_.idsByKind) query->bind(2, kind);
  if (!query->step()) return nullptr;
  const std::string exact(map_.kindOfRow ? query->text(0) : kind);
  const RowSetPtr record = emptyRecord();
  RowSet& row = *record;
  row.LoadRow();
  row["ID"] = Variant(id);
  row["OIDR"] = refOf(exact, id);
  row["OID"] = refOf(exact, id);
  row["OType"] = exact;
  row["Preview"] = query->text(1);
  row["RowVersion"] = Variant(query->whole(2));
  loadFields(*query, 3, map_.fields, row);
  loadChildren(session.db(), map_.children, row, id);
  return record;
}

RowSetPtr MappedRecords::create(Session&, std::string_view kind, std::string_view otype) const {
  const RowSetPtr record = emptyRecord();
  RowSet& row = *record;
  row.AddNew();
  row["OType"] = otype.empty() ? kind : otype;
  for (const FieldMap& field : map_.fields) {
    if (!field.initial) continue;
    if (field.type == FieldType::Text) {
      row[field.field] = field.initial;
    } else {
      row[field.field] = Variant(std::atoi(field.initial));
    }
  }
  return record;
}

RowSetPtr MappedRecords::listWhere(Session& session, std::string_view kind,
                                   const std::string& condition, const int* argument) const {
  const std::string sql = "SELECT t.id, " + std::string(map_.kindOfRow ? map_.kindOfRow : "''") +
                          ", " + (map_.tree ? "t.parent_id, t.group_flag" : "NULL, 0") + ", " +
                          (map_.listType ? map_.listType : "''") + ", " + map_.name + ", " +
                          map_.preview + selected(map_.listFields) + fromTable(map_) + condition +
                          " ORDER BY " + map_.order;
  auto query = session.db().prepare(sql);
  if (argument) query->bind(1, *argument);
  if (map_.idsByKind) query->bind(argument ? 2 : 1, kind);
  const RowSetPtr rows = RowSet::make(listColumns_.data(), static_cast<int>(listColumns_.size()));
  RowSet& row = *rows;
  while (query->step()) {
    const std::string exact(map_.kindOfRow ? query->text(1) : kind);
    const std::string reference = refOf(exact, query->whole(0));
    const int parent = query->whole(2);
    row.LoadRow();
    row["OIDR"] = reference;
    row["OID"] = reference;
    row["ParentID"] = query->isNull(2) ? Variant(Null{}) : Variant(parent);
    const std::string above = map_.kindOfGroup ? map_.kindOfGroup : exact;
    row["ParentOIDR"] = query->isNull(2) ? std::string() : refOf(above, parent);
    row["OType"] = map_.listType ? std::string(query->text(4)) : exact;
    row["GroupFlag"] = Variant(query->whole(3));
    row["Name"] = query->text(5);
    row["Preview"] = query->text(6);
    loadFields(*query, 7, map_.listFields, row);
  }
  return rows;
}

RowSetPtr MappedRecords::list(Session& session, std::string_view kind,
                              std::span<const std::string> arguments) const {
  std::string filter, condition;
  int parent = 0;
  for (const std::string& argument : arguments) {
    if (map_.tree && isRef(argument) && argument.starts_with('O') &&
        argument.find_first_not_of("0123456789", 1) == std::string::npos) {
      parent = idOf(argument);
    } else if (filter.empty()) {
      filter = trim(argument);
    }
  }
  if (parent != 0) condition = " AND t.parent_id = $1";
  if (map_.idsByKind) {
    condition += " AND t." + std::string(map_.kindColumn) + (parent != 0 ? " = $2" : " = $1");
  } else if (map_.kindColumn && familyOf(kind) != kind) {
    condition += " AND t." + std::string(map_.kindColumn) + " = '" + std::string(kind) + "'";
  }
  return finishList(listWhere(session, kind, condition, parent != 0 ? &parent : nullptr), filter);
}

}  // namespace tolvex::store
