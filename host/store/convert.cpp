#include "host/store/convert.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <tuple>

#include "host/store/admin_log.h"
#include "host/store/books.h"
#include "host/store/merge_accounts.h"
#include "host/store/plan_mapping.h"
#include "host/store/plan_swap.h"
#include "host/store/schema.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

void refuseWithoutCounterpart(Database& db) {
  const std::vector<std::string> codes = withoutCounterpart(db);
  if (codes.empty()) return;
  throw Refusal(kReferred, "Sąskaita " + codes.front() + " neturi atitinkamos naujos sąskaitos!");
}

// Which id stands for an account after the conversion. A counterpart takes the id of the busiest of
// its accounts, so that the postings of that one need not move; the others are merged into it.
class Successors {
 public:
  Successors(Database& db, const std::vector<MappedAccount>& mapping) {
    std::map<int, std::int64_t> postings;
    auto rows = db.prepare(
        "SELECT account_id, SUM(n) FROM turn_acc WHERE period < 10000 GROUP BY account_id");
    while (rows->step()) postings[rows->whole(0)] = rows->integer(1);
    for (const MappedAccount& account : mapping) {
      const auto [heir, first] = heirs_.try_emplace(account.newId, account.id);
      if (!first && postings[account.id] > postings[heir->second]) heir->second = account.id;
    }
    for (const MappedAccount& account : mapping) {
      const int to = heirs_.at(account.newId);
      successors_[account.newId] = successors_[account.id] = to;
      if (account.id != to) merges_.push_back({account.id, to});
    }
  }
  int of(int account) const {
    const auto found = successors_.find(account);
    return found == successors_.end() ? account : found->second;
  }
  const std::map<int, int>& heirs() const { return heirs_; }  // counterpart to account
  const std::vector<Merge>& merges() const { return merges_; }

 private:
  std::map<int, int> heirs_, successors_;
  std::vector<Merge> merges_;
};

// Turnovers of a year in a currency: debit and credit, each in litas and in the currency, rows.
using YearKey = std::tuple<std::int64_t, std::int64_t, std::string>;  // account, year, currency
using Turnovers = std::map<YearKey, std::array<std::int64_t, 5>>;

constexpr const char* kRolledUp =
    "SELECT account_id, period, cur, SUM(debit), SUM(credit), SUM(debit_cur), SUM(credit_cur),"
    " SUM(n) FROM turn_acc WHERE period < 10000 GROUP BY account_id, period, cur";
constexpr const char* kPosted =
    "SELECT account_id, day / 10000, cur, SUM(CASE sign WHEN 1 THEN sum_lt ELSE 0 END),"
    " SUM(CASE sign WHEN 1 THEN 0 ELSE sum_lt END), SUM(CASE sign WHEN 1 THEN sum_cur ELSE 0 END),"
    " SUM(CASE sign WHEN 1 THEN 0 ELSE sum_cur END), COUNT(*) FROM posting"
    " GROUP BY account_id, day / 10000, cur";

// By the account that stands for each, so the same before and after a conversion.
Turnovers turnoversOf(Database& db, const char* sql, const Successors& successors) {
  Turnovers all;
  auto rows = db.prepare(sql);
  while (rows->step()) {
    const int account = successors.of(rows->whole(0));
    auto& sums = all[{account, rows->integer(1), std::string(rows->text(2))}];
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i] += rows->integer(static_cast<int>(i) + 3);
  }
  return all;
}

// What one of its accounts is matched with documents for, a counterpart is as well: for good when
// one of them is, else as long as a group asks. Answers the accounts, by their successors, whose
// open items are to be made anew.
std::set<int> moveTracking(Database& db, const Successors& successors) {
  run(db,
      "UPDATE account SET track_items = (SELECT MIN(a.track_items) FROM account a"
      " WHERE a.new_id = account.id AND a.plan = 0 AND a.track_items <> 0)"
      " WHERE plan = 1 AND track_items = 0"
      " AND id IN (SELECT new_id FROM account WHERE plan = 0 AND track_items <> 0)");
  std::set<int> tracked, changed;
  {
    auto rows = db.prepare(
        "SELECT a.id, a.track_items FROM account a JOIN account n ON n.id = a.new_id"
        " WHERE n.track_items <> 0");
    while (rows->step()) {
      const int successor = successors.of(rows->whole(0));
      tracked.insert(successor);
      if (rows->integer(1) == 0) changed.insert(successor);
    }
  }
  for (const Merge& merge : successors.merges()) {
    if (tracked.contains(merge.to)) changed.insert(merge.to);
  }
  run(db, "UPDATE account SET track_items = 0 WHERE plan = 0");
  return changed;
}

