// Financial operations among the records of the store.
#include <vector>

#include "framework/references.h"
#include "host/store/oper_record.h"
#include "host/store/oper_save.h"
#include "host/store/record_table.h"
#include "host/store/sql.h"

namespace tolvex::store {

namespace {

constexpr ColumnSpec kOperList[] = {
    {"OIDR", FieldType::Text},        {"OID", FieldType::Text},
    {"ParentID", FieldType::Integer}, {"ParentOIDR", FieldType::Text},
    {"OType", FieldType::Text},       {"GroupFlag", FieldType::Integer},
    {"Name", FieldType::Text},        {"Preview", FieldType::Text},
    {"DateD", FieldType::Date},       {"Number", FieldType::Text},
    {"Comment", FieldType::Text},     {"SumA", FieldType::Double},
    {"FOIDR", FieldType::Text}};

constexpr const char* kListSql =
    "SELECT o.id, o.otype, o.group_id, o.day, o.serija, o.number, o.comment, o.doc_ref,"
    " (SELECT SUM(e.sum_lt) FROM entry e WHERE e.oper_id = o.id) FROM oper o ";

// The fields of the list, fetched once for all its rows.
class OperationRows {
 public:
  OperationRows() : set_(RowSet::make(kOperList)) {
    for (std::size_t i = 0; i < set_->Fields().size(); ++i) fields_.push_back(set_->Fields()[i]);
  }
  void load(const Statement& from) {
    const int id = from.whole(0);
    const int group = from.whole(2);
    const int day = from.whole(3);
    const std::string reference = refOf(kOperationKind, id);
    const std::string name = operName(day, from.text(4), from.text(5));
    set_->LoadRow();
    std::size_t column = 0;
    const auto next = [&]() -> Field& { return fields_[column++]; };
    next() = reference;
    next() = reference;
    next() = static_cast<double>(group);
    next() = refOf("O0201400", group);
    next() = from.text(1);
    next() = 0.0;
    next() = name;
    next() = name;
    next() = Variant(DateTime::FromDayNumber(day));
    next() = from.text(5);
    next() = from.text(6);
    next() = static_cast<double>(from.integer(8)) / 100.0;
    next() = from.isNull(7) ? refOf(from.text(1), id) : std::string(from.text(7));
  }
  const RowSetPtr& set() const { return set_; }

 private:
  RowSetPtr set_;
  std::vector<Field> fields_;
};

// A day as the columns keep it; `fallback` for none.
int dayOr(std::span<const std::string> arguments, std::size_t place, int fallback) {
  if (place >= arguments.size()) return fallback;
  const auto day = DateTime::Parse(arguments[place]);
  return day ? day->DayNumber() : fallback;
}

class OperationHandler final : public RecordHandler {
 public:
  RowSetPtr load(Session& session, std::string_view, int id) const override {
    return loadOperation(session, id);
  }
  RowSetPtr create(Session&, std::string_view kind, std::string_view otype) const override {
    return createOperation(kind, otype);
  }
  int save(Session& session, std::string_view kind, std::string_view otype, RowSet& changes,
           RowSet*, RowSet*) const override {
    return saveOperation(session, kind, otype, changes);
  }
  void erase(Session& session, std::string_view, int id) const override {
    eraseOperation(session, id);
  }
  // 'group','filter','from','to','page': the operations of a group in a period; with no group those
  // of all groups that the filter lets through. A page goes without a filter.
  RowSetPtr list(Session& session, std::string_view,
                 std::span<const std::string> arguments) const override {
    const std::string group = arguments.empty() ? "" : arguments[0];
    const std::string filter = arguments.size() > 1 ? arguments[1] : "";
    const int from = dayOr(arguments, 2, 0), to = dayOr(arguments, 3, 99999999);
    const auto page = arguments.size() > 4 ? readListPage(arguments[4]) : std::nullopt;
    if (page && isRef(group)) return listPage(session.db(), idOf(group), from, to, *page);
    const char* where = isRef(group) ? "WHERE o.group_id = $3 AND o.day BETWEEN $1 AND $2"
                                     : "WHERE o.day BETWEEN $1 AND $2";
    auto select = session.db().prepare(std::string(kListSql) + where + " ORDER BY o.id");
    select->bind(1, from).bind(2, to);
    if (isRef(group)) select->bind(3, idOf(group));
    return finishList(allRows(*select), filter);
  }

 private:
  static RowSetPtr allRows(Statement& select) {
    OperationRows rows;
    while (select.step()) rows.load(select);
    return rows.set();
  }
  // A list that is too long is refused with its first page, as it would be as a whole.
  static RowSetPtr listPage(Database& db, int group, int from, int to, const ListPage& page) {
    if (page.after == 0) {
      const auto count =
          integerFrom(db, "SELECT COUNT(*) FROM oper WHERE group_id = $1 AND day BETWEEN $2 AND $3",
                      group, from, to);
      refuseLongList(static_cast<std::size_t>(count.value_or(0)));
    }
    // The ids come from the index of groups and days alone.
    auto select = bound(db,
                        std::string(kListSql) +
                            "WHERE o.id IN (SELECT id FROM oper WHERE group_id = $1"
                            " AND day BETWEEN $2 AND $3 AND id > $4 ORDER BY id LIMIT $5)"
                            " ORDER BY o.id",
                        group, from, to, page.after, page.rows);
    return finishList(allRows(*select), "");
  }
};

const OperationHandler kHandler;
const HandlerRow kRows[] = {
    {"O0201500 O0201501 O0201502 O0201503 O0201504 O0201505 O0201506", &kHandler}};

}  // namespace

std::span<const HandlerRow> operationRecords() { return kRows; }

}  // namespace tolvex::store
