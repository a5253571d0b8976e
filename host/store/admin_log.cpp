#include "host/store/admin_log.h"

#include "host/store/moments.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

struct ActText {
  AdminAct act;
  const char* text;
};
constexpr ActText kActTexts[] = {
    {AdminAct::LoginFailed, "Nepavykęs prisijungimas"},
    {AdminAct::LoginLocked, "Prisijungimas užrakintas"},
    {AdminAct::LoginAfterFailures, "Prisijungta po nepavykusių bandymų"},
    {AdminAct::PasswordChanged, "Pakeistas savo slaptažodis"},
    {AdminAct::PasswordSet, "Nustatytas slaptažodis"},
    {AdminAct::Unlocked, "Prisijungimas atrakintas"},
    {AdminAct::Created, "Sukurta"},
    {AdminAct::Changed, "Pakeista"},
    {AdminAct::Deleted, "Panaikinta"},
    {AdminAct::RightsChanged, "Pakeistos teisės"},
};

}  // namespace

void writeAdminLog(Database& db, DateTime at, const AdminEntry& entry) {
  run(db,
      "INSERT INTO admin_log (at, user_id, user_name, act, subject, detail)"
      " VALUES ($1, $2, $3, $4, $5, $6)",
      storedMoment(at), entry.userId, entry.userName, std::string(1, static_cast<char>(entry.act)),
      entry.subject, entry.detail);
}

void writeAdminLog(Session& session, AdminAct act, std::string_view subject,
                   std::string_view detail) {
  const User& user = session.user();
  writeAdminLog(session.db(), session.now(),
                {act, user.id, user.name, std::string(subject), std::string(detail)});
}

std::string adminActText(std::string_view letter) {
  for (const ActText& one : kActTexts) {
    if (letter.size() == 1 && letter[0] == static_cast<char>(one.act)) return one.text;
  }
  return std::string(letter);
}

}  // namespace tolvex::store
