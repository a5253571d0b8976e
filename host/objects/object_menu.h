// ObjectMenu: a context menu made on the fly from the entries that a kind offers for a row.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/form.h"
#include "platform/objects.h"

namespace tolvex {

class ObjectMenu {
 public:
  using Chosen = std::function<void(const MenuEntry& entry)>;
  explicit ObjectMenu(ui::Form& form) : form_(form) {}
  // Shows nothing when there are no entries.
  void show(ui::Control& at, const std::vector<MenuEntry>& entries, const Chosen& chosen);

 private:
  ui::Form& form_;
  std::vector<std::unique_ptr<ui::MenuItem>> items_;
  ui::Menu menu_;
};

}  // namespace tolvex
