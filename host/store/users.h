// Users of the books: who may come in, passwords, and the lock after wrong ones.
//
// Passwords are kept as salted hashes (argon2id). A user without one comes in by his login alone
// until he sets one. Five wrong passwords in a row lock the login for a quarter of an hour; an
// administrator unlocks it sooner. Failures, locks and the login that follows them are written to
// the protocol of administration.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/store/session.h"

namespace tolvex::store {

inline constexpr int kMostFailures = 5;
inline constexpr int kLockMinutes = 15;
inline constexpr std::size_t kShortestPassword = 8;  // characters

struct LoginOutcome {
  std::optional<User> user;
  std::string refusal;  // for the person who tried, when there is no user
};
// Tries a login in transactions of its own. The login is found without regard to case.
LoginOutcome logIn(Database& db, const std::string& login, const std::string& password,
                   DateTime now);

// The same user as the books know him now; nothing when he is gone or blocked.
std::optional<User> knownUser(Database& db, const User& user);

// Why a password cannot be taken, or "".
std::string passwordProblem(std::string_view login, std::string_view password);
// The hash to be stored.
std::string hashOf(std::string_view password);
bool isPasswordOf(Database& db, int userId, std::string_view password);
// Stores a password as it is, whatever its length; an empty one takes the secret away.
// False: no such user.
bool setPassword(Database& db, const std::string& login, const std::string& password);

}  // namespace tolvex::store
