#include "host/cards/list_cards.h"

namespace tolvex {
namespace {

constexpr CardField kCommentFields[] = {
    {.column = "Name",
     .caption = "Tekstas",
     .chars = 60,
     .missing = "Nenurodytas komentaro tekstas!"},
};

constexpr CardField kPurposeFields[] = {
    {.column = "Name",
     .caption = "Pavadinimas",
     .chars = 50,
     .missing = "Nenurodytas paskirties pavadinimas!"},
    {.column = "Code", .caption = "Kodas", .chars = 20},
    {.column = "ParentID",
     .caption = "Priklauso paskirčiai",
     .kind = CardField::Kind::Reference,
     .chars = 40,
     .kinds = "O0001601"},
};

}  // namespace

const CardSpec& commentCard() {
  static const CardSpec spec = {.kind = "O0000900",
                                .form = "frmComment",
                                .component = "CBROperRights",
                                .caption = "Operacijų komentaras",
                                .newCaption = "Naujas operacijų komentaras",
                                .fields = kCommentFields,
                                .picture = "txtName>\n"};
  return spec;
}

const CardSpec& purposeCard() {
  static const CardSpec spec = {.kind = "O0001601",
                                .form = "frmPurpose",
                                .component = "CBookLayout",
                                .caption = "Paskirtis",
                                .newCaption = "Nauja paskirtis",
                                .fields = kPurposeFields,
                                .picture = R"(
[]
  txtName>
  txtCode
  txtParentID> cmdParentID
)"};
  return spec;
}

}  // namespace tolvex
