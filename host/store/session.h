// Session: one user at work on one company's books.
//
// It answers the calls of StorePort: routines through the table of routines.h, records through
// records.h, and turns every failure into a code and a text. A busy engine is tried again three
// times (50, 100, 200 ms), then 1205. Used by one thread.
#pragma once

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <typeindex>

#include "framework/date_time.h"
#include "host/store/database.h"
#include "host/store/refusal.h"
#include "host/store/store_port.h"

namespace tolvex::store {

// Who works, as the books know him.
struct User {
  int id = 0;
  std::string login, name, prefix, reference;  // reference: the employee's, or ""
  bool hasPassword = false;
  bool mustChangePassword = false;  // he has no rights until he does
};

// Told how far a long work is, from 0 to 1; answers false to stop it.
using Progress = std::function<bool(std::string_view what, double share)>;

// Who follows what a session does to the books as a whole.
struct SessionWatch {
  Progress progress = {};              // of a backup, a restore, a conversion
  std::function<void()> renewed = {};  // after a restore or conversion: all that was read is stale
};

// A number that GetAutoNumber offered to this client; see numbering.h.
struct NumberOffer {
  int groupId = 0, number = 0;
  std::string text;        // by the mask of the group
  std::string userPrefix;  // what the text was made of
  int madeOn = 0;
};

struct Flags {
  bool view = false, remove = false, edit = false, create = false, admin = false;
};

// What routines and record handlers work with: the connection inside an open transaction, the
// user, the clock.
class Session final : public StorePort {
 public:
  using ClockFunction = std::function<DateTime()>;
  Session(std::unique_ptr<Database> db, User user, ClockFunction clock);
  ~Session() override;

  HostResult call(std::string_view kind, std::string_view method,
                  std::string_view parameters) override;
  HostResult load(std::string_view kind, std::string_view reference) override;
  HostResult create(std::string_view kind, std::string_view otype) override;
  SaveOutcome save(std::string_view kind, std::string_view otype, RowSet& header, RowSet* second,
                   RowSet* third) override;
  HostResult erase(std::string_view kind, std::string_view reference) override;
  HostResult list(std::string_view kind, std::string_view first, std::string_view second,
                  std::string_view third) override;

  Database& db() { return *db_; }
  const User& user() const { return user_; }
  DateTime now() const { return clock_(); }
  int epoch() const { return epoch_; }  // of the books as this session knows them
  // "CBROperRights5" and "CBROperGroupRights5" take the rights of the bare name until they have
  // been granted themselves; an unknown component grants nothing. Asked of the books each time, so
  // a changed role or a blocked user counts at once.
  Flags rights(std::string_view component);
  NumberOffer& offer() { return offer_; }  // the last one
  void watch(SessionWatch watch) { watch_ = std::move(watch); }
  const Progress& progress() const { return watch_.progress; }
  // Where BackUpDB writes; "" for books that have no place of their own.
  const std::string& backupFolder() const { return backupFolder_; }
  void setBackupFolder(std::string folder) { backupFolder_ = std::move(folder); }
  // The key of the present save for its row in the protocol. Asking for it promises that row: when
  // the connection breaks during the commit, the row tells whether the save took place.
  const std::string& saveKey();

  // What a subject of the store remembers for the life of the session, one object of each type. It
  // must stay true when a transaction is rolled back and when other users save.
  template <class T>
  T& kept() {
    std::any& slot = kept_[std::type_index(typeid(T))];
    if (!slot.has_value()) slot.emplace<T>();
    return *std::any_cast<T>(&slot);
  }

  // Runs `work` in a transaction, retries a busy engine, and turns failures into code and text. A
  // work that has the books to itself may raise the epoch; this session then goes on in the new
  // one.
  HostResult guarded(Transaction::For purpose, const std::function<Variant()>& work);

 private:
  bool storedDespiteLostConnection();
  void renew(int epoch);

  std::unique_ptr<Database> db_;
  User user_;
  ClockFunction clock_;
  NumberOffer offer_;
  std::map<std::type_index, std::any> kept_;
  SessionWatch watch_;
  std::string backupFolder_;
  int epoch_ = 0;
  std::string saveKey_;  // empty: the present call writes no protocol
};

}  // namespace tolvex::store
