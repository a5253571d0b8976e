#include "host/store/debts.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "host/store/sql.h"
#include "host/store/sql_values.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kColumns =
    "i.account_id, i.item_id, i.cur, i.dimset_id, i.rest_lt, i.rest_cur, i.full_lt, i.full_cur,"
    " i.first_day, i.last_day, i.head_entry_id";

Debt debtOf(Statement& row) {
  Debt debt;
  debt.accountId = row.whole(0);
  debt.itemId = row.whole(1);
  debt.row.cur = row.text(2);
  debt.row.dimsetId = row.whole(3);
  debt.row.restLt = row.integer(4);
  debt.row.restCur = row.integer(5);
  debt.row.fullLt = row.integer(6);
  debt.row.fullCur = row.integer(7);
  debt.row.firstDay = row.whole(8);
  debt.row.lastDay = row.whole(9);
  debt.row.headEntryId = row.whole(10);
  return debt;
}

bool asksForOne(const DebtQuery& query) {
  return query.addressee.asks() == AddresseeFilter::Asks::One;
}

// Open items that nothing touched after the day. Openness is a column and later activity a select
// of its own (below), since one condition with "or" would walk every closed item.
std::vector<Debt> untouchedItems(Database& db, const DebtQuery& query) {
  SqlValues values;
  std::string sql = "SELECT " + std::string(kColumns);
  if (asksForOne(query))
    sql +=
        " FROM dimset_ref r CROSS JOIN open_item i WHERE i.dimset_id = r.dimset_id"
        " AND r.foidr = " +
        values.mark(query.addressee.text()) + " AND";
  else
    sql += " FROM open_item i WHERE";
  if (query.account) sql += " i.account_id = " + values.mark(*query.account) + " AND";
  // The day is compared here: in the text it would lead an engine to walk all that is closed.
  auto select = db.prepare(sql + " i.is_open = 1");
  values.bindTo(*select);
  std::vector<Debt> debts;
  while (select->step())
    if (Debt debt = debtOf(*select); debt.row.lastDay <= query.day)
      debts.push_back(std::move(debt));
  return debts;
}

// Which items have postings both up to the day and after it, as a select of account and item. With
// one addressee only those that he ever had a posting in, so that his list does not grow with
// everybody's activity.
std::string touchedItems(const DebtQuery& query, SqlValues& values) {
  std::string sql = "SELECT DISTINCT i.account_id, i.item_id FROM ";
  if (asksForOne(query))
    sql +=
        "dimset_ref r CROSS JOIN posting p CROSS JOIN open_item i"
        " WHERE p.dimset_id = r.dimset_id AND p.dimset_id <> 0 AND p.item_id IS NOT NULL"
        " AND i.account_id = p.account_id AND i.item_id = p.item_id AND r.foidr = " +
        values.mark(query.addressee.text()) + " AND";
  else
    sql += "open_item i WHERE";
  if (query.account) sql += " i.account_id = " + values.mark(*query.account) + " AND";
  if (query.account && asksForOne(query))
    sql += " p.account_id = " + values.mark(*query.account) + " AND";
  sql += " i.last_day > " + values.mark(query.day);
  return sql + " AND i.first_day <= " + values.mark(query.day);
}

using PostingsByItem = std::map<std::pair<int, int>, std::vector<ItemPosting>>;  // account, item

// The postings up to the day of items that were touched after it.
PostingsByItem touchedPostings(Database& db, const DebtQuery& query) {
  PostingsByItem items;
  if (query.day >= kNoLimit) return items;
  if (query.account &&
      !anyRow(db, "SELECT 1 FROM open_item WHERE account_id = $1 AND last_day > $2 LIMIT 1",
              *query.account, query.day))
    return items;
  SqlValues values;
  std::string sql =
      "SELECT p.entry_id, p.sign, p.oper_id, p.day, p.sum_lt, p.cur, p.sum_cur, p.dimset_id,"
      " t.account_id, t.item_id FROM (" +
      touchedItems(query, values) +
      ") t CROSS JOIN posting p WHERE p.item_id = t.item_id AND p.account_id = t.account_id"
      " AND p.item_id IS NOT NULL AND p.day <= ";
  sql += values.mark(query.day) + " ORDER BY p.entry_id, p.sign DESC";
  auto select = db.prepare(sql);
  values.bindTo(*select);
  while (select->step())
    items[{select->whole(8), select->whole(9)}].push_back(itemPosting(*select));
  return items;
}

