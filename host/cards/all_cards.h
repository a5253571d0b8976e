// Every card of the program, in the order of the tree.
#pragma once

#include "host/objects/card_set.h"

namespace tolvex {

const CardSet& allCards();

}  // namespace tolvex
