// Books against what is derived from them.
#include <algorithm>
#include <map>

#include "host/store/books.h"
#include "host/store/derived_scan.h"
#include "host/store/dimset.h"
#include "host/store/oper_doc.h"

namespace tolvex::store {

namespace {

constexpr int kShownOfACheck = 50;

class Findings {
 public:
  void add(const char* check, const std::string& text) {
    if (++counts_[check] <= kShownOfACheck) found_.push_back({check, text});
  }
  std::vector<Finding> take() {
    for (const auto& [check, count] : counts_) {
      if (count <= kShownOfACheck) continue;
      found_.push_back({check, "… ir dar " + std::to_string(count - kShownOfACheck)});
    }
    return std::move(found_);
  }

 private:
  std::vector<Finding> found_;
  std::map<std::string, int> counts_;
};

std::string accountCode(Database& db, int id) {
  auto select = db.prepare("SELECT code FROM account WHERE id = $1");
  select->bind(1, id);
  return select->step() ? std::string(select->text(0)) : "#" + std::to_string(id);
}

std::string turnText(Database& db, const TurnKey& key, const Turn& must, const Turn& stored) {
  std::string text = "Sąskaita " + accountCode(db, key.account) + ", laikotarpis " +
                     std::to_string(key.period) + ", " + key.cur;
  if (key.dimset != 0) text += ", adresatų rinkinys " + std::to_string(key.dimset);
  return text + ": pagal įrašus " + centsText(must.debit) + " / " + centsText(must.credit) +
         ", sukaupta " + centsText(stored.debit) + " / " + centsText(stored.credit);
}

// Every stored roll-up row against the turnovers of the entries; then those that are not stored.
void compareTurns(Database& db, DerivedScan& scan, PackedTurns must, bool withSet,
                  Findings& findings) {
  {
    auto select = db.prepare(
        withSet ? "SELECT account_id, period, corr_id, cur, debit, credit, debit_cur, credit_cur,"
                  " n, dimset_id FROM turn_dim"
                : "SELECT account_id, period, corr_id, cur, debit, credit, debit_cur, credit_cur,"
                  " n, 0 FROM turn_acc");
    while (select->step()) {
      TurnKey key{select->whole(0), select->whole(1), select->whole(9), select->whole(2),
                  std::string(select->text(3))};
      const Turn stored{select->integer(4), select->integer(5), select->integer(6),
                        select->integer(7), select->integer(8)};
      const auto place = must.find(scan.pack(key));
      if (place == must.end()) {
        findings.add("roll-ups", turnText(db, key, {}, stored));
      } else {
        if (!(place->second == stored)) {
          findings.add("roll-ups", turnText(db, key, place->second, stored));
        }
        place->second.n = 0;  // seen
      }
    }
  }
  for (const auto& [key, turn] : must) {
    if (turn.n != 0) findings.add("roll-ups", turnText(db, scan.unpack(key), turn, {}));
  }
}

std::string itemText(Database& db, int account, int item) {
  return "Sąskaita " + accountCode(db, account) + ", operacija " + std::to_string(item) +
         ": likutis neatitinka įrašų";
}

// Open items as stored, read in the order in which the scan gives those that must be.
class StoredItems {
 public:
  explicit StoredItems(Database& db)
      : select_(db.prepare("SELECT account_id, item_id, cur, dimset_id, rest_lt, rest_cur, full_lt,"
                           " full_cur, first_day, last_day, head_entry_id, is_open FROM open_item"
                           " ORDER BY account_id, item_id, cur, dimset_id")),
        more_(select_->step()) {}

  bool more() const { return more_; }
  std::pair<int, int> key() const { return {select_->whole(0), select_->whole(1)}; }
  // All rows of the item at hand; false in `flags` when one of them tells wrongly whether it is
  // open.
  std::vector<ItemRow> take(bool& flags) {
    const auto at = key();
    std::vector<ItemRow> rows;
    flags = true;
    for (; more_ && key() == at; more_ = select_->step()) {
      ItemRow row;
      row.cur = select_->text(2);
      row.dimsetId = select_->whole(3);
      row.restLt = select_->integer(4);
      row.restCur = select_->integer(5);
      row.fullLt = select_->integer(6);
      row.fullCur = select_->integer(7);
      row.firstDay = select_->whole(8);
      row.lastDay = select_->whole(9);
      row.headEntryId = select_->whole(10);
      flags = flags && row.open() == (select_->integer(11) != 0);
      rests_[at.first] += row.restLt;
      rows.push_back(std::move(row));
    }
    return rows;
  }
  // Of each account, over all rows that were taken.
  const std::map<int, std::int64_t>& rests() const { return rests_; }