// The items of an account whose items are not kept, straight from its postings.
PostingsByItem postingsByItem(Database& db, int account, int day) {
  auto select = db.prepare(
      "SELECT p.entry_id, p.sign, p.oper_id, p.day, p.sum_lt, p.cur, p.sum_cur, p.dimset_id,"
      " (SELECT r.points_to FROM entry_ref r WHERE r.entry_id = p.entry_id AND r.sign = p.sign"
      " AND r.role = 1 ORDER BY r.id LIMIT 1) FROM posting p"
      " WHERE p.account_id = $1 AND p.day <= $2 ORDER BY p.entry_id, p.sign DESC");
  select->bind(1, account).bind(2, day);
  PostingsByItem items;
  while (select->step()) {
    ItemPosting posting = itemPosting(*select);
    const int item = select->isNull(8) ? posting.operId : select->whole(8);
    items[{account, item}].push_back(std::move(posting));
  }
  return items;
}

void addItem(std::vector<Debt>& debts, int account, int item,
             const std::vector<ItemPosting>& postings, const DebtQuery& query, DimsetRefs& sets) {
  const auto share = [&sets](int a, int b) { return sets.shareAddressee(a, b); };
  for (ItemRow& row : itemRows(item, postings, share, query.day))
    debts.push_back({account, item, std::move(row)});
}

}  // namespace

std::vector<Debt> openItems(Database& db, const DebtQuery& query, DimsetRefs& sets) {
  const bool kept = !query.account || query.tracked;
  std::vector<Debt> debts = kept ? untouchedItems(db, query) : std::vector<Debt>{};
  const PostingsByItem others =
      kept ? touchedPostings(db, query) : postingsByItem(db, *query.account, query.day);
  for (const auto& [key, postings] : others)
    addItem(debts, key.first, key.second, postings, query, sets);
  std::erase_if(debts, [&](const Debt& debt) {
    return !debt.row.open() || (query.side != 0 && debt.row.side() != query.side);
  });
  if (query.addressee.asks() != AddresseeFilter::Asks::Everybody) {
    readSets(debts, sets);
    std::erase_if(debts, [&](const Debt& debt) {
      const auto& references = sets.of(debt.row.dimsetId);
      return std::none_of(references.begin(), references.end(),
                          [&](const auto& ref) { return query.addressee.matches(ref); });
    });
  }
  std::sort(debts.begin(), debts.end(), [](const Debt& a, const Debt& b) {
    return std::tie(a.accountId, a.itemId, a.row.cur, a.row.dimsetId) <
           std::tie(b.accountId, b.itemId, b.row.cur, b.row.dimsetId);
  });
  return debts;
}

void readSets(const std::vector<Debt>& debts, DimsetRefs& sets) {
  std::vector<int> ids;
  ids.reserve(debts.size());
  for (const Debt& debt : debts) ids.push_back(debt.row.dimsetId);
  sets.readAll(ids);
}

std::vector<Debt> openItemsOf(Database& db, int operId) {
  auto select = db.prepare("SELECT " + std::string(kColumns) +
                           " FROM account a CROSS JOIN open_item i WHERE a.track_items <> 0"
                           " AND i.account_id = a.id AND i.item_id = $1 AND i.is_open = 1"
                           " ORDER BY i.account_id, i.cur, i.dimset_id");
  select->bind(1, operId);
  std::vector<Debt> debts;
  while (select->step()) debts.push_back(debtOf(*select));
  return debts;
}

std::vector<Debt> itemsOf(Database& db, const AccountRow& account, int operId) {
  std::vector<Debt> debts;
  DimsetRefs sets(db);
  const DebtQuery query;
  if (account.tracked) {
    addItem(debts, account.id, operId, readItem(db, account.id, operId), query, sets);
  } else {
    const auto items = postingsByItem(db, account.id, kNoLimit);
    if (const auto item = items.find({account.id, operId}); item != items.end())
      addItem(debts, account.id, operId, item->second, query, sets);
  }
  return debts;
}

std::string debtorOf(const std::vector<std::string>& references, const AddresseeFilter& filter) {
  const auto first = [&](auto&& test) -> const std::string* {
    const auto found = std::find_if(references.begin(), references.end(), test);
    return found == references.end() ? nullptr : &*found;
  };
  const std::string* debtor = nullptr;
  if (filter.asks() != AddresseeFilter::Asks::Everybody)
    debtor = first([&](const std::string& ref) { return filter.matches(ref); });
  if (!debtor) debtor = first([](const std::string& ref) { return isParty(ref); });
  if (!debtor) debtor = first([](const std::string&) { return true; });
  return debtor ? *debtor : std::string{};
}

}  // namespace tolvex::store
