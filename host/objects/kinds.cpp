#include "host/objects/kinds.h"

#include "framework/references.h"

namespace tolvex {
namespace {

// Groups of payment templates, whose code is not of their templates' family.
constexpr std::string_view kPaymentGroups = "O0001600";

const std::vector<ListColumn>& nameColumns() {
  static const std::vector<ListColumn> columns = {
      {"Name", "Pavadinimas", 40, CellFormat::Text, true}};
  return columns;
}

const std::vector<KindView>& views() {
  static const std::vector<KindView> table = {
      {"O0201400", "Finansinių operacijų apskaita", Grouping::Tree, nameColumns()},
      {"O0201500", "Finansinės operacijos", Grouping::None, operationColumns()},
      {"O0200400",
       "Sąskaitų planas",
       Grouping::Whole,
       {{"Account", "Sąskaita", 12},
        {"Name", "Pavadinimas", 50, CellFormat::Text, true},
        {"Type", "Tipas", 6}}},
      {"O0200401",
       "Naujas sąskaitų planas",
       Grouping::Whole,
       {{"Account", "Sąskaita", 12},
        {"Name", "Pavadinimas", 50, CellFormat::Text, true},
        {"Type", "Tipas", 6}}},
      {"O0200500", "Žurnalai", Grouping::Tree, nameColumns()},
      {"O0201300",
       "Sąskaitų blokavimas",
       Grouping::None,
       {{"Account", "Sąskaita", 12},
        {"Preview", "Pavadinimas", 40, CellFormat::Text, true},
        {"DateToHigh", "Vadovo užblokuota iki", 20, CellFormat::Date},
        {"DateToLow", "Užblokuota iki", 16, CellFormat::Date}}},
      {"O0201600", "Finansinių operacijų šablonai", Grouping::Tree, nameColumns()},
      {"O0201700", "Apmokėjimo šablonai", Grouping::Tree, nameColumns()},
      {"O0000100",
       "Įmonės",
       Grouping::Nested,
       {{"Preview", "Pavadinimas", 40, CellFormat::Text, true},
        {"Code", "Kodas", 12},
        {"VATCode", "PVM kodas", 14},
        {"City", "Miestas", 14}}},
      {"O0001402",
       "Fiziniai asmenys",
       Grouping::Nested,
       {{"Preview", "Vardas, pavardė", 40, CellFormat::Text, true},
        {"PersCode", "Asmens kodas", 14}}},
      {"O0001401",
       "Darbuotojai",
       Grouping::Nested,
       {{"Preview", "Vardas, pavardė", 40, CellFormat::Text, true}, {"UsrTitle", "Pareigos", 24}}},
      {"O0000300",
       "Bankai",
       Grouping::Nested,
       {{"Preview", "Pavadinimas", 40, CellFormat::Text, true},
        {"Code", "Kodas", 10},
        {"SWIFT", "SWIFT", 12}}},
      {"O0000500",
       "Banko sąskaitos",
       Grouping::Nested,
       {{"Preview", "Bankas, sąskaita", 44},
        {"OwnerName", "Savininkas", 30, CellFormat::Text, true},
        {"MainAccountFlag", "Pagrindinė", 11, CellFormat::Flag}}},
      {"O0002200",
       "Valiuta",
       Grouping::None,
       {{"Code", "Kodas", 8},
        {"Name", "Pavadinimas", 30, CellFormat::Text, true},
        {"BaseCurrency", "Bazinė", 8, CellFormat::Flag}}},
      {"O0002201",
       "Valiutų kursai",
       Grouping::None,
       {{"DateD", "Data", 12, CellFormat::Date}, {"Rates", "Kursai", 60, CellFormat::Text, true}}},
      {"O0001601",
       "Paskirtys",
       Grouping::Nested,
       {{"Name", "Pavadinimas", 40, CellFormat::Text, true}, {"Code", "Kodas", 12}}},
      {"O0000900", "Operacijų komentarai", Grouping::Nested, nameColumns()},
      {"O0001629", "PVM tarifai", Grouping::None, {{"Preview", "Tarifas", 12}}},
      {"O0000200", "Prekės", Grouping::None, nameColumns()},
      {"O0202100", "Komandiruotės", Grouping::None, nameColumns()},
      {"O0001900", "Papildomos ataskaitos", Grouping::None, nameColumns()},
      {"O0000800",
       "Vartotojai",
       Grouping::None,
       {{"Login", "Prisijungimo vardas", 20},
        {"Name", "Vardas, pavardė", 30, CellFormat::Text, true},
        {"RoleName", "Rolė", 24},
        {"UserPref", "Priešdėlis", 10},
        {"State", "Būsena", 16}}},
      {"O0000830",
       "Rolės ir teisės",
       Grouping::None,
       {{"Name", "Pavadinimas", 40, CellFormat::Text, true}, {"Users", "Vartotojų", 10}}},
      {"O0000810",
       "Administravimo protokolas",
       Grouping::None,
       {{"At", "Laikas", 19},
        {"UserName", "Vartotojas", 22},
        {"Act", "Veiksmas", 34},
        {"Subject", "Kam, ką", 24},
        {"Detail", "Aprašymas", 40, CellFormat::Text, true}}},
      {"O0000820", "Slaptažodžio keitimas", Grouping::None, nameColumns()},
  };
  return table;
}

const KindView* find(std::string_view code) {
  for (const KindView& view : views())
    if (view.code == code) return &view;
  return nullptr;
}

}  // namespace

const std::vector<ListColumn>& operationColumns() {
  static const std::vector<ListColumn> columns = {
      {"DateD", "Data", 11, CellFormat::Date},
      {"Number", "Numeris", 12},
      {"Comment", "Komentaras", 50, CellFormat::Text, true},
      {"SumA", "Suma, Lt", 14, CellFormat::Sum}};
  return columns;
}

bool hasOwnView(std::string_view code) { return find(kindOf(code)) != nullptr; }

bool hasGroups(std::string_view code) {
  const KindView* view = kindView(code);
  return view && (view->grouping == Grouping::Tree || view->grouping == Grouping::Whole);
}

const KindView* kindView(std::string_view code) {
  const KindView* own = find(kindOf(code));
  return own ? own : find(familyCode(code));
}

std::string familyCode(std::string_view code) {
  std::string family(kindOf(code));
  if (family == kPaymentGroups) return "O0201700";
  if (family.size() == kKindLength) family.replace(kKindLength - 2, 2, "00");
  return family;
}

std::string listCode(std::string_view code) {
  return find(kindOf(code)) ? std::string(kindOf(code)) : familyCode(code);
}

std::string kindCaption(std::string_view code) {
  const KindView* view = kindView(code);
  return view ? view->caption : std::string(code);
}

const std::vector<ListColumn>& columnsOf(std::string_view code) {
  static const std::vector<ListColumn> plain = {
      {"Preview", "Pavadinimas", 40, CellFormat::Text, true}};
  const KindView* view = kindView(code);
  return view ? view->columns : plain;
}

std::string cellText(RowSet& rows, const ListColumn& column, const NumberFormat& format) {
  if (!rows.Fields().contains(column.field)) return {};
  const Variant value = rows[column.field].Value();
  if (value.IsAbsent()) return {};
  if (column.format == CellFormat::Sum && value.IsNumber())
    return formatNumber(value.AsDouble(), 2, format);
  if (column.format == CellFormat::Flag) return value.AsDouble() != 0 ? "✓" : std::string();
  return value.Show();
}

std::vector<ui::Column> viewColumns(const std::vector<ListColumn>& columns) {
  std::vector<ui::Column> result;
  for (const ListColumn& column : columns) {
    const ui::Align align = column.format == CellFormat::Sum ? ui::Align::Right : ui::Align::Left;
    result.push_back({column.caption, column.chars, align, column.grow, column.field});
  }
  return result;
}

}  // namespace tolvex
