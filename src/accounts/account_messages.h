// Boxes that the cards of accounts have in common.
#pragma once

#include <string>

#include "platform/host.h"

namespace tolvex {

inline constexpr const char* kPlanTitle = "Norvanta";  // of most boxes of the plan

// What keeps a command from going on, with a stop sign.
void stopWith(HostContext& host, std::string text);
// A save that did not happen: "Klaida!", a blank line and the reason.
void showFailedWrite(HostContext& host, const std::string& reason);

}  // namespace tolvex
