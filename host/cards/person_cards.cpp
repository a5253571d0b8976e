#include "host/cards/person_cards.h"

#include "host/cards/bank_cards.h"
#include "host/cards/card_lists.h"
#include "host/cards/code_checks.h"

namespace tolvex {
namespace {

constexpr const char* kNameMissing = "Nenurodytas vardas!";

constexpr CardField kPersonFields[] = {
    {.column = "Name", .caption = "Vardas", .chars = 26, .missing = kNameMissing},
    {.column = "LastName", .caption = "Pavardė", .chars = 30},
    {.column = "PersCode", .caption = "Asmens kodas", .chars = 14, .remark = personCodeRemark},
    {.column = "VATCode", .caption = "PVM kodas", .chars = 18, .remark = vatCodeRemark},
    {.column = "Street", .caption = "Gatvė", .chars = 40},
    {.column = "City", .caption = "Miestas", .chars = 20},
    {.column = "Country", .caption = "Šalis", .chars = 20},
    {.column = "Phone", .caption = "Telefonas", .chars = 20},
};

constexpr CardField kEmployeeFields[] = {
    {.column = "Name", .caption = "Vardas", .chars = 26, .missing = kNameMissing},
    {.column = "LastName", .caption = "Pavardė", .chars = 30},
    {.column = "UsrTitle", .caption = "Pareigos", .chars = 40},
    {.column = "UsrPersCode", .caption = "Asmens kodas", .chars = 14, .remark = personCodeRemark},
};

constexpr CardList kAccounts[] = {
    {"lvwAccounts", "cmdNewAccount", "OwnerOIDR", "OwnerOIDR", bankAccountCard, "OwnerName"}};

std::unique_ptr<CardPart> accounts(CardForm& form) {
  return std::make_unique<CardLists>(form, kAccounts);
}

}  // namespace

const CardSpec& personCard() {
  static const CardSpec spec = {.kind = "O0001402",
                                .form = "frmPerson",
                                .component = "CPerson",
                                .caption = "Fizinis asmuo",
                                .newCaption = "Naujas fizinis asmuo",
                                .fields = kPersonFields,
                                .picture = R"(
[]
  txtName> | txtLastName>
  txtPersCode | txtVATCode
[]
  txtStreet>
  txtCity | txtCountry
  txtPhone
"Banko sąskaitos"
lvwAccounts>
cmdNewAccount
)",
                                .part = accounts};
  return spec;
}

const CardSpec& employeeCard() {
  static const CardSpec spec = {.kind = "O0001401",
                                .form = "frmEmployee",
                                .component = "CPerson",
                                .caption = "Darbuotojas",
                                .newCaption = "Naujas darbuotojas",
                                .fields = kEmployeeFields,
                                .picture = R"(
[]
  txtName> | txtLastName>
  txtUsrTitle> | txtUsrPersCode
"Banko sąskaitos"
lvwAccounts>
cmdNewAccount
)",
                                .part = accounts};
  return spec;
}

}  // namespace tolvex
