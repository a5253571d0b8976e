#include "host/store/sqlite_database.h"

#include <sqlite3.h>

#include <filesystem>
#include <vector>

#include "host/store/flush_counter.h"
#include "host/store/statement_cache.h"

namespace tolvex::store {
namespace {

using Kind = DatabaseError::Kind;

Kind kindOfError(int extended) {
  switch (extended) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
      return Kind::Unique;
    case SQLITE_CONSTRAINT_FOREIGNKEY:
      return Kind::Reference;
    default:
      break;
  }
  switch (extended & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
      return Kind::Busy;
    case SQLITE_CONSTRAINT:
      return Kind::Check;
    case SQLITE_FULL:
      return Kind::Full;
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return Kind::ReadOnly;
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return Kind::Damaged;
    case SQLITE_CANTOPEN:
      return Kind::NoPlace;
    default:
      return Kind::Other;
  }
}

[[noreturn]] void fail(sqlite3* db) {
  throw DatabaseError(kindOfError(sqlite3_extended_errcode(db)), sqlite3_errmsg(db));
}

class SqliteStatement final : public Statement {
 public:
  SqliteStatement(sqlite3* db, const std::string& sql) : db_(db) {
    if (sqlite3_prepare_v3(db, sql.c_str(), static_cast<int>(sql.size()) + 1,
                           SQLITE_PREPARE_PERSISTENT, &statement_, nullptr) != SQLITE_OK) {
      fail(db);
    }
    mapParameters();
  }
  ~SqliteStatement() override { sqlite3_finalize(statement_); }

  Statement& bind(int index, std::int64_t value) override {
    return bound(sqlite3_bind_int64(statement_, place(index), value));
  }
  Statement& bind(int index, double value) override {
    return bound(sqlite3_bind_double(statement_, place(index), value));
  }
  Statement& bind(int index, std::string_view value) override {
    const char* text = value.data() ? value.data() : "";
    return bound(sqlite3_bind_text(statement_, place(index), text, static_cast<int>(value.size()),
                                   SQLITE_TRANSIENT));
  }
  Statement& bindNull(int index) override {
    return bound(sqlite3_bind_null(statement_, place(index)));
  }

  bool step() override {
    const int rc = sqlite3_step(statement_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) {
      changes_ = sqlite3_changes(db_);
      return false;
    }
    const DatabaseError error(kindOfError(sqlite3_extended_errcode(db_)), sqlite3_errmsg(db_));
    sqlite3_reset(statement_);
    throw error;
  }
  void reset() override { sqlite3_reset(statement_); }
  int changes() const override { return changes_; }

  bool isNull(int column) const override {
    return sqlite3_column_type(statement_, column) == SQLITE_NULL;
  }
  std::int64_t integer(int column) const override {
    return sqlite3_column_int64(statement_, column);
  }
  double real(int column) const override { return sqlite3_column_double(statement_, column); }
  std::string_view text(int column) const override {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    if (!bytes && sqlite3_errcode(db_) == SQLITE_NOMEM) fail(db_);
    if (!bytes) return {};
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
  }

 private:
  void clear() noexcept override {
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }
  // SQLite numbers the marks $1, $2 … in the order in which they occur; callers mean the digits.
  void mapParameters() {
    const int count = sqlite3_bind_parameter_count(statement_);
    for (int i = 1; i <= count; ++i) {
      const char* name = sqlite3_bind_parameter_name(statement_, i);
      const auto number = static_cast<std::size_t>(name ? std::atoi(name + 1) : i);
      if (places_.size() <= number) places_.resize(number + 1, 0);
      places_[number] = i;
    }
  }
  int place(int index) const {
    const auto i = static_cast<std::size_t>(index);
    if (i >= places_.size() || places_[i] == 0) {
      throw DatabaseError(Kind::Other, "no parameter $" + std::to_string(index) +
                                           " in: " + sqlite3_sql(statement_));
    }
    return places_[i];
  }
  Statement& bound(int rc) {
    if (rc != SQLITE_OK) fail(db_);
    return *this;
  }

  sqlite3* db_;
  sqlite3_stmt* statement_ = nullptr;
  std::vector<int> places_;
  int changes_ = 0;
};

class SqliteDatabase final : public Database {
 public:
  SqliteDatabase(const std::string& path, const Options& options) {
    const int mode =
        options.readOnly
            ? SQLITE_OPEN_READONLY
            : SQLITE_OPEN_READWRITE | (options.create || options.inMemory ? SQLITE_OPEN_CREATE : 0);
    const char* name = options.inMemory ? ":memory:" : path.c_str();
    const int rc = sqlite3_open_v2(name, &db_, mode | SQLITE_OPEN_NOMUTEX,
                                   options.inMemory ? nullptr : flushCountingFiles());
    if (rc != SQLITE_OK) {
      const DatabaseError error(kindOfError(sqlite3_extended_errcode(db_)), sqlite3_errmsg(db_));
      sqlite3_close(db_);
      throw error;
    }
    sqlite3_extended_result_codes(db_, 1);
    sqlite3_busy_timeout(db_, options.busyMilliseconds);
    try {
      configure(options);
    } catch (...) {
      sqlite3_close(db_);
      throw;
    }
    flushesBefore_ = flushesOfThisThread();
  }
  ~SqliteDatabase() override {
    rollback();
    cache_.dropUnused();
    sqlite3_close_v2(db_);
  }

