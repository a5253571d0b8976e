// PostgreSQL behind the Database interface, by libpq.
//
// Each schema of a database may hold a company of its own; which one is the matter of the search
// path, given in the address ("…?options=-csearch_path%3Dcompany").
#pragma once

#include <memory>
#include <string>

#include "host/store/database.h"

namespace tolvex::store {

std::unique_ptr<Database> openPostgres(const std::string& url, const Database::Options& options);

}  // namespace tolvex::store
