// The counterpart of an account in the new plan, chosen by drop or from the list.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"

namespace tolvex {

struct Counterpart {
  int id = 0;  // 0: none, the choice was cleared
  std::string text;
};

// A node of the new plan, by its reference alone.
bool isNewPlanNode(std::string_view reference);
// The account of the new plan behind a reference; nothing when it is a group. One that cannot be
// read is told.
std::optional<Counterpart> counterpartOf(HostContext& host, std::string_view reference);
// Asks the user; nothing when he cancelled or took a group. `currentId` 0: none yet.
std::optional<Counterpart> pickCounterpart(HostContext& host, int currentId);

}  // namespace tolvex
