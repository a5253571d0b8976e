// The card of a firm: its data, its branches, its bank accounts.
#pragma once

#include "host/cards/card_form.h"

namespace tolvex {

const CardSpec& firmCard();

}  // namespace tolvex
