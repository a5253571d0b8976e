#include "host/store/books.h"

#include <filesystem>

#include "host/store/demo.h"
#include "host/store/moments.h"
#include "host/store/schema.h"
#include "host/store/seed.h"
#include "host/store/server_roles.h"
#include "host/store/sql.h"
#include "host/store/unfinished_file.h"
#include "host/store/users.h"

namespace tolvex::store {
namespace {

namespace fs = std::filesystem;
using Kind = DatabaseError::Kind;

// Somebody who waits for his books to open is told sooner than somebody who saves.
constexpr int kOpeningWaitMs = 2000;
constexpr const char* kUnknownServer = "nežinomas serveris, adresas prasideda „postgresql://“.";

BooksError problem(const std::string& place, const std::string& what) {
  return BooksError("„" + shownPlace(place) + "“: " + what);
}

std::string engineText(const DatabaseError& error) { return std::string("(") + error.what() + ")"; }

// What an engine's failure means to the person who opens or makes books.
BooksError explained(const std::string& place, const DatabaseError& error) {
  switch (error.kind) {
    case Kind::Busy:
      return problem(place, "duomenų bazę užrakino kita programa, bandykite vėliau.");
    case Kind::Full:
      return problem(place, "diske nebėra vietos.");
    case Kind::ReadOnly:
      return problem(place, "duomenų bazė skirta tik skaityti.");
    case Kind::Damaged:
      return problem(place, "failas sugadintas arba tai ne buhalterijos duomenų bazė.");
    case Kind::Lost:
      return problem(place, "duomenų bazės serveris neatsako. " + engineText(error));
    case Kind::Refused:
      return problem(place,
                     "serveris neprileido prie duomenų bazės: ji turi būti sukurta iš anksto, "
                     "vardas ir slaptažodis teisingi. " +
                         engineText(error));
    case Kind::Forbidden:
      return problem(place, "tai gali daryti tik duomenų bazės savininkas. " + engineText(error));
    case Kind::NoPlace:
      return isPostgresUrl(place)
                 ? problem(place, "klaidingas duomenų bazės adresas. " + engineText(error))
                 : problem(place, "nėra tokio aplanko arba teisės į jį.");
    default:
      return problem(place, error.what());
  }
}

void checkFile(const std::string& place) {
  if (place.find("://") != std::string::npos) throw problem(place, kUnknownServer);
  std::error_code error;
  const fs::file_status status = fs::status(place, error);
  if (!fs::exists(status)) throw problem(place, "tokio failo nėra.");
  if (!fs::is_regular_file(status)) throw problem(place, "tai ne failas.");
}

// Books that are being filled are no books yet: a file has another name until it is whole, a
// database on a server has this mark.
constexpr const char* kUnfinished = "unfinished";
bool isUnfinished(Database& db) {
  return storedSchema(db) != 0 && !metaValue(db, kUnfinished).empty();
}

// Reads only, so that a file that is not ours, or not ours any more, stays as it is.
int checkedSchema(Database& db, const std::string& place) {
  const int schema = storedSchema(db);
  if (schema == 0) throw problem(place, "tai ne buhalterijos duomenų bazė.");
  if (schema > schemaVersion()) {
    throw problem(place, "duomenų bazė sukurta naujesne programos versija (schema " +
                             std::to_string(schema) + ", ši programa skaito iki " +
                             std::to_string(schemaVersion()) + ").");
  }
  if (isUnfinished(db)) {
    throw problem(place, "duomenų bazės kūrimas buvo nutrauktas, sukurkite ją iš naujo.");
  }
  return schema;
}

void upgrade(Database& db, int from) {
  if (from == schemaVersion()) return;
  Transaction transaction(db, Transaction::For::Exclusive);
  migrate(db, storedSchema(db));  // another client may have been first
  raiseEpoch(db);
  grantAnew(db);
  transaction.commit();
}

bool isFilled(const NewBooks& what) { return what.demoCompany || what.operations > 0; }

// The demo company, whose operations are saved by the first user, and generated ones.
void fill(std::unique_ptr<Database> db, const NewBooks& what) {
  if (!isFilled(what)) return;
  const auto session = openSession(std::move(db), "admin", "");
  if (what.demoCompany) fillDemo(*session);
  generateDemo(session->db(), what.operations, what.progress);
  run(session->db(), "DELETE FROM store_meta WHERE name = $1", kUnfinished);
}

void createFile(const std::string& place, const NewBooks& what) {
  if (place.find("://") != std::string::npos) throw problem(place, kUnknownServer);
  std::error_code error;
  if (fs::exists(place, error)) throw problem(place, "toks failas jau yra.");
  UnfinishedFile unfinished(place + ".new");
  Database::Options options;
  options.create = true;
  auto db = Database::open(unfinished.path(), options);
  initBooks(*db, what);
  fill(std::move(db), what);
  if (fs::exists(place, error)) throw problem(place, "toks failas jau yra.");
  try {
    unfinished.rename(place);
  } catch (const fs::filesystem_error& renaming) {
    throw problem(place, renaming.code().message());
  }
}

}  // namespace

std::string shownPlace(const std::string& place) {
  const std::size_t begin = place.find("://");
  if (begin == std::string::npos) return place;
  std::string shown = place.substr(0, place.find('?'));
  const std::size_t host = begin + 3;
  const std::size_t at = shown.find_last_of('@');
  if (at != std::string::npos && at > host) shown.erase(host, at + 1 - host);
  return shown;
}

std::string booksName(const std::string& place) {
  return place.find("://") == std::string::npos ? fs::path(place).filename().string()
                                                : shownPlace(place);
}

void initBooks(Database& db, const NewBooks& what) {
  Transaction transaction(db, Transaction::For::Exclusive);
  if (isUnfinished(db)) dropTables(db);
  migrate(db, 0);
  setMetaValue(db, "epoch", "1");
  if (isFilled(what)) setMetaValue(db, kUnfinished, "1");
  seedCompany(db);
  transaction.commit();
}

void createBooks(const std::string& place, const NewBooks& what) {
  try {
    if (!isPostgresUrl(place)) return createFile(place, what);
    auto db = Database::open(place, {});
    // Held by the connection until it ends, however it ends.
    if (!anyRow(*db, "SELECT 1 WHERE pg_try_advisory_lock(1414288985, hashtext(current_schema()))"))
      throw problem(place, "duomenų bazę šiuo metu kuria kita programa.");
    const int schema = storedSchema(*db);
    if (schema > schemaVersion() || (schema != 0 && !isUnfinished(*db)))
      throw problem(place, "buhalterijos duomenų bazė čia jau yra.");
    initBooks(*db, what);
    fill(std::move(db), what);
  } catch (const DatabaseError& error) {
    throw explained(place, error);
  }
}

std::unique_ptr<Session> openSession(std::unique_ptr<Database> db, const std::string& login,
                                     const std::string& password, Session::ClockFunction clock) {
  if (!clock) clock = localNow;
  LoginOutcome in = logIn(*db, login, password, clock());
  if (!in.user) throw BooksError(in.refusal);
  return std::make_unique<Session>(std::move(db), *std::move(in.user), std::move(clock));
}

namespace {

// The books of a place, checked and brought to this program's schema.
std::unique_ptr<Database> openPlace(const std::string& place) {
  if (!isPostgresUrl(place)) checkFile(place);
  Database::Options options;
  options.busyMilliseconds = kOpeningWaitMs;
  auto db = Database::open(place, options);
  const int schema = checkedSchema(*db, place);
  {
    // Asks for the right to write, so that a file that cannot be written is known at once.
    Transaction probe(*db, Transaction::For::Write);
  }
  upgrade(*db, schema);
  db->waitWhenBusy(Database::Options().busyMilliseconds);
  return db;
}

using Begin = std::function<std::unique_ptr<Session>(std::unique_ptr<Database>)>;

std::unique_ptr<Session> openedBy(const Begin& begin, const std::string& place) {
  try {
    auto db = openPlace(place);
    std::string backups = backupFolderOf(*db, place);
    auto session = begin(std::move(db));
    session->setBackupFolder(std::move(backups));
    return session;
  } catch (const DatabaseError& error) {
    throw explained(place, error);
  }
}

}  // namespace

std::unique_ptr<Session> openBooks(const std::string& place, const std::string& login,
                                   const std::string& password, Session::ClockFunction clock) {
  return openedBy(
      [&](std::unique_ptr<Database> db) {
        return openSession(std::move(db), login, password, std::move(clock));
      },
      place);
}

std::unique_ptr<Session> reopenBooks(const std::string& place, const User& known,
                                     Session::ClockFunction clock) {
  return openedBy(
      [&](std::unique_ptr<Database> db) {
        auto user = knownUser(*db, known);
        if (!user) {
          throw problem(place, "vartotojo „" + known.login + "“ nebėra arba jis užblokuotas.");
        }
        return std::make_unique<Session>(std::move(db), *std::move(user), std::move(clock));
      },
      place);
}

}  // namespace tolvex::store
