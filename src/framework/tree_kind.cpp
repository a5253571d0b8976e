#include "framework/tree_kind.h"

#include "framework/kind_menu.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

bool isGroup(VXObjectUIO& object) { return object.Fields()["GroupFlag"].Number() != 0; }

}  // namespace

TreeKindUI::TreeKindUI(const TreeKind& kind, std::shared_ptr<const FormRegistry> forms)
    : ForwardingUI(kind.kind), tree_(kind), forms_(std::move(forms)) {}

std::vector<MenuEntry> TreeKindUI::GetMenu(std::string id, std::string, std::string) {
  const RightFlags rights = hostContext().rights().of(tree_.rights);
  std::vector<MenuEntry> menu;
  if (rights.view && isRef(id)) menu.push_back(menuEntry(kToDesktop));
  if (rights.create) {
    menu.push_back(menuEntry(tree_.newRecord));
    menu.push_back(menuEntry(tree_.newGroup));
  }
  if (rights.remove && isRef(id)) {
    menu.push_back(menuEntry("-"));
    menu.push_back(menuEntry(kDelete));
  }
  menu.push_back(menuEntry("-"));
  menu.push_back(menuEntry(kFilterRows));
  return menu;
}

MenuAction TreeKindUI::ClickMenu(std::string id, std::string, std::string caption, std::string) {
  if (caption == kToDesktop) AddToDeskTopVXObject(std::move(id));
  if (caption == tree_.newRecord) return newBelow(id, false);
  if (caption == tree_.newGroup) return newBelow(id, true);
  if (caption == kDelete) return clickDelete(*this, std::move(id));
  if (caption == kFilterRows) {
    return clickFilter(*this, tree_.kind, [](VXObjectUI& ui, const std::string& filter) {
      return ui.GetVXObjectList(quoted(filter), "", "");
    });
  }
  return {};
}

MenuAction TreeKindUI::newBelow(const std::string& id, bool group) {
  Variant parent;
  if (isRef(id)) {
    const std::shared_ptr<VXObjectUIO> clicked = makeObject();
    if (const SaveResult found = read(*clicked, id); found.Code != kDone) {
      tellFailedRead(id, found);
      return {};
    }
    parent = clicked->Fields()[isGroup(*clicked) ? "ID" : "ParentID"].Value();
  }
  std::shared_ptr<VXObjectUIO> object = makeObject();
  object->OType(group ? tree_.groupType : tree_.recordType);
  if (const SaveResult fresh = read(*object, ""); fresh.Code != kDone) {
    warn(hostContext(), fresh.Text);
    return {};
  }
  object->Fields()["ParentID"] = parent;
  object->Fields()["GroupFlag"] = group ? 1 : 0;
  return {MenuAction::ShowForm, Variant(ObjectPtr(screenOver(std::move(object))))};
}

bool TreeKindUI::AddToDeskTopVXObject(std::string id) {
  std::shared_ptr<VXObjectUIO> object = makeObject();
  if (const SaveResult found = read(*object, id); found.Code != kDone) {
    tellFailedRead(id, found);
    return false;
  }
  const std::shared_ptr<ui::Form> form = screenOver(std::move(object));
  return form && hostContext().desktop().put(form);
}

std::shared_ptr<VXObjectUIO> TreeKindUI::GetVXObject(std::string id) {
  std::shared_ptr<VXObjectUIO> object = makeObject();
  return read(*object, std::move(id)).Code == kDone ? object : nullptr;
}

std::int16_t TreeKindUI::DeleteVXObject(std::string id) {
  const std::shared_ptr<VXObjectUIO> object = makeObject();
  const SaveResult found = read(*object, id);
  if (found.Code == kDone) return inner().DeleteVXObject(std::move(id));
  tellFailedRead(id, found);
  return static_cast<std::int16_t>(found.Code);
}

SaveResult TreeKindUI::read(VXObjectUIO& object, std::string id) {
  object.UI(shared_from_this());
  object.OID(std::move(id));
  return object.Read();
}

void TreeKindUI::tellFailedRead(const std::string& id, const SaveResult& read) const {
  if (read.Code != kGone) return warn(hostContext(), read.Text);
  const bool group =
      std::string_view(tree_.groupType) != tree_.recordType && kindOf(id) == tree_.groupType;
  showStop(hostContext(), group ? "Grupė panaikinta!" : "Objektas panaikintas!");
}

std::shared_ptr<ui::Form> TreeKindUI::screenOver(std::shared_ptr<VXObjectUIO> object) const {
  return forms_->make(tree_.screen, ObjectFormRequest{hostContext(), std::move(object), ""});
}

}  // namespace tolvex
