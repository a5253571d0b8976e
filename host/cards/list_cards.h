// Cards of the short directories: stock comments, purposes.
#pragma once

#include "host/cards/card_form.h"

namespace tolvex {

const CardSpec& commentCard();
const CardSpec& purposeCard();

}  // namespace tolvex
