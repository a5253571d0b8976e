// Settings that a program keeps for its user, by object and name. What is stored for nobody in
// particular holds for all who have none of their own. The last writer wins.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/store/session.h"

namespace tolvex::store {

std::optional<std::string> settingOf(Session& session, std::string_view object,
                                     std::string_view name);
// For the user of the session. Throws Refusal 1203 when he is gone.
void storeSetting(Session& session, std::string_view object, std::string_view name,
                  std::string_view value);

}  // namespace tolvex::store
