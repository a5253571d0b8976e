// Books: a company's store as a whole: made, opened, checked, copied.
//
// A place is a file ("books.tolvex") or "postgresql://…". All functions throw BooksError with a
// text in Lithuanian for the user; the place is left untouched.
#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/store/session.h"

namespace tolvex::store {

class BooksError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A long work was stopped by its Progress; nothing has changed.
class Stopped : public BooksError {
 public:
  Stopped();
};
// Tells `progress`, if there is one, how far a work is; throws Stopped when it says so.
void goOn(const Progress& progress, std::string_view what, double share);

// The place for messages and titles: an address without the name, password and settings in it.
std::string shownPlace(const std::string& place);
// The same, short: of a file its name alone.
std::string booksName(const std::string& place);

struct NewBooks {
  bool demoCompany = false;  // firms, accounts, rates and the worked operations
  int operations = 0;        // so many generated ones more
  Progress progress = {};
};
// Makes schema and seed in one transaction on an empty place. A file appears whole or not at all;
// a database on a server whose making was cut short is not opened, and is made anew here.
void createBooks(const std::string& place, const NewBooks& what);
// The same in a database at hand, which holds no books yet.
void initBooks(Database& db, const NewBooks& what = {});

// Opens, migrates an older schema, refuses a newer one, a damaged file, a file that is none.
// `login` must exist and be active, with the right password where it has one.
std::unique_ptr<Session> openBooks(const std::string& place, const std::string& login,
                                   const std::string& password, Session::ClockFunction clock = {});

// Opens again, for a user who came in before, without asking for his password once more. Refused
// when he is not there any more or was blocked meanwhile.
std::unique_ptr<Session> reopenBooks(const std::string& place, const User& known,
                                     Session::ClockFunction clock = {});

// The same over a database at hand.
std::unique_ptr<Session> openSession(std::unique_ptr<Database> db, const std::string& login,
                                     const std::string& password,
                                     Session::ClockFunction clock = {});

struct Finding {
  std::string check;  // "roll-ups", "open items", "numbers", "orphans", "balance", …
  std::string text;
};
// Books against roll-ups, open items against balances, numbers, orphans. Empty: clean.
std::vector<Finding> verifyBooks(Database& db, const Progress& progress = {});
// Running numbers that no document bears, because one was deleted or a higher one typed: worth
// knowing, no fault.
std::vector<Finding> numberGaps(Database& db);
// Makes the derived tables anew from the base tables, in the open transaction or in one of its own.
void rebuildBooks(Database& db, const Progress& progress = {});

// One format for both engines: an SQLite file with every base table, written under a temporary name
// and renamed at the end. An older copy of that name stays until then.
void backupBooks(Database& db, const std::string& file, const Progress& progress = {});
// Refuses a damaged, foreign or newer file before anything is touched; raises the epoch. In the
// open transaction, which has the books to itself, or in one of its own.
void restoreBooks(Database& db, const std::string& file, const Progress& progress = {});
// Where the copies of these books are kept: beside a file; of a server's books in the user's own
// folder for data.
std::string backupFolderOf(Database& db, const std::string& place);

}  // namespace tolvex::store
