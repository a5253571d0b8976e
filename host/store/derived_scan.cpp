#include "host/store/derived_scan.h"

#include <algorithm>

#include "host/store/dimset.h"
#include "host/store/sql.h"

namespace tolvex::store {

namespace {

constexpr int kProgressEvery = 50000;

std::uint64_t wide(int value) {
  return static_cast<std::uint64_t>(static_cast<std::uint32_t>(value));
}

PackedTurn packed(int account, int period, int dimset, int corr, std::uint8_t cur) {
  return {wide(account) << 32 | wide(period), wide(dimset) << 32 | wide(corr) << 8 | cur};
}

int periodOf(const PackedTurn& key) { return static_cast<int>(key.place & 0xFFFFFFFF); }

PackedTurn withPeriod(PackedTurn key, int period) {
  key.place = (key.place >> 32 << 32) | wide(period);
  return key;
}

}  // namespace

std::uint8_t CurrencyCodes::numberOf(std::string_view code) {
  const auto place = std::find(codes_.begin(), codes_.end(), code);
  const auto number = static_cast<std::uint8_t>(place - codes_.begin());
  if (place == codes_.end()) codes_.emplace_back(code);
  return number;
}

// References of one entry: what its two sides must say of sets and items.
struct DerivedScan::Refs {
  struct Side {
    std::vector<std::string> addressees;
    std::string key;
    int pointsTo = 0;
  };
  Side debit, credit;
  Side& of(int sign) { return sign == 1 ? debit : credit; }

