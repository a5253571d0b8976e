// Cards of persons and employees.
#pragma once

#include "host/cards/card_form.h"

namespace tolvex {

const CardSpec& personCard();
const CardSpec& employeeCard();

}  // namespace tolvex
