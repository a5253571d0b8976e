// Rows of an operation as the store keeps them: whole cents, day numbers, account ids.
//
// A save turns the record of the screen into these rows, a load turns them back. Currency sums are
// in 1/10000; a side in litas has the currency "LTL", rate and sum 0. Fields marked derived are
// copies that make every sum one index away; they follow from the others.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/database.h"
#include "host/store/kinds.h"

namespace tolvex::store {

inline constexpr std::string_view kBaseCode = "LTL";
inline constexpr int kUnknownAccount = -1;

enum RefRole : int { kAddressee = 0, kOwnOperation = 1, kOtherDocument = 2 };

struct RefRow {
  int id = 0;
  int sign = 1;
  std::string foidr;
  int role = kAddressee;
  int pointsTo = 0;  // the operation's id when role is kOwnOperation
  std::string showString;
  bool operator==(const RefRow&) const = default;
};

struct SideRow {
  int accountId = 0;
  std::string account;  // its number
  std::string cur{kBaseCode};
  double rate = 0;
  std::int64_t sumCur = 0;
  bool tracked = false;  // the account's open items are kept
  int dimsetId = 0;      // derived
  int itemId = 0;        // derived; 0 on an account whose items are not tracked
};

struct EntryRow {
  int id = 0;
  std::string guid;
  int day = 0;
  std::int64_t sumLt = 0;
  std::optional<std::string> info, tag, fguid;
  int tradeType = 0, restoringSign = 1, vatIndication = 0, vatFlag = 0;
  std::optional<int> vatTariff;  // hundredths of a percent
  std::optional<int> templateLineId;
  SideRow debit, credit;
  std::vector<RefRow> refs;

  SideRow& side(int sign) { return sign == 1 ? debit : credit; }
  const SideRow& side(int sign) const { return sign == 1 ? debit : credit; }
};

struct HeaderRow {
  int id = 0;
  std::string otype;
  int groupId = 0;
  std::optional<std::string> docRef, clientRef;
  int day = 0;
  std::string serija, number, comment, parameters;
  int autoNumber = 0;
  std::optional<int> bucketId;
  int vatRegister = 0;
  std::optional<std::string> lockGuid;
  std::optional<std::string> createdBy, createdByName, createdAt;
  std::optional<std::string> changedBy, changedByName, changedAt;
  int rowVersion = 1;
};

// What a user calls the operation: its date, series and number.
std::string operName(const HeaderRow& header);
std::string operName(int day, std::string_view serija, std::string_view number);
std::string dayText(int day);               // 20030209 -> "2003.02.09"
std::string centsText(std::int64_t cents);  // 123450 -> "1234,50"

std::optional<HeaderRow> readHeader(Database& db, int id);
std::vector<EntryRow> readEntries(Database& db, int operId);  // in order of their ids
std::optional<EntryRow> readEntry(Database& db, int operId, int entryId);

// Base rows together with their derived copies; ids are written into the rows. A header or entry
// that has an id already comes back under it.
void insertHeader(Database& db, HeaderRow& row);
void updateHeader(Database& db, const HeaderRow& row);  // rowVersion as given
void insertEntry(Database& db, int operId, EntryRow& row);
// Rewrites the entry and its sides, and the references that differ from `before`.
void updateEntry(Database& db, int operId, const EntryRow& before, EntryRow& row);
void deleteEntry(Database& db, const EntryRow& row);
void deleteHeader(Database& db, int id);

}  // namespace tolvex::store
