#include "host/store/undo.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

#include "host/store/oper_record.h"
#include "host/store/oper_save.h"
#include "host/store/protocol.h"
#include "host/store/records.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

[[noreturn]] void refuseNothing() { refuseRule("Nėra įrašymo, kurį būtų galima atšaukti!"); }

[[noreturn]] void refuseOtherwiseChanged() {
  refuseRule("Operacija po įrašymo pakeista kitaip, jo atšaukti negalima!");
}

// The newest row of the protocol below `belowId`; without an id when there is none.
UndoTarget newestBelow(Database& db, int operId, int belowId) {
  UndoTarget row;
  auto select = bound(db,
                      "SELECT id, at, user_name, action, detail FROM oper_log"
                      " WHERE oper_id = $1 AND id < $2 ORDER BY id DESC LIMIT 1",
                      operId, belowId);
  if (!select->step()) return row;
  const auto image = imageFrom(select->text(4));
  if (!image) return row;  // a row of demonstration books
  row.logId = select->whole(0);
  row.at = select->text(1);
  row.userName = select->text(2);
  row.action = select->text(3);
  row.image = *image;
  return row;
}

constexpr int kNewest = std::numeric_limits<int>::max();

UndoTarget targetFor(Session& session, int operId, int version) {
  int below = kNewest;
  for (int expected = version;;) {
    UndoTarget row = newestBelow(session.db(), operId, below);
    if (row.logId == 0) refuseNothing();
    if (row.image.versionAfter != expected || row.image.epoch != session.epoch()) {
      refuseOtherwiseChanged();
    }
    const bool gone = row.image.versionAfter == 0;
    if (row.image.undone == 0 || gone) return row;  // what an undo removed comes back like the rest
    // Below an undo the operation stands as it stood before the save that was taken back.
    below = row.image.undone;
    const auto undone =
        imageFrom(textFrom(session.db(), "SELECT detail FROM oper_log WHERE id = $1", below));
    if (!undone) refuseNothing();
    expected = undone->versionBefore;
  }
}

// Accounts keep their ids; what else the entry names may have gone.
void refresh(Database& db, EntryRow& entry) {
  for (const int sign : {1, -1}) {
    SideRow& side = entry.side(sign);
    auto account = bound(db, "SELECT code FROM account WHERE id = $1", side.accountId);
    if (!account->step()) {
      throw Refusal(kReferred, "Sąskaita nebeegzistuoja: " + side.account);
    }
    side.account = account->text(0);
  }
  if (entry.templateLineId &&
      !anyRow(db, "SELECT 1 FROM template_line WHERE id = $1", *entry.templateLineId)) {
    entry.templateLineId.reset();
  }
}

// The order of references decides what an entry follows: they keep their rows, or all get new ones.
void settleReferences(const EntryRow& now, EntryRow& then) {
  std::set<int> standing;
  for (const RefRow& ref : now.refs) standing.insert(ref.id);
  const bool all = std::all_of(then.refs.begin(), then.refs.end(),
                               [&](const RefRow& ref) { return standing.contains(ref.id); });
  if (all) return;
  for (RefRow& ref : then.refs) ref.id = 0;
}

EntryChange broughtBack(Database& db, const std::map<int, EntryRow>& now, const EntryRow& then) {
  EntryChange change;
  change.after = then;
  refresh(db, *change.after);
  const auto place = now.find(then.id);
  if (place != now.end()) change.before = place->second;
  settleReferences(change.before.value_or(EntryRow{}), *change.after);
  return change;
}

// Entries that had gone take their ids again. When one of these was given away, all get new ones,
// so that they keep their order.
void settleIds(Database& db, std::vector<EntryChange>& entries) {
  const auto returns = [](const EntryChange& entry) { return !entry.before && entry.after; };
  const bool given = std::any_of(entries.begin(), entries.end(), [&](const EntryChange& entry) {
    return returns(entry) && anyRow(db, "SELECT 1 FROM entry WHERE id = $1", entry.after->id);
  });
  if (!given) return;
  for (EntryChange& entry : entries) {
    if (returns(entry)) entry.after->id = 0;
  }
}

// Payments of other operations must not lose the posting that they follow.
void refuseFollowed(Database& db, const OperChange& change) {
  for (const EntryChange& entry : change.entries) {
    if (entry.after || !entry.before) continue;
    for (const int sign : {1, -1}) {
      const SideRow& side = entry.before->side(sign);
      if (side.itemId != change.after.id) continue;
      auto follower = bound(db,
                            "SELECT o.day, o.serija, o.number FROM posting p"
                            " JOIN oper o ON o.id = p.oper_id WHERE p.item_id = $1"
                            " AND p.account_id = $2 AND p.oper_id <> $1 ORDER BY o.id LIMIT 1",
                            side.itemId, side.accountId);
      if (!follower->step()) continue;
      throw Refusal(kReferred,
                    "Operacija nurodyta kitose operacijose: " +
                        operName(follower->whole(0), follower->text(1), follower->text(2)));
    }
  }
}

OperChange changeBack(Database& db, const std::optional<HeaderRow>& header,
                      const SavedImage& image) {
  OperChange change;
  change.before = header;
  change.after = *image.header;
  change.after.rowVersion = (header ? header->rowVersion : image.versionBefore) + 1;
  std::map<int, EntryRow> now;
  if (header) {
    for (EntryRow& entry : readEntries(db, header->id)) now[entry.id] = std::move(entry);
  }
  for (const EntryRow& then : image.entries) change.entries.push_back(broughtBack(db, now, then));
  settleIds(db, change.entries);
  for (const int id : image.added) {
    const auto place = now.find(id);
    if (place == now.end()) refuseOtherwiseChanged();
    EntryChange gone;
    gone.before = place->second;
    change.entries.push_back(std::move(gone));
  }
  return change;
}

std::vector<int> pointersOf(const SavedImage& image) {
  std::vector<int> ids;
  for (const EntryRow& entry : image.entries) {
    for (const RefRow& ref : entry.refs) {
      if (ref.role == kOwnOperation) ids.push_back(ref.pointsTo);
    }
  }
  return ids;
}

int versionOf(const std::optional<HeaderRow>& header) { return header ? header->rowVersion : 0; }

}  // namespace

std::string guardOf(Database& db, int operId) {
  if (const auto stands = readHeader(db, operId)) return operComponent(stands->groupId);
  const auto last = newestBelow(db, operId, kNewest).image.header;
  return last ? operComponent(last->groupId) : "CBROperRights";
}

UndoTarget undoTarget(Session& session, int operId) {
  return targetFor(session, operId, versionOf(readHeader(session.db(), operId)));
}

void undoSave(Session& session, int operId, int version) {
  Database& db = session.db();
  // Nothing is told of the operation to who may not write in its group; which right is needed
  // depends on what is taken back, and the save asks for it.
  const Flags flags = session.rights(guardOf(db, operId));
  if (!flags.edit && !flags.create && !flags.remove) refuseSave();
  const UndoTarget target = undoTarget(session, operId);
  const auto header = holdOperation(session, operId, pointersOf(target.image));
  if (versionOf(header) != version) {
    throw Refusal(kChangedByOther, "Įrašą pakeitė kitas vartotojas: " + lastChange(db, operId));
  }
  const SaveReason reason{target.logId};
  if (!target.image.header) return eraseOperation(session, operId, reason);
  OperChange change = changeBack(db, header, target.image);
  const NumberRules group = groupFor(session, change);
  refuseFollowed(db, change);
  storeChange(session, change, group, reason);
}

}  // namespace tolvex::store
