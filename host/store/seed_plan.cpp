#include <algorithm>
#include <map>
#include <optional>
#include <string>

#include "host/store/seed.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

struct Mark {
  const char *code, *name;
};
constexpr Mark kMarks[] = {
    {"2710", "Banko sąskaitos"},
    {"2720", "Kasos sąskaitos"},
    {"536", "Teigiama valiutos kursų pasikeitimo įtaka"},
    {"636", "Neigiama valiutos kursų pasikeitimo įtaka"},
    {"39", "Suvestinė (uždarymo) sąskaita"},
    {"240", "Pirkėjų skolos"},
    {"220", "Pirkėjų skolos, gautinos po metų"},
    {"450", "Skolos tiekėjams"},
    {"460", "Skolos kitiems tiekėjams"},
};

struct Node {
  const char *code, *name;
  char type;
  const char* mark = "";
  bool tracked = false;  // every posting is matched with the document that it pays
};
constexpr Node kNodes[] = {
    {"1", "Ilgalaikis turtas", 'D'},
    {"11", "Nematerialusis turtas", 'D'},
    {"112", "Programinė įranga", 'D'},
    {"1127", "Programinės įrangos amortizacija (-)", 'K'},
    {"12", "Materialusis turtas", 'D'},
    {"120", "Žemė", 'D'},
    {"121", "Pastatai ir statiniai", 'D'},
    {"1217", "Pastatų ir statinių nusidėvėjimas (-)", 'K'},
    {"122", "Transporto priemonės", 'D'},
    {"1227", "Transporto priemonių nusidėvėjimas (-)", 'K'},
    {"123", "Įranga ir įrengimai", 'D'},
    {"1237", "Įrangos ir įrengimų nusidėvėjimas (-)", 'K'},
    {"16", "Finansinis turtas ir po metų gautinos sumos", 'D'},
    {"160", "Ilgalaikės paskolos ir investicijos", 'D'},
    {"162", "Pirkėjų skolos, gautinos po metų", 'D', "220", true},
    {"2", "Trumpalaikis turtas", 'D'},
    {"20", "Atsargos", 'D'},
    {"201", "Žaliavos ir medžiagos", 'D'},
    {"203", "Pagaminta produkcija", 'D'},
    {"204", "Prekės, skirtos perparduoti", 'D'},
    {"208", "Išankstiniai apmokėjimai tiekėjams", 'D', "", true},
    {"24", "Per vienerius metus gautinos sumos", 'D'},
    {"240", "Pirkėjų skolos", 'D', "240", true},
    {"244", "Gautini mokesčiai", 'D'},
    {"2441", "Pirkimo PVM", 'D'},
    {"249", "Abejotinos skolos (-)", 'K'},
    {"25", "Kitos gautinos sumos", 'D'},
    {"255", "Avansu gautos sumos (atskaitingi asmenys)", 'D', "", true},
    {"259", "Kitos gautinos skolos", 'D', "", true},
    {"27", "Pinigai", 'D'},
    {"271", "Sąskaitos bankuose", 'D'},
    {"2711", "Atsiskaitomoji sąskaita litais", 'D', "2710"},
    {"2712", "Valiutinė sąskaita EUR", 'D', "2710"},
    {"2713", "Valiutinė sąskaita USD", 'D', "2710"},
    {"272", "Kasa", 'D'},
    {"2721", "Kasa litais", 'D', "2720"},
    {"2722", "Kasa EUR", 'D', "2720"},
    {"2723", "Kasa USD", 'D', "2720"},
    {"274", "Pinigai kelyje", 'D'},
    {"29", "Būsimų laikotarpių sąnaudos", 'D'},
    {"291", "Iš anksto apmokėtos sąnaudos", 'D', "", true},
    {"3", "Nuosavas kapitalas", 'K'},
    {"30", "Kapitalas", 'K'},
    {"301", "Įstatinis kapitalas", 'K'},
    {"33", "Rezervai", 'K'},
    {"331", "Privalomasis rezervas", 'K'},
    {"34", "Nepaskirstytasis pelnas (nuostoliai)", 'K'},
    {"340", "Nepaskirstytasis pelnas", 'K'},
    {"341", "Nepaskirstytieji nuostoliai (-)", 'D'},
    {"39", "Suvestinės sąskaitos", 'K'},
    {"391", "Pelno (nuostolio) suvestinė", 'K', "39"},
    {"4", "Mokėtinos sumos ir įsipareigojimai", 'K'},
    {"40", "Dotacijos ir subsidijos", 'K'},
    {"401", "Gautos dotacijos", 'K'},
    {"42", "Po vienerių metų mokėtinos sumos", 'K'},
    {"421", "Ilgalaikės paskolos", 'K', "", true},
    {"43", "Trumpalaikės finansinės skolos", 'K'},
    {"431", "Trumpalaikės paskolos", 'K', "", true},
    {"44", "Per vienerius metus mokėtinos sumos", 'K'},
    {"443", "Prekybos skolos", 'K', "", true},
    {"444", "Gauti išankstiniai apmokėjimai", 'K', "", true},
    {"446", "Mokėtini mokesčiai", 'K'},
    {"4461", "Pardavimo PVM", 'K'},
    {"4462", "Mokėtinas pelno mokestis", 'K'},
    {"448", "Su darbo santykiais susijusios skolos", 'K'},
    {"4481", "Mokėtinas darbo užmokestis", 'K', "", true},
    {"4482", "Mokėtinas gyventojų pajamų mokestis", 'K'},
    {"4483", "Mokėtinos socialinio draudimo įmokos", 'K'},
    {"45", "Skolos tiekėjams", 'K'},
    {"450", "Skolos tiekėjams už prekes ir paslaugas", 'K', "450", true},
    {"453", "Skolos pagal gautinas sąskaitas", 'K', "", true},
    {"46", "Kitos mokėtinos sumos", 'K'},
    {"460", "Skolos kitiems tiekėjams", 'K', "460", true},
    {"461", "Skolos atskaitingiems asmenims", 'K', "", true},
    {"49", "Būsimų laikotarpių pajamos", 'K'},
    {"491", "Iš anksto gautos pajamos", 'K', "", true},
    {"5", "Pajamos", 'K'},
    {"50", "Pardavimo pajamos", 'K'},
    {"500", "Prekių pardavimo pajamos", 'K'},
    {"501", "Paslaugų pardavimo pajamos", 'K'},
    {"509", "Nuolaidos ir grąžinimai (-)", 'D'},
    {"52", "Kitos veiklos pajamos", 'K'},
    {"521", "Turto perleidimo pelnas", 'K'},
    {"53", "Finansinės veiklos pajamos", 'K'},
    {"531", "Palūkanų pajamos", 'K'},
    {"536", "Teigiama valiutos kursų pasikeitimo įtaka", 'K', "536"},
    {"54", "Pagautė", 'K'},
    {"541", "Pagautės pajamos", 'K'},
    {"6", "Sąnaudos", 'D'},
    {"60", "Pardavimo savikaina", 'D'},
    {"600", "Parduotų prekių savikaina", 'D'},
    {"601", "Suteiktų paslaugų savikaina", 'D'},
    {"61", "Veiklos sąnaudos", 'D'},
    {"611", "Pardavimo sąnaudos", 'D'},
    {"612", "Bendrosios ir administracinės sąnaudos", 'D'},
    {"6121", "Darbo užmokesčio sąnaudos", 'D'},
    {"6122", "Nusidėvėjimo sąnaudos", 'D'},
    {"6123", "Nuomos ir ryšių sąnaudos", 'D'},
    {"6124", "Komandiruočių ir kitos sąnaudos", 'D'},
    {"62", "Kitos veiklos sąnaudos", 'D'},
    {"621", "Turto perleidimo nuostolis", 'D'},
    {"63", "Finansinės veiklos sąnaudos", 'D'},
    {"631", "Palūkanų sąnaudos", 'D'},
    {"636", "Neigiama valiutos kursų pasikeitimo įtaka", 'D', "636"},
    {"64", "Netekimai", 'D'},
    {"641", "Netekimų sąnaudos", 'D'},
    {"69", "Pelno mokestis", 'D'},
    {"691", "Ataskaitinių metų pelno mokestis", 'D'},
};

