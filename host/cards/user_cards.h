// Administration: users, roles with their rights, the protocol of it, and the own password.
#pragma once

#include "host/objects/card_set.h"

namespace tolvex {

// Under the branch of that code.
void addUserCards(CardSet& cards, std::string_view branch);

}  // namespace tolvex
