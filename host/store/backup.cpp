#include "host/store/backup.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "host/store/schema.h"
#include "host/store/sqlite_database.h"

namespace tolvex::store {
namespace {

namespace fs = std::filesystem;
using Kind = DatabaseError::Kind;

void removeFile(const std::string& file) {
  std::error_code ignored;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) fs::remove(file + suffix, ignored);
}

// Removes an unfinished file unless it was put in its place.
class Unfinished {
 public:
  explicit Unfinished(std::string file) : file_(std::move(file)) { removeFile(file_); }
  ~Unfinished() { removeFile(file_); }
  const std::string& path() const { return file_; }
  void rename(const std::string& to) { fs::rename(file_, to); }

 private:
  std::string file_;
};

bool proceed(void* context, double share) {
  const auto& progress = *static_cast<const Progress*>(context);
  return !progress || progress("backup", share);
}

// A read transaction, unless the caller is in one already.
class Snapshot {
 public:
  explicit Snapshot(Database& db) {
    if (!db.inTransaction()) transaction_.emplace(db, Transaction::For::Read);
    storedEpoch(db);  // the snapshot begins with the first read
  }

 private:
  std::optional<Transaction> transaction_;
};

bool writeCopy(Database& db, const std::string& file, const Progress& progress) {
  const Snapshot snapshot(db);
  if (db.engine() == Engine::Sqlite) {
    Progress asked = progress;
    if (!copySqlite(db, file, proceed, &asked)) return false;
  } else {
    Database::Options options;
    options.create = true;
    const auto copy = Database::open(file, options);
    Transaction filling(*copy, Transaction::For::Write);
    migrate(*copy, 0);
    if (!copyBaseTables(db, *copy, progress)) return false;
    filling.commit();
  }
  return true;
}

// Journal mode back to a single file: a copy is carried around alone.
void closeAsOneFile(const std::string& file) {
  const auto copy = Database::open(file, {});
  copy->execute("PRAGMA journal_mode = DELETE");
}

BooksError problem(const std::string& file, const std::string& what) {
  return BooksError("„" + file + "“: " + what);
}

std::unique_ptr<Database> openCopy(const std::string& file) {
  std::error_code error;
  if (!fs::is_regular_file(file, error)) throw problem(file, "tokio failo nėra.");
  Database::Options options;
  options.readOnly = true;
  auto copy = Database::open(file, options);
  if (storedSchema(*copy) == 0) throw problem(file, "tai ne buhalterijos duomenų kopija.");
  if (storedSchema(*copy) > schemaVersion()) {
    throw problem(file, "kopija padaryta naujesne programos versija.");
  }
  auto check = copy->prepare("PRAGMA integrity_check(1)");
  if (!check->step() || check->text(0) != "ok") throw problem(file, "kopija sugadinta.");
  return copy;
}

// The copy in the present schema: itself, or a converted one beside the original's place.
std::unique_ptr<Database> openConverted(const std::string& file, const std::string& converted) {
  auto copy = openCopy(file);
  if (storedSchema(*copy) == schemaVersion()) return copy;
  copy.reset();
  fs::copy_file(file, converted);
  auto newer = Database::open(converted, {});
  Transaction conversion(*newer, Transaction::For::Write);
  migrate(*newer, storedSchema(*newer));
  conversion.commit();
  return newer;
}

BooksError explained(const std::string& file, const DatabaseError& error) {
  if (error.kind == Kind::Damaged) return problem(file, "failas sugadintas arba tai ne kopija.");
  if (error.kind == Kind::Full) return problem(file, "diske nebėra vietos.");
  if (error.kind == Kind::Busy) return problem(file, "duomenų bazę užrakino kita programa.");
  if (error.kind == Kind::NoPlace) return problem(file, "nėra tokio aplanko arba teisės į jį.");
  return problem(file, error.what());
}

}  // namespace

void backupBooks(Database& db, const std::string& file, const Progress& progress) {
  try {
    Unfinished unfinished(file + ".part");
    if (!writeCopy(db, unfinished.path(), progress)) return;
    closeAsOneFile(unfinished.path());
    unfinished.rename(file);
  } catch (const DatabaseError& error) {
    throw explained(file, error);
  } catch (const fs::filesystem_error& error) {
    throw problem(file, error.code().message());
  }
}

void restoreBooks(Database& db, const std::string& file, const Progress& progress) {
  try {
    const Unfinished converted(
        (fs::temp_directory_path() / ("restore-" + fs::path(file).filename().string())).string());
    const auto copy = openConverted(file, converted.path());
    const Transaction reading(*copy, Transaction::For::Read);
    Transaction restoring(db, Transaction::For::Exclusive);
    const int epoch = storedEpoch(db);
    emptyTables(db);
    if (!copyBaseTables(*copy, db, progress)) return;
    rebuildBooks(db, progress);
    setMetaValue(db, "epoch", std::to_string(std::max(epoch, storedEpoch(db)) + 1));
    db.execute("ANALYZE");
    restoring.commit();
  } catch (const DatabaseError& error) {
    throw explained(file, error);
  } catch (const fs::filesystem_error& error) {
    throw problem(file, error.code().message());
  }
}

}  // namespace tolvex::store