  Engine engine() const override { return Engine::Sqlite; }
  StatementLease prepare(std::string_view sql) override {
    if (rollbackOwed_) rollBackAtLast();
    return cache_.lease(sql, [this](const std::string& text) {
      return std::make_unique<SqliteStatement>(db_, text);
    });
  }
  void execute(std::string_view script) override {
    if (rollbackOwed_) rollBackAtLast();
    if (sqlite3_exec(db_, std::string(script).c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
      fail(db_);
    }
  }

  void beginWrite() override { prepare("BEGIN IMMEDIATE")->run(); }
  void beginExclusive() override { beginWrite(); }  // there is one writer anyhow
  void beginRead() override { prepare("BEGIN")->run(); }
  void commit() override { prepare("COMMIT")->run(); }
  void rollback() noexcept override {
    rollbackOwed_ =
        inTransaction() && sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr) != SQLITE_OK;
  }
  bool inTransaction() const override { return sqlite3_get_autocommit(db_) == 0; }
  std::int64_t flushes() const override { return flushesOfThisThread() - flushesBefore_; }

  void waitWhenBusy(int milliseconds) override { sqlite3_busy_timeout(db_, milliseconds); }

  sqlite3* handle() { return db_; }

 private:
  // Even a rollback can fail for want of memory. Nothing else is done with the connection before it
  // has succeeded, since it would be done in the transaction that was given up.
  void rollBackAtLast() {
    rollback();
    if (rollbackOwed_) fail(db_);
  }
  void configure(const Options& options) {
    execute("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL; PRAGMA cache_size = -32768");
    // A longer log between the copies into the file: fewer flushes beside those of the saves.
    execute("PRAGMA wal_autocheckpoint = 4000");
    if (options.readOnly || options.inMemory) return;
    if (options.create) {
      execute("PRAGMA application_id = " + std::to_string(kApplicationId));
    } else if (!isOurs()) {
      return;  // whoever opened it will see that it is not ours; until then nothing is written
    }
    // The log is moved into the file every 32 MB, so that nearly every save flushes just once.
    execute("PRAGMA journal_mode = WAL; PRAGMA wal_autocheckpoint = 8000");
  }
  bool isOurs() {
    auto id = prepare("PRAGMA application_id");
    return id->step() && id->integer(0) == kApplicationId;
  }

  sqlite3* db_ = nullptr;
  StatementCache cache_;
  bool rollbackOwed_ = false;
  std::int64_t flushesBefore_ = 0;
};

}  // namespace

std::unique_ptr<Database> openSqlite(const std::string& path, const Database::Options& options) {
  std::error_code ignored;
  const bool exists = !options.inMemory && std::filesystem::exists(path, ignored);
  if (options.create && exists) throw DatabaseError(Kind::Other, "file exists: " + path);
  if (!options.create && !options.inMemory && !exists) {
    throw DatabaseError(Kind::Other, "no such file: " + path);
  }
  return std::make_unique<SqliteDatabase>(path, options);
}

bool copySqlite(Database& from, const std::string& file, bool (*progress)(void*, double),
                void* context) {
  sqlite3* const source = dynamic_cast<SqliteDatabase&>(from).handle();
  sqlite3* target = nullptr;
  const auto close = [&] { sqlite3_close(target); };
  if (sqlite3_open(file.c_str(), &target) != SQLITE_OK) {
    const DatabaseError error(kindOfError(sqlite3_extended_errcode(target)),
                              sqlite3_errmsg(target));
    close();
    throw error;
  }
  sqlite3_backup* const copy = sqlite3_backup_init(target, "main", source, "main");
  int rc = copy ? SQLITE_OK : sqlite3_errcode(target);
  bool stopped = false;
  while (rc == SQLITE_OK && !stopped) {
    rc = sqlite3_backup_step(copy, 2000);
    const int total = sqlite3_backup_pagecount(copy);
    const int done = total - sqlite3_backup_remaining(copy);
    stopped = total > 0 && !progress(context, static_cast<double>(done) / total);
  }
  sqlite3_backup_finish(copy);
  const DatabaseError error(kindOfError(rc), sqlite3_errmsg(target));
  close();
  if (stopped) return false;
  if (rc != SQLITE_DONE) throw error;
  return true;
}

}  // namespace tolvex::store
