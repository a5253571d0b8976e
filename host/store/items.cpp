#include "host/store/items.h"

#include <algorithm>
#include <map>
#include <unordered_set>

#include "framework/references.h"

namespace tolvex::store {

namespace {

// What the originating postings of an item fix for its followers.
struct Origin {
  std::vector<std::string> currencies;  // distinct, in order of appearance
  std::vector<int> dimsets;
  std::unordered_set<int> knownDimsets;

  void note(const ItemPosting& posting) {
    if (std::find(currencies.begin(), currencies.end(), posting.cur) == currencies.end()) {
      currencies.push_back(posting.cur);
    }
    if (knownDimsets.insert(posting.dimsetId).second) dimsets.push_back(posting.dimsetId);
  }

  std::string currencyOf(const ItemPosting& follower) const {
    if (currencies.size() == 1) return currencies.front();
    const auto has = [&](std::string_view code) {
      return std::find(currencies.begin(), currencies.end(), code) != currencies.end();
    };
    if (has(follower.cur)) return follower.cur;
    return has(kBaseCode) ? std::string(kBaseCode) : follower.cur;
  }

  int dimsetOf(const ItemPosting& follower, const ShareAddressee& share) const {
    if (dimsets.size() == 1) return dimsets.front();
    if (knownDimsets.contains(follower.dimsetId)) return follower.dimsetId;
    for (const int dimset : dimsets) {
      if (share(dimset, follower.dimsetId)) return dimset;
    }
    return follower.dimsetId;
  }
};

struct Share {
  ItemRow row;
  int lowestEntry = 0;  // of any posting, for a share with no originating one
};

}  // namespace

std::vector<ItemRow> itemRows(int itemId, const std::vector<ItemPosting>& postings,
                              const ShareAddressee& share, int until) {
  Origin origin;
  int firstDay = std::numeric_limits<int>::max(), lastDay = 0;
  for (const ItemPosting& posting : postings) {
    if (posting.day > until) continue;
    firstDay = std::min(firstDay, posting.day);
    lastDay = std::max(lastDay, posting.day);
    if (posting.operId == itemId) origin.note(posting);
  }

  std::map<std::pair<std::string, int>, Share> shares;
  for (const ItemPosting& posting : postings) {
    if (posting.day > until) continue;
    const bool originates = posting.operId == itemId;
    const std::string cur = originates ? posting.cur : origin.currencyOf(posting);
    const int dimset = originates ? posting.dimsetId : origin.dimsetOf(posting, share);
    const std::int64_t lt = posting.sign * posting.sumLt;
    const std::int64_t inCur = cur == posting.cur ? posting.sign * posting.sumCur : 0;
    Share& to = shares[{cur, dimset}];
    to.row.restLt += lt;
    to.row.restCur += inCur;
    if (to.lowestEntry == 0) to.lowestEntry = posting.entryId;
    if (originates) {
      to.row.fullLt += lt;
      to.row.fullCur += inCur;
      if (to.row.headEntryId == 0) to.row.headEntryId = posting.entryId;
    }
  }

  std::vector<ItemRow> rows;
  for (auto& [key, value] : shares) {
    ItemRow row = value.row;
    row.cur = key.first;
    row.dimsetId = key.second;
    row.firstDay = firstDay;
    row.lastDay = lastDay;
    if (row.headEntryId == 0) row.headEntryId = value.lowestEntry;
    rows.push_back(std::move(row));
  }
  return rows;
}

int itemOf(const EntryRow& entry, int sign, int operId) {
  for (const RefRow& ref : entry.refs) {
    if (ref.role == kOwnOperation && ref.sign == sign) return ref.pointsTo;
  }
  return operId;
}

ItemPosting itemPosting(const Statement& row) {
  ItemPosting posting;
  posting.entryId = row.whole(0);
  posting.sign = row.whole(1);
  posting.operId = row.whole(2);
  posting.day = row.whole(3);
  posting.sumLt = row.integer(4);
  posting.cur = row.text(5);
  posting.sumCur = row.integer(6);
  posting.dimsetId = row.whole(7);
  return posting;
}

std::vector<ItemPosting> readItem(Database& db, int accountId, int itemId) {
  std::vector<ItemPosting> postings;
  auto select = db.prepare(
      "SELECT entry_id, sign, oper_id, day, sum_lt, cur, sum_cur, dimset_id FROM posting"
      " WHERE item_id = $1 AND account_id = $2 ORDER BY entry_id, sign DESC");
  select->bind(1, itemId).bind(2, accountId);
  while (select->step()) {
    postings.push_back(itemPosting(*select));
  }
  return postings;
}

namespace {

using ShareKey = std::pair<std::string, int>;  // currency, set

std::map<ShareKey, ItemRow> storedShares(Database& db, int accountId, int itemId) {
  auto select = db.prepare(
      "SELECT cur, dimset_id, rest_lt, rest_cur, full_lt, full_cur, first_day, last_day,"
      " head_entry_id FROM open_item WHERE account_id = $1 AND item_id = $2");
  select->bind(1, accountId).bind(2, itemId);
  std::map<ShareKey, ItemRow> shares;
  while (select->step()) {
    ItemRow row;
    row.cur = select->text(0);
    row.dimsetId = select->whole(1);
    row.restLt = select->integer(2);
    row.restCur = select->integer(3);
    row.fullLt = select->integer(4);
    row.fullCur = select->integer(5);
    row.firstDay = select->whole(6);
    row.lastDay = select->whole(7);
    row.headEntryId = select->whole(8);
    shares.emplace(ShareKey{row.cur, row.dimsetId}, std::move(row));
  }
  return shares;
}

void writeShares(Database& db, std::string_view sql, int accountId, int itemId,
                 const std::vector<ItemRow>& rows) {
  auto write = db.prepare(sql);
  for (const ItemRow& row : rows) {
    write->bind(1, accountId).bind(2, itemId).bind(3, row.cur).bind(4, row.dimsetId);
    write->bind(5, row.restLt).bind(6, row.restCur).bind(7, row.fullLt).bind(8, row.fullCur);
    write->bind(9, row.firstDay).bind(10, row.lastDay).bind(11, row.headEntryId);
    write->bind(12, row.open() ? 1 : 0);
    write->run();
  }
}

constexpr std::string_view kInsert =
    "INSERT INTO open_item (account_id, item_id, cur, dimset_id, rest_lt, rest_cur, full_lt,"
    " full_cur, first_day, last_day, head_entry_id, is_open)"
    " VALUES ($1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11,$12)";
constexpr std::string_view kOrUpdate =
    " ON CONFLICT (account_id, item_id, cur, dimset_id) DO UPDATE SET rest_lt = excluded.rest_lt,"
    " rest_cur = excluded.rest_cur, full_lt = excluded.full_lt, full_cur = excluded.full_cur,"
    " first_day = excluded.first_day, last_day = excluded.last_day,"
    " head_entry_id = excluded.head_entry_id, is_open = excluded.is_open";

void dropShares(Database& db, int accountId, int itemId,
                const std::map<ShareKey, ItemRow>& shares) {
  auto drop = db.prepare(
      "DELETE FROM open_item WHERE account_id = $1 AND item_id = $2 AND cur = $3"
      " AND dimset_id = $4");
  for (const auto& [key, row] : shares) {
    drop->bind(1, accountId).bind(2, itemId).bind(3, key.first).bind(4, key.second);
    drop->run();
  }
}

void moveDays(Database& db, int accountId, int itemId, const ItemRow& to) {
  auto update = db.prepare(
      "UPDATE open_item SET first_day = $3, last_day = $4 WHERE account_id = $1 AND item_id = $2");
  update->bind(1, accountId).bind(2, itemId).bind(3, to.firstDay).bind(4, to.lastDay);
  update->run();
}

}  // namespace

void insertItem(Database& db, int accountId, int itemId, const std::vector<ItemRow>& rows) {
  writeShares(db, kInsert, accountId, itemId, rows);
}

void updateItem(Database& db, int accountId, int itemId, const std::vector<ItemRow>& rows) {
  std::map<ShareKey, ItemRow> gone = storedShares(db, accountId, itemId);
  std::vector<ItemRow> changed;
  bool daysMove = false;  // of shares that stay as they are otherwise
  for (const ItemRow& row : rows) {
    const auto stored = gone.find({row.cur, row.dimsetId});
    ItemRow before = stored == gone.end() ? ItemRow{} : stored->second;
    if (stored != gone.end()) gone.erase(stored);
    const bool sameDays = before.firstDay == row.firstDay && before.lastDay == row.lastDay;
    before.firstDay = row.firstDay;
    before.lastDay = row.lastDay;
    if (!(before == row))
      changed.push_back(row);
    else if (!sameDays)
      daysMove = true;
  }
  dropShares(db, accountId, itemId, gone);
  if (daysMove) moveDays(db, accountId, itemId, rows.front());
  writeShares(db, std::string(kInsert) + std::string(kOrUpdate), accountId, itemId, changed);
}

}  // namespace tolvex::store
