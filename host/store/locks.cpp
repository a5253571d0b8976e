#include "host/store/locks.h"

namespace tolvex::store {

int UsedAccounts::idOf(const std::string& code) {
  auto select = db_.prepare(
      "SELECT id FROM account WHERE code = $1 AND (plan = 0 OR plan = -9) ORDER BY plan DESC");
  select->bind(1, code);
  return select->step() ? select->whole(0) : kUnknownAccount;
}

void UsedAccounts::read() {
  for (auto& [code, id] : byCode_) {
    const auto known = seen_.find(code);
    id = known != seen_.end() ? known->second : idOf(code);
    if (id != kUnknownAccount) byId_.try_emplace(id);
  }
  hold();
  auto select = db_.prepare(
      "SELECT a.code, a.group_flag, a.track_items, l.day_high, l.day_low, a.plan FROM account a"
      " LEFT JOIN account_lock l ON l.account_id = a.id WHERE a.id = $1");
  for (auto& [id, account] : byId_) {
    account.id = id;
    select->bind(1, id);
    if (select->step()) {
      account.code = select->text(0);
      account.group = select->integer(1) != 0;
      account.tracked = select->integer(2) != 0;
      account.dayHigh = select->whole(3);
      account.dayLow = select->whole(4);
      const auto plan = select->integer(5);
      if (plan != 0 && plan != -9) account.code += " (senas planas)";
    }
    select->reset();
  }
  // A number may have passed to another account since it was last seen.
  bool stale = false;
  for (const auto& [code, id] : byCode_) {
    if (id == kUnknownAccount) continue;
    if (byId_.at(id).code == code) {
      seen_[code] = id;
    } else {
      stale = seen_.erase(code) > 0 || stale;
    }
  }
  if (stale) read();
}

// A statement sees what was stored when it began, also when it then waits for a row. So the
// accounts are held first, and their lock dates read by a statement that begins after whoever set
// them.
void UsedAccounts::hold() {
  if (db_.engine() != Engine::Postgres) return;  // one writer at a time
  auto hold = db_.prepare("SELECT 1 FROM account WHERE id = $1 FOR SHARE");
  for (const auto& [id, account] : byId_) {
    hold->bind(1, id);
    hold->step();
    hold->reset();
  }
}

const UsedAccount* UsedAccounts::find(const std::string& code) const {
  const auto place = byCode_.find(code);
  if (place == byCode_.end() || place->second == kUnknownAccount) return nullptr;
  return &byId_.at(place->second);
}

void checkLocks(Session& session, const EntryRow& entry, const UsedAccounts& accounts) {
  for (const int sign : {1, -1}) {
    const SideRow& side = entry.side(sign);
    if (side.accountId == kUnknownAccount) continue;
    const UsedAccount& account = accounts.at(side.accountId);
    int limit = account.dayHigh;
    if (account.dayLow > limit && entry.day <= account.dayLow &&
        !session.rights("CAllAccLock").edit) {
      limit = account.dayLow;
    }
    if (entry.day <= limit) {
      throw Refusal(kLocked,
                    "Sąskaita " + account.code + " užblokuota iki " + dayText(limit) + "!");
    }
  }
}

}  // namespace tolvex::store
