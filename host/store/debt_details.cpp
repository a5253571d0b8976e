#include "host/store/debt_details.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

#include "host/store/many_keys.h"
#include "host/store/sql.h"

namespace tolvex::store {

namespace {

using Places = std::unordered_multimap<int, std::size_t>;  // of lines, by an id

template <class Id>
Places placesOf(const std::vector<DebtLine>& lines, Id id) {
  Places places;
  places.reserve(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) places.emplace(id(lines[i]), i);
  return places;
}

std::vector<int> keysOf(const Places& places) {
  std::vector<int> keys;
  keys.reserve(places.size());
  for (const auto& [key, place] : places) keys.push_back(key);
  return keys;
}

// The lines that share the id in the row's first column.
template <class Body>
void forEachLine(std::vector<DebtLine>& lines, const Places& places, const Statement& row,
                 Body body) {
  const auto [from, to] = places.equal_range(row.whole(0));
  for (auto place = from; place != to; ++place) body(lines[place->second]);
}

}  // namespace

DebtDetails::DebtDetails(Database& db, DimsetRefs& sets)
    : db_(db), sets_(sets), names_(db), accounts_(accountsById(db)) {}

void DebtDetails::readDocuments(std::vector<DebtLine>& lines) {
  const auto byItem = placesOf(lines, [](const DebtLine& line) { return line.debt.itemId; });
  forEachOf(db_,
            "SELECT id, otype, doc_ref, day, number, comment, group_id FROM oper"
            " WHERE id IN (@KEYS@)",
            keysOf(byItem), [&](const Statement& row) {
              forEachLine(lines, byItem, row, [&](DebtLine& line) {
                line.otype = row.text(1);
                line.documentReference =
                    documentReference(line.debt.itemId, row.text(1), row.text(2));
                line.day = row.whole(3);
                line.number = row.text(4);
                line.comment = row.text(5);
                line.groupId = row.whole(6);
              });
            });
}

void DebtDetails::readEntries(std::vector<DebtLine>& lines) {
  const auto byEntry =
      placesOf(lines, [](const DebtLine& line) { return line.debt.row.headEntryId; });
  forEachOf(db_,
            "SELECT e.id, e.info, e.guid, d.account_id, d.rate, c.account_id, c.rate FROM entry e,"
            " posting d, posting c WHERE e.id IN (@KEYS@) AND d.entry_id = e.id AND d.sign = 1"
            " AND c.entry_id = e.id AND c.sign = -1",
            keysOf(byEntry), [&](const Statement& row) {
              const int debit = row.whole(3);
              const int credit = row.whole(5);
              forEachLine(lines, byEntry, row, [&](DebtLine& line) {
                line.info = row.text(1);
                line.guid = row.text(2);
                line.accountD = accounts_[debit].code;
                line.accountC = accounts_[credit].code;
                const bool onDebit =
                    debit == line.debt.accountId && (credit != debit || line.debt.row.side() == 1);
                line.rate = row.real(onDebit ? 4 : 6);
              });
            });
}

void DebtDetails::nameDebtors(std::vector<DebtLine>& lines, const AddresseeFilter& filter) {
  std::vector<std::string> debtors;
  for (DebtLine& line : lines) {
    line.debtor = debtorOf(sets_.of(line.debt.row.dimsetId), filter);
    if (!line.debtor.empty()) debtors.push_back(line.debtor);
  }
  readNames(debtors);
  for (DebtLine& line : lines)
    if (!line.debtor.empty()) line.debtorName = nameOf(line.debtor, line.debt.row.headEntryId);
}

std::vector<DebtLine> DebtDetails::of(const std::vector<Debt>& debts, const AddresseeFilter& filter,
                                      int group) {
  std::vector<DebtLine> lines(debts.size());
  for (std::size_t i = 0; i < debts.size(); ++i) lines[i].debt = debts[i];
  readDocuments(lines);
  if (group != 0) std::erase_if(lines, [&](const auto& line) { return line.groupId != group; });
  std::stable_sort(lines.begin(), lines.end(), [](const DebtLine& a, const DebtLine& b) {
    return std::tie(a.day, a.debt.itemId) < std::tie(b.day, b.debt.itemId);
  });
  readEntries(lines);
  readSets(debts, sets_);
  nameDebtors(lines, filter);
  return lines;
}

const std::string& DebtDetails::nameOf(const std::string& reference, int entryId) {
  const std::string& name = names_.of(reference);
  if (!name.empty()) return name;
  const auto [shown, unknown] = shown_.try_emplace(reference);
  if (unknown)
    shown->second = textFrom(
        db_,
        "SELECT show_string FROM entry_ref WHERE entry_id = $1 AND foidr = $2 ORDER BY id LIMIT 1",
        entryId, reference);
  return shown->second;
}

}  // namespace tolvex::store
