#include "host/store/oper_save.h"

#include <algorithm>
#include <set>
#include <utility>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/items.h"
#include "host/store/locks.h"
#include "host/store/numbering.h"
#include "host/store/oper_doc.h"
#include "host/store/oper_image.h"
#include "host/store/oper_record.h"
#include "host/store/protocol.h"
#include "host/store/rollup.h"
#include "operations/entry_rules.h"

namespace tolvex::store {

namespace {

using Item = std::pair<int, int>;  // account, item

NumberRules groupOf(Database& db, int groupId) {
  const std::optional<NumberRules> group = readNumberRules(db, groupId);
  if (!group || group->common) throw Refusal(kReferred, "Operacijų grupė nebeegzistuoja!");
  return *group;
}

void checkRights(Session& session, const OperChange& change) {
  const auto allowed = [&](int groupId) {
    const Flags flags = session.rights(operComponent(groupId));
    return change.isNew() ? flags.create : flags.edit;
  };
  if (!allowed(change.after.groupId) ||
      (change.before && change.before->groupId != change.after.groupId &&
       !allowed(change.before->groupId))) {
    refuseSave();
  }
}

std::vector<int> storedPointers(Database& db, int operId) {
  std::vector<int> ids;
  auto select = db.prepare(
      "SELECT DISTINCT r.points_to FROM entry e JOIN entry_ref r ON r.entry_id = e.id"
      " WHERE e.oper_id = $1 AND r.points_to IS NOT NULL");
  select->bind(1, operId);
  while (select->step()) ids.push_back(select->whole(0));
  return ids;
}

// Holds the operation itself and all that it points or pointed at, in ascending order. Returns
// those that do not exist.
std::vector<int> lockOperations(Database& db, std::vector<int> ids) {
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  auto select = db.prepare(db.engine() == Engine::Postgres
                               ? "SELECT 1 FROM oper WHERE id = $1 FOR NO KEY UPDATE"
                               : "SELECT 1 FROM oper WHERE id = $1");
  std::vector<int> missing;
  for (const int id : ids) {
    select->bind(1, id);
    if (!select->step()) missing.push_back(id);
    select->reset();
  }
  return missing;
}

// A record that was read from another version is refused.
HeaderRow lockedHeader(Session& session, RowSet& changes, int id) {
  std::optional<HeaderRow> header = holdOperation(session, id, pointersIn(changes));
  if (!header) refuseEditedGone();
  if (changes["RowVersion"].Number() != header->rowVersion) {
    throw Refusal(kChangedByOther,
                  "Įrašą pakeitė kitas vartotojas: " + lastChange(session.db(), id));
  }
  return *header;
}

void checkPointers(Database& db, const OperChange& change) {
  std::vector<int> ids;
  for (const EntryChange& entry : change.entries) {
    if (!entry.after) continue;
    for (const RefRow& ref : entry.after->refs) {
      if (ref.role == kOwnOperation) {
        if (ref.pointsTo == change.after.id) {
          refuseRule("Esama operacija negali būti adresatu!");
        }
        ids.push_back(ref.pointsTo);
      } else if (isOperationKind(kindOf(ref.foidr))) {
        ids.push_back(0);  // a reference of an operation's kind with no number behind it
      }
    }
  }
  if (ids.empty()) return;
  if (!lockOperations(db, std::move(ids)).empty()) {
    throw Refusal(kReferred, "Nurodyta operacija nebeegzistuoja!");
  }
}

// Finds the account of every side, then asks the lock dates of the touched entries, old and new.
void useAccounts(Session& session, OperChange& change) {
  UsedAccounts accounts(session.db(), session.kept<AccountIds>());
  for (const EntryChange& entry : change.entries) {
    for (const int sign : {1, -1}) {
      if (entry.before) accounts.want(entry.before->side(sign).accountId);
      if (!entry.after) continue;
      const SideRow& side = entry.after->side(sign);
      if (side.accountId == kUnknownAccount) {
        accounts.want(side.account);
      } else {
        accounts.want(side.accountId);
      }
    }
  }
  accounts.read();
  const auto settle = [&](SideRow& side) {
    const UsedAccount* account = side.accountId == kUnknownAccount ? accounts.find(side.account)
                                                                   : &accounts.at(side.accountId);
    if (account == nullptr || account->group) {
      side.accountId = kUnknownAccount;
      return;
    }
    side.accountId = account->id;
    side.tracked = account->tracked;
  };
  for (EntryChange& entry : change.entries) {
    if (entry.before) {
      for (const int sign : {1, -1}) {
        SideRow& side = entry.before->side(sign);
        side.tracked = accounts.at(side.accountId).tracked;
      }
      if (entry.touched()) checkLocks(session, *entry.before, accounts);
    }
    if (!entry.after) continue;
    const bool touched = entry.touched();
    settle(entry.after->debit);
    settle(entry.after->credit);
    if (touched) checkLocks(session, *entry.after, accounts);
  }
}

// The very rules of the screens, over the entry as it will be stored.
void testEntries(Database& db, const OperChange& change) {
  RequiredAddressees required(db);
  static const std::vector<RequiredRow> kNone;
  RowSetPtr BR;
  for (const EntryChange& entry : change.entries) {
    if (!entry.after || !entry.touched()) continue;
    const EntryRow& row = *entry.after;
    if (!BR) BR = RowSet::make(kBR);
    loadEntry(*BR, row, row.templateLineId ? required.of(*row.templateLineId) : kNone);
    const auto known = [&row](const std::string& code) {
      const SideRow& side = code == row.debit.account ? row.debit : row.credit;
      return side.accountId != kUnknownAccount;
    };
    std::string message = testEntry(*BR, known);
    if (message.empty() && row.debit.accountId == 0 && row.credit.accountId == 0) {
      message = kBadAccount;
    }
    if (!message.empty()) {
      refuseRule(entryFailure(message, *BR, centsText(row.sumLt)));
    }
  }
}

// A row that names no currency was tested as it came and is stored as a side in litas.
void settleCurrency(SideRow& side) {
  const std::string code = trim(side.cur);
  if (!code.empty() && code != kBaseCode) return;
  side.cur = kBaseCode;
  side.rate = 0;
  side.sumCur = 0;
}

void writeEntries(Database& db, OperChange& change) {
  for (const EntryChange& entry : change.entries) {
    if (!entry.after) deleteEntry(db, *entry.before);
  }
  for (EntryChange& entry : change.entries) {
    if (entry.before && entry.after) {
      updateEntry(db, change.after.id, *entry.before, *entry.after);
    }
  }
  for (EntryChange& entry : change.entries) {
    if (!entry.before) insertEntry(db, change.after.id, *entry.after);
  }
}

void addItems(const EntryRow& entry, std::set<Item>& items) {
  for (const int sign : {1, -1}) {
    const SideRow& side = entry.side(sign);
    if (side.itemId != 0) items.insert({side.accountId, side.itemId});
  }
}

// Postings of a new operation's own item; nobody else can point at it yet.
std::vector<ItemPosting> ownPostings(const OperChange& change, const Item& item) {
  std::vector<ItemPosting> postings;
  for (const EntryChange& entry : change.entries) {
    for (const int sign : {1, -1}) {
      const SideRow& side = entry.after->side(sign);
      if (side.accountId != item.first || side.itemId != item.second) continue;
      postings.push_back({entry.after->id, sign, change.after.id, entry.after->day,
                          entry.after->sumLt, side.cur, side.sumCur, side.dimsetId});
    }
  }
  return postings;
}

void rebuildItems(Database& db, const OperChange& change) {
  std::set<Item> items;
  for (const EntryChange& entry : change.entries) {
    if (entry.before) addItems(*entry.before, items);
    if (entry.after) addItems(*entry.after, items);
  }
  DimsetRefs refs(db);
  const auto share = [&refs](int a, int b) { return refs.shareAddressee(a, b); };
  for (const Item& item : items) {
    const bool fresh = change.isNew() && item.second == change.after.id;
    const auto postings = fresh ? ownPostings(change, item) : readItem(db, item.first, item.second);
    const std::vector<ItemRow> rows = itemRows(item.second, postings, share);
    (fresh ? insertItem : updateItem)(db, item.first, item.second, rows);
  }
}

void applyRollup(Database& db, const OperChange& change) {
  Rollup rollup;
  for (const EntryChange& entry : change.entries) {
    if (entry.before) rollup.add(*entry.before, -1);
    if (entry.after) rollup.add(*entry.after, 1);
  }
  rollup.apply(db);
}

void protocol(Session& session, const OperChange& change, bool gone, SaveReason reason) {
  ProtocolDetail detail;
  detail.header(change.before ? &*change.before : nullptr, gone ? nullptr : &change.after);
  for (const EntryChange& entry : change.entries) {
    detail.entry(entry.before ? &*entry.before : nullptr, entry.after ? &*entry.after : nullptr);
  }
  detail.line(imageText(imageOf(change, gone, session.epoch(), reason.undone)));
  const Action action = reason.undone != 0 ? Action::Undo
                        : gone             ? Action::Delete
                        : change.isNew()   ? Action::Create
                                           : Action::Update;
  writeProtocol(session, change.after, action, detail);
}

void store(Session& session, OperChange& change) {
  Database& db = session.db();
  Dimsets dimsets(db, session.kept<DimsetIds>());
  if (change.isNew()) {
    insertHeader(db, change.after);
  } else {
    updateHeader(db, change.after);
  }
  for (EntryChange& entry : change.entries) {
    if (!entry.after) continue;
    settleCurrency(entry.after->debit);
    settleCurrency(entry.after->credit);
    derive(*entry.after, change.after.id, dimsets);
  }
  writeEntries(db, change);
  writeDoc(db, change.after, !change.isNew());
  applyRollup(db, change);
  rebuildItems(db, change);
}

}  // namespace

void derive(EntryRow& entry, int operId, Dimsets& dimsets) {
  for (const int sign : {1, -1}) {
    SideRow& side = entry.side(sign);
    side.dimsetId = dimsets.idOf(dimsetKey(entry, sign));
    side.itemId = side.tracked ? itemOf(entry, sign, operId) : 0;
  }
}

std::optional<HeaderRow> holdOperation(Session& session, int id, std::vector<int> pointers) {
  for (const int pointer : storedPointers(session.db(), id)) pointers.push_back(pointer);
  pointers.push_back(id);
  lockOperations(session.db(), std::move(pointers));
  return readHeader(session.db(), id);
}

NumberRules groupFor(Session& session, const OperChange& change) {
  checkRights(session, change);
  return groupOf(session.db(), change.after.groupId);
}

void storeChange(Session& session, OperChange& change, const NumberRules& group,
                 SaveReason reason) {
  Database& db = session.db();
  checkPointers(db, change);
  useAccounts(session, change);
  if (reason.undone != 0) {
    regainNumber(session, group, change.after);
  } else {
    settleNumber(session, group, change.before ? &*change.before : nullptr, change.after);
  }
  testEntries(db, change);
  store(session, change);
  protocol(session, change, false, reason);
}

int saveOperation(Session& session, std::string_view kind, std::string_view otype,
                  RowSet& changes) {
  changes.MoveFirst();
  OperChange change;
  const std::string_view exactKind = otype.size() == kKindLength ? otype : kind;
  if (changes.State() == RowState::Added) {
    change.after = headerFrom(changes, exactKind, nullptr);
  } else {
    const int id = changes["ID"].Value().AsInt();
    change.before = lockedHeader(session, changes, id);
    change.after = headerFrom(changes, exactKind, &*change.before);
  }
  const NumberRules group = groupFor(session, change);
  change.entries = entriesFrom(session, changes, change);
  storeChange(session, change, group, {});
  writeBack(changes, change);
  return change.after.id;
}

void eraseOperation(Session& session, int id, SaveReason reason) {
  Database& db = session.db();
  const std::optional<HeaderRow> header = holdOperation(session, id, {});
  if (!header) refuseGone();
  if (!session.rights(operComponent(header->groupId)).remove) {
    refuseErase();
  }
  OperChange change;
  change.before = *header;
  change.after = *header;
  for (EntryRow& entry : readEntries(db, id)) {
    EntryChange gone;
    gone.before = std::move(entry);
    change.entries.push_back(std::move(gone));
  }
  useAccounts(session, change);
  {
    auto select = db.prepare(
        "SELECT o.day, o.serija, o.number FROM entry_ref r JOIN entry e ON e.id = r.entry_id"
        " JOIN oper o ON o.id = e.oper_id WHERE r.points_to = $1 AND e.oper_id <> $1"
        " ORDER BY o.id LIMIT 1");
    select->bind(1, id);
    if (select->step()) {
      throw Refusal(kReferred, "Operacija nurodyta kitose operacijose: " +
                                   operName(select->whole(0), select->text(1), select->text(2)));
    }
  }
  writeEntries(db, change);
  db.prepare("DELETE FROM oper_doc WHERE oper_id = $1")->bind(1, id).run();
  applyRollup(db, change);
  rebuildItems(db, change);
  deleteHeader(db, id);
  protocol(session, change, true, reason);
}

}  // namespace tolvex::store