// An account bears one mark. The one that the new plan itself gives stays, then the first by number
// comes; the others are told.
void moveMarks(Database& db, const std::vector<MappedAccount>& mapping,
               std::vector<AccountText>& left) {
  struct Marked {
    std::int64_t mark = 0;
    std::string name;
  };
  std::map<int, Marked> marks;
  {
    auto rows = db.prepare(
        "SELECT a.id, m.id, m.name FROM account a JOIN account_mark m ON m.id = a.mark_id"
        " WHERE a.plan IN (0, 1)");
    while (rows->step()) {
      marks[rows->whole(0)] = {rows->integer(1), std::string(rows->text(2))};
    }
  }
  for (const MappedAccount& account : mapping) {
    const auto old = marks.find(account.id);
    if (old == marks.end()) continue;
    const auto [at, given] = marks.try_emplace(account.newId, old->second);
    if (given) {
      run(db, "UPDATE account SET mark_id = $2 WHERE id = $1", account.newId, old->second.mark);
    } else if (at->second.mark != old->second.mark) {
      left.push_back(
          {"Sąskaitos požymis „" + old->second.name + "“", account.code + " → " + account.newCode});
    }
    run(db, "UPDATE account SET mark_id = NULL WHERE id = $1", account.id);
  }
}

struct Lock {
  int high = 0, low = 0, userId = 0;
};

// Of several locks on one counterpart the later dates win. What binds everybody binds the ordinary
// user too, so his date is never the earlier one.
void moveLocks(Database& db, const Successors& successors) {
  std::map<int, Lock> locks;
  {
    auto rows = db.prepare("SELECT account_id, day_high, day_low, user_id FROM account_lock");
    while (rows->step()) {
      Lock& lock = locks[successors.of(rows->whole(0))];
      lock.high = std::max(lock.high, rows->whole(1));
      lock.low = std::max(lock.low, rows->whole(2));
      lock.userId = rows->whole(3);
    }
  }
  run(db, "DELETE FROM account_lock");
  const auto day = [](int value) { return value != 0 ? std::optional(value) : std::nullopt; };
  for (const auto& [account, lock] : locks) {
    const int low = lock.low != 0 ? std::max(lock.low, lock.high) : 0;
    run(db,
        "INSERT INTO account_lock (account_id, day_high, day_low, user_id)"
        " VALUES ($1, $2, $3, $4)",
        account, day(lock.high), day(low), lock.userId);
  }
}

// An account that nobody used may have no counterpart; unless the new plan knows its number, it is
// gone.
RenamedAccounts renamedBy(Database& db, const std::vector<MappedAccount>& mapping) {
  RenamedAccounts renamed;
  auto gone = db.prepare(
      "SELECT code FROM account WHERE plan = 0 AND group_flag = 0 AND new_id IS NULL"
      " AND code NOT IN (SELECT code FROM account WHERE plan = 1)");
  while (gone->step()) renamed[std::string(gone->text(0))] = {};
  for (const MappedAccount& account : mapping) {
    renamed[account.code] = {account.newCode, account.newName};
  }
  return renamed;
}

void writeProtocol(Session& session, const std::vector<MappedAccount>& mapping,
                   const std::vector<AccountText>& left) {
  std::string detail;
  for (const MappedAccount& account : mapping) {
    detail += account.code + " -> " + account.newCode + "\n";
  }
  for (const AccountText& text : left) detail += "! " + text.where + ": " + text.text + "\n";
  writeAdminLog(session, AdminAct::Changed, "Sąskaitų plano konvertavimas", detail);
}

}  // namespace

std::vector<AccountText> convertPlan(Session& session) {
  Database& db = session.db();
  refuseWithoutCounterpart(db);
  const std::vector<MappedAccount> mapping = readMapping(db);
  const RenamedAccounts renamed = renamedBy(db, mapping);
  const Successors successors(db, mapping);
  const Turnovers before = turnoversOf(db, kRolledUp, successors);
  std::vector<AccountText> left;

  mergeAccounts(db, successors.merges(), session.progress());
  const std::set<int> itemsOf = moveTracking(db, successors);
  for (const int account : itemsOf) rebuildItems(db, account, successors.merges());
  moveMarks(db, mapping, left);
  moveLocks(db, successors);
  const std::vector<AccountText> texts = accountTextsLeft(db, renamed);
  left.insert(left.end(), texts.begin(), texts.end());
  rewriteAccountTexts(db, renamed);
  swapPlans(db, successors.heirs());
  if (turnoversOf(db, kRolledUp, successors) != before ||
      turnoversOf(db, kPosted, successors) != before) {
    throw BooksError("Likučiai po konvertavimo nesutampa su buvusiais, duomenys nepakeisti.");
  }
  writeProtocol(session, mapping, left);
  raiseEpoch(db);
  return left;
}

}  // namespace tolvex::store
