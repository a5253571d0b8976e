#include <string>
#include <string_view>

#include "host/store/seed.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

enum ComponentKind { OneLevel = 1, FiveFlags = 2, Module = 10 };
enum Role { Administrator = 1, ChiefAccountant = 2, Accountant = 3 };

struct Component {
  const char* parent;
  ComponentKind kind;
  const char *name, *caption;
};
constexpr const char* kModule = "L02020011";
constexpr Component kComponents[] = {
    {"", Module, kModule, "Buhalterinė apskaita"},
    {kModule, FiveFlags, "CBookLayout", "Aplinkos peržūra"},
    {kModule, OneLevel, "CAllAccLock", "Sąskaitų blokavimas"},
    {kModule, FiveFlags, "CBROperGroupRights", "Finansinių operacijų grupių tvarkymas"},
    {kModule, FiveFlags, "CBROperRights", "Finansinių operacijų tvarkymas"},
    {kModule, FiveFlags, "O0200500", "Žurnalai"},
    {"O0200500", FiveFlags, "O0200502", "Sąskaitos žurnalas"},
    {"O0200500", FiveFlags, "O0200503", "Suvestinis sąskaitų žurnalas"},
    {"O0200500", FiveFlags, "O0200501", "Finansinių operacijų žurnalas"},
    {"O0200500", FiveFlags, "O0200504", "Finansinės atskaitomybės formos"},
    {"O0200500", FiveFlags, "O0200505", "Pardavimų ir pirkimų žurnalai"},
    {"O0200500", FiveFlags, "O0200506", "Pinigų gavimų ir mokėjimų žurnalai"},
    {"O0200500", FiveFlags, "O0200508", "Sąskaitos apyvartos žurnalas"},
    {"O0200500", FiveFlags, "O0200509", "Valiutų kursų žurnalai"},
    {kModule, FiveFlags, "CTemplatesLock", "Finansinių operacijų šablonų tvarkymas"},
    {kModule, OneLevel, "CAccountPlanRights", "Sąskaitos plano tvarkymas"},
    {kModule, FiveFlags, "CImportFromBank", "Importas iš banko"},
    {"", FiveFlags, "CFirms", "Įmonės"},
    {"", FiveFlags, "CPerson", "Fiziniai asmenys"},
    {"", FiveFlags, "CBanks", "Bankai"},
    {"", FiveFlags, "CCurrency", "Valiuta"},
    {"", FiveFlags, "CPaymentPlan", "Apmokėjimo šablonai"},
    {"", FiveFlags, "CBusinessTrips", "Komandiruotės"},
    {"", FiveFlags, "CVXReportLock", "Ataskaitos"},
    {"CVXReportLock", FiveFlags, "CVXReportLockO0200500", "Papildomos ataskaitos"},
    {"", FiveFlags, "CUsers", "Vartotojai ir teisės"},
};

// What an accountant may enter and change: operations, journals, templates. The rest he sees.
constexpr std::string_view kAccountantEdits[] = {
    "CBROperRights", "CTemplatesLock", "O0200500", "O0200501", "O0200502", "O0200503",
    "O0200504",      "O0200505",       "O0200506", "O0200508", "O0200509"};

struct Flags {
  int view, remove, edit, create, admin;
};

bool accountantEdits(std::string_view component) {
  for (const std::string_view one : kAccountantEdits) {
    if (one == component) return true;
  }
  return false;
}

Flags flagsOf(Role role, std::string_view component) {
  if (role == Administrator) return {1, 1, 1, 1, 1};
  if (component == "CUsers") return {role == ChiefAccountant, 0, 0, 0, 0};
  if (role == ChiefAccountant) return {1, 1, 1, 1, 0};
  if (component == "CAllAccLock") return {0, 0, 0, 0, 0};
  if (accountantEdits(component)) return {1, 0, 1, 1, 0};
  return {1, 0, 0, 0, 0};
}

void addComponent(Database& db, const Component& component) {
  run(db, "INSERT INTO right_component (component, parent, kind, caption) VALUES ($1, $2, $3, $4)",
      component.name, component.parent, component.kind, component.caption);
}

// A component for each group of operations: nobody is granted it yet, so the bare name holds.
void addGroupComponents(Database& db) {
  auto groups = db.prepare("SELECT id, name FROM oper_group ORDER BY id");
  while (groups->step()) {
    const std::string id(groups->text(0)), name(groups->text(1));
    for (const char* family : {"CBROperRights", "CBROperGroupRights"}) {
      addComponent(db, {family, FiveFlags, (family + id).c_str(),
                        (" Finansinių operacijų grupė" + name).c_str()});
    }
  }
}

}  // namespace

void seedUsers(Database& db) {
  run(db,
      "INSERT INTO app_role (id, name) VALUES (1, 'Administratorius'), (2, 'Vyr. buhalteris'),"
      " (3, 'Buhalteris')");
  run(db,
      "INSERT INTO app_user (id, login, name, user_pref, role_id)"
      " VALUES (1, 'admin', 'Administratorius', 'AD', 1)");
  for (const Component& component : kComponents) {
    addComponent(db, component);
    for (const Role role : {Administrator, ChiefAccountant, Accountant}) {
      const Flags flags = flagsOf(role, component.name);
      run(db,
          "INSERT INTO right_grant (role_id, component, can_view, can_delete, can_edit,"
          " can_create, can_admin) VALUES ($1, $2, $3, $4, $5, $6, $7)",
          role, component.name, flags.view, flags.remove, flags.edit, flags.create, flags.admin);
    }
  }
  addGroupComponents(db);
}

}  // namespace tolvex::store
