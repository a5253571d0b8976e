#include <optional>
#include <string>

#include "host/store/seed.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

struct Group {
  int id, parent;
  const char* name;
};
constexpr Group kGroups[] = {
    {1, 0, "Finansinių operacijų šablonai"},
    {2, 1, "Pirkimai"},
    {3, 1, "Pardavimai"},
    {4, 1, "Bankas"},
    {5, 1, "Kasa"},
    {6, 1, "Avansai"},
    {7, 1, "Kita"},
};

struct Line {
  const char *debit = nullptr, *credit = nullptr;  // "*": chosen when the template is used
  double factor = 1;
  int sign = 0;  // side that requires an addressee of the kind `foid`
  const char* foid = "";
};
struct Template {
  int id, group;
  const char* name;
  Line first, second = {};
};
constexpr const char* kFirm = "O0000100";
constexpr const char* kEmployee = "O0001401";
constexpr Template kTemplates[] = {
    {11,
     2,
     "Prekių pirkimas su PVM",
     {"204", "450", 1, -1, kFirm},
     {"2441", "450", 0.18, -1, kFirm}},
    {12, 2, "Paslaugų pirkimas be PVM", {"6123", "450", 1, -1, kFirm}},
    {21,
     3,
     "Prekių pardavimas su PVM",
     {"240", "500", 1, 1, kFirm},
     {"240", "4461", 0.18, 1, kFirm}},
    {22, 3, "Savikainos nurašymas", {"600", "204"}},
    {31, 4, "Mokėjimas tiekėjui", {"450", "2711", 1, 1, kFirm}},
    {32, 4, "Pinigų gavimas iš pirkėjo", {"2711", "240", 1, -1, kFirm}},
    {33, 4, "Mokesčių mokėjimas", {"*", "2711"}},
    {41, 5, "Kasos pajamos iš pirkėjo", {"2721", "240", 1, -1, kFirm}},
    {42, 5, "Kasos išlaidos tiekėjui", {"450", "2721", 1, 1, kFirm}},
    {43, 5, "Avansas darbuotojui", {"255", "2721", 1, 1, kEmployee}},
    {51, 6, "Komandiruotės sąnaudos", {"6124", "453", 1, -1, kEmployee}},
    {61, 7, "Pradinis likutis debete", {"*", "0"}},
    {62, 7, "Pradinis likutis kredite", {"0", "*"}},
    {63, 7, "Laisvas įrašas", {"*", "*"}},
};

std::optional<int> accountOf(Database& db, std::string_view code) {
  if (code == "*") return std::nullopt;
  return seededAccount(db, code);
}

void seedLine(Database& db, int templateId, int number, const Line& line) {
  if (!line.debit) return;
  const int id =
      insertedId(db,
                 "INSERT INTO template_line (template_id, guid, account_d, account_c, factor)"
                 " VALUES ($1, $2, $3, $4, $5) RETURNING id",
                 templateId, "T" + std::to_string(templateId) + "-" + std::to_string(number),
                 accountOf(db, line.debit), accountOf(db, line.credit), line.factor);
  if (line.sign != 0) {
    run(db, "INSERT INTO template_addr (line_id, sign, foid) VALUES ($1, $2, $3)", id, line.sign,
        line.foid);
  }
}

}  // namespace

void seedTemplates(Database& db) {
  constexpr const char* kInsert =
      "INSERT INTO template (id, parent_id, group_flag, name) VALUES ($1, $2, $3, $4)";
  for (const Group& group : kGroups) {
    run(db, kInsert, group.id, group.parent ? std::optional(group.parent) : std::nullopt, 1,
        group.name);
  }
  for (const Template& one : kTemplates) {
    run(db, kInsert, one.id, one.group, 0, one.name);
    seedLine(db, one.id, 1, one.first);
    seedLine(db, one.id, 2, one.second);
  }
}

}  // namespace tolvex::store
