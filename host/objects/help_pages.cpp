#include "host/objects/help_pages.h"

#include <algorithm>

namespace tolvex {
namespace {

constexpr HelpKey kGeneral[] = {
    {"Enter", "į kitą laukelį; sąraše – atverti eilutę"},
    {"Esc", "uždaryti langą (apie neįrašytus pakeitimus paklausiama)"},
    {"Ctrl+S", "įrašyti"},
    {"Ctrl+Enter", "paspausti pagrindinį mygtuką"},
    {"Ins, Del", "sąraše – nauja eilutė, panaikinti eilutę"},
    {"Ctrl+C, Ctrl+V", "kopijuoti eilutę ar jos nuorodą, padėti nuorodą čia"},
    {"Shift+F10", "eilutės meniu"},
    {"Ctrl+1, Ctrl+2, Ctrl+F", "į medį, į sąrašą, į jo paiešką"},
    {"Ctrl+PgUp, Ctrl+PgDn", "tarp atvertų langų"},
    {"Ctrl+W", "uždaryti langą"},
    {"F5", "perskaityti iš naujo"},
};

constexpr HelpKey kListKeys[] = {
    {"Enter", "atverti objektą arba grupę"},
    {"Ctrl+N, Ins", "naujas objektas pasirinktoje grupėje"},
    {"Del", "panaikinti"},
    {"Ctrl+L", "peržiūros laikotarpis"},
    {"↓ iš paieškos", "į sąrašą"},
};
constexpr HelpKey kOperationKeys[] = {
    {"Ctrl+Ins", "naujas įrašas"},
    {"Enter", "įrašų sąraše – keisti įrašą"},
    {"F4", "pasirinkti grupę"},
    {"Ctrl+N", "nauja operacija"},
};
constexpr HelpKey kEntryKeys[] = {
    {"Alt+←, Alt+→", "ankstesnis, kitas įrašas"},
    {"Ctrl+Shift+S", "išsaugoti ir įrašyti operaciją"},
    {"Ctrl+Shift+N", "išsaugoti, įrašyti ir pradėti naują"},
    {"Ins", "adresatų sąraše – pridėti adresatą"},
};
constexpr HelpKey kAccountKeys[] = {
    {"F4", "pasirinkti naujo plano sąskaitą"},
    {"Tarpas", "pažymėti požymį"},
    {"Ctrl+N", "kita tos pačios grupės sąskaita"},
};
constexpr HelpKey kConversionKeys[] = {
    {"Enter", "pasirinkti naujo plano sąskaitą eilutei"},
    {"Del", "panaikinti pasirinkimą"},
};
constexpr HelpKey kPickerKeys[] = {
    {"Enter", "pasirinkti pažymėtą, taip pat iš paieškos"},
    {"↓", "iš paieškos į sąrašą"},
};
constexpr HelpKey kTariffKeys[] = {
    {"Ctrl+N", "naujas tarifas"},
    {"Ctrl+↑, Ctrl+↓", "perkelti tarifą"},
};
constexpr HelpKey kCardKeys[] = {
    {"Ctrl+N", "nauja kortelė"},
    {"F4", "pasirinkti objektą laukeliui"},
    {"Ctrl+H", "kas ir ką kortelėje pakeitė"},
};
constexpr HelpKey kCurrencyKeys[] = {
    {"Ctrl+N", "nauja valiuta"},
    {"Ctrl+Ins", "pridėti kurso dieną"},
    {"Del", "panaikinti pažymėtos dienos kursą"},
};
constexpr HelpKey kRateDayKeys[] = {
    {"Alt+←, Alt+→", "ankstesnė, kita diena"},
    {"Alt+↓", "kita valiuta"},
};
constexpr HelpKey kRatesImportKeys[] = {{"Ctrl+O", "skaityti kursus iš bylos"}};

constexpr const char* kBalances =
    "Pradiniai likučiai įvedami grupėje „Pradiniai likučiai“: vienoje įrašo pusėje nurodoma "
    "sąskaita „0“, kitoje – sąskaita, kurios likutis įvedamas.\n"
    "Įrašo data turi būti ankstesnė už pirmąją apskaitos dieną. Sekamų sąskaitų likučiai įvedami "
    "su adresatais, kad vėliau juos būtų galima padengti.";
constexpr const char* kPlan =
    "Sąskaitos sudėtos medžiu: klasė, sąskaita, subsąskaita. Numeris prasideda aukštesnės "
    "sąskaitos numeriu ir turi būti už jį ilgesnis.\n"
    "Sąskaita, kuri turi įrašų, į subsąskaitos lygį pervedama komanda „Pervesti į žemesnės "
    "subsąskaitos lygį“: visi įrašai perrašomi į naują subsąskaitą.";

const HelpPage kPages[] = {
    {"help\\saskaitulikuciai.htm", "Sąskaitų likučiai", kBalances},
    {"help\\saskaituplanas.htm", "Sąskaitų planas", kPlan},
    {"frmTree", "Objektų medis",
     "Medyje pasirinktos rūšies arba grupės objektai rodomi sąraše dešinėje. Grupės meniu "
     "atveriamas dešiniuoju pelės klavišu arba Shift+F10.\n"
     "Sąskaitą ar grupę iš medžio galima nutempti į langą, kuris jos laukia.",
     kListKeys},
    {"frmList", "Sąrašas",
     "Sąraše rodoma tai, kas pasirinkta medyje. Rašant paieškos laukelyje, lieka tik tos eilutės, "
     "kuriose yra užrašytas tekstas; pirmos stovi tos, kurios juo prasideda.\n"
     "Dokumentai rodomi tik peržiūros laikotarpio. Laikotarpis keičiamas mygtuku viršuje.\n"
     "Stulpelių plotį ir tvarką galima keisti pele; jie prisimenami. Įprastus grąžina antraštės "
     "meniu.",
     kListKeys},
    {"frmBROper", "",
     "Operacija – tai dokumentas ir jo buhalteriniai įrašai. Grupė duoda numeraciją, šabloną ir "
     "teises.\n"
     "Įrašas, kuriam ko nors trūksta, sąraše pažymėtas raudonai; ko trūksta, sako eilutės "
     "paaiškinimas. Operacija įrašoma tik tada, kai visi įrašai teisingi.\n"
     "Dukart spustelėjus numerio antraštę, imamas kitas grupės numeris.",
     kOperationKeys},
    {"frmBROperRecord", "",
     "Įrašo suma litais, debeto ir kredito sąskaitos, jų valiuta ir adresatai. Sumos laukelyje "
     "galima rašyti veiksmus, pavyzdžiui, 1000*0,18.\n"
     "Valiutos suma, kursas ir suma litais turi sutapti vieno cento tikslumu.",
     kEntryKeys},
    {"frmAccountPlan", "", kPlan, kAccountKeys},
    {"frmAccountNewPlan", "",
     "Kiekvienai sąskaitai, kuri turi įrašų, parenkama naujo plano sąskaita. Kol bent vienai jos "
     "nėra, konvertuoti negalima.\n"
     "Prieš konvertuojant padaroma atsarginė duomenų kopija; iš jos galima grįžti.",
     kConversionKeys},
    {"frmBRLock", "",
     "Įrašai, kurių data ne vėlesnė už blokavimo datą, negali atsirasti, keistis ar išnykti. "
     "Blokavimas galioja pačiai sąskaitai, ne jos subsąskaitoms.\n"
     "Vadovo data galioja visiems, kita data – visiems, kas neturi teisės keisti blokavimo. "
     "Eilutė „Likutis“ blokuoja pradinius likučius.",
     kListKeys},
    {"frmBRLockDate", "",
     "Datos nustatomos vienai sąskaitai arba visoms, kurios rodomos sąraše; visos įrašomos kartu "
     "arba nė viena.\n"
     "Vadovo data negali būti vėlesnė: keičiant vieną datą, kita prisitaiko."},
    {"frmPicker", "Objekto pasirinkimas",
     "Rašykite pavadinimo ar kodo dalį ir rinkitės iš to, kas lieka.", kPickerKeys},
    {"frmFilter", "Atranka",
     "Sąraše liks eilutės, kurios tenkina visas užpildytas sąlygas. Visas eilutes grąžina mygtukas "
     "„Rodyti visus“."},
    {"frmPeriod", "Peržiūros laikotarpis",
     "Rodomi paskutinių dienų dokumentai arba nurodyto laikotarpio dokumentai. Pasirinkimas "
     "prisimenamas."},
    {"frmLogin", "Prisijungimas",
     "Įrašykite savo vardą ir slaptažodį. Jei slaptažodį pamiršote, naują suteikia "
     "administratorius."},
    {"frmFirm", "",
     "Įmonės rekvizitai dokumentams ir ataskaitoms. Savoji įmonė yra viena; filialai nurodo "
     "aukštesnę įmonę.\n"
     "Apie neįprastą įmonės ar PVM kodą perspėjama, bet įrašyti jį galima.",
     kCardKeys},
    {"frmPerson", "", "Fizinis asmuo, su kuriuo atsiskaitoma.", kCardKeys},
    {"frmEmployee", "", "Darbuotojas: atskaitingas asmuo, dokumentų pasirašytojas.", kCardKeys},
    {"frmBank", "", "Bankas, kuriame savoji įmonė ar partneriai turi sąskaitų.", kCardKeys},
    {"frmBankAccount", "",
     "Įmonės ar asmens sąskaita banke. Pagrindinė savininko sąskaita yra viena.", kCardKeys},
    {"frmVATTariffs", "",
     "PVM tarifai procentais, nuo 0 iki 100, ne daugiau kaip du skaitmenys po kablelio. Pirmasis "
     "siūlomas naujuose įrašuose.",
     kTariffKeys},
    {"frmComment", "", "Dažnas operacijos komentaras, kurį galima pasirinkti iš sąrašo.",
     kCardKeys},
    {"frmPurpose", "", "Paskirtis, pagal kurią skirstomi įrašai.", kCardKeys},
    {"frmCurrency", "",
     "Kursas – litai už vieną valiutos vienetą. Lape „Dienos kursai“ rodomas pasirinktas "
     "laikotarpis; po sąrašu pasakoma, kurių darbo dienų kursų trūksta.\n"
     "Vienetų pavadinimų reikia sumai žodžiais; pavyzdys po jais rodo, kaip ji bus parašyta. "
     "Jau įrašytų dokumentų kurso pakeitimas nekeičia.",
     kCurrencyKeys},
    {"frmRateDay", "",
     "Vienos dienos visų valiutų kursai. Kursai įrašomi visi kartu; tuščias kursas išbraukia "
     "dieną.",
     kRateDayKeys},
    {"frmRatesImport", "",
     "Kiekvienoje eilutėje – data, valiutos kodas ir kursas, atskirti tabuliacija, kabliataškiu, "
     "tarpais arba kableliu. Prieš kursą gali stovėti vienetų skaičius, pavyzdžiui, 100.\n"
     "Kas perskaityta ir kas netinka, matyti sąraše dar prieš įrašant.",
     kRatesImportKeys},
    {"frmUser", "",
     "Ką vartotojas gali matyti ir keisti, nustato jo rolė. Naują slaptažodį suteikia "
     "administratorius; vartotojas jį gali pasikeisti pats.\n"
     "Po kelių klaidingų slaptažodžių prisijungimas laikinai užrakinamas; „Atrakinti“ leidžia "
     "jungtis iškart.",
     kCardKeys},
    {"frmRole", "",
     "Teisės sudėtos medžiu. Ko grupei nenurodyta atskirai, tą ji paveldi iš aukštesnės eilutės.\n"
     "Mygtukas „Kaip kitos rolės…“ paima visas kitos rolės teises.",
     kCardKeys},
    {"frmPassword", "", "Naujas slaptažodis rašomas du kartus, kad būtų parašytas be klaidos."},
    {"frmRecordLog", "",
     "Kas ir kada įrašą sukūrė ir pakeitė: kiekvienam laukui – kas jame buvo ir kas tapo. Naujausi "
     "pakeitimai stovi viršuje. Protokolo keisti negali niekas."},
    {"frmAdminLog", "",
     "Kas ir kada jungėsi, keitė vartotojus, roles ir teises. Protokolo keisti negali niekas."},
    {"frmCurrencyExchange", "",
     "Valiutos pirkimas ir pardavimas: kiek valiutos, kokiu kursu, kiek litų. Skirtumas nuo "
     "apskaitos kurso tampa pajamomis arba sąnaudomis atskiru įrašu."},
};

}  // namespace

const HelpPage* helpPage(std::string_view name) {
  const auto found = std::find_if(std::begin(kPages), std::end(kPages),
                                  [&](const HelpPage& page) { return page.name == name; });
  return found == std::end(kPages) ? nullptr : found;
}

std::span<const HelpPage> helpPages() { return kPages; }

std::span<const HelpKey> generalKeys() { return kGeneral; }

}  // namespace tolvex
