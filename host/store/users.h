// Users of the books: who may come in.
#pragma once

#include <optional>
#include <string>

#include "host/store/session.h"

namespace tolvex::store {

// The active user of that login, if the password is right or he has none.
std::optional<User> authenticate(Database& db, const std::string& login,
                                 const std::string& password);
// An empty password takes the secret away. False: no such user.
bool setPassword(Database& db, const std::string& login, const std::string& password);

}  // namespace tolvex::store
