#include "host/store/lookups.h"

#include <algorithm>

#include "framework/text.h"
#include "host/store/many_keys.h"
#include "host/store/oper_rows.h"

namespace tolvex::store {
namespace {

AccountRow accountOf(Statement& row) {
  return {row.whole(0),
          std::string(row.text(1)),
          std::string(row.text(2)),
          std::string(row.text(3)),
          row.whole(4),
          row.integer(5) != 0,
          row.whole(6)};
}

struct CardTable {
  std::string_view kind, select;
};
constexpr CardTable kCardTables[] = {
    {kFirmKind, "SELECT id, name, '' FROM firm WHERE id IN (@KEYS@)"},
    {kPersonKind, "SELECT id, name, last_name FROM person WHERE id IN (@KEYS@)"},
    {kEmployeeKind, "SELECT id, name, last_name FROM employee WHERE id IN (@KEYS@)"},
    {"O0000300", "SELECT id, name, '' FROM bank WHERE id IN (@KEYS@)"},
    {"O0000500",
     "SELECT a.id, b.name || ',', a.account_number FROM bank_account a"
     " JOIN bank b ON b.id = a.bank_id WHERE a.id IN (@KEYS@)"},
};

const CardTable* cardTableOf(std::string_view reference) {
  const auto table =
      std::find_if(std::begin(kCardTables), std::end(kCardTables),
                   [&](const CardTable& known) { return known.kind == kindOf(reference); });
  return table == std::end(kCardTables) ? nullptr : table;
}

}  // namespace

std::optional<AccountRow> accountByCode(Database& db, std::string_view code) {
  auto account = db.prepare(
      "SELECT id, code, name, type, group_flag, track_items, plan FROM account"
      " WHERE code = $1 AND (plan = 0 OR id = 0)");
  account->bind(1, code);
  if (!account->step()) return std::nullopt;
  return accountOf(*account);
}

std::map<int, AccountRow> accountsById(Database& db) {
  auto accounts =
      db.prepare("SELECT id, code, name, type, group_flag, track_items, plan FROM account");
  std::map<int, AccountRow> byId;
  while (accounts->step()) byId.emplace(accounts->whole(0), accountOf(*accounts));
  return byId;
}

std::vector<int> accountsBelow(Database& db, std::string_view code) {
  std::vector<int> below;
  if (code.empty()) return below;
  for (const auto& [id, account] : accountsById(db))
    if (account.code.starts_with(code) && account.inUse()) below.push_back(id);
  return below;
}

std::string shownOperation(std::int64_t day, std::string_view number) {
  return dayText(static_cast<int>(day)) + " Nr. " + std::string(number);
}

std::string operReference(std::int64_t operId) {
  return refOf(kOperationKind, static_cast<int>(operId));
}

std::string documentReference(std::int64_t operId, std::string_view otype,
                              std::string_view foreignDocument) {
  if (isOperationKind(otype) && otype != kOperationKind)
    return refOf(otype, static_cast<int>(operId));
  if (!foreignDocument.empty()) return std::string(foreignDocument);
  return operReference(operId);
}

const std::string& CardNames::of(const std::string& reference) {
  if (const auto known = names_.find(reference); known != names_.end()) return known->second;
  readAll({reference});
  return names_[reference];
}

void CardNames::readAll(const std::vector<std::string>& references) {
  std::map<const CardTable*, std::vector<int>> wanted;
  for (const std::string& reference : references) {
    const auto [name, unknown] = names_.try_emplace(reference);
    if (!unknown || !isRef(reference)) continue;
    if (const CardTable* table = cardTableOf(reference))
      wanted[table].push_back(idOf(reference));
    else
      name->second = otherName(reference);
  }
  for (auto& [table, ids] : wanted)
    forEachOf(db_, table->select, std::move(ids), [&, kind = table->kind](const Statement& card) {
      names_[refOf(kind, card.whole(0))] =
          trim(std::string(card.text(1)) + " " + std::string(card.text(2)));
    });
}

std::string CardNames::otherName(std::string_view reference) {
  auto other = db_.prepare("SELECT name FROM ref_object WHERE kind = $1 AND id = $2");
  other->bind(1, kindOf(reference)).bind(2, idOf(reference));
  return other->step() ? std::string(other->text(0)) : std::string{};
}

}  // namespace tolvex::store
