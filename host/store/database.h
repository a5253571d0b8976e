// Database: one connection to SQLite or PostgreSQL behind the same few calls.
//
// SQL is common to both engines (schema.h tells the two tokens that differ); parameters are $1, $2,
// … and always bound. Statements are prepared once per connection and text and cached. Every
// failure throws DatabaseError with the engine's text; the caller rolls back.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tolvex::store {

enum class Engine { Sqlite, Postgres };

// Marks books among other SQLite files ("TLVX").
inline constexpr int kApplicationId = 0x544C5658;

class DatabaseError : public std::runtime_error {
 public:
  enum class Kind {
    Busy,       // locked by another, or a deadlock or serialization failure: may be tried again
    Unique,     // a unique key exists already
    Reference,  // a foreign key does not exist, or is still in use
    Check,      // a check of the schema failed
    Full,       // no room on the disk
    ReadOnly,
    Damaged,    // the file is no database or is corrupt
    Lost,       // the connection is gone
    Refused,    // the server answers but lets nobody in: no such database, wrong name or password
    Forbidden,  // this user of the server may not do that
    NoPlace,  // the file cannot be opened: no such folder, or no right to it; an unreadable address
    Other,
  };
  DatabaseError(Kind kind, const std::string& text) : std::runtime_error(text), kind(kind) {}
  const Kind kind;
};

// A prepared statement in use. Obtained from Database::prepare; going out of scope resets it and
// gives it back to the cache. Parameters count from 1, columns from 0.
class Statement {
 public:
  virtual ~Statement() = default;
  virtual Statement& bind(int index, std::int64_t value) = 0;
  virtual Statement& bind(int index, double value) = 0;
  virtual Statement& bind(int index, std::string_view value) = 0;
  virtual Statement& bindNull(int index) = 0;
  Statement& bind(int index, int value) { return bind(index, std::int64_t{value}); }
  Statement& bind(int index, const char* value) { return bind(index, std::string_view(value)); }
  Statement& bind(int index, const std::string& v) { return bind(index, std::string_view(v)); }
  template <class T>
  Statement& bind(int index, const std::optional<T>& value) {
    return value ? bind(index, *value) : bindNull(index);
  }

  virtual bool step() = 0;   // true: a row stands ready
  virtual void reset() = 0;  // for the next round; parameters stay bound
  int run();                 // steps to the end, resets; rows changed
  virtual int changes() const = 0;

  virtual bool isNull(int column) const = 0;
  virtual std::int64_t integer(int column) const = 0;                        // null reads as 0
  int whole(int column) const { return static_cast<int>(integer(column)); }  // an id, a day, a flag
  virtual double real(int column) const = 0;
  virtual std::string_view text(
      int column) const = 0;  // null reads as ""; valid until the next step

 private:
  friend class StatementLease;
  virtual void clear() noexcept = 0;  // resets and forgets the parameters
};

class StatementLease {  // what prepare gives: a pointer that returns its statement to the cache
 public:
  StatementLease(Statement* statement, bool* inUse) : statement_(statement), inUse_(inUse) {}
  ~StatementLease() { release(); }
  StatementLease(StatementLease&& other) noexcept;
  StatementLease& operator=(StatementLease&&) = delete;
  Statement* operator->() const { return statement_; }
  Statement& operator*() const { return *statement_; }

 private:
  void release();
  Statement* statement_;
  bool* inUse_;
};

class Database {
 public:
  virtual ~Database() = default;
  virtual Engine engine() const = 0;
  virtual StatementLease prepare(std::string_view sql) = 0;
  virtual void execute(std::string_view script) = 0;  // one or more statements, no parameters

  virtual void beginWrite() = 0;      // SQLite: immediate; PostgreSQL: read committed
  virtual void beginExclusive() = 0;  // a write that waits for all other writers and holds them off
  virtual void beginRead() = 0;       // one snapshot for all reads until commit
  virtual void commit() = 0;
  virtual void rollback() noexcept = 0;  // harmless without a transaction
  virtual bool inTransaction() const = 0;

  // How many times this connection made data durable; for the measurement of one flush a save.
  virtual std::int64_t flushes() const { return -1; }

  // How long a statement waits for another client's lock before Busy.
  virtual void waitWhenBusy(int milliseconds) = 0;

  // After Lost: connects again. False when the other side still does not answer; statements that
  // were prepared before are prepared anew.
  virtual bool reconnect() { return false; }

  // "books.tolvex" or a path; "postgresql://…". Throws DatabaseError with a text for users. A file
  // that is no database is found out by the first statement, not here; it is never changed.
  struct Options {
    bool create = false;    // SQLite: make the file (fails when it exists)
    bool inMemory = false;  // SQLite without a file; the url is not used
    bool readOnly = false;  // SQLite
    int busyMilliseconds = 10000;
  };
  static std::unique_ptr<Database> open(const std::string& url, const Options& options);
};

bool isPostgresUrl(std::string_view place);

// Rolls back at the end of the scope unless committed.
class Transaction {
 public:
  enum class For { Read, Write, Exclusive };
  Transaction(Database& db, For purpose);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  void commit();

 private:
  Database& db_;
  bool open_ = true;
};

}  // namespace tolvex::store
