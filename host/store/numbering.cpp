#include "host/store/numbering.h"

#include <algorithm>
#include <limits>
#include <map>

#include "framework/text.h"
#include "operations/number_text.h"

namespace tolvex::store {

namespace {

enum GroupBy : int {
  kCommon,
  kByGroup,
  kByUser,
  kByGroupAndUser,
  kByKind,
  kByKindAndUser,
};

enum Cycle : int { kDaily, kMonthly, kQuarterly, kYearly };

int cycleStart(int cycle, int day) {
  const int year = day / 10000, month = day / 100 % 100;
  switch (cycle) {
    case kDaily:
      return day;
    case kMonthly:
      return day / 100 * 100 + 1;
    case kQuarterly:
      return year * 10000 + ((month - 1) / 3 * 3 + 1) * 100 + 1;
    default:
      return year * 10000 + 101;
  }
}

int nextNumber(Database& db, const NumberRules& rules, int bucketId) {
  auto select =
      db.prepare("SELECT MAX(auto_number) FROM oper WHERE an_bucket_id = $1 AND auto_number > 0");
  select->bind(1, bucketId);
  const std::int64_t highest = select->step() ? select->integer(0) : 0;
  if (highest >= std::numeric_limits<std::int32_t>::max()) {
    refuseRule("Auto numerio reikšmė " + std::to_string(highest + 1) + " yra per didelė!");
  }
  return std::max({1, rules.minimal, static_cast<int>(highest) + 1});
}

int findBucket(Database& db, const std::string& key, bool lock) {
  const bool wait = lock && db.engine() == Engine::Postgres;
  auto select = db.prepare(wait ? "SELECT id FROM an_bucket WHERE bucket_key = $1 FOR UPDATE"
                                : "SELECT id FROM an_bucket WHERE bucket_key = $1");
  select->bind(1, key);
  return select->step() ? select->whole(0) : 0;
}

bool taken(Database& db, int bucketId, int number, int exceptId) {
  // The last condition lets the index of running numbers serve.
  auto select = db.prepare(
      "SELECT id FROM oper WHERE an_bucket_id = $1 AND auto_number = $2 AND id <> $3"
      " AND auto_number > 0");
  select->bind(1, bucketId).bind(2, number).bind(3, exceptId);
  return select->step();
}

// The number text with another number in the place that the mask gives it; as it is when the old
// one does not stand there.
std::string withNumber(const NumberRules& rules, const std::string& text, int was, int drawn) {
  const std::vector<std::string> parts = split(rules.mask, '_');
  const auto place = std::find(parts.begin(), parts.end(), "AutoNumber") - parts.begin();
  std::vector<std::string> pieces = split(text, '-');
  const auto index = static_cast<std::size_t>(place);
  if (index >= pieces.size()) return text;
  double value = 0;
  if (!parsePlainNumber(pieces[index], value) || value != was) return text;
  pieces[index] = paddedCounter(drawn, length(rules.width));
  return join(pieces, "-");
}

// A document stays in the counter of the user who made it, whoever edits it later.
int creatorOf(Session& session, const NumberRules& rules, int operId) {
  if (operId == 0 || !rules.byUser()) return session.user().id;
  auto select = session.db().prepare(
      "SELECT user_id FROM oper_log WHERE oper_id = $1 AND action = 'C' ORDER BY id");
  select->bind(1, operId);
  return select->step() ? select->whole(0) : session.user().id;
}

// The last offers of other groups than the one that was asked last: screens of several groups may
// be open.
struct EarlierOffers {
  std::map<int, NumberOffer> byGroup;
};

void remember(Session& session, NumberOffer offer) {
  NumberOffer& last = session.offer();
  session.kept<EarlierOffers>().byGroup[last.groupId] = std::move(last);
  last = std::move(offer);
}

// The offer that the document bears: by its number or, when that cannot be read out of the text, by
// the text. Null: it bears a number of the user's own, or none. A number that it was stored with
// can be offered anew by the last offer alone.
const NumberOffer* offerBorne(Session& session, const NumberRules& rules, const HeaderRow* before,
                              const HeaderRow& row) {
  const NumberOffer* offer = &session.offer();
  if (offer->groupId != rules.groupId) {
    if (before != nullptr && before->autoNumber == row.autoNumber) return nullptr;
    const auto& earlier = session.kept<EarlierOffers>().byGroup;
    const auto found = earlier.find(rules.groupId);
    if (found == earlier.end()) return nullptr;
    offer = &found->second;
  }
  const bool byNumber = row.autoNumber == offer->number;
  const bool byText = row.autoNumber == 0 && !row.number.empty() && row.number == offer->text;
  return offer->number > 0 && (byNumber || byText) ? offer : nullptr;
}

// The offered number when nobody took it meanwhile and the counter of the document has come to it,
// the next one otherwise.
int drawnNumber(Database& db, const NumberRules& rules, int bucket, int offered, int operId) {
  const int next = nextNumber(db, rules, bucket);
  return offered < next && !taken(db, bucket, offered, operId) ? offered : next;
}

}  // namespace

bool NumberRules::byUser() const {
  return groupBy == kByUser || groupBy == kByGroupAndUser || groupBy == kByKindAndUser;
}

std::optional<NumberRules> readNumberRules(Database& db, int groupId) {
  auto select = db.prepare(
      "SELECT an_mask, an_prefix, an_template, an_minimal, an_group_by, an_cycle, an_day_from,"
      " group_flag FROM oper_group WHERE id = $1");
  select->bind(1, groupId);
  if (!select->step()) return std::nullopt;
  NumberRules rules;
  rules.groupId = groupId;
  rules.mask = select->text(0);
  rules.prefix = select->text(1);
  rules.width = select->text(2);
  rules.minimal = select->whole(3);
  rules.groupBy = select->whole(4);
  rules.cycle = select->whole(5);
  rules.dayFrom = select->whole(6);
  rules.common = select->integer(7) == 1;
  return rules;
}

std::string bucketKey(const NumberRules& rules, int userId, std::string_view otype, int day) {
  const int by = rules.groupBy;
  const bool byGroup = by == kByGroup || by == kByGroupAndUser;
  const bool byKind = by == kByKind || by == kByKindAndUser;
  std::string key = std::to_string(by);
  key += '|' + std::to_string(byGroup ? rules.groupId : 0);
  key += '|' + std::to_string(rules.byUser() ? userId : 0);
  key += '|' + std::string(byKind ? otype : "");
  key += '|' + std::to_string(rules.cycle);
  key += '|' + std::to_string(cycleStart(rules.cycle, day));
  key += '|' + std::to_string(rules.dayFrom != 0 && day >= rules.dayFrom ? rules.dayFrom : 0);
  return key;
}

int lockBucket(Database& db, const std::string& key) {
  if (const int id = findBucket(db, key, true)) return id;
  db.prepare("INSERT INTO an_bucket (bucket_key) VALUES ($1) ON CONFLICT (bucket_key) DO NOTHING")
      ->bind(1, key)
      .run();
  return findBucket(db, key, true);
}

std::string composeNumber(const NumberRules& rules, std::string_view userPrefix, int today,
                          int number) {
  const NumberText text{number, rules.mask, rules.prefix, rules.width, std::string(userPrefix)};
  return text.compose(DateTime::FromDayNumber(today));
}

int offerNumber(Session& session, const NumberRules& rules, int userId, std::string_view userPrefix,
                std::string_view otype, int day) {
  if (!rules.appliesOn(day)) return 0;
  const int bucket = findBucket(session.db(), bucketKey(rules, userId, otype, day), false);
  const int number =
      bucket != 0 ? nextNumber(session.db(), rules, bucket) : std::max(1, rules.minimal);
  const int today = session.now().DayNumber();
  remember(session, {rules.groupId, number, composeNumber(rules, userPrefix, today, number),
                     std::string(userPrefix), today});
  return number;
}

void settleNumber(Session& session, const NumberRules& rules, const HeaderRow* before,
                  HeaderRow& after) {
  after.bucketId.reset();
  if (!rules.appliesOn(after.day)) return;
  const NumberOffer* const offer = offerBorne(session, rules, before, after);
  if (after.autoNumber <= 0 && offer == nullptr) return;  // outside the counter

  Database& db = session.db();
  const int creator = creatorOf(session, rules, before != nullptr ? before->id : 0);
  const int bucket = lockBucket(db, bucketKey(rules, creator, after.otype, after.day));
  after.bucketId = bucket;
  if (before != nullptr && before->autoNumber == after.autoNumber && before->bucketId == bucket) {
    return;
  }
  if (offer != nullptr) {
    after.autoNumber = drawnNumber(db, rules, bucket, offer->number, after.id);
    if (after.autoNumber != offer->number) {
      after.number = after.number == offer->text
                         ? composeNumber(rules, offer->userPrefix, offer->madeOn, after.autoNumber)
                         : withNumber(rules, after.number, offer->number, after.autoNumber);
    }
  } else if (taken(db, bucket, after.autoNumber, after.id)) {
    refuseDouble();
  }
}

void regainNumber(Session& session, const NumberRules& rules, HeaderRow& after) {
  after.bucketId.reset();
  if (!rules.appliesOn(after.day) || after.autoNumber <= 0) return;
  Database& db = session.db();
  const int creator = creatorOf(session, rules, after.id);
  const int bucket = lockBucket(db, bucketKey(rules, creator, after.otype, after.day));
  after.bucketId = bucket;
  if (!taken(db, bucket, after.autoNumber, after.id)) return;
  const int was = after.autoNumber;
  after.autoNumber = nextNumber(db, rules, bucket);
  after.number = withNumber(rules, after.number, was, after.autoNumber);
}

}  // namespace tolvex::store