// Accounts with subaccounts to which nothing is posted; numbers of one and two digits are such.
constexpr std::string_view kGroups[] = {"244", "271", "272", "446", "448", "612"};

bool isGroup(std::string_view code) {
  return code.size() <= 2 ||
         std::find(std::begin(kGroups), std::end(kGroups), code) != std::end(kGroups);
}

struct Placed {
  int id;
  std::string path;
};
using Plan = std::map<std::string, Placed, std::less<>>;

// The node with the longest number that `code` begins with.
const Placed* parentOf(const Plan& plan, std::string_view code) {
  for (std::size_t length = code.size() - 1; length > 0; --length) {
    const auto found = plan.find(code.substr(0, length));
    if (found != plan.end()) return &found->second;
  }
  return nullptr;
}

}  // namespace

void seedPlan(Database& db) {
  int id = 0;
  std::map<std::string_view, int> marks;
  for (const Mark& mark : kMarks) {
    run(db, "INSERT INTO account_mark (id, code, name, sort_order) VALUES ($1, $2, $3, $4)", ++id,
        mark.code, mark.name, id);
    marks[mark.code] = id;
  }
  Plan plan;
  id = 0;
  for (const Node& node : kNodes) {
    ++id;
    const Placed* const parent = parentOf(plan, node.code);
    const std::string path = (parent ? parent->path + "*" : "") + std::to_string(id);
    run(db,
        "INSERT INTO account (id, plan, parent_id, code, name, type, group_flag, mark_id, path,"
        " track_items) VALUES ($1, 0, $2, $3, $4, $5, $6, $7, $8, $9)",
        id, parent ? std::optional(parent->id) : std::nullopt, node.code, node.name,
        std::string(1, node.type), int{isGroup(node.code)},
        *node.mark ? std::optional(marks.at(node.mark)) : std::nullopt, path, int{node.tracked});
    plan[node.code] = {id, path};
  }
}

}  // namespace tolvex::store
