// What a debt row shows besides its sums: the document, its first entry, and with whom it is.
#pragma once

#include <string>
#include <vector>

#include "host/store/debts.h"
#include "host/store/lookups.h"

namespace tolvex::store {

struct DebtLine {
  Debt debt;
  std::string otype, documentReference, number, comment;
  int day = 0, groupId = 0;                    // of the operation
  std::string info, guid, accountD, accountC;  // of the item's first entry
  double rate = 0;                             // at which that entry was booked on the account
  std::string debtor, debtorName;
};

class DebtDetails {
 public:
  DebtDetails(Database& db, DimsetRefs& sets);
  // By date of the operation, then operation, account, currency, set. The debtor is chosen by
  // `filter` as debtorOf tells. Of one group of operations, when it is not 0.
  std::vector<DebtLine> of(const std::vector<Debt>& debts, const AddresseeFilter& filter,
                           int group = 0);
  // Names that nameOf is going to be asked for.
  void readNames(const std::vector<std::string>& references) { names_.readAll(references); }
  // The name on the card, else the text under which the entry shows the reference; of a reference
  // that was asked for before the same as then.
  const std::string& nameOf(const std::string& reference, int entryId);

 private:
  void readDocuments(std::vector<DebtLine>& lines);
  void readEntries(std::vector<DebtLine>& lines);
  void nameDebtors(std::vector<DebtLine>& lines, const AddresseeFilter& filter);
  Database& db_;
  DimsetRefs& sets_;
  CardNames names_;
  std::map<std::string, std::string> shown_;
  std::map<int, AccountRow> accounts_;
};

}  // namespace tolvex::store
