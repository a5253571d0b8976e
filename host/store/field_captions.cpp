#include "host/store/field_captions.h"

#include <algorithm>

namespace tolvex::store {
namespace {

struct Caption {
  std::string_view field, caption;
};
constexpr Caption kCaptions[] = {
    {"Account", "Numeris"},
    {"AccountC", "Kreditas"},
    {"AccountD", "Debetas"},
    {"AccountNumber", "Sąskaitos numeris"},
    {"ANMask", "Numerio dalys"},
    {"ANMinimal", "Mažiausias numeris"},
    {"ANPrefix", "Prefiksas"},
    {"ANTemplate", "Numerio šablonas"},
    {"AutoNumber", "Auto numeris"},
    {"BankID", "Bankas"},
    {"BROperGroupID", "Grupė"},
    {"Cashier", "Kasininkas"},
    {"City", "Miestas"},
    {"ClientOIDR", "Klientas"},
    {"Code", "Kodas"},
    {"Comment", "Komentaras"},
    {"Country", "Šalis"},
    {"DateD", "Data"},
    {"Days", "Mokėti po (dienų)"},
    {"Director", "Vadovas"},
    {"DirectorTitle", "Vadovo pareigos"},
    {"Factor", "Koeficientas"},
    {"Fax", "Faksas"},
    {"Financier", "Finansininkas"},
    {"FixedRate", "Fiksuotas kursas"},
    {"FormOID", "Dokumento tipas"},
    {"Index", "Pašto indeksas"},
    {"IntermediaryAccountNumber", "Korespondentinė sąskaita"},
    {"IntermediaryBankCity", "Banko tarpininko miestas"},
    {"IntermediaryBankCode", "Banko tarpininko kodas"},
    {"IntermediaryBankCountry", "Banko tarpininko šalis"},
    {"IntermediaryBankName", "Banko tarpininko pavadinimas"},
    {"IntermediaryBankStreet", "Banko tarpininko gatvė"},
    {"IntermediaryBankSWIFT", "Banko tarpininko SWIFT"},
    {"LastName", "Pavardė"},
    {"Login", "Prisijungimo vardas"},
    {"ManyCurr", "Valiutos pavadinimas, kai 10, 11 … 20"},
    {"ManySmall", "Smulkaus vieneto pavadinimas, kai 10, 11 … 20"},
    {"Name", "Pavadinimas"},
    {"Number", "Operacijos Nr"},
    {"OneCurr", "Valiutos pavadinimas, kai 1"},
    {"OneSmall", "Smulkaus vieneto pavadinimas, kai 1"},
    {"OwnerOIDR", "Savininkas"},
    {"Parameters", "Parametrai"},
    {"ParentID", "Grupė"},
    {"Percent", "Įmokos dydis"},
    {"PersCode", "Asmens kodas"},
    {"Phone", "Telefonas"},
    {"Serija", "Serija"},
    {"Street", "Gatvė"},
    {"TwoCurr", "Valiutos pavadinimas, kai 2, 3 … 9"},
    {"TwoSmall", "Smulkaus vieneto pavadinimas, kai 2, 3 … 9"},
    {"Type", "Tipas"},
    {"UserPref", "Numerių priešdėlis"},
    {"UsrPersCode", "Asmens kodas"},
    {"UsrTitle", "Pareigos"},
    {"VATCode", "PVM kodas"},
    {"VATRegisterIndication", "PVM registras"},
};

}  // namespace

std::string fieldCaption(std::string_view field) {
  const auto* known = std::ranges::find(kCaptions, field, &Caption::field);
  return std::string(known == std::end(kCaptions) ? field : known->caption);
}

}  // namespace tolvex::store
