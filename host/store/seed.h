// What a new company begins with: users and rights, currencies, the chart of accounts, templates,
// operation groups, journals and statements, so that every screen opens, numbers, posts and
// reports at once. Ids are fixed, so that settings and tests may name them.
#pragma once

#include <string>

#include "host/store/database.h"

namespace tolvex::store {

// All parts, in order, in the caller's transaction, into books without a row.
void seedCompany(Database& db);

void seedKinds(Database& db);      // currencies, addressee kinds, own firm, small lists
void seedPlan(Database& db);       // marks and the working plan
void seedTemplates(Database& db);  // after the plan
void seedGroups(Database& db);     // after the templates
void seedUsers(Database& db);      // roles, the first user, rights; after the groups
void seedJournals(Database& db);   // journals and statements

// The id of an account of the working plan; throws when the seed names one that is not in it.
int seededAccount(Database& db, std::string_view code);

}  // namespace tolvex::store
