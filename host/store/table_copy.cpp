#include <algorithm>
#include <exception>
#include <map>
#include <optional>

#include "framework/text.h"
#include "host/store/backup.h"
#include "host/store/schema.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr const char* kCopying = "Kopijuojami duomenys";

enum class Type { Integer, Real, Text };
struct Column {
  std::string name;
  Type type;
};

// Columns as one of the two databases declares them: SQLite tells its own, and since the schema is
// one text, so does an empty one in memory for two servers.
std::vector<Column> columnsOf(Database& sqlite, const std::string& table) {
  std::vector<Column> columns;
  auto query = bound(sqlite, "SELECT name, type FROM pragma_table_info($1) ORDER BY cid", table);
  while (query->step()) {
    const std::string_view type = query->text(1);
    const bool whole = type.find("INT") != std::string_view::npos;
    const bool real = type.starts_with("DOUBLE");
    columns.push_back({std::string(query->text(0)), whole  ? Type::Integer
                                                    : real ? Type::Real
                                                           : Type::Text});
  }
  return columns;
}

// Columns that name rows of their own table, which may come later: filled in a second round.
const std::vector<std::string>& selfReferences(const std::string& table) {
  static const std::map<std::string, std::vector<std::string>> known = {
      {"firm", {"parent_id"}},     {"person", {"parent_id"}},
      {"employee", {"parent_id"}}, {"account", {"parent_id", "new_id"}},
      {"template", {"parent_id"}}, {"oper_group", {"parent_id"}},
      {"journal", {"parent_id"}},  {"pay_template", {"parent_id"}}};
  static const std::vector<std::string> none;
  const auto found = known.find(table);
  return found == known.end() ? none : found->second;
}

bool contains(const std::vector<std::string>& list, const std::string& name) {
  return std::find(list.begin(), list.end(), name) != list.end();
}

void bindFrom(Statement& to, int index, const Statement& from, int column, Type type) {
  if (from.isNull(column)) {
    to.bindNull(index);
  } else if (type == Type::Integer) {
    to.bind(index, from.integer(column));
  } else if (type == Type::Real) {
    to.bind(index, from.real(column));
  } else {
    to.bind(index, from.text(column));
  }
}

// Rows of a table, read in portions, so that a server's table need not fit into memory.
class TableReader {
 public:
  TableReader(Database& db, const std::string& table, const std::string& columns)
      : db_(db), server_(db.engine() == Engine::Postgres), cursor_("read_" + table) {
    const std::string select = "SELECT " + columns + " FROM " + table;
    if (server_) db.execute("DECLARE " + cursor_ + " NO SCROLL CURSOR FOR " + select);
    rows_.emplace(db.prepare(server_ ? "FETCH 5000 FROM " + cursor_ : select));
  }
  ~TableReader() {
    rows_.reset();
    if (server_ && !std::uncaught_exceptions()) db_.execute("CLOSE " + cursor_);
  }
  const Statement* next() {
    if ((*rows_)->step()) {
      ++inPortion_;
      return &**rows_;
    }
    if (!server_ || inPortion_ == 0) return nullptr;
    (*rows_)->reset();
    inPortion_ = 0;
    return next();
  }

 private:
  Database& db_;
  bool server_;
  std::string cursor_;
  std::optional<StatementLease> rows_;
  int inPortion_ = 0;
};

struct Lists {
  std::string names, marks;
};
Lists listsOf(const std::vector<Column>& columns) {
  Lists lists;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const char* comma = i ? ", " : "";
    lists.names += comma + columns[i].name;
    lists.marks += comma + ("$" + std::to_string(i + 1));
  }
  return lists;
}

// One table; `tick` is called after every portion of rows.
void copyTable(Database& from, Database& to, const std::string& table,
               const std::vector<Column>& columns, const std::function<void()>& tick) {
  const std::vector<std::string>& later = selfReferences(table);
  const Lists lists = listsOf(columns);
  auto insert =
      to.prepare("INSERT INTO " + table + " (" + lists.names + ") VALUES (" + lists.marks + ")");
  TableReader reader(from, table, lists.names);
  std::int64_t count = 0;
  while (const Statement* row = reader.next()) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const int place = static_cast<int>(i);
      if (contains(later, columns[i].name)) {
        insert->bindNull(place + 1);
      } else {
        bindFrom(*insert, place + 1, *row, place, columns[i].type);
      }
    }
    insert->run();
    if (++count % 5000 == 0) tick();
  }
  tick();
}

void copySelfReferences(Database& from, Database& to, const std::string& table) {
  for (const std::string& column : selfReferences(table)) {
    auto rows = from.prepare("SELECT id, " + column + " FROM " + table + " WHERE " + column +
                             " IS NOT NULL");
    auto update = to.prepare("UPDATE " + table + " SET " + column + " = $2 WHERE id = $1");
    while (rows->step()) {
      update->bind(1, rows->integer(0)).bind(2, rows->integer(1));
      update->run();
    }
  }
}

}  // namespace

void copyBaseTables(Database& from, Database& to, const Progress& progress) {
  Database& sqlite = from.engine() == Engine::Sqlite ? from : to;
  const auto total = static_cast<double>(baseTables().size());
  double done = 0;
  // The rows that the schema brought come again with the copy.
  run(to, "DELETE FROM account");
  run(to, "DELETE FROM store_meta");
  for (const std::string& table : baseTables()) {
    copyTable(from, to, table, columnsOf(sqlite, table),
              [&] { goOn(progress, kCopying, done / total); });
    done += 1;
  }
  copyTable(from, to, "store_meta", columnsOf(sqlite, "store_meta"), [] {});
  for (const std::string& table : baseTables()) copySelfReferences(from, to, table);
  moveIdCounters(to);
}

void emptyTables(Database& db) {
  for (const char* derived : {"turn_dim", "turn_acc", "open_item", "dimset_ref", "oper_doc"}) {
    run(db, "DELETE FROM " + std::string(derived));
  }
  run(db, "DELETE FROM dimset WHERE id <> 0");
  for (auto table = baseTables().rbegin(); table != baseTables().rend(); ++table) {
    for (const std::string& column : selfReferences(*table)) {
      run(db, "UPDATE " + *table + " SET " + column + " = NULL");
    }
    run(db, "DELETE FROM " + *table);
  }
}

}  // namespace tolvex::store
