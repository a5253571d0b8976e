// Which items of a long choice fit what is typed.
#pragma once

#include <string_view>
#include <vector>

#include "platform/controls.h"

namespace tolvex::desktop {

// Indexes of the items that begin with `typed`, then of those that contain it, each in order; no
// case; at most `most`.
std::vector<int> suggestions(const std::vector<ui::ComboBox::Item>& items, std::string_view typed,
                             std::size_t most);

}  // namespace tolvex::desktop
