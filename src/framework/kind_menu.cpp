#include "framework/kind_menu.h"

namespace tolvex {

MenuEntry menuEntry(std::string caption, bool enabled) {
  std::string id = caption;
  return {std::move(caption), std::move(id), enabled, false};
}

MenuAction clickDelete(VXObjectUI& ui, std::string id) {
  if (!ask(hostContext(), "Ar tikrai norite panaikinti?")) return {};
  const std::int16_t status = ui.DeleteVXObject(std::move(id));
  return {status == kDeleted ? MenuAction::Removed : MenuAction::Nothing, {}};
}

}  // namespace tolvex
