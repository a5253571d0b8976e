#include "host/store/postgres_database.h"

#include <libpq-fe.h>

#include <charconv>
#include <cstring>
#include <vector>

#include "host/store/statement_cache.h"

namespace tolvex::store {
namespace {

using Kind = DatabaseError::Kind;

struct ResultDeleter {
  void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ResultDeleter>;

Kind kindOfState(std::string_view state) {
  if (state == "40001" || state == "40P01" || state == "55P03") return Kind::Busy;
  if (state == "23505") return Kind::Unique;
  if (state == "23503") return Kind::Reference;
  if (state.starts_with("23") || state == "22001" || state == "22003") return Kind::Check;
  if (state == "53100") return Kind::Full;
  if (state == "25006") return Kind::ReadOnly;
  if (state == "42501") return Kind::Forbidden;
  if (state.starts_with("XX001") || state.starts_with("XX002")) return Kind::Damaged;
  if (state.starts_with("08") || state.starts_with("57P")) return Kind::Lost;
  return Kind::Other;
}

std::string trimmed(const char* text) {
  std::string out = text ? text : "";
  while (!out.empty() && (out.back() == '\n' || out.back() == ' ')) out.pop_back();
  return out;
}

// A failed connection carries no state code; whether a server answers at all can be asked.
Kind kindOfFailedConnection(const std::string& url) {
  switch (PQping(url.c_str())) {
    case PQPING_OK:
      return Kind::Refused;
    case PQPING_NO_ATTEMPT:  // the address cannot be read
      return Kind::NoPlace;
    default:
      return Kind::Lost;
  }
}

class Connection {
 public:
  Connection(const std::string& url, int busyMilliseconds)
      : handle_(PQconnectdb(url.c_str())), busyMilliseconds_(busyMilliseconds) {
    if (PQstatus(handle_) != CONNECTION_OK) {
      const DatabaseError error(kindOfFailedConnection(url), trimmed(PQerrorMessage(handle_)));
      PQfinish(handle_);
      throw error;
    }
    prepareSession();
  }
  ~Connection() { PQfinish(handle_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  PGconn* handle() { return handle_; }
  int generation() const { return generation_; }
  int nextName() { return ++names_; }

  Result check(PGresult* raw) {
    Result result(raw);
    const ExecStatusType status = PQresultStatus(raw);
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) return result;
    if (PQstatus(handle_) == CONNECTION_BAD) {
      throw DatabaseError(Kind::Lost, trimmed(PQerrorMessage(handle_)));
    }
    const char* state = PQresultErrorField(raw, PG_DIAG_SQLSTATE);
    throw DatabaseError(kindOfState(state ? state : ""), trimmed(PQresultErrorMessage(raw)));
  }
  void execute(const char* script) { check(PQexec(handle_, script)); }

  void waitWhenBusy(int milliseconds) {
    busyMilliseconds_ = milliseconds;
    execute(("SET lock_timeout = " + std::to_string(milliseconds)).c_str());
  }
  void closing() { closing_ = true; }
  void deallocate(const std::string& name) {
    const bool useless = closing_ || PQstatus(handle_) != CONNECTION_OK ||
                         PQtransactionStatus(handle_) == PQTRANS_INERROR;
    if (!useless) PQclear(PQexec(handle_, ("DEALLOCATE " + name).c_str()));
  }

  bool reconnect() {
    PQreset(handle_);
    ++generation_;
    if (PQstatus(handle_) != CONNECTION_OK) return false;
    prepareSession();
    return true;
  }

 private:
  void prepareSession() {
    PQsetNoticeProcessor(
        handle_, [](void*, const char*) {}, nullptr);
    PQsetClientEncoding(handle_, "UTF8");
    execute(("SET extra_float_digits = 1; SET synchronous_commit = on; SET lock_timeout = " +
             std::to_string(busyMilliseconds_))
                .c_str());
  }

  PGconn* handle_;
  int busyMilliseconds_;
  int generation_ = 0;  // grows with every reconnection; statements of older ones are gone
  int names_ = 0;
  bool closing_ = false;  // the server forgets the statements by itself
};

// Parameters travel as text, so that the server gives each the type that its place asks for.
class PostgresStatement final : public Statement {
 public:
  PostgresStatement(Connection& connection, const std::string& sql)
      : connection_(connection), sql_(sql), values_(countParameters(sql)) {
    prepare();
  }
  ~PostgresStatement() override { connection_.deallocate(name_); }

  Statement& bind(int index, std::int64_t value) override {
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return set(index, std::string_view(buffer, static_cast<std::size_t>(end - buffer)));
  }
  Statement& bind(int index, double value) override {
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return set(index, std::string_view(buffer, static_cast<std::size_t>(end - buffer)));
  }
  Statement& bind(int index, std::string_view value) override { return set(index, value); }
  Statement& bindNull(int index) override {
    value(index).absent = true;
    return *this;
  }

  bool step() override {
    if (!result_) {
      send();
      row_ = -1;
    }
    return ++row_ < PQntuples(result_.get());
  }
  void reset() override { result_.reset(); }
  int changes() const override { return changes_; }

