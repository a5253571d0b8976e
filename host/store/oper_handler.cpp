// Financial operations among the records of the store.
#include "framework/references.h"
#include "host/store/oper_record.h"
#include "host/store/oper_save.h"
#include "host/store/record_table.h"

namespace tolvex::store {

namespace {

constexpr ColumnSpec kOperList[] = {
    {"OIDR", FieldType::Text},      {"OID", FieldType::Text},     {"ParentID", FieldType::Integer},
    {"ParentOIDR", FieldType::Text}, {"OType", FieldType::Text},  {"GroupFlag", FieldType::Integer},
    {"Name", FieldType::Text},      {"Preview", FieldType::Text}, {"DateD", FieldType::Date},
    {"Number", FieldType::Text},    {"Comment", FieldType::Text}, {"SumA", FieldType::Double},
    {"FOIDR", FieldType::Text}};

constexpr const char* kListSql =
    "SELECT o.id, o.otype, o.group_id, o.day, o.serija, o.number, o.comment, o.doc_ref,"
    " (SELECT SUM(e.sum_lt) FROM entry e WHERE e.oper_id = o.id) FROM oper o ";

void loadListRow(RowSet& rows, const Statement& from) {
  const int id = static_cast<int>(from.integer(0));
  const int group = static_cast<int>(from.integer(2));
  const int day = static_cast<int>(from.integer(3));
  const std::string reference = refOf(kOperationKind, id);
  const std::string name = operName(day, from.text(4), from.text(5));
  rows.LoadRow();
  rows["OIDR"] = reference;
  rows["OID"] = reference;
  rows["ParentID"] = static_cast<double>(group);
  rows["ParentOIDR"] = refOf("O0201400", group);
  rows["OType"] = from.text(1);
  rows["GroupFlag"] = 0.0;
  rows["Name"] = name;
  rows["Preview"] = name;
  rows["DateD"] = Variant(DateTime::FromDayNumber(day));
  rows["Number"] = from.text(5);
  rows["Comment"] = from.text(6);
  rows["SumA"] = static_cast<double>(from.integer(8)) / 100.0;
  rows["FOIDR"] = from.isNull(7) ? refOf(from.text(1), id) : std::string(from.text(7));
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
  // 'group' lists the operations of a group; '','filter' those of all groups that the filter lets
  // through.
  RowSetPtr list(Session& session, std::string_view,
                 std::span<const std::string> arguments) const override {
    const std::string group = arguments.empty() ? "" : arguments[0];
    const RowSetPtr rows = RowSet::make(kOperList);
    auto select = session.db().prepare(
        std::string(kListSql) + (isRef(group) ? "WHERE o.group_id = $1 ORDER BY o.id"
                                              : "ORDER BY o.id"));
    if (isRef(group)) select->bind(1, idOf(group));
    while (select->step()) loadListRow(*rows, *select);
    return finishList(rows, arguments.size() > 1 ? arguments[1] : "");
  }
};

const OperationHandler kHandler;
const HandlerRow kRows[] = {
    {"O0201500 O0201501 O0201502 O0201503 O0201504 O0201505 O0201506", &kHandler}};

}  // namespace

std::span<const HandlerRow> operationRecords() { return kRows; }

}  // namespace tolvex::store
