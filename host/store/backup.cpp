#include "host/store/backup.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "host/store/guid.h"
#include "host/store/schema.h"
#include "host/store/sql.h"
#include "host/store/sqlite_database.h"
#include "host/store/unfinished_file.h"

namespace tolvex::store {
namespace {

namespace fs = std::filesystem;
using Kind = DatabaseError::Kind;

bool proceed(void* context, double share) {
  const auto& progress = *static_cast<const Progress*>(context);
  return !progress || progress("Daroma atsarginė kopija", share);
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

void writeCopy(Database& db, const std::string& file, const Progress& progress) {
  const Snapshot snapshot(db);
  if (db.engine() == Engine::Sqlite) {
    Progress asked = progress;
    if (!copySqlite(db, file, proceed, &asked)) throw Stopped();
  } else {
    Database::Options options;
    options.create = true;
    const auto copy = Database::open(file, options);
    Transaction filling(*copy, Transaction::For::Write);
    migrate(*copy, 0);
    copyBaseTables(db, *copy, progress);
    filling.commit();
  }
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

void refill(Database& db, Database& copy, const Progress& progress) {
  const int epoch = storedEpoch(db);
  emptyTables(db);
  copyBaseTables(copy, db, progress);
  rebuildBooks(db, progress);
  setMetaValue(db, "epoch", std::to_string(std::max(epoch, storedEpoch(db)) + 1));
  db.execute("ANALYZE");
}

BooksError explained(const std::string& file, const DatabaseError& error) {
  if (error.kind == Kind::Damaged) return problem(file, "failas sugadintas arba tai ne kopija.");
  if (error.kind == Kind::Forbidden) {
    return problem(file, "tai gali daryti tik duomenų bazės savininkas.");
  }
  if (error.kind == Kind::Full) return problem(file, "diske nebėra vietos.");
  if (error.kind == Kind::Busy) return problem(file, "duomenų bazę užrakino kita programa.");
  if (error.kind == Kind::NoPlace) return problem(file, "nėra tokio aplanko arba teisės į jį.");
  return problem(file, error.what());
}

// A place as the name of a folder.
std::string plainName(std::string_view place) {
  std::string name;
  for (const char letter : place) {
    const bool plain = std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '-';
    if (plain || (!name.empty() && name.back() != '_')) name += plain ? letter : '_';
  }
  return name;
}

fs::path userDataFolder() {
  for (const auto& [variable, below] :
       {std::pair{"XDG_DATA_HOME", ""}, {"LOCALAPPDATA", ""}, {"HOME", ".local/share"}}) {
    const char* const folder = std::getenv(variable);
    if (folder && *folder) return fs::path(folder) / below;
  }
  return fs::temp_directory_path();
}

}  // namespace

Stopped::Stopped() : BooksError("Darbas nutrauktas, duomenys nepakeisti.") {}

void goOn(const Progress& progress, std::string_view what, double share) {
  if (progress && !progress(what, share)) throw Stopped();
}

std::string backupFolderOf(Database& db, const std::string& place) {
  if (!isPostgresUrl(place)) return place + "-kopijos";
  // One server may hold the books of several companies, each in a schema of its own.
  const std::string schema = textFrom(db, "SELECT current_schema()");
  return (userDataFolder() / "tolvex" / plainName(shownPlace(place) + "/" + schema)).string();
}

void backupBooks(Database& db, const std::string& file, const Progress& progress) {
  try {
    UnfinishedFile unfinished(file + ".part");
    writeCopy(db, unfinished.path(), progress);
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
    const UnfinishedFile converted((fs::temp_directory_path() / ("restore-" + newGuid())).string());
    const auto copy = openConverted(file, converted.path());
    const Transaction reading(*copy, Transaction::For::Read);
    std::optional<Transaction> restoring;
    if (!db.inTransaction()) restoring.emplace(db, Transaction::For::Exclusive);
    refill(db, *copy, progress);
    if (restoring) restoring->commit();
  } catch (const DatabaseError& error) {
    throw explained(file, error);
  } catch (const fs::filesystem_error& error) {
    throw problem(file, error.code().message());
  }
}

}  // namespace tolvex::store
