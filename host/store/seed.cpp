#include "host/store/seed.h"

#include <stdexcept>

#include "host/store/schema.h"
#include "host/store/sql.h"

namespace tolvex::store {

void seedCompany(Database& db) {
  seedKinds(db);
  seedPlan(db);
  seedTemplates(db);
  seedGroups(db);
  seedUsers(db);
  seedJournals(db);
  moveIdCounters(db);
}

int seededAccount(Database& db, std::string_view code) {
  const auto id =
      integerFrom(db, "SELECT id FROM account WHERE code = $1 AND plan IN (0, -9)", code);
  if (!id) throw std::logic_error("the seed names no account " + std::string(code));
  return static_cast<int>(*id);
}

}  // namespace tolvex::store
