#include <optional>
#include <string>

#include "host/store/seed.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

struct Group {
  int id;
  const char *name, *formOid;
  int templateGroup, defaultTemplate;  // 0: none
  const char *mask, *prefix, *parameters;
};
constexpr const char* kPlain = "AutoNumber";
constexpr const char* kPrefixed = "Prefix_AutoNumber";
constexpr const char* kOperation = "O0201500";
constexpr Group kGroups[] = {
    {2, "Bendrosios operacijos", kOperation, 1, 0, kPlain, "", ""},
    {3, "Pirkimai", kOperation, 2, 11, kPrefixed, "P", ""},
    {4, "Pardavimai", kOperation, 3, 21, kPrefixed, "S", ""},
    {5, "Mokėjimo nurodymai", "O0201501", 31, 31, kPlain, "", "####y#0"},
    {6, "Pinigų gavimai", "O0201502", 32, 32, kPlain, "", "####y#0"},
    {7, "Kasos išlaidų orderiai", "O0201503", 42, 42, kPrefixed, "KIO", "#####25#25#0"},
    {8, "Kasos pajamų orderiai", "O0201504", 41, 41, kPrefixed, "KPO", "#####35#17#1"},
    {9, "Avanso apyskaitos", "O0201505", 51, 51, kPrefixed, "AA", "450#453#255"},
    {10, "Sąskaitų uždarymas", "O0201506", 0, 0, kPlain, "", ""},
    {11, "Skolų dengimai", kOperation, 1, 0, kPrefixed, "SD", "Skolų dengimas"},
    {12, "Valiutos operacijos", kOperation, 1, 0, kPrefixed, "V", "Valiutos pirkimas/pardavimas"},
    {13, "Valiutos perskaičiavimas", kOperation, 1, 0, kPrefixed, "VP", "Valiutos perskaičiavimas"},
    {14, "Būsimų laikotarpių operacijos", kOperation, 1, 0, kPrefixed, "BL", ""},
    {15, "Pradiniai likučiai", kOperation, 7, 61, kPlain, "", ""},
    {16, "Prekybos dokumentai", "O1000100", 3, 21, "", "", "1"},
    {17, "Komandiruotės", "O0202000", 6, 0, kPlain, "", ""},
};

std::optional<int> idOrNull(int id) { return id ? std::optional(id) : std::nullopt; }

}  // namespace

void seedGroups(Database& db) {
  run(db,
      "INSERT INTO oper_group (id, name, group_flag)"
      " VALUES (1, 'Finansinių operacijų apskaita', 1)");
  for (const Group& group : kGroups) {
    const bool numbered = *group.mask != '\0';
    run(db,
        "INSERT INTO oper_group (id, parent_id, name, form_oid, parameters, template_group_id,"
        " default_template_id, an_mask, an_prefix, an_template, an_minimal)"
        " VALUES ($1, 1, $2, $3, $4, $5, $6, $7, $8, $9, 1)",
        group.id, group.name, group.formOid, group.parameters, idOrNull(group.templateGroup),
        idOrNull(group.defaultTemplate), group.mask, group.prefix, numbered ? "0000" : "");
  }
}

}  // namespace tolvex::store
