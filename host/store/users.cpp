#include "host/store/users.h"

#include <sodium.h>

#include <array>
#include <stdexcept>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/admin_log.h"
#include "host/store/moments.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kEmployee = "O0001401";
constexpr const char* kWrong = "Neteisingas vartotojo vardas arba slaptažodis!";
constexpr const char* kBlocked = "Vartotojas užblokuotas, kreipkitės į administratorių!";

struct StoredUser {
  User user;
  std::string secret, lockedUntil;
  bool active = true;
  int failures = 0;
};

std::optional<StoredUser> findUser(Database& db, std::string_view login) {
  auto rows = db.prepare(
      "SELECT id, login, name, user_pref, employee_id, secret, active, must_change, failures,"
      " locked_until FROM app_user ORDER BY id");
  while (rows->step()) {
    if (!equalNoCase(trim(rows->text(1)), trim(login))) continue;
    StoredUser found;
    found.user.id = rows->whole(0);
    found.user.login = rows->text(1);
    found.user.name = rows->text(2);
    found.user.prefix = rows->text(3);
    if (!rows->isNull(4)) {
      found.user.reference = refOf(kEmployee, rows->whole(4));
    }
    found.secret = rows->text(5);
    found.active = rows->integer(6) != 0;
    found.user.mustChangePassword = rows->integer(7) != 0;
    found.user.hasPassword = !found.secret.empty();
    found.failures = rows->whole(8);
    found.lockedUntil = rows->text(9);
    return found;
  }
  return std::nullopt;
}

bool fits(const std::string& secret, std::string_view password) {
  if (secret.empty()) return true;
  if (sodium_init() < 0) return false;
  return crypto_pwhash_str_verify(secret.c_str(), password.data(), password.size()) == 0;
}

std::string lockedText(const std::string& until) {
  return "Prisijungimas užrakintas iki " + shownMoment(until) +
         ", nes slaptažodis įvestas neteisingai " + std::to_string(kMostFailures) +
         " kartus iš eilės. Anksčiau atrakinti gali administratorius.";
}

// Counts a wrong password; what the person is told.
std::string failed(Database& db, const StoredUser& who, DateTime now) {
  const User& user = who.user;
  Transaction transaction(db, Transaction::For::Write);
  // Counted by the engine: two who guess at once are two failures.
  const auto failures = integerFrom(
      db, "UPDATE app_user SET failures = failures + 1 WHERE id = $1 RETURNING failures", user.id);
  const int left = kMostFailures - static_cast<int>(failures.value_or(kMostFailures));
  std::string told = kWrong;
  if (left > 0) {
    writeAdminLog(db, now, {AdminAct::LoginFailed, user.id, user.name, user.login});
    told += " Liko bandymų: " + std::to_string(left) + ".";
  } else {
    const DateTime end = DateTime::FromSeconds(now.Seconds() + kLockMinutes * 60);
    run(db, "UPDATE app_user SET failures = 0, locked_until = $2 WHERE id = $1", user.id,
        storedMoment(end));
    writeAdminLog(db, now,
                  {AdminAct::LoginLocked, user.id, user.name, user.login, "iki " + end.LongText()});
    told = lockedText(storedMoment(end));
  }
  transaction.commit();
  return told;
}

void unknown(Database& db, const std::string& login, DateTime now) {
  Transaction transaction(db, Transaction::For::Write);
  writeAdminLog(db, now, {AdminAct::LoginFailed, 0, "", left(login, 60), "tokio vartotojo nėra"});
  transaction.commit();
}

void forgetFailures(Database& db, const StoredUser& who, DateTime now) {
  Transaction transaction(db, Transaction::For::Write);
  run(db, "UPDATE app_user SET failures = 0, locked_until = '' WHERE id = $1", who.user.id);
  writeAdminLog(db, now,
                {AdminAct::LoginAfterFailures, who.user.id, who.user.name, who.user.login});
  transaction.commit();
}

}  // namespace

LoginOutcome logIn(Database& db, const std::string& login, const std::string& password,
                   DateTime now) {
  const auto who = findUser(db, login);
  if (!who) {
    unknown(db, login, now);
    return {std::nullopt, kWrong};
  }
  // A locked login is not even compared: guessing on would go unpunished.
  if (storedMoment(now) < who->lockedUntil) return {std::nullopt, lockedText(who->lockedUntil)};
  if (!fits(who->secret, password)) return {std::nullopt, failed(db, *who, now)};
  if (!who->active) return {std::nullopt, kBlocked};
  if (who->failures > 0 || !who->lockedUntil.empty()) forgetFailures(db, *who, now);
  return {who->user, ""};
}

std::optional<User> knownUser(Database& db, const User& user) {
  const auto who = findUser(db, user.login);
  if (!who || !who->active || who->user.id != user.id) return std::nullopt;
  return who->user;
}

std::string passwordProblem(std::string_view login, std::string_view password) {
  if (length(password) < kShortestPassword) {
    return "Slaptažodis per trumpas: reikia bent " + std::to_string(kShortestPassword) + " ženklų!";
  }
  if (equalNoCase(trim(login), trim(password))) {
    return "Slaptažodis negali būti toks pat kaip prisijungimo vardas!";
  }
  return "";
}

std::string hashOf(std::string_view password) {
  std::array<char, crypto_pwhash_STRBYTES> hash{};
  if (sodium_init() < 0 || crypto_pwhash_str(hash.data(), password.data(), password.size(),
                                             crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                             crypto_pwhash_MEMLIMIT_INTERACTIVE) != 0) {
    throw std::runtime_error("no memory for the password hash");
  }
  return hash.data();
}

bool isPasswordOf(Database& db, int userId, std::string_view password) {
  return fits(textFrom(db, "SELECT secret FROM app_user WHERE id = $1", userId), password);
}

bool setPassword(Database& db, const std::string& login, const std::string& password) {
  std::optional<std::string> secret;
  if (!password.empty()) secret = hashOf(password);
  return run(db, "UPDATE app_user SET secret = $2 WHERE login = $1", login, secret) == 1;
}

}  // namespace tolvex::store
