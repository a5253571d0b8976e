#include "host/cards/bank_cards.h"

#include "host/cards/card_lists.h"
#include "host/cards/code_checks.h"

namespace tolvex {
namespace {

using Kind = CardField::Kind;

constexpr CardField kBankFields[] = {
    {.column = "Name",
     .caption = "Pavadinimas",
     .chars = 50,
     .missing = "Nenurodytas banko pavadinimas!"},
    {.column = "Code", .caption = "Kodas", .chars = 12},
    {.column = "SWIFT", .caption = "SWIFT", .chars = 14},
    {.column = "Street", .caption = "Gatvė", .chars = 40},
    {.column = "City", .caption = "Miestas", .chars = 20},
    {.column = "Country", .caption = "Šalis", .chars = 20},
};

constexpr CardField kAccountFields[] = {
    {.column = "OwnerOIDR",
     .caption = "Savininkas",
     .kind = Kind::Reference,
     .chars = 40,
     .kinds = "O0000100 O0001402 O0001401",
     .missing = "Nenurodytas sąskaitos savininkas!"},
    {.column = "BankID",
     .caption = "Bankas",
     .kind = Kind::Reference,
     .chars = 40,
     .kinds = "O0000300",
     .missing = "Nenurodytas bankas!"},
    {.column = "AccountNumber",
     .caption = "Sąskaitos numeris",
     .chars = 28,
     .missing = "Nenurodytas sąskaitos numeris!",
     .remark = accountNumberRemark},
    {.column = "MainAccountFlag", .caption = "Pagrindinė savininko sąskaita", .kind = Kind::Check},
    {.column = "IntermediaryBankName", .caption = "Pavadinimas", .chars = 40},
    {.column = "IntermediaryBankCode", .caption = "Kodas", .chars = 12},
    {.column = "IntermediaryBankSWIFT", .caption = "SWIFT", .chars = 14},
    {.column = "IntermediaryBankStreet", .caption = "Gatvė", .chars = 40},
    {.column = "IntermediaryBankCity", .caption = "Miestas", .chars = 20},
    {.column = "IntermediaryBankCountry", .caption = "Šalis", .chars = 20},
    {.column = "IntermediaryAccountNumber",
     .caption = "Korespondentinė sąskaita",
     .chars = 28,
     .remark = accountNumberRemark},
};

constexpr CardList kAccountsOfBank[] = {
    {"lvwAccounts", "cmdNewAccount", "BankOIDR", "BankID", bankAccountCard}};

}  // namespace

const CardSpec& bankCard() {
  static const CardSpec spec = {
      .kind = "O0000300",
      .form = "frmBank",
      .component = "CBanks",
      .caption = "Bankas",
      .newCaption = "Naujas bankas",
      .fields = kBankFields,
      .picture = R"(
[]
  txtName>
  txtCode | txtSWIFT
[]
  txtStreet>
  txtCity | txtCountry
"Sąskaitos šiame banke"
lvwAccounts>
cmdNewAccount
)",
      .part = [](CardForm& form) { return std::make_unique<CardLists>(form, kAccountsOfBank); }};
  return spec;
}

const CardSpec& bankAccountCard() {
  static const CardSpec spec = {
      .kind = "O0000500",
      .form = "frmBankAccount",
      .component = "CBanks",
      .caption = "Banko sąskaita",
      .newCaption = "Nauja banko sąskaita",
      .fields = kAccountFields,
      .picture = R"(
[tabs tabCard]
  [main]
    []
      txtOwnerOIDR> cmdOwnerOIDR
      txtBankID> cmdBankID
      txtAccountNumber | chkMainAccountFlag
  [intermediary]
    []
      txtIntermediaryBankName>
      txtIntermediaryBankCode | txtIntermediaryBankSWIFT
      txtIntermediaryBankStreet>
      txtIntermediaryBankCity | txtIntermediaryBankCountry
      txtIntermediaryAccountNumber
)",
      .tabs = {{"main", "Sąskaita"}, {"intermediary", "Bankas tarpininkas"}}};
  return spec;
}

}  // namespace tolvex
