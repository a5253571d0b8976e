// Open items: what each document still has to receive or pay on an account.
//
// A posting belongs to the operation that a pointer on its own side names, else to its own
// operation. The originating postings of an item decide in which currency and for which addressees
// its followers (payments, covers, rate differences) count; the rests of all items of an account
// add up to its balance at any date.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "host/store/oper_rows.h"

namespace tolvex::store {

struct ItemPosting {
  int entryId = 0;
  int sign = 0;
  int operId = 0;
  int day = 0;
  std::int64_t sumLt = 0;
  std::string cur{kBaseCode};
  std::int64_t sumCur = 0;
  int dimsetId = 0;
};

// One row of open_item: an item's share in one currency and for one set of addressees. Rests are
// debit less credit; the full sums count originating postings only.
struct ItemRow {
  std::string cur;
  int dimsetId = 0;
  std::int64_t restLt = 0, restCur = 0, fullLt = 0, fullCur = 0;
  int firstDay = 0, lastDay = 0;  // of the whole item on the account
  int headEntryId = 0;            // gives accounts, text and booked rate
  bool open() const { return restLt != 0 || restCur != 0; }
  // 1: the item lies on the debit, -1: on the credit.
  int side() const { return (restCur != 0 ? restCur : restLt) >= 0 ? 1 : -1; }
  // The side on which the operation itself entered it, also when it was overpaid since.
  int ownSide() const {
    const std::int64_t full = fullCur != 0 ? fullCur : fullLt;
    return full == 0 ? side() : full > 0 ? 1 : -1;
  }
  bool operator==(const ItemRow&) const = default;
};

using ShareAddressee = std::function<bool(int dimsetA, int dimsetB)>;

// The item's rows by its postings up to and including `until`, in order of currency and set.
// `postings` are those of one item on one account, in order of entry and debit before credit.
std::vector<ItemRow> itemRows(int itemId, const std::vector<ItemPosting>& postings,
                              const ShareAddressee& share,
                              int until = std::numeric_limits<int>::max());

// The item that a side of an entry of operation `operId` belongs to.
int itemOf(const EntryRow& entry, int sign, int operId);

// The posting in a row of: entry_id, sign, oper_id, day, sum_lt, cur, sum_cur, dimset_id, …
ItemPosting itemPosting(const Statement& row);

// Stored postings of an item on an account, ready for itemRows.
std::vector<ItemPosting> readItem(Database& db, int accountId, int itemId);
// Stores the rows of an item that has none on the account.
void insertItem(Database& db, int accountId, int itemId, const std::vector<ItemRow>& rows);
// Makes the stored rows of an item these. What a document of thousands of clients holds for the
// others is left alone when one of them pays.
void updateItem(Database& db, int accountId, int itemId, const std::vector<ItemRow>& rows);

}  // namespace tolvex::store
