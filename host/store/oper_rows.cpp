#include "host/store/oper_rows.h"

#include <algorithm>
#include <iterator>

#include "host/store/sql.h"
#include "host/store/sql_columns.h"

namespace tolvex::store {

namespace {

constexpr std::string_view kEntryColumns =
    "SELECT e.id, e.guid, e.day, e.sum_lt, e.info, e.tag, e.fguid, e.trade_type, e.restoring_sign,"
    " e.vat_indication, e.vat_flag, e.vat_tariff, e.template_line_id,"
    " d.account_id, ad.code, d.cur, d.rate, d.sum_cur, d.dimset_id, d.item_id,"
    " c.account_id, ac.code, c.cur, c.rate, c.sum_cur, c.dimset_id, c.item_id"
    " FROM entry e JOIN posting d ON d.entry_id = e.id AND d.sign = 1"
    " JOIN posting c ON c.entry_id = e.id AND c.sign = -1"
    " JOIN account ad ON ad.id = d.account_id JOIN account ac ON ac.id = c.account_id ";

// In the order in which bindHeader and bindEntry bind them.
constexpr const char* kHeaderColumns[] = {
    "otype",        "group_id",     "doc_ref",         "client_ref", "day",
    "serija",       "number",       "comment",         "parameters", "auto_number",
    "an_bucket_id", "vat_register", "lock_guid",       "created_by", "created_by_name",
    "created_at",   "changed_by",   "changed_by_name", "changed_at", "row_version"};
constexpr const char* kEntryFields[] = {"oper_id",         "guid",           "day",
                                        "sum_lt",          "info",           "tag",
                                        "trade_type",      "restoring_sign", "vat_indication",
                                        "vat_flag",        "vat_tariff",     "fguid",
                                        "template_line_id"};

// The id is the last parameter, of an insert only where a row comes back under its own.
constexpr int kHeaderId = static_cast<int>(std::size(kHeaderColumns)) + 1;
constexpr int kEntryId = static_cast<int>(std::size(kEntryFields)) + 1;
struct RowStatements {
  std::string insert, insertOld, update;
};

template <std::size_t N>
RowStatements statementsOf(const std::string& table, const char* const (&fields)[N]) {
  SqlColumns columns;
  for (const char* field : fields) columns.add(field);
  RowStatements made;
  made.insert = columns.insertInto(table);
  made.update = "UPDATE " + table + " SET " + columns.pairs + " WHERE id = $" +
                std::to_string(columns.count + 1);
  columns.add("id");
  made.insertOld = columns.insertInto(table);
  return made;
}

const RowStatements& headerStatements() {
  static const RowStatements made = statementsOf("oper", kHeaderColumns);
  return made;
}

const RowStatements& entryStatements() {
  static const RowStatements made = statementsOf("entry", kEntryFields);
  return made;
}

std::optional<std::string> textOrNull(const Statement& from, int column) {
  if (from.isNull(column)) return std::nullopt;
  return std::string(from.text(column));
}

std::optional<int> intOrNull(const Statement& from, int column) {
  if (from.isNull(column)) return std::nullopt;
  return from.whole(column);
}

SideRow sideOf(const Statement& from, int column) {
  SideRow side;
  side.accountId = from.whole(column);
  side.account = from.text(column + 1);
  side.cur = from.text(column + 2);
  side.rate = from.real(column + 3);
  side.sumCur = from.integer(column + 4);
  side.dimsetId = from.whole(column + 5);
  side.itemId = from.whole(column + 6);
  return side;
}

EntryRow entryOf(const Statement& from) {
  EntryRow row;
  row.id = from.whole(0);
  row.guid = from.text(1);
  row.day = from.whole(2);
  row.sumLt = from.integer(3);
  row.info = textOrNull(from, 4);
  row.tag = textOrNull(from, 5);
  row.fguid = textOrNull(from, 6);
  row.tradeType = from.whole(7);
  row.restoringSign = from.whole(8);
  row.vatIndication = from.whole(9);
  row.vatFlag = from.whole(10);
  row.vatTariff = intOrNull(from, 11);
  row.templateLineId = intOrNull(from, 12);
  row.debit = sideOf(from, 13);
  row.credit = sideOf(from, 20);
  return row;
}

RefRow refOf(const Statement& from) {
  RefRow ref;
  ref.id = from.whole(1);
  ref.sign = from.whole(2);
  ref.foidr = from.text(3);
  ref.role = from.whole(4);
  ref.pointsTo = from.whole(5);
  ref.showString = from.text(6);
  return ref;
}

void insertPostings(Database& db, int operId, const EntryRow& row) {
  auto insert = db.prepare(
      "INSERT INTO posting (entry_id, sign, account_id, cur, rate, sum_cur, oper_id, day, sum_lt,"
      " corr_id, dimset_id, item_id) VALUES ($1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11,$12)");
  for (const int sign : {1, -1}) {
    const SideRow& side = row.side(sign);
    insert->bind(1, row.id).bind(2, sign).bind(3, side.accountId).bind(4, side.cur);
    insert->bind(5, side.rate).bind(6, side.sumCur).bind(7, operId).bind(8, row.day);
    insert->bind(9, row.sumLt).bind(10, row.side(-sign).accountId).bind(11, side.dimsetId);
    if (side.itemId != 0) {
      insert->bind(12, side.itemId);
    } else {
      insert->bindNull(12);
    }
    insert->run();
  }
}

// Sign, reference and text from parameter 2 on.
void bindRef(Statement& to, const RefRow& ref) {
  to.bind(2, ref.sign).bind(3, ref.foidr).bind(4, kindOf(ref.foidr)).bind(5, ref.role);
  if (ref.role == kOwnOperation) {
    to.bind(6, ref.pointsTo);
  } else {
    to.bindNull(6);
  }
  to.bind(7, ref.showString);
}

void insertRef(Database& db, int entryId, RefRow& ref) {
  auto insert = db.prepare(
      "INSERT INTO entry_ref (entry_id, sign, foidr, kind, role, points_to, show_string)"
      " VALUES ($1,$2,$3,$4,$5,$6,$7) RETURNING id");
  insert->bind(1, entryId);
  bindRef(*insert, ref);
  ref.id = insertedId(*insert);
}

void updateRef(Database& db, const RefRow& ref) {
  auto update = db.prepare(
      "UPDATE entry_ref SET sign = $2, foidr = $3, kind = $4, role = $5, points_to = $6,"
      " show_string = $7 WHERE id = $1");
  update->bind(1, ref.id);
  bindRef(*update, ref);
  update->run();
}

void bindEntry(Statement& to, int operId, const EntryRow& row) {
  to.bind(1, operId);
  to.bind(2, row.guid).bind(3, row.day).bind(4, row.sumLt).bind(5, row.info).bind(6, row.tag);
  to.bind(7, row.tradeType).bind(8, row.restoringSign).bind(9, row.vatIndication);
  to.bind(10, row.vatFlag).bind(11, row.vatTariff).bind(12, row.fguid).bind(13, row.templateLineId);
}

void bindHeader(Statement& to, const HeaderRow& row) {
  to.bind(1, row.otype).bind(2, row.groupId).bind(3, row.docRef).bind(4, row.clientRef);
  to.bind(5, row.day).bind(6, row.serija).bind(7, row.number).bind(8, row.comment);
  to.bind(9, row.parameters).bind(10, row.autoNumber).bind(11, row.bucketId);
  to.bind(12, row.vatRegister).bind(13, row.lockGuid).bind(14, row.createdBy);
  to.bind(15, row.createdByName).bind(16, row.createdAt).bind(17, row.changedBy);
  to.bind(18, row.changedByName).bind(19, row.changedAt).bind(20, row.rowVersion);
}

}  // namespace

std::string dayText(int day) {
  std::string digits = std::to_string(day);
  digits.insert(0, digits.size() < 8 ? 8 - digits.size() : 0, '0');
  return digits.substr(0, 4) + "." + digits.substr(4, 2) + "." + digits.substr(6, 2);
}

std::string centsText(std::int64_t cents) {
  const std::string sign = cents < 0 ? "-" : "";
  const std::int64_t whole = cents < 0 ? -cents : cents;
  std::string fraction = std::to_string(whole % 100);
  if (fraction.size() < 2) fraction.insert(0, "0");
  return sign + std::to_string(whole / 100) + "," + fraction;
}

std::string operName(int day, std::string_view serija, std::string_view number) {
  std::string name = dayText(day);
  if (!serija.empty()) name.append(" ").append(serija);
  if (!number.empty()) name.append(" ").append(number);
  return name;
}

std::string operName(const HeaderRow& header) {
  return operName(header.day, header.serija, header.number);
}

std::optional<HeaderRow> readHeader(Database& db, int id) {
  auto select = db.prepare(
      "SELECT otype, group_id, doc_ref, client_ref, day, serija, number, comment, parameters,"
      " auto_number, an_bucket_id, vat_register, lock_guid, created_by, created_by_name, "
      "created_at,"
      " changed_by, changed_by_name, changed_at, row_version FROM oper WHERE id = $1");
  select->bind(1, id);
  if (!select->step()) return std::nullopt;
  HeaderRow row;
  row.id = id;
  row.otype = select->text(0);
  row.groupId = select->whole(1);
  row.docRef = textOrNull(*select, 2);
  row.clientRef = textOrNull(*select, 3);
  row.day = select->whole(4);
  row.serija = select->text(5);
  row.number = select->text(6);
  row.comment = select->text(7);
  row.parameters = select->text(8);
  row.autoNumber = select->whole(9);
  row.bucketId = intOrNull(*select, 10);
  row.vatRegister = select->whole(11);
  row.lockGuid = textOrNull(*select, 12);
  row.createdBy = textOrNull(*select, 13);
  row.createdByName = textOrNull(*select, 14);
  row.createdAt = textOrNull(*select, 15);
  row.changedBy = textOrNull(*select, 16);
  row.changedByName = textOrNull(*select, 17);
  row.changedAt = textOrNull(*select, 18);
  row.rowVersion = select->whole(19);
  return row;
}

std::vector<EntryRow> readEntries(Database& db, int operId) {
  std::vector<EntryRow> entries;
  auto select = db.prepare(std::string(kEntryColumns) + "WHERE e.oper_id = $1 ORDER BY e.id");
  select->bind(1, operId);
  while (select->step()) entries.push_back(entryOf(*select));

  auto refs = db.prepare(
      "SELECT r.entry_id, r.id, r.sign, r.foidr, r.role, r.points_to, r.show_string"
      " FROM entry e JOIN entry_ref r ON r.entry_id = e.id WHERE e.oper_id = $1"
      " ORDER BY r.entry_id, r.id");
  refs->bind(1, operId);
  auto entry = entries.begin();
  while (refs->step()) {
    const int entryId = refs->whole(0);
    while (entry != entries.end() && entry->id < entryId) ++entry;
    if (entry != entries.end() && entry->id == entryId) entry->refs.push_back(refOf(*refs));
  }
  return entries;
}

std::optional<EntryRow> readEntry(Database& db, int operId, int entryId) {
  auto select = db.prepare(std::string(kEntryColumns) + "WHERE e.id = $1 AND e.oper_id = $2");
  select->bind(1, entryId).bind(2, operId);
  if (!select->step()) return std::nullopt;
  EntryRow entry = entryOf(*select);
  auto refs = db.prepare(
      "SELECT entry_id, id, sign, foidr, role, points_to, show_string FROM entry_ref"
      " WHERE entry_id = $1 ORDER BY id");
  refs->bind(1, entryId);
  while (refs->step()) entry.refs.push_back(refOf(*refs));
  return entry;
}

void insertHeader(Database& db, HeaderRow& row) {
  const RowStatements& sql = headerStatements();
  auto insert = db.prepare(row.id != 0 ? sql.insertOld : sql.insert);
  bindHeader(*insert, row);
  if (row.id != 0) insert->bind(kHeaderId, row.id);
  row.id = insertedId(*insert);
}

void updateHeader(Database& db, const HeaderRow& row) {
  auto update = db.prepare(headerStatements().update);
  bindHeader(*update, row);
  update->bind(kHeaderId, row.id);
  update->run();
}

void insertEntry(Database& db, int operId, EntryRow& row) {
  {
    const RowStatements& sql = entryStatements();
    auto insert = db.prepare(row.id != 0 ? sql.insertOld : sql.insert);
    bindEntry(*insert, operId, row);
    if (row.id != 0) insert->bind(kEntryId, row.id);
    row.id = insertedId(*insert);
  }
  insertPostings(db, operId, row);
  for (RefRow& ref : row.refs) insertRef(db, row.id, ref);
}

void updateEntry(Database& db, int operId, const EntryRow& before, EntryRow& row) {
  {
    auto update = db.prepare(entryStatements().update);
    bindEntry(*update, operId, row);
    update->bind(kEntryId, row.id);
    update->run();
  }
  db.prepare("DELETE FROM posting WHERE entry_id = $1")->bind(1, row.id).run();
  insertPostings(db, operId, row);

  for (const RefRow& old : before.refs) {
    const auto now = std::find_if(row.refs.begin(), row.refs.end(),
                                  [&](const RefRow& ref) { return ref.id == old.id; });
    if (now == row.refs.end()) {
      db.prepare("DELETE FROM entry_ref WHERE id = $1")->bind(1, old.id).run();
    } else if (!(*now == old)) {
      updateRef(db, *now);
    }
  }
  for (RefRow& ref : row.refs) {
    if (ref.id == 0) insertRef(db, row.id, ref);
  }
}

void deleteEntry(Database& db, const EntryRow& row) {
  db.prepare("DELETE FROM entry_ref WHERE entry_id = $1")->bind(1, row.id).run();
  db.prepare("DELETE FROM posting WHERE entry_id = $1")->bind(1, row.id).run();
  db.prepare("DELETE FROM entry WHERE id = $1")->bind(1, row.id).run();
}

void deleteHeader(Database& db, int id) {
  db.prepare("DELETE FROM oper WHERE id = $1")->bind(1, id).run();
}

}  // namespace tolvex::store
