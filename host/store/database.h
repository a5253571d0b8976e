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

class DatabaseError : public std::runtime_error {
 public:
  enum class Kind {
    Busy,        // locked by another, or a deadlock or serialization failure: may be tried again
    Unique,      // a unique key exists already
    Reference,   // a foreign key does not exist, or is still in use
    Check,       // a check of the schema failed
    Full,        // no room on the disk
    ReadOnly,
    Damaged,     // the file is no database or is corrupt
    Lost,        // the connection is gone
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
  virtual void reset() = 0;  // for the next round with other parameters
  int run();                 // steps to the end, resets; rows changed
  virtual int changes() const = 0;

  virtual bool isNull(int column) const = 0;
  virtual std::int64_t integer(int column) const = 0;  // null reads as 0
  virtual double real(int column) const = 0;
  virtual std::string_view text(int column) const = 0;  // null reads as ""; valid until the next step
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

  virtual void beginWrite() = 0;  // SQLite: immediate; PostgreSQL: read committed
  virtual void beginRead() = 0;   // one snapshot for all reads until commit
  virtual void commit() = 0;
  virtual void rollback() noexcept = 0;  // harmless without a transaction
  virtual bool inTransaction() const = 0;

  // How many times this connection made data durable; for the measurement of one flush a save.
  virtual std::int64_t flushes() const { return -1; }

  // "books.tolvex" or a path; "postgresql://…". Throws DatabaseError with a text for users.
  struct Options {
    bool create = false;     // SQLite: make the file (fails when it exists)
    bool inMemory = false;
    int busyMilliseconds = 10000;
  };
  static std::unique_ptr<Database> open(const std::string& url, const Options& options);
};

// Rolls back at the end of the scope unless committed.
class Transaction {
 public:
  enum class For { Read, Write };
  Transaction(Database& db, For purpose);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  void commit();

 private:
  Database& db_;
  bool open_ = true;
};

}  // namespace tolvex::store
