// The accounts that a save uses: read in one go, held against changes of the plan and of their lock
// dates until the save is over, in ascending order, so that two savers never wait in a circle.
#pragma once

#include <map>
#include <string>
#include <unordered_map>

#include "host/store/oper_rows.h"
#include "host/store/session.h"

namespace tolvex::store {

struct UsedAccount {
  int id = 0;
  std::string code;
  bool group = false;
  bool tracked = false;
  int dayHigh = 0, dayLow = 0;  // lock dates; 0: none
};

// Ids of account numbers seen before; every use checks them again against the row.
using AccountIds = std::unordered_map<std::string, int>;

class UsedAccounts {
 public:
  UsedAccounts(Database& db, AccountIds& seen) : db_(db), seen_(seen) {}

  void want(const std::string& code) { byCode_.try_emplace(code, 0); }
  void want(int id) { byId_.try_emplace(id); }
  void read();

  const UsedAccount* find(const std::string& code) const;  // null: no such account in the plan
  const UsedAccount& at(int id) const { return byId_.at(id); }

 private:
  int idOf(const std::string& code);
  void hold();

  Database& db_;
  AccountIds& seen_;
  std::map<std::string, int> byCode_;
  std::map<int, UsedAccount> byId_;
};

// Throws Refusal 1202 when one of the entry's accounts is locked on the entry's date. The higher
// date binds everybody, the lower one all but those who have the right to work behind it. Account
// "0" can be locked like any other.
void checkLocks(Session& session, const EntryRow& entry, const UsedAccounts& accounts);

}  // namespace tolvex::store
