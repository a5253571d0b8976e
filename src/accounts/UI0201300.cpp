#include "accounts/UI0201300.h"

#include "accounts/UIO0201300.h"
#include "framework/kind_menu.h"
#include "framework/references.h"

namespace tolvex {

UI0201300::UI0201300(std::shared_ptr<const FormRegistry> forms)
    : ForwardingUI(kLockKind), forms_(std::move(forms)) {}

std::vector<MenuEntry> UI0201300::GetMenu(std::string id, std::string, std::string) {
  std::vector<MenuEntry> menu;
  const RightFlags rights = hostContext().rights().of(kLockRights);
  if (rights.view) menu.push_back(menuEntry(kToDesktop));
  if (rights.remove && isRow(id)) menu.push_back(menuEntry(kDelete));
  menu.push_back(menuEntry(kFilterRows));
  return menu;
}

MenuAction UI0201300::ClickMenu(std::string id, std::string, std::string caption, std::string) {
  if (caption == kToDesktop) AddToDeskTopVXObject(std::move(id));
  if (caption == kDelete) return clickDelete(*this, std::move(id));
  if (caption == kFilterRows) {
    return clickFilter(*this, kLockKind, [](VXObjectUI& ui, const std::string& filter) {
      return ui.GetVXObjectList("", filter, "");
    });
  }
  return {};
}

RowSetPtr UI0201300::GetVXObjectList(std::string, std::string filter1, std::string) {
  return inner().GetVXObjectList("", std::move(filter1), "");
}

bool UI0201300::AddToDeskTopVXObject(std::string id) {
  const std::shared_ptr<ui::Form> form = makeLockScreen(*forms_, hostContext(), id);
  return form && hostContext().desktop().put(form);
}

std::shared_ptr<VXObjectUIO> UI0201300::GetVXObject(std::string id) {
  auto lock = std::make_shared<UIO0201300>(forms_);
  lock->UI(shared_from_this());
  lock->OID(isRef(id) ? std::move(id) : refOf(kLockKind, 0));
  return lock->Read().Code == kDone ? lock : nullptr;
}

const IconsTable& UI0201300::GetIconsTable() const {
  static const IconsTable kIcons = {{kLockKind, "C0201300"}};
  return kIcons;
}

}  // namespace tolvex
