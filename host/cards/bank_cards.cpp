// Banks and bank accounts.
#include "host/cards/bank_cards.h"

namespace tolvex {
namespace {

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

}  // namespace

const CardSpec& bankCard() {
  static const CardSpec spec = {.kind = "O0000300",
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
)"};
  return spec;
}

}  // namespace tolvex