  bool isNull(int column) const override { return PQgetisnull(result_.get(), row_, column) != 0; }
  std::int64_t integer(int column) const override {
    const std::string_view digits = text(column);
    std::int64_t out = 0;
    const auto end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, out);
    if (read.ptr != end) return static_cast<std::int64_t>(real(column));  // a sum comes as numeric
    return out;
  }
  double real(int column) const override {
    const std::string_view digits = text(column);
    double out = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), out);
    return out;
  }
  std::string_view text(int column) const override {
    return {PQgetvalue(result_.get(), row_, column),
            static_cast<std::size_t>(PQgetlength(result_.get(), row_, column))};
  }

 private:
  struct Value {
    std::string text;
    bool absent = true;
  };

  static std::size_t countParameters(const std::string& sql) {
    std::size_t most = 0;
    for (std::size_t i = 0; i + 1 < sql.size(); ++i) {
      if (sql[i] != '$') continue;
      std::size_t number = 0;
      std::from_chars(sql.data() + i + 1, sql.data() + sql.size(), number);
      most = std::max(most, number);
    }
    return most;
  }
  void prepare() {
    name_ = "s" + std::to_string(connection_.nextName());
    connection_.check(PQprepare(connection_.handle(), name_.c_str(), sql_.c_str(), 0, nullptr));
    generation_ = connection_.generation();
  }
  void send() {
    if (generation_ != connection_.generation()) prepare();
    pointers_.clear();
    lengths_.clear();
    for (const Value& one : values_) {
      pointers_.push_back(one.absent ? nullptr : one.text.c_str());
      lengths_.push_back(static_cast<int>(one.text.size()));
    }
    result_ = connection_.check(PQexecPrepared(connection_.handle(), name_.c_str(),
                                               static_cast<int>(values_.size()), pointers_.data(),
                                               lengths_.data(), nullptr, 0));
    changes_ = std::atoi(PQcmdTuples(result_.get()));
  }
  Value& value(int index) {
    const auto i = static_cast<std::size_t>(index) - 1;
    if (index < 1 || i >= values_.size()) {
      throw DatabaseError(Kind::Other, "no parameter $" + std::to_string(index) + " in: " + sql_);
    }
    return values_[i];
  }
  Statement& set(int index, std::string_view text) {
    Value& one = value(index);
    one.text.assign(text);
    one.absent = false;
    return *this;
  }
  void clear() noexcept override {
    result_.reset();
    for (Value& one : values_) one.absent = true;
  }

  Connection& connection_;
  std::string sql_, name_;
  int generation_ = 0;
  std::vector<Value> values_;
  std::vector<const char*> pointers_;
  std::vector<int> lengths_;
  Result result_;
  int row_ = -1, changes_ = 0;
};

class PostgresDatabase final : public Database {
 public:
  PostgresDatabase(const std::string& url, const Options& options)
      : connection_(url, options.busyMilliseconds) {}
  ~PostgresDatabase() override { connection_.closing(); }

  Engine engine() const override { return Engine::Postgres; }
  StatementLease prepare(std::string_view sql) override {
    return cache_.lease(sql, [this](const std::string& text) {
      return std::make_unique<PostgresStatement>(connection_, text);
    });
  }
  void execute(std::string_view script) override {
    connection_.execute(std::string(script).c_str());
  }

  // Writers hold the shared form of one lock of the company, so that work on the whole books waits
  // for them and keeps new ones out.
  void beginWrite() override {
    begin(
        "BEGIN ISOLATION LEVEL READ COMMITTED READ WRITE;"
        "SELECT pg_advisory_xact_lock_shared(1414288984, hashtext(current_schema()))");
  }
  void beginExclusive() override {
    begin(
        "BEGIN ISOLATION LEVEL READ COMMITTED READ WRITE;"
        "SELECT pg_advisory_xact_lock(1414288984, hashtext(current_schema()))");
  }
  void beginRead() override { begin("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"); }
  void commit() override {
    // The server answers the commit of a failed transaction with a rollback and no error.
    const Result result = connection_.check(PQexec(connection_.handle(), "COMMIT"));
    if (std::strcmp(PQcmdStatus(result.get()), "COMMIT") != 0) {
      throw DatabaseError(Kind::Other, "commit of a failed transaction");
    }
  }
  void rollback() noexcept override {
    if (inTransaction()) PQclear(PQexec(connection_.handle(), "ROLLBACK"));
  }
  bool inTransaction() const override {
    const auto status = PQtransactionStatus(connection_.handle());
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
  }
  void waitWhenBusy(int milliseconds) override { connection_.waitWhenBusy(milliseconds); }
  bool reconnect() override { return connection_.reconnect(); }

 private:
  void begin(const char* script) {
    try {
      connection_.execute(script);
    } catch (...) {
      rollback();
      throw;
    }
  }

  mutable Connection connection_;
  StatementCache cache_;
};

}  // namespace

std::unique_ptr<Database> openPostgres(const std::string& url, const Database::Options& options) {
  return std::make_unique<PostgresDatabase>(url, options);
}

}  // namespace tolvex::store
