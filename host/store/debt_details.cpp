#include "host/store/debt_details.h"

#include <algorithm>
#include <tuple>

namespace tolvex::store {

DebtDetails::DebtDetails(Database& db, DimsetRefs& sets)
    : db_(db), sets_(sets), names_(db), accounts_(accountsById(db)) {}

DebtLine DebtDetails::lineOf(const Debt& debt) {
  DebtLine line;
  line.debt = debt;
  auto select = db_.prepare(
      "SELECT o.otype, o.doc_ref, o.day, o.number, o.comment, o.group_id, e.info, e.guid,"
      " d.account_id, d.rate, c.account_id, c.rate FROM oper o, entry e, posting d, posting c"
      " WHERE o.id = $1 AND e.id = $2 AND d.entry_id = e.id AND d.sign = 1"
      " AND c.entry_id = e.id AND c.sign = -1");
  select->bind(1, debt.itemId).bind(2, debt.row.headEntryId);
  if (!select->step()) return line;
  line.otype = select->text(0);
  line.documentReference = documentReference(debt.itemId, select->text(0), select->text(1));
  line.day = static_cast<int>(select->integer(2));
  line.number = select->text(3);
  line.comment = select->text(4);
  line.groupId = static_cast<int>(select->integer(5));
  line.info = select->text(6);
  line.guid = select->text(7);
  const int debit = static_cast<int>(select->integer(8));
  const int credit = static_cast<int>(select->integer(10));
  line.accountD = accounts_[debit].code;
  line.accountC = accounts_[credit].code;
  const bool onDebit =
      debit == debt.accountId && (credit != debt.accountId || debt.row.side() == 1);
  line.rate = select->real(onDebit ? 9 : 11);
  return line;
}

std::vector<DebtLine> DebtDetails::of(const std::vector<Debt>& debts,
                                      const AddresseeFilter& filter) {
  std::vector<DebtLine> lines;
  lines.reserve(debts.size());
  for (const Debt& debt : debts) {
    DebtLine line = lineOf(debt);
    line.debtor = debtorOf(sets_.of(debt.row.dimsetId), filter);
    if (!line.debtor.empty()) line.debtorName = nameOf(line.debtor, debt.row.headEntryId);
    lines.push_back(std::move(line));
  }
  std::stable_sort(lines.begin(), lines.end(), [](const DebtLine& a, const DebtLine& b) {
    return std::tie(a.day, a.debt.itemId) < std::tie(b.day, b.debt.itemId);
  });
  return lines;
}

std::string DebtDetails::nameOf(const std::string& reference, int entryId) {
  const std::string& name = names_.of(reference);
  if (!name.empty()) return name;
  auto shown = db_.prepare(
      "SELECT show_string FROM entry_ref WHERE entry_id = $1 AND foidr = $2 ORDER BY id LIMIT 1");
  shown->bind(1, entryId).bind(2, reference);
  return shown->step() ? std::string(shown->text(0)) : std::string{};
}

}  // namespace tolvex::store
