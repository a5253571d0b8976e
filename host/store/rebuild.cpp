#include <algorithm>

#include "framework/references.h"
#include "host/store/books.h"
#include "host/store/derived_scan.h"
#include "host/store/dimset.h"
#include "host/store/oper_doc.h"

namespace tolvex::store {

namespace {

struct CopiesFix {
  int entryId = 0, sign = 0;
  PostingCopies must;
};

void fixCopies(Database& db, const std::vector<CopiesFix>& fixes) {
  auto update = db.prepare(
      "UPDATE posting SET oper_id = $1, day = $2, sum_lt = $3, corr_id = $4, dimset_id = $5,"
      " item_id = $6 WHERE entry_id = $7 AND sign = $8");
  for (const CopiesFix& fix : fixes) {
    update->bind(1, fix.must.operId).bind(2, fix.must.day).bind(3, fix.must.sumLt);
    update->bind(4, fix.must.corrId).bind(5, fix.must.dimsetId);
    if (fix.must.itemId != 0) {
      update->bind(6, fix.must.itemId);
    } else {
      update->bindNull(6);
    }
    update->bind(7, fix.entryId).bind(8, fix.sign);
    update->run();
  }
}

// Sets keep their ids, which open screens and other sessions may remember.
void rebuildSets(Database& db) {
  db.prepare("DELETE FROM dimset_ref")->run();
  std::vector<std::pair<int, std::string>> sets;
  {
    auto select = db.prepare("SELECT id, ref_key FROM dimset ORDER BY id");
    while (select->step()) {
      sets.emplace_back(select->whole(0), std::string(select->text(1)));
    }
  }
  auto insert = db.prepare("INSERT INTO dimset_ref (dimset_id, foidr, kind) VALUES ($1,$2,$3)");
  for (const auto& [id, key] : sets) {
    for (const std::string& ref : dimsetRefs(key)) {
      insert->bind(1, id).bind(2, ref).bind(3, kindOf(ref));
      insert->run();
    }
  }
}

void writeTurns(Database& db, const DerivedScan& scan, const PackedTurns& turns) {
  std::vector<const PackedTurns::value_type*> ordered;
  ordered.reserve(turns.size());
  for (const auto& row : turns) ordered.push_back(&row);
  std::sort(ordered.begin(), ordered.end(),
            [](const auto* a, const auto* b) { return a->first < b->first; });
  for (const auto* row : ordered) addTurn(db, scan.unpack(row->first), row->second);
}

void rebuildDocs(Database& db) {
  db.prepare("DELETE FROM oper_doc")->run();
  std::vector<int> ids;
  {
    auto select =
        db.prepare("SELECT id FROM oper WHERE otype IN ('O0201501', 'O0201502') ORDER BY id");
    while (select->step()) ids.push_back(select->whole(0));
  }
  for (const int id : ids) writeDoc(db, *readHeader(db, id), false);
}

void rebuild(Database& db, const Progress& progress) {
  for (const char* table : {"open_item", "turn_acc", "turn_dim"}) {
    db.prepare("DELETE FROM " + std::string(table))->run();
  }
  DimsetIds seen;
  Dimsets sets(db, seen);
  std::vector<CopiesFix> fixes;
  ScanHooks hooks;
  hooks.wrongCopies = [&](int entryId, int sign, const PostingCopies& must) {
    fixes.push_back({entryId, sign, must});
  };
  hooks.unknownSet = [&](const std::string& key) { return sets.idOf(key); };
  hooks.fault = [](const char*, const std::string& text) {
    throw BooksError("Pirminiai duomenys sugadinti, perskaičiuoti negalima: " + text);
  };
  DerivedScan scan(db, hooks, progress);
  scan.run();
  fixCopies(db, fixes);
  rebuildSets(db);
  writeTurns(db, scan, withLongerPeriods(scan.days()));
  writeTurns(db, scan, withLongerPeriods(scan.months()));
  scan.forEachItem([&db](int account, int item, const std::vector<ItemRow>& rows) {
    insertItem(db, account, item, rows);
  });
  rebuildDocs(db);
  if (db.engine() == Engine::Sqlite) db.execute("ANALYZE");
}

}  // namespace

void rebuildBooks(Database& db, const Progress& progress) {
  if (db.inTransaction()) return rebuild(db, progress);
  Transaction transaction(db, Transaction::For::Exclusive);
  rebuild(db, progress);
  transaction.commit();
}

}  // namespace tolvex::store
