#include "framework/module_header.h"

#include <string>

namespace tolvex {

namespace {

struct TreeRow {
  const char* right;
  const char* caption;
  const char* code;
};
constexpr TreeRow kTree[] = {{"CBROperRights", "Finansinių operacijų apskaita", "O0201400"},
                             {"CBusinessTrips", "Komandiruotės", "O0202100"},
                             {"O0200500", "Žurnalai", "O0200500"},
                             {"CVXReportLockO0200500", "Papildomos ataskaitos", "O0001900"},
                             {"CTemplatesLock", "Finansinių operacijų šablonai", "O0201600"},
                             {"", "Sąskaitų planas", "O0200400"},
                             {"CFirms", "Įmonės", "O0000100"},
                             {"CPerson", "Fiziniai asmenys", "O0001402"},
                             {"CBanks", "Bankai", "O0000300"},
                             {"CCurrency", "Valiuta", "O0002200"},
                             {"CPaymentPlan", "Apmokėjimo šablonai", "O0201700"}};
// Reports hang below the journals: their own code and their parent's, with the host's marks.
constexpr const char* kReportsCode = "O0001900";
constexpr const char* kReportsRegistered = "O0001900<%>O0200500<%>";

struct ClassRow {
  const char* caption;
  const char* code;
};
constexpr ClassRow kClasses[] = {
    {"Sąskaitų planas", "O0200400"},
    {"Finansinių operacijų ir balansinių sąskaitų žurnalai", "O0200500"},
    {"Sąskaitų blokavimas", "O0201300"},
    {"Finansinių operacijų apskaita", "O0201400"},
    {"Finansinės operacijos", "O0201500"},
    {"Finansinių operacijų šablonai", "O0201600"},
    {"Apmokėjimo šablonai", "O0201700"}};

struct IconRow {
  const char* key;
  const char* image;
};
constexpr IconRow kSmallIcons[] = {
    {"C0200400", "C0200400"},  {"C0200300", "C0200300"}, {"C0200500J", "C0200500J"},
    {"C0200500", "C0200500J"}, {"C0201300", "C0201300"}, {"C0201400", "C0201400"},
    {"C0201500", "C0201500"},  {"C0201501", "C0201501"}, {"C0201502", "C0201502"},
    {"C0201503", "C0201503"},  {"C0201504", "C0201504"}, {"C0201505", "C0201505"},
    {"C0201506", "C0201506"},  {"C0201600", "C0201600"}, {"C0202000", "C0201500"},
    {"L02020011", "LAYOUT"}};
constexpr IconRow kLargeIcons[] = {{"C0200500J", "C0200500J"},
                                   {"C0200500G", "C0200500G"},
                                   {"C0200400", "C0200400"},
                                   {"C0200300", "C0200300"},
                                   {"C0201300", "C0201300"},
                                   {"C0201400", "C0201400"},
                                   {"C0201500", "C0201500"},
                                   {"C0201501", "C0201501"},
                                   {"C0201502", "C0201502"},
                                   {"C0201503", "C0201503"},
                                   {"C0201504", "C0201504"},
                                   {"C0201505", "C0201505"},
                                   {"C0201506", "C0201506"},
                                   {"C0201600", "C0201600"},
                                   {"C0202000", "C0201500"},
                                   {"DOCUMENT_CHECK", "DOCUMENT_CHECK"},
                                   {"DOCUMENT_ERROR", "DOCUMENT_ERROR"}};

}  // namespace

void DLLHeader::DllInicialize(ModuleRegistrar& registrar) {
  LayoutNode root{"CBookLayout", "Buhalterinė apskaita", kModuleCode, {}, {}};
  for (const TreeRow& row : kTree) {
    const std::string code = row.code;
    const std::string registered = code == kReportsCode ? kReportsRegistered : code;
    root.children.push_back({row.right, row.caption, code, {registered}, {}});
  }
  registrar.addLayout(std::move(root));
  for (const ClassRow& row : kClasses) registrar.addClass(row.caption, row.code, kLibraryName);
  for (const IconRow& row : kSmallIcons) registrar.addIcon(IconSize::Small, row.key, row.image);
  for (const IconRow& row : kLargeIcons) registrar.addIcon(IconSize::Large, row.key, row.image);
}

std::vector<SecurityEntry> SecurityHeader::GetComponentList() const {
  const std::string module = kModuleCode, journals = "O0200500";
  return {{"DLL|" + module, 10, module, "Buhalterinė apskaita"},
          {module, 2, "CBookLayout", "Aplinkos peržūra"},
          {module, 1, "CAllAccLock", "Sąskaitų blokavimas"},
          {module, 2, "CBROperGroupRights", "Finansinių operacijų grupių tvarkymas"},
          {module, 2, "CBROperRights", "Finansinių operacijų tvarkymas"},
          {module, 2, journals, "Žurnalai"},
          {journals, 2, "O0200502", "Sąskaitos žurnalas"},
          {journals, 2, "O0200503", "Suvestinis sąskaitų žurnalas"},
          {journals, 2, "O0200501", "Finansinių operacijų žurnalas"},
          {journals, 2, "O0200504", "Finansinės atskaitomybės formos"},
          {journals, 2, "O0200505", "Pardavimų ir pirkimų žurnalai"},
          {journals, 2, "O0200506", "Pinigų gavimų ir mokėjimų žurnalai"},
          {journals, 2, "O0200508", "Sąskaitos apyvartos žurnalas"},
          {journals, 2, "O0200509", "Valiutų kursų žurnalai"},
          {module, 2, "CTemplatesLock", "Finansinių operacijų šablonų tvarkymas"},
          {module, 1, "CAccountPlanRights", "Sąskaitos plano tvarkymas"}};
}

}  // namespace tolvex