  void clear() {
    for (Side* side : {&debit, &credit}) {
      side->addressees.clear();
      side->key.clear();
      side->pointsTo = 0;
    }
  }
  void finish() {
    for (Side* side : {&debit, &credit}) {
      auto& list = side->addressees;
      if (list.size() > 1) {
        std::sort(list.begin(), list.end());
        list.erase(std::unique(list.begin(), list.end()), list.end());
      }
      for (const std::string& ref : list) {
        if (!side->key.empty()) side->key += '|';
        side->key += ref;
      }
    }
  }
};

struct DerivedScan::StoredPosting {
  int entryId = 0, sign = 0, accountId = 0;
  std::uint8_t cur = 0;
  std::int64_t sumCur = 0;
  PostingCopies copies;
};

DerivedScan::DerivedScan(Database& db, ScanHooks hooks, Progress progress)
    : db_(db), hooks_(std::move(hooks)), progress_(std::move(progress)) {}

void DerivedScan::run() {
  readAccounts();
  readDimsets();
  readOperations();
  scanEntries();
}

PackedTurn DerivedScan::pack(const TurnKey& key) {
  return packed(key.account, key.period, key.dimset, key.corr, currencies_.numberOf(key.cur));
}

TurnKey DerivedScan::unpack(const PackedTurn& key) const {
  return {static_cast<int>(key.place >> 32), periodOf(key), static_cast<int>(key.rest >> 32),
          static_cast<int>(key.rest >> 8 & 0xFFFFFF),
          currencies_.codeOf(static_cast<std::uint8_t>(key.rest & 0xFF))};
}

void DerivedScan::readAccounts() {
  auto select = db_.prepare("SELECT id, track_items FROM account");
  while (select->step()) {
    const auto id = static_cast<std::size_t>(select->integer(0));
    if (tracked_.size() <= id) tracked_.resize(id + 1);
    tracked_[id] = select->integer(1) != 0;
  }
}

void DerivedScan::readDimsets() {
  auto select = db_.prepare("SELECT id, ref_key FROM dimset");
  while (select->step()) dimsets_.emplace(std::string(select->text(1)), select->whole(0));
}

void DerivedScan::readOperations() {
  auto select = db_.prepare("SELECT id FROM oper ORDER BY id");
  while (select->step()) {
    const auto id = static_cast<std::size_t>(select->integer(0));
    if (operations_.size() <= id) operations_.resize(std::max(id + 1, operations_.size() * 2));
    operations_[id] = true;
  }
}

bool DerivedScan::exists(int operId) const {
  const auto id = static_cast<std::size_t>(operId);
  return id < operations_.size() && operations_[id];
}

int DerivedScan::dimsetOf(const std::string& key) {
  if (key.empty()) return 0;
  const auto place = dimsets_.find(key);
  if (place != dimsets_.end()) return place->second;
  return dimsets_[key] = hooks_.unknownSet(key);
}

void DerivedScan::count(const StoredPosting& posting, const PostingCopies& must) {
  Turn turn;
  (posting.sign == 1 ? turn.debit : turn.credit) = must.sumLt;
  (posting.sign == 1 ? turn.debitCur : turn.creditCur) = posting.sumCur;
  turn.n = 1;
  days_[packed(posting.accountId, must.day, 0, must.corrId, posting.cur)] += turn;
  if (must.dimsetId != 0) {
    months_[packed(posting.accountId, must.day / 100, must.dimsetId, must.corrId, posting.cur)] +=
        turn;
  }
  if (must.itemId == 0) return;
  items_.push_back({posting.accountId, must.itemId, posting.entryId, must.operId, must.day,
                    must.dimsetId, static_cast<std::int8_t>(posting.sign), posting.cur, must.sumLt,
                    posting.sumCur});
}

// Entries, postings and references side by side, in the order of entries.
struct DerivedScan::Cursors {
  explicit Cursors(Database& db)
      : entries(db.prepare("SELECT id, oper_id, day, sum_lt FROM entry ORDER BY id")),
        postings(db.prepare("SELECT entry_id, sign, account_id, cur, sum_cur, oper_id, day, sum_lt,"
                            " corr_id, dimset_id, item_id FROM posting ORDER BY entry_id, sign")),
        refs(db.prepare("SELECT entry_id, sign, foidr, role, points_to FROM entry_ref"
                        " ORDER BY entry_id, id")),
        morePostings(postings->step()),
        moreRefs(refs->step()) {}
  StatementLease entries, postings, refs;
  bool morePostings, moreRefs;
};

// Rows of entries that do not exist, up to the next one that does.
void DerivedScan::reportStrays(Cursors& at, std::int64_t before) {
  for (; at.morePostings && at.postings->integer(0) < before;
       at.morePostings = at.postings->step()) {
    hooks_.fault("orphans", "Įrašo pusė be įrašo: " + std::to_string(at.postings->integer(0)));
  }
  for (; at.moreRefs && at.refs->integer(0) < before; at.moreRefs = at.refs->step()) {
    hooks_.fault("orphans", "Adresatas be įrašo: " + std::to_string(at.refs->integer(0)));
  }
}

void DerivedScan::readRefs(Cursors& at, int entryId, Refs& sides) {
  sides.clear();
  for (; at.moreRefs && at.refs->integer(0) == entryId; at.moreRefs = at.refs->step()) {
    Refs::Side& side = sides.of(at.refs->whole(1));
    const int role = at.refs->whole(3);
    if (role == kAddressee) side.addressees.emplace_back(at.refs->text(2));
    if (role != kOwnOperation) continue;
    const int pointsTo = at.refs->whole(4);
    if (!exists(pointsTo)) {
      hooks_.fault("orphans", "Įrašas " + std::to_string(entryId) +
                                  " nurodo operaciją, kurios nėra: " + std::to_string(pointsTo));
    }
    if (side.pointsTo == 0) side.pointsTo = pointsTo;
  }
  sides.finish();
}

// How many sides the entry has, two at most; anything but one debit and one credit is told.
int DerivedScan::readPostings(Cursors& at, int entryId, StoredPosting (&pair)[2]) {
  int count = 0, signs = 0;
  auto& from = at.postings;
  for (; at.morePostings && from->integer(0) == entryId; at.morePostings = from->step()) {
    if (count == 2) continue;
    StoredPosting& side = pair[count++];
    side.entryId = entryId;
    side.sign = from->whole(1);
    signs += side.sign;
    side.accountId = from->whole(2);
    side.cur = currencies_.numberOf(from->text(3));
    side.sumCur = from->integer(4);
    side.copies = {from->whole(5), from->whole(6),  from->whole(8),
                   from->whole(9), from->whole(10), from->integer(7)};
  }
  if (count != 2 || signs != 0) {
    hooks_.fault("balance", "Įrašas " + std::to_string(entryId) +
                                " neturi vienos debeto ir vienos kredito pusės");
  }
  return count;
}

void DerivedScan::scanEntry(Cursors& at, Refs& sides) {
  const int entryId = at.entries->whole(0), operId = at.entries->whole(1);
  if (!exists(operId)) {
    hooks_.fault("orphans", "Įrašas be operacijos: " + std::to_string(entryId));
  }
  reportStrays(at, entryId);
  readRefs(at, entryId, sides);
  StoredPosting pair[2];
  const int count = readPostings(at, entryId, pair);
  for (int i = 0; i < count; ++i) {
    const StoredPosting& side = pair[i];
    const Refs::Side& said = sides.of(side.sign);
    const auto account = static_cast<std::size_t>(side.accountId);
    const bool tracked = account < tracked_.size() && tracked_[account];
    PostingCopies must;
    must.operId = operId;
    must.day = at.entries->whole(2);
    must.sumLt = at.entries->integer(3);
    must.corrId = count == 2 ? pair[1 - i].accountId : side.copies.corrId;
    must.dimsetId = dimsetOf(said.key);
    must.itemId = !tracked ? 0 : said.pointsTo != 0 ? said.pointsTo : operId;
    if (!(must == side.copies)) hooks_.wrongCopies(entryId, side.sign, must);
    this->count(side, must);
  }
}

void DerivedScan::goOn(int entryId, int last) const {
  tolvex::store::goOn(progress_, "Skaitomi įrašai", entryId / static_cast<double>(last));
}

void DerivedScan::scanEntries() {
  const int last = static_cast<int>(integerFrom(db_, "SELECT MAX(id) FROM entry").value_or(1));
  Cursors at(db_);
  Refs sides;
  for (int done = 1; at.entries->step(); ++done) {
    if (done % kProgressEvery == 0) goOn(at.entries->whole(0), last);
    scanEntry(at, sides);
  }
  reportStrays(at, std::numeric_limits<std::int64_t>::max());
}

void DerivedScan::forEachItem(
    const std::function<void(int account, int item, std::vector<ItemRow>)>& body) {
  std::sort(items_.begin(), items_.end(), [](const TrackedPosting& a, const TrackedPosting& b) {
    if (a.account != b.account) return a.account < b.account;
    if (a.item != b.item) return a.item < b.item;
    if (a.entry != b.entry) return a.entry < b.entry;
    return a.sign > b.sign;
  });
  DimsetRefs refs(db_);
  const auto share = [&refs](int a, int b) { return refs.shareAddressee(a, b); };
  std::vector<ItemPosting> postings;
  for (std::size_t i = 0; i < items_.size();) {
    const int account = items_[i].account, item = items_[i].item;
    postings.clear();
    for (; i < items_.size() && items_[i].account == account && items_[i].item == item; ++i) {
      const TrackedPosting& from = items_[i];
      postings.push_back({from.entry, from.sign, from.oper, from.day, from.sumLt,
                          currencies_.codeOf(from.cur), from.sumCur, from.dimset});
    }
    body(account, item, itemRows(item, postings, share));
  }
}

PackedTurns withLongerPeriods(const PackedTurns& turns) {
  PackedTurns all;
  all.reserve(turns.size() + turns.size() / 4);
  for (const auto& [key, turn] : turns) {
    for (int period = periodOf(key); period > 999; period /= 100) {
      all[withPeriod(key, period)] += turn;
    }
  }
  return all;
}

}  // namespace tolvex::store
