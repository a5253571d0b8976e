// Account numbers inside stored texts: settings of operation groups, parameters of journals,
// formulas of statements. Ids follow a renumbered account by themselves; these must be rewritten.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/store/database.h"

namespace tolvex::store {

struct AccountName {
  std::string code, name;
};
// What accounts become, by the number they had; without a number of its own one is gone.
using RenamedAccounts = std::map<std::string, AccountName, std::less<>>;

// Rewrites the places that hold one exact account number.
void rewriteAccountTexts(Database& db, const RenamedAccounts& renamed);

struct AccountText {
  std::string where, text;
  bool operator==(const AccountText&) const = default;
};
// Texts that no program can rewrite, since they mean accounts by the beginning of their numbers or
// belong to a user: those that a changed number is, or begins with. For a person to look through;
// to be asked before what can be rewritten is.
std::vector<AccountText> accountTextsLeft(Database& db, const RenamedAccounts& renamed);

}  // namespace tolvex::store
