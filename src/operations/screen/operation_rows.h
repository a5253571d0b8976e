// The record of an open operation, fetched anew each time: a failed save of a new operation may
// replace it.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "framework/object_card.h"
#include "operations/UIO0201500.h"
#include "operations/entries.h"
#include "platform/objects.h"

namespace tolvex {

// Whether the reference points at an operation, as an entry points at the one that it pays.
bool pointsAtOperation(std::string_view reference);

}  // namespace tolvex
