// The protocol of administration: who let whom in, failed and locked logins, changes of users,
// roles and rights. Written inside the change it tells of and never changed afterwards.
#pragma once

#include <string>
#include <string_view>

#include "host/store/session.h"

namespace tolvex::store {

// Stored by its letter.
enum class AdminAct : char {
  LoginFailed = 'F',
  LoginLocked = 'L',
  LoginAfterFailures = 'I',
  PasswordChanged = 'P',  // by the user himself
  PasswordSet = 'S',      // by an administrator
  Unlocked = 'O',
  Created = 'C',
  Changed = 'U',
  Deleted = 'D',
  RightsChanged = 'R',
};

struct AdminEntry {
  AdminAct act;
  int userId = 0;  // who did it; 0: nobody known
  std::string userName;
  std::string subject;      // whom or what it was done to
  std::string detail = {};  // lines "field: old -> new"
};

void writeAdminLog(Database& db, DateTime at, const AdminEntry& entry);
// The same by the user of the session at its clock.
void writeAdminLog(Session& session, AdminAct act, std::string_view subject,
                   std::string_view detail = {});

// "Pakeista", "Nepavykęs prisijungimas", …; the letter itself when it is not known.
std::string adminActText(std::string_view letter);

}  // namespace tolvex::store
