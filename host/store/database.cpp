#include "host/store/database.h"

#include "host/store/postgres_database.h"
#include "host/store/sqlite_database.h"

namespace tolvex::store {

int Statement::run() {
  while (step()) {
  }
  const int changed = changes();
  reset();
  return changed;
}

StatementLease::StatementLease(StatementLease&& other) noexcept
    : statement_(other.statement_), inUse_(other.inUse_) {
  other.statement_ = nullptr;
  other.inUse_ = nullptr;
}

void StatementLease::release() {
  if (!statement_) return;
  statement_->clear();
  *inUse_ = false;
}

bool isPostgresUrl(std::string_view place) {
  return place.starts_with("postgresql://") || place.starts_with("postgres://");
}

std::unique_ptr<Database> Database::open(const std::string& url, const Options& options) {
  if (isPostgresUrl(url) && !options.inMemory) return openPostgres(url, options);
  return openSqlite(url, options);
}

Transaction::Transaction(Database& db, For purpose) : db_(db) {
  switch (purpose) {
    case For::Read:
      db_.beginRead();
      break;
    case For::Write:
      db_.beginWrite();
      break;
    case For::Exclusive:
      db_.beginExclusive();
      break;
  }
}

Transaction::~Transaction() {
  if (open_) db_.rollback();
}

void Transaction::commit() {
  db_.commit();
  open_ = false;
}

}  // namespace tolvex::store
