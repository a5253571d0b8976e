// Who comes in, who is locked out, and who may change that.
#include "host/store/users.h"

#include "framework/references.h"
#include "host/store/admin_log.h"
#include "host/store/rights.h"
#include "host/store/sql.h"
#include "tests/support/books_fixture.h"

namespace tolvex::store {
namespace {

constexpr const char* kUsers = "O0000800";
constexpr const char* kRoles = "O0000830";
constexpr const char* kLog = "O0000810";
constexpr const char* kOwnPassword = "O0000820";

class Users : public BooksTest {
 protected:
  RowSetPtr first(const HostResult& result) {
    RowSetPtr rows = rowsIn(result);
    rows->MoveFirst();
    return rows;
  }
  SaveOutcome save(const char* kind, RowSet& record, RowSet* second = nullptr) {
    return session().save(kind, kind, record, second, nullptr);
  }
  RowSetPtr newUser(const char* login, int role, const char* password) {
    RowSetPtr user = first(session().create(kUsers, kUsers));
    (*user)["Login"] = login;
    (*user)["Name"] = login;
    (*user)["RoleID"] = Variant(role);
    (*user)["MustChange"] = Variant(0);
    (*user)["Password"] = password;
    return user;
  }
  std::string stored(const char* login, int role, const char* password) {
    const RowSetPtr user = newUser(login, role, password);
    const SaveOutcome saved = save(kUsers, *user);
    EXPECT_EQ(saved.Code, kDone) << saved.Text;
    EXPECT_EQ((*user)["Password"].Text(), "") << "no password stays in a record";
    return saved.reference;
  }
  SaveOutcome changed(const std::string& reference, const char* field, const Variant& value) {
    const RowSetPtr record = first(session().load(kindOf(reference), reference));
    (*record)[field] = value;
    return save(std::string(kindOf(reference)).c_str(), *record);
  }
  LoginOutcome tried(const char* login, const char* password) {
    return logIn(db(), login, password, now);
  }
  bool comesIn(const char* login, const char* password) {
    return tried(login, password).user.has_value();
  }
  void minutesLater(int minutes) { now = DateTime::FromSeconds(now.Seconds() + minutes * 60); }
  // Acts and subjects of the protocol, the oldest first.
  std::string log() {
    std::string text;
    auto rows = db().prepare("SELECT act, subject FROM admin_log ORDER BY id");
    while (rows->step()) {
      text.append(text.empty() ? "" : " ").append(rows->text(0)).append(":");
      text.append(rows->text(1));
    }
    return text;
  }
};

TEST_P(Users, WrongPasswordsLockTheLoginForAWhile) {
  stored("ona", 3, "vasaros rytas");
  run(db(), "DELETE FROM admin_log");
  for (int failure = 1; failure < kMostFailures; ++failure) {
    const std::string told = tried("ona", "žiemos rytas").refusal;
    EXPECT_NE(told.find("Liko bandymų: " + std::to_string(kMostFailures - failure)),
              std::string::npos)
        << told;
  }
  EXPECT_TRUE(comesIn("ona", "vasaros rytas")) << "one try was left";
  for (int failure = 1; failure <= kMostFailures; ++failure) EXPECT_FALSE(comesIn("ona", "?"));
  const std::string told = tried("ona", "vasaros rytas").refusal;
  EXPECT_NE(told.find("užrakintas iki 2004.03.31 12:15:00"), std::string::npos) << told;
  EXPECT_TRUE(comesIn("admin", "")) << "others are not locked";
  minutesLater(kLockMinutes - 1);
  EXPECT_FALSE(comesIn("ona", "vasaros rytas"));
  minutesLater(1);
  EXPECT_TRUE(comesIn("ona", "vasaros rytas"));
  EXPECT_FALSE(comesIn("ona", "?"));
  EXPECT_TRUE(comesIn("ona", "vasaros rytas")) << "the count begins anew";
  EXPECT_EQ(log(), "F:ona F:ona F:ona F:ona I:ona F:ona F:ona F:ona F:ona L:ona I:ona F:ona I:ona");
}

TEST_P(Users, AnAdministratorUnlocksALogin) {
  const std::string ona = stored("ona", 3, "vasaros rytas");
  for (int failure = 1; failure <= kMostFailures; ++failure) EXPECT_FALSE(comesIn("ona", "?"));
  EXPECT_NE((*first(session().load(kUsers, ona)))["LockedUntil"].Text(), "");
  EXPECT_EQ(changed(ona, "Unlock", Variant(1)).Code, kDone);
  EXPECT_EQ((*first(session().load(kUsers, ona)))["LockedUntil"].Text(), "");
  EXPECT_TRUE(comesIn("ona", "vasaros rytas"));
}

TEST_P(Users, AnUnknownLoginIsNotedAndNotTold) {
  const std::string unknown = tried("Robin'; DROP TABLE app_user", "x").refusal;
  EXPECT_EQ(unknown.find("Liko"), std::string::npos);
  EXPECT_EQ(log(), "F:Robin'; DROP TABLE app_user");
}

TEST_P(Users, ABlockedUserStaysOut) {
  const std::string ona = stored("ona", 3, "vasaros rytas");
  EXPECT_EQ(changed(ona, "Active", Variant(0)).Code, kDone);
  EXPECT_NE(tried("ona", "vasaros rytas").refusal.find("užblokuotas"), std::string::npos);
  EXPECT_EQ(tried("ona", "?").refusal.find("užblokuotas"), std::string::npos)
      << "told only to who knows the password";
}

struct PasswordCase {
  const char* name;
  const char *old, *fresh;
  int code;
  const char* text;
};
constexpr PasswordCase kPasswords[] = {
    {"the old one is asked first", "?", "x", kRuleBroken, "dabartinis"},
    {"seven letters are too few", "vasaros rytas", "ąčęėįšų", kRuleBroken, "per trumpas"},
    {"the login is none", "vasaros rytas", "ONA.ONAITĖ", kRuleBroken, "prisijungimo vardas"},
    {"nor is the old one", "vasaros rytas", "vasaros rytas", kRuleBroken, "skirtis"},
    {"eight letters will do", "vasaros rytas", "ąčęėįšųū", kDone, ""},
};

TEST_P(Users, AUserChangesHisOwnPasswordAndNothingElse) {
  if (GetParam() == Store::Memory) return;
  stored("ona.onaitė", 3, "vasaros rytas");
  run(db(), "UPDATE app_user SET must_change = 1 WHERE login = 'ona.onaitė'");
  const auto ona = another("ona.onaitė", "vasaros rytas");
  EXPECT_FALSE(ona->rights("CFirms").view) << "no rights before the change";
  for (const PasswordCase& c : kPasswords) {
    SCOPED_TRACE(c.name);
    const RowSetPtr wish = first(ona->create(kOwnPassword, ""));
    EXPECT_EQ((*wish)["HasPassword"].Number(), 1);
    (*wish)["OldPassword"] = c.old;
    (*wish)["NewPassword"] = c.fresh;
    const SaveOutcome saved = ona->save(kOwnPassword, "", *wish, nullptr, nullptr);
    EXPECT_EQ(saved.Code, c.code) << saved.Text;
    EXPECT_NE(saved.Text.find(c.text), std::string::npos) << saved.Text;
  }
  EXPECT_TRUE(ona->rights("CFirms").view) << "and all of them behind it";
  EXPECT_FALSE(comesIn("ona.onaitė", "vasaros rytas"));
  EXPECT_TRUE(comesIn("ona.onaitė", "ąčęėįšųū"));
  EXPECT_TRUE(comesIn("admin", "")) << "the others keep theirs";
}

TEST_P(Users, ACardIsRefusedForWhatWouldConfuse) {
  stored("ona", 3, "vasaros rytas");
  const auto code = [&](const char* login, int role, const char* password) {
    return save(kUsers, *newUser(login, role, password)).Code;
  };
  EXPECT_EQ(code(" ONA ", 3, "vasaros rytas"), kDuplicate);
  EXPECT_EQ(code("jonas", 99, "vasaros rytas"), kReferred);
  EXPECT_EQ(code("jonas", 3, "trumpas"), kRuleBroken);
  EXPECT_EQ(code("", 3, "vasaros rytas"), kRuleBroken);
  EXPECT_EQ(code("jonas", 3, ""), kDone) << "a password may be set later, by himself";
  const RowSetPtr role = first(session().create(kRoles, ""));
  (*role)["Name"] = "Buhalteris";
  EXPECT_EQ(save(kRoles, *role).Code, kDuplicate);
  EXPECT_EQ(session().erase(kRoles, refOf(kRoles, 3)).Code, kReferred) << "users have it";
  EXPECT_EQ(session().erase(kUsers, refOf(kUsers, 1)).Code, kRuleBroken) << "oneself";
}

// What the role's rights would be after the save that is tried.
RowSetPtr withoutAdministration(const HostResult& rights) {
  RowSetPtr rows = rights.Data.AsRows();
  ForEachRow(*rows, [](RowSet& row) {
    if (row["Component"].Text() == kAdministration) row["Admin"] = Variant(0);
  });
  return rows;
}

TEST_P(Users, TheLastAdministratorCannotGo) {
  const auto refusals = [&] {
    const RowSetPtr role = first(session().load(kRoles, refOf(kRoles, 1)));
    const RowSetPtr rights = withoutAdministration(session().call(kRoles, "GetRoleRights", "1"));
    return std::vector<int>{changed(refOf(kUsers, 1), "Active", Variant(0)).Code,
                            changed(refOf(kUsers, 1), "RoleID", Variant(3)).Code,
                            save(kRoles, *role, rights.get()).Code};
  };
  EXPECT_EQ(refusals(), (std::vector<int>{kRuleBroken, kRuleBroken, kRuleBroken}));
  const std::string blocked = stored("kitas", 1, "vasaros rytas");
  EXPECT_EQ(changed(blocked, "Active", Variant(0)).Code, kDone);
  EXPECT_EQ(refusals(), (std::vector<int>{kRuleBroken, kRuleBroken, kRuleBroken}))
      << "a blocked one does not count";
  EXPECT_TRUE(session().rights(kAdministration).admin);
  EXPECT_EQ(changed(blocked, "Active", Variant(1)).Code, kDone);
  const RowSetPtr other = first(session().load(kUsers, blocked));
  EXPECT_EQ(changed(refOf(kUsers, 1), "RoleID", Variant(3)).Code, kDone);
  (*other)["Active"] = Variant(0);
  EXPECT_EQ(save(kUsers, *other).Code, kNoSaveRight) << "he administers no more";
}

TEST_P(Users, OfTwoAdministratorsWhoBlockEachOtherOneStays) {
  if (GetParam() == Store::Memory) return;
  const std::string other = stored("kitas", 1, "");
  const auto second = another("kitas");
  const RowSetPtr mine = first(session().load(kUsers, other));
  const RowSetPtr theirs = first(second->load(kUsers, refOf(kUsers, 1)));
  (*mine)["Active"] = Variant(0);
  (*theirs)["Active"] = Variant(0);
  EXPECT_EQ(save(kUsers, *mine).Code, kDone);
  EXPECT_EQ(second->save(kUsers, "", *theirs, nullptr, nullptr).Code, kNoSaveRight);
}

TEST_P(Users, GrantsAreChangedByThoseWhoAdministerThatComponent) {
  const auto grantedTo = [&](const char* component, int flag) {
    const RowSetPtr role = first(session().load(kRoles, refOf(kRoles, 3)));
    RowSetPtr rights = rowsIn(session().call(kRoles, "GetRoleRights", "3"));
    ForEachRow(*rights, [&](RowSet& row) {
      if (row["Component"].Text() != component) return;
      row["Granted"] = Variant(flag < 0 ? 0 : 1);
      row["View"] = Variant(1);
      row["Delete"] = Variant(flag);
    });
    return save(kRoles, *role, rights.get()).Code;
  };
  const auto mayDelete = [&](const char* component) {
    return integerFrom(
        db(), "SELECT can_delete FROM right_grant WHERE role_id = 3 AND component = $1", component);
  };
  EXPECT_EQ(grantedTo("CBROperRights4", 1), kDone);
  EXPECT_EQ(mayDelete("CBROperRights4"), 1);
  EXPECT_EQ(grantedTo("CBROperRights4", -1), kDone) << "back to what is inherited";
  EXPECT_EQ(mayDelete("CBROperRights4"), std::nullopt);
  run(db(), "UPDATE right_grant SET can_admin = 0 WHERE role_id = 1 AND component = 'CFirms'");
  EXPECT_EQ(grantedTo("CFirms", 1), kNoSaveRight);
  EXPECT_EQ(mayDelete("CFirms"), 0);
  EXPECT_EQ(grantedTo("CBanks", 1), kDone);
}

TEST_P(Users, TheProtocolTellsWhatAdministratorsDid) {
  const std::string ona = stored("ona", 3, "vasaros rytas");
  EXPECT_EQ(changed(ona, "RoleID", Variant(2)).Code, kDone);
  EXPECT_EQ(session().erase(kUsers, ona).Code, kDone);
  const RowSetPtr role = first(session().create(kRoles, ""));
  (*role)["Name"] = "Kasininkas";
  const RowSetPtr rights = rowsIn(session().call(kRoles, "GetRoleRights", "0"));
  ForEachRow(*rights, [](RowSet& row) {
    if (row["Component"].Text() != "CBanks") return;
    row["Granted"] = Variant(1);
    row["View"] = Variant(1);
  });
  EXPECT_EQ(save(kRoles, *role, rights.get()).Code, kDone);
  EXPECT_EQ(log(), "S:ona C:ona U:ona D:ona C:Kasininkas R:Kasininkas");
  EXPECT_EQ(textFrom(db(), "SELECT detail FROM admin_log WHERE act = 'U'"),
            "Rolė: Buhalteris -> Vyr. buhalteris");
  EXPECT_EQ(textFrom(db(), "SELECT detail FROM admin_log WHERE act = 'R'"),
            "Bankai (CBanks): paveldima -> P----");
  const RowSetPtr rows = rowsIn(session().list(kLog, "", "", ""));
  ASSERT_EQ(rows->RecordCount(), 6U);
  EXPECT_EQ((*rows)["Act"].Text(), "Pakeistos teisės") << "the newest first";
  EXPECT_EQ((*rows)["UserName"].Text(), "Administratorius");
  const std::string entry((*rows)["OIDR"].Text());
  EXPECT_EQ(session().erase(kLog, entry).Code, kEditedGone);
  EXPECT_EQ(session().create(kLog, "").Code, kNoSaveRight);
}

TEST_P(Users, AdministrationIsSeenByThoseWhoMaySeeIt) {
  run(db(), "UPDATE app_user SET role_id = 3 WHERE id = 1");
  for (const char* kind : {kUsers, kRoles, kLog}) {
    EXPECT_EQ(session().list(kind, "", "", "").Code, kNoSaveRight) << kind;
  }
  EXPECT_EQ(session().call(kRoles, "GetRoleRights", "1").Code, kNoSaveRight);
  run(db(), "UPDATE app_user SET role_id = 2 WHERE id = 1");
  for (const char* kind : {kUsers, kRoles, kLog}) {
    EXPECT_EQ(session().list(kind, "", "", "").Code, kDone) << kind;
  }
}

TOLVEX_ALL_STORES(Users);

}  // namespace
}  // namespace tolvex::store
