// Small look-ups that many routines share: accounts by number, references of operations, names
// behind references.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/database.h"
#include "host/store/kinds.h"

namespace tolvex::store {

struct AccountRow {
  int id = 0;
  std::string code, name, type;
  int groupFlag = 0;
  bool tracked = false;  // its open items are kept
  int plan = 0;
  bool inUse() const { return plan == 0 || id == 0; }  // neither of the new plan nor of a former
  // A sum of debit less credit as the account's own side shows it.
  std::int64_t ownSide(std::int64_t sum) const { return type == "K" ? -sum : sum; }
};

// By number in the working plan, "0" included; null for a number that no account has.
std::optional<AccountRow> accountByCode(Database& db, std::string_view code);
// The account and everything below it: those whose numbers begin with it, "" for none.
std::vector<int> accountsBelow(Database& db, std::string_view code);
// Every account that postings may name, by id: the working plan, former ones, "0".
std::map<int, AccountRow> accountsById(Database& db);

// How an operation is shown in one text: "2004.02.10 Nr. P-0012".
std::string shownOperation(std::int64_t day, std::string_view number);
std::string operReference(std::int64_t operId);  // always of kind O0201500
// The document's own reference: of its kind for documents of the money screens, the foreign
// document's for operations of other modules, else the operation itself.
std::string documentReference(std::int64_t operId, std::string_view otype,
                              std::string_view foreignDocument);

// Names of cards by reference, each read once.
class CardNames {
 public:
  explicit CardNames(Database& db) : db_(db) {}
  const std::string& of(const std::string& reference);  // "" for a card that is gone or unknown
  void readAll(const std::vector<std::string>& references);  // those that are going to be asked for

 private:
  std::string otherName(std::string_view reference);
  Database& db_;
  std::map<std::string, std::string> names_;
};

}  // namespace tolvex::store
