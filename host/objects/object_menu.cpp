#include "host/objects/object_menu.h"

namespace tolvex {

void ObjectMenu::show(ui::Control& at, const std::vector<MenuEntry>& entries,
                      const Chosen& chosen) {
  menu_.items.clear();
  items_.clear();
  for (const MenuEntry& entry : entries) {
    // Separators stand between entries, never first, last or doubled.
    if (entry.caption == "-") {
      if (!menu_.items.empty() && menu_.items.back()) menu_.items.push_back(nullptr);
      continue;
    }
    const std::string name = "mnuObject" + std::to_string(items_.size() + 1);
    auto item = std::make_unique<ui::MenuItem>(&form_, name, entry.caption);
    item->enabled = entry.enabled;
    item->ticked = entry.checked;
    item->onClick = [entry, chosen] { chosen(entry); };
    menu_.items.push_back(item.get());
    items_.push_back(std::move(item));
  }
  if (!menu_.items.empty() && !menu_.items.back()) menu_.items.pop_back();
  if (!items_.empty()) form_.popup(menu_, at);
}

}  // namespace tolvex