 private:
  StatementLease select_;
  bool more_;
  std::map<int, std::int64_t> rests_;
};

// What stands open in all on an account is its balance, whatever documents it is divided among. The
// balance comes from the entries alone, so that a fault in dividing them shows too.
void compareRests(Database& db, const DerivedScan& scan, const std::map<int, std::int64_t>& rests,
                  Findings& findings) {
  std::map<int, std::int64_t> differences = rests;
  for (const auto& [key, turn] : scan.days())
    differences[scan.unpack(key).account] -= turn.debit - turn.credit;
  auto tracked = db.prepare("SELECT id, code FROM account WHERE track_items <> 0");
  while (tracked->step()) {
    const auto place = differences.find(tracked->whole(0));
    if (place == differences.end() || place->second == 0) continue;
    findings.add("open items", "Sąskaita " + std::string(tracked->text(1)) +
                                   ": skolų likučiai nuo sąskaitos likučio skiriasi " +
                                   centsText(place->second));
  }
}

void compareItems(Database& db, DerivedScan& scan, Findings& findings) {
  StoredItems stored(db);
  const auto report = [&](const std::pair<int, int>& key) {
    findings.add("open items", itemText(db, key.first, key.second));
  };
  const auto dropBefore = [&](const std::pair<int, int>& key) {
    while (stored.more() && stored.key() < key) {
      bool flags;
      report(stored.key());
      (void)stored.take(flags);
    }
  };
  scan.forEachItem([&](int account, int item, std::vector<ItemRow> must) {
    const std::pair key{account, item};
    dropBefore(key);
    bool flags = false;
    if (!stored.more() || stored.key() != key || stored.take(flags) != must || !flags) report(key);
  });
  dropBefore({std::numeric_limits<int>::max(), 0});
  compareRests(db, scan, stored.rests(), findings);
}

void checkNumbers(Database& db, Findings& findings) {
  auto select = db.prepare(
      "SELECT an_bucket_id, auto_number, COUNT(*) FROM oper WHERE auto_number > 0"
      " AND an_bucket_id IS NOT NULL GROUP BY an_bucket_id, auto_number HAVING COUNT(*) > 1");
  while (select->step()) {
    findings.add("numbers", "Numeris " + std::to_string(select->integer(1)) + " skaitliuke " +
                                std::to_string(select->integer(0)) + " duotas kelis kartus");
  }
}

void checkSets(Database& db, Findings& findings) {
  std::map<int, std::vector<std::string>> stored;
  auto refs = db.prepare("SELECT dimset_id, foidr FROM dimset_ref ORDER BY dimset_id, foidr");
  while (refs->step()) stored[refs->whole(0)].emplace_back(refs->text(1));
  auto sets = db.prepare("SELECT id, ref_key FROM dimset");
  while (sets->step()) {
    const auto place = stored.find(sets->whole(0));
    std::vector<std::string> must = dimsetRefs(sets->text(1));
    if (must != (place == stored.end() ? std::vector<std::string>{} : place->second)) {
      findings.add("copies", "Adresatų rinkinys " + std::to_string(sets->integer(0)) +
                                 " neatitinka savo adresatų");
    }
    if (place != stored.end()) stored.erase(place);
  }
  for (const auto& [id, list] : stored) {
    findings.add("orphans", "Adresatai be rinkinio: " + std::to_string(id));
  }
}

// Documents of payment orders and receipts against the texts that they were taken from.
void checkDocs(Database& db, Findings& findings) {
  auto select = db.prepare(
      "SELECT o.id, o.otype, o.day, o.parameters, d.oper_id, d.otype, d.day, d.cur, d.rate,"
      " d.client_ref, d.my_account_ref, d.client_account_ref, d.priority, d.import_key"
      " FROM oper o LEFT JOIN oper_doc d ON d.oper_id = o.id"
      " WHERE o.otype IN ('O0201501', 'O0201502')");
  const auto same = [&](const std::optional<std::string>& must, int column) {
    return must ? *must == select->text(column) : select->isNull(column);
  };
  while (select->step()) {
    HeaderRow header;
    header.id = select->whole(0);
    header.otype = select->text(1);
    header.day = select->whole(2);
    header.parameters = select->text(3);
    const DocRow must = *docOf(header);
    const bool right = !select->isNull(4) && select->text(5) == header.otype &&
                       select->whole(6) == header.day && select->text(7) == must.cur &&
                       select->real(8) == must.rate && same(must.clientRef, 9) &&
                       same(must.myAccountRef, 10) && same(must.clientAccountRef, 11) &&
                       select->whole(12) == must.priority && same(must.importKey, 13);
    if (!right) {
      findings.add("copies", "Operacijos " + std::to_string(header.id) +
                                 " dokumento duomenys neatitinka jos teksto");
    }
  }
}

}  // namespace

std::vector<Finding> verifyBooks(Database& db, const Progress& progress) {
  Transaction snapshot(db, Transaction::For::Read);
  Findings findings;
  ScanHooks hooks;
  hooks.fault = [&](const char* check, const std::string& text) { findings.add(check, text); };
  hooks.wrongCopies = [&](int entryId, int sign, const PostingCopies&) {
    findings.add("copies", "Įrašo " + std::to_string(entryId) +
                               (sign == 1 ? " debeto" : " kredito") +
                               " pusės išvestiniai duomenys neteisingi");
  };
  hooks.unknownSet = [](const std::string&) { return -1; };  // shows as a wrong copy
  DerivedScan scan(db, hooks, progress);
  scan.run();
  compareTurns(db, scan, withLongerPeriods(scan.days()), false, findings);
  compareTurns(db, scan, withLongerPeriods(scan.months()), true, findings);
  compareItems(db, scan, findings);
  checkNumbers(db, findings);
  checkSets(db, findings);
  checkDocs(db, findings);
  snapshot.commit();
  return findings.take();
}

std::vector<Finding> numberGaps(Database& db) {
  std::vector<Finding> gaps;
  auto select = db.prepare(
      "SELECT b.bucket_key, o.an_bucket_id, o.auto_number FROM oper o"
      " JOIN an_bucket b ON b.id = o.an_bucket_id WHERE o.auto_number > 0"
      " ORDER BY o.an_bucket_id, o.auto_number");
  std::int64_t bucket = 0, last = 0;
  while (select->step()) {
    const std::int64_t number = select->integer(2);
    if (select->integer(1) == bucket && number > last + 1) {
      std::string text = "Praleisti numeriai: " + std::to_string(last + 1);
      if (number > last + 2) text += "–" + std::to_string(number - 1);
      gaps.push_back({"gaps", text + " (skaitliukas " + std::string(select->text(0)) + ")"});
    }
    bucket = select->integer(1);
    last = number;
  }
  return gaps;
}

}  // namespace tolvex::store
