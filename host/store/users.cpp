#include "host/store/users.h"

#include <sodium.h>

#include <array>
#include <stdexcept>

#include "framework/references.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kEmployee = "O0001401";

}  // namespace

std::optional<User> authenticate(Database& db, const std::string& login,
                                 const std::string& password) {
  auto row = bound(db,
                   "SELECT id, role_id, login, name, user_pref, employee_id, secret FROM app_user"
                   " WHERE login = $1 AND active = 1",
                   login);
  if (!row->step()) return std::nullopt;
  const std::string secret(row->text(6));
  if (!secret.empty() &&
      crypto_pwhash_str_verify(secret.c_str(), password.c_str(), password.size()) != 0) {
    return std::nullopt;
  }
  User user;
  user.id = static_cast<int>(row->integer(0));
  user.roleId = static_cast<int>(row->integer(1));
  user.login = row->text(2);
  user.name = row->text(3);
  user.prefix = row->text(4);
  if (!row->isNull(5)) user.reference = refOf(kEmployee, static_cast<int>(row->integer(5)));
  return user;
}

bool setPassword(Database& db, const std::string& login, const std::string& password) {
  std::optional<std::string> secret;
  if (!password.empty()) {
    std::array<char, crypto_pwhash_STRBYTES> hash{};
    if (sodium_init() < 0 || crypto_pwhash_str(hash.data(), password.c_str(), password.size(),
                                               crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                               crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
      throw std::runtime_error("no memory for the password hash");
    }
    secret = hash.data();
  }
  return run(db, "UPDATE app_user SET secret = $2 WHERE login = $1", login, secret) == 1;
}

}  // namespace tolvex::store
