#include "host/cards/all_cards.h"

#include "host/cards/bank_cards.h"
#include "host/cards/currency_card.h"
#include "host/cards/firm_card.h"
#include "host/cards/frm_rate_day.h"
#include "host/cards/list_cards.h"
#include "host/cards/person_cards.h"
#include "host/cards/user_cards.h"
#include "host/cards/vat_tariffs.h"

namespace tolvex {
namespace {

constexpr const char* kDirectories = "L0000001";
constexpr const char* kAdministration = "L0000002";

CardSet makeCards() {
  CardSet cards;
  cards.addBranch(kDirectories, "Žinynai");
  cards.addBranch(kAdministration, "Administravimas");
  cards.addKind(kAdministration, "CAllAccLock", "O0201300");
  for (const CardSpec* card :
       {&firmCard(), &personCard(), &employeeCard(), &bankCard(), &bankAccountCard()})
    cards.add(kDirectories, cardOf(*card));
  cards.add(kDirectories, currencyCard());
  cards.add(kDirectories, rateDayCard());
  cards.add(kDirectories, vatTariffsCard());
  for (const CardSpec* card : {&purposeCard(), &commentCard()})
    cards.add(kDirectories, cardOf(*card));
  addUserCards(cards, kAdministration);
  return cards;
}

}  // namespace

const CardSet& allCards() {
  static const CardSet cards = makeCards();
  return cards;
}

}  // namespace tolvex
