#include <optional>
#include <string>

#include "host/store/seed.h"
#include "host/store/seed_statements.h"
#include "host/store/sql.h"

namespace tolvex::store {
namespace {

// For each kind a group record that says how new journals begin, and one journal of it.
struct Journal {
  int group;
  const char *kind, *name, *paramList, *configList;
};
constexpr Journal kJournals[] = {
    {1, "O0200501", "Finansinių operacijų žurnalas", ";;;;",
     "Finansinių operacijų žurnalas;9;1;1;0;1;;#DateD;Data;0;2,0;0"
     "#Number;Numeris;0;2,5;1#AccountD;Debetas;0;1,6;2#AccountC;Kreditas;0;1,6;3"
     "#SumA;Suma, Lt;1;2,6;4#Comment;Komentaras;0;6,0;5#GroupName;Grupė;0;4,0;999"},
    {2, "O0200502", "Sąskaitos žurnalas", "240;O0000100;Įmonės;;",
     "Sąskaitos žurnalas;9;1;1;0;1;;#AddrName;Adresatas;0;5,0;0#RestD;Likutis D;1;2,6;1"
     "#RestC;Likutis K;1;2,6;2#Debit;Debetas;1;2,6;3#Credit;Kreditas;1;2,6;4"
     "#SaldoD;Saldo D;1;2,6;5#SaldoC;Saldo K;1;2,6;6"
     "#AddrShowString;Operacijos adresatas;0;4,0;999"
     "#AccountName;Sąskaitos pavadinimas;0;4,0;999"},
    {3, "O0200503", "Suvestinis sąskaitų žurnalas", ";",
     "Suvestinis sąskaitų žurnalas;9;1;1;0;1;;#Account;B/s;0;1,6;0"
     "#AccountName;Pavadinimas;0;5,0;1#RestD;Likutis D;1;2,6;2#RestC;Likutis K;1;2,6;3"
     "#Debit;Debetas;1;2,6;4#Credit;Kreditas;1;2,6;5#SaldoD;Saldo D;1;2,6;6"
     "#SaldoC;Saldo K;1;2,6;7"},
    {4, "O0200504", "Balansas", "0",
     "Balansas;9;1;1;0;0;;#CurrentNumber;Eil. Nr.;0;1,5;0#RowCaption;Straipsnis;0;9,0;1"
     "#Codes;Sąskaitos;0;3,0;999#SumA;Finansiniai metai;1;3,0;2"
     "#SumB;Praėję finansiniai metai;1;3,0;3"},
    {5, "O0200504", "Pelno (nuostolio) ataskaita", "1",
     "Pelno (nuostolio) ataskaita;9;1;1;0;0;;#CurrentNumber;Eil. Nr.;0;1,5;0"
     "#RowCaption;Straipsnis;0;9,0;1#Codes;Sąskaitos;0;3,0;999"
     "#SumA;Finansiniai metai;1;3,0;2#SumB;Praėję finansiniai metai;1;3,0;3"},
    {6, "O0200505", "Skolų žurnalas", "240;1;O0000100",
     "Skolų žurnalas;9;1;1;0;1;;#AddrName;Adresatas;0;5,0;0#DateD;Data;0;2,0;1"
     "#Number;Numeris;0;2,5;2#SumA;Suma, Lt;1;2,6;3#LikutisLt;Likutis, Lt;1;2,6;4"
     "#LikutisCurr;Likutis val.;1;2,6;5#FCurrencyCode;Valiuta;0;1,4;6"
     "#DaysLate;Dienos;1;1,4;7"},
    {7, "O0200506", "Pinigų gavimų ir mokėjimų žurnalas", "2711;1",
     "Pinigų gavimų ir mokėjimų žurnalas;9;1;1;0;1;;#DateD;Data;0;2,0;0"
     "#Number;Numeris;0;2,5;1#ClientName;Klientas;0;5,0;2#SumA;Suma, Lt;1;2,6;3"
     "#SumCurr;Suma val.;1;2,6;4#CurrCode;Valiuta;0;1,4;5#Comment;Komentaras;0;5,0;6"},
    {8, "O0200507", "Skolų suderinimo aktai", "240;O0000100",
     "Skolų suderinimo aktas;10;1;1;0;1;;#DateD;Data;0;2,0;0#Number;Dokumentas;0;3,0;1"
     "#Debit;Debetas;1;3,0;2#Credit;Kreditas;1;3,0;3#Rest;Likutis;1;3,0;4"},
    {9, "O0200508", "Sąskaitos apyvartos žurnalas", ";1;   ;;;;;;0;0;0;0",
     "Sąskaitos apyvartos žurnalas;9;1;1;0;1;;#DateD;Data;0;2,0;0#Number;Numeris;0;2,5;1"
     "#Account;B/s;0;1,6;2#AccountCorresp;Kor. b/s;0;1,6;3#SumD;Debetas, Lt;1;2,6;4"
     "#SumCurrD;Debetas, val.;1;2,8;999#SumC;Kreditas, Lt;1;2,6;5"
     "#SumCurrC;Kreditas, val.;1;2,8;999#AddrByAcc;Adresatas;0;4,0;6"
     "#AddrByCorresp;Kor. adresatas;0;4,0;999#Comment;Komentaras;0;5,0;7"},
    {10, "O0200509", "Valiutų kursų žurnalas", "USD",
     "Valiutų kursų žurnalas;10;1;1;0;1;;#Date;Data;0;2,5;0#Code;Valiuta;0;2,0;1"
     "#Rate;Kursas;1;3,0;2"},
    {11, "O0200510", "PVM registras", "1;", "PVM sąskaitų faktūrų registras;9;1;1;0;1;;"},
    {12, "O0200511", "Pirkimų ir pardavimų žurnalas", ";0;0",
     "Pirkimų ir pardavimų žurnalas;9;1;1;0;1;;#RowNumber;Eil. Nr.;0;1,5;0"
     "#DocumentDate;Data;0;2,0;1#DocumentNumber;Dokumentas;0;3,0;2"
     "#Purchases;Pirkimai;1;2,6;3#PurchasesVAT;Pirkimo PVM;1;2,6;4"
     "#Sales;Pardavimai;1;2,6;5#SalesVAT;Pardavimo PVM;1;2,6;6"
     "#ClientCode;Kliento kodas;0;2,5;7#ClientPreview;Klientas;0;5,0;8"
     "#VATCode;PVM kodas;0;2,8;9"},
};

// The register of VAT invoices comes as two fixed journals.
struct Register {
  int id;
  const char *name, *paramList;
};
constexpr int kRegisterGroup = 11;
constexpr Register kRegisters[] = {{111, "Gautų PVM sąskaitų faktūrų registras", "1;"},
                                   {112, "Išrašytų PVM sąskaitų faktūrų registras", "2;"}};

// Journals 101 … 110, then the two registers, then the rest.
int journalId(int group) { return group < kRegisterGroup ? 100 + group : 101 + group; }

void put(Database& db, int id, int parent, const Journal& like, const char* name,
         const char* paramList) {
  run(db,
      "INSERT INTO journal (id, parent_id, otype, group_flag, name, guid, config_list, param_list)"
      " VALUES ($1, $2, $3, $4, $5, $6, $7, $8)",
      id, parent ? std::optional(parent) : std::nullopt, like.kind, int{parent == 0}, name,
      "J" + std::to_string(id), like.configList, paramList);
  seedStatementRows(db, id, like.kind, paramList);
}

}  // namespace

void seedJournals(Database& db) {
  for (const Journal& journal : kJournals) {
    put(db, journal.group, 0, journal, journal.name, journal.paramList);
    if (journal.group == kRegisterGroup) {
      for (const Register& one : kRegisters) {
        put(db, one.id, journal.group, journal, one.name, one.paramList);
      }
    } else {
      put(db, journalId(journal.group), journal.group, journal, journal.name, journal.paramList);
    }
  }
}

}  // namespace tolvex::store
