#include "host/store/seed.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

struct Currency {
  const char *code, *name;
  int base;
  double fixedRate;
  const char *one, *two, *many, *oneSmall, *twoSmall, *manySmall;
};
constexpr Currency kCurrencies[] = {
    {"LTL", "litas", 1, 0, "litas", "litai", "litų", "centas", "centai", "centų"},
    {"EUR", "euras", 0, 3.4528, "euras", "eurai", "eurų", "euro centas", "euro centai",
     "euro centų"},
    {"USD", "doleris", 0, 0, "doleris", "doleriai", "dolerių", "centas", "centai", "centų"},
};

struct AddresseeKind {
  const char *foid, *name;
  int enabled, role;  // enabled: a template may require it; role as in entry_ref
};
constexpr AddresseeKind kAddresseeKinds[] = {
    {"O0000100", "Įmonės", 1, 0},          {"O0001402", "Fiziniai asmenys", 1, 0},
    {"O0001401", "Darbuotojai", 1, 0},     {"O0000300", "Bankai", 1, 0},
    {"O0000500", "Banko sąskaitos", 1, 0}, {"O0201500", "Finansinės operacijos", 1, 1},
    {"O0001601", "Paskirtys", 1, 0},       {"O0000200", "Prekės", 0, 0},
};

struct RefObject {
  const char* kind;
  int id;
  const char *code, *name, *extra;
};
constexpr RefObject kRefObjects[] = {
    {"O0001602", 1, "SALE", "Pardavimas", ""},
    {"O0001602", 2, "PURCHASE", "Pirkimas", ""},
    {"O0001612", 1, "", "Pirkimo įrašai", "PURCHASE"},
    {"O0001612", 2, "", "Pardavimo įrašai", "SALE,RETURN_FROM_BUYER"},
    {"O1000200", 1, "", "Pardavimo dokumentai", "SALE"},
    {"O1000200", 2, "", "Pirkimo dokumentai", "PURCHASE"},
    {"O0001601", 1, "", "Administracija", ""},
    {"O0001601", 2, "", "Prekyba", ""},
};

constexpr int kVatTariffs[] = {1800, 500, 0};  // hundredths of a percent
constexpr const char* kComments[] = {"Už prekes", "Už paslaugas", "Avansas",
                                     "Pagal sąskaitą faktūrą Nr."};

void seedCurrencies(Database& db) {
  int id = 0;
  for (const Currency& c : kCurrencies) {
    run(db,
        "INSERT INTO currency (id, code, name, base, fixed_rate, one_curr, two_curr, many_curr,"
        " one_small, two_small, many_small) VALUES ($1,$2,$3,$4,$5,$6,$7,$8,$9,$10,$11)",
        ++id, c.code, c.name, c.base, c.fixedRate, c.one, c.two, c.many, c.oneSmall, c.twoSmall,
        c.manySmall);
  }
}

void seedPaymentTemplates(Database& db) {
  constexpr const char* kTemplate =
      "INSERT INTO pay_template (id, parent_id, group_flag, name) VALUES ($1, $2, $3, $4)";
  run(db, kTemplate, 1, std::optional<int>(), 1, "Apmokėjimo šablonai");
  run(db, kTemplate, 2, 1, 0, "Per 30 dienų");
  run(db, kTemplate, 3, 1, 0, "Avansas ir likutis");
  constexpr const char* kItem =
      "INSERT INTO pay_template_item (template_id, days, percent) VALUES ($1, $2, $3)";
  run(db, kItem, 2, 30, 100);
  run(db, kItem, 3, 0, 30);
  run(db, kItem, 3, 30, 70);
}

void seedBankFormats(Database& db) {
  constexpr const char* kFormat =
      "INSERT INTO bank_format (code, name, extension, win_dos, sort_order)"
      " VALUES ($1, $2, $3, $4, $5)";
  run(db, kFormat, "TAB1257", "Mokėjimai, laukai skiriami TAB", ".txt", 0, 1);
  run(db, kFormat, "TAB775", "Mokėjimai, DOS lentelė", ".pay", 1, 2);
}

}  // namespace

void seedKinds(Database& db) {
  seedCurrencies(db);
  int order = 0;
  for (const AddresseeKind& kind : kAddresseeKinds) {
    run(db,
        "INSERT INTO addressee_kind (foid, name, sort_order, enabled, role)"
        " VALUES ($1, $2, $3, $4, $5)",
        kind.foid, kind.name, ++order, kind.enabled, kind.role);
  }
  for (const RefObject& object : kRefObjects) {
    run(db, "INSERT INTO ref_object (kind, id, code, name, extra) VALUES ($1, $2, $3, $4, $5)",
        object.kind, object.id, object.code, object.name, object.extra);
  }
  order = 0;
  for (const int tariff : kVatTariffs) {
    run(db, "INSERT INTO vat_tariff (value, sort_order) VALUES ($1, $2)", tariff, ++order);
  }
  for (const char* comment : kComments) {
    run(db, "INSERT INTO comment_text (kind, name) VALUES ('O0201500', $1)", comment);
  }
  run(db, "INSERT INTO firm (id, name, own_firm) VALUES (1, 'Mano įmonė', 1)");
  seedPaymentTemplates(db);
  seedBankFormats(db);
}

}  // namespace tolvex::store
