// Currencies: their units in words, and their rates by day, saved with the card.
#pragma once

#include "host/cards/card_form.h"

namespace tolvex {

// With the action "SumByWords": the sum, then whether the small units stand in words too; a text.
Card currencyCard();

}  // namespace tolvex
