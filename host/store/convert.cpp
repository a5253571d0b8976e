#include "host/store/convert.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <tuple>

#include "host/store/admin_log.h"
#include "host/store/books.h"
#include "host/store/plan_mapping.h"
#include "host/store/schema.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr std::int64_t kEntriesAtOnce = 20000;  // between two looks at the progress
constexpr int kOpeningPlan = -9;                // of the account "0", which belongs to every plan

void refuseWithoutCounterpart(Database& db) {
  const std::vector<std::string> codes = withoutCounterpart(db);
  if (codes.empty()) return;
  throw Refusal(kReferred, "Sąskaita " + codes.front() + " neturi atitinkamos naujos sąskaitos!");
}

// Turnovers of a year in a currency: debit and credit, each in litas and in the currency, rows.
using YearKey = std::tuple<std::int64_t, std::int64_t, std::string>;  // account, year, currency
using Turnovers = std::map<YearKey, std::array<std::int64_t, 5>>;

// By counterparts where accounts have them: so the same before and after a conversion.
Turnovers turnoversOfCounterparts(Database& db) {
  Turnovers all;
  auto rows = db.prepare(
      "SELECT COALESCE(a.new_id, a.id), t.period, t.cur, SUM(t.debit), SUM(t.credit),"
      " SUM(t.debit_cur), SUM(t.credit_cur), SUM(t.n) FROM turn_acc t"
      " JOIN account a ON a.id = t.account_id WHERE t.period < 10000"
      " GROUP BY COALESCE(a.new_id, a.id), t.period, t.cur");
  while (rows->step()) {
    auto& sums = all[{rows->integer(0), rows->integer(1), std::string(rows->text(2))}];
    for (std::size_t i = 0; i < sums.size(); ++i) sums[i] = rows->integer(static_cast<int>(i) + 3);
  }
  return all;
}

void movePostings(Database& db, const Progress& progress) {
  const auto last = integerFrom(db, "SELECT MAX(id) FROM entry").value_or(0);
  auto move = db.prepare(
      "UPDATE posting SET"
      " account_id = (SELECT COALESCE(a.new_id, a.id) FROM account a"
      " WHERE a.id = posting.account_id),"
      " corr_id = (SELECT COALESCE(a.new_id, a.id) FROM account a WHERE a.id = posting.corr_id)"
      " WHERE entry_id > $1 AND entry_id <= $2");
  for (std::int64_t done = 0; done < last; done += kEntriesAtOnce) {
    goOn(progress, "Įrašai perkeliami į naują planą",
         static_cast<double>(done) / static_cast<double>(last));
    move->bind(1, done).bind(2, done + kEntriesAtOnce);
    move->run();
  }
}

void moveTemplates(Database& db) {
  for (const std::string side : {"account_d", "account_c"}) {
    run(db, "UPDATE template_line SET " + side +
                " = (SELECT COALESCE(a.new_id, a.id) FROM account a WHERE a.id = template_line." +
                side + ") WHERE " + side + " IS NOT NULL");
  }
}

// What one account is matched with documents for, its counterpart is as well.
void moveTracking(Database& db) {
  run(db,
      "UPDATE account SET track_items = 1 WHERE plan = 1"
      " AND id IN (SELECT new_id FROM account WHERE plan = 0 AND track_items <> 0)");
  run(db, "UPDATE account SET track_items = 0 WHERE plan = 0");
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
      marks[static_cast<int>(rows->integer(0))] = {rows->integer(1), std::string(rows->text(2))};
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
void moveLocks(Database& db, const std::vector<MappedAccount>& mapping) {
  std::map<int, int> counterparts;
  for (const MappedAccount& account : mapping) counterparts[account.id] = account.newId;
  std::map<int, Lock> locks;
  {
    auto rows = db.prepare("SELECT account_id, day_high, day_low, user_id FROM account_lock");
    while (rows->step()) {
      const int account = static_cast<int>(rows->integer(0));
      const auto to = counterparts.find(account);
      Lock& lock = locks[to == counterparts.end() ? account : to->second];
      lock.high = std::max(lock.high, static_cast<int>(rows->integer(1)));
      lock.low = std::max(lock.low, static_cast<int>(rows->integer(2)));
      lock.userId = static_cast<int>(rows->integer(3));
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

// Every plan takes the place of the next older one, the oldest first.
void renumberPlans(Database& db) {
  std::vector<int> plans;
  {
    auto rows = db.prepare("SELECT DISTINCT plan FROM account WHERE plan <= 0 ORDER BY plan");
    while (rows->step()) plans.push_back(static_cast<int>(rows->integer(0)));
  }
  constexpr const char* kMove = "UPDATE account SET plan = $2 WHERE plan = $1";
  for (const int plan : plans) {
    if (plan == kOpeningPlan) continue;
    run(db, kMove, plan, plan - 1 == kOpeningPlan ? plan - 2 : plan - 1);
  }
  run(db, kMove, 1, 0);
  run(db, "UPDATE account SET new_id = NULL WHERE new_id IS NOT NULL");
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
  const Turnovers before = turnoversOfCounterparts(db);
  std::vector<AccountText> left;

  movePostings(db, session.progress());
  moveTemplates(db);
  moveTracking(db);
  moveMarks(db, mapping, left);
  moveLocks(db, mapping);
  rewriteAccountTexts(db, renamed);
  renumberPlans(db);
  rebuildBooks(db, session.progress());
  if (turnoversOfCounterparts(db) != before) {
    throw BooksError("Likučiai po konvertavimo nesutampa su buvusiais, duomenys nepakeisti.");
  }

  const std::vector<AccountText> texts = accountTextsLeft(db, renamed);
  left.insert(left.end(), texts.begin(), texts.end());
  writeProtocol(session, mapping, left);
  raiseEpoch(db);
  return left;
}

}  // namespace tolvex::store
