// Cards of banks and bank accounts.
#pragma once

#include "host/cards/card_form.h"

namespace tolvex {

const CardSpec& bankCard();
const CardSpec& bankAccountCard();

}  // namespace tolvex
