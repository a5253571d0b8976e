#include "operations/UI0201600.h"

#include "framework/kind_menu.h"
#include "operations/UIO0201600.h"
#include "operations/template_forms.h"

namespace tolvex {
namespace {

constexpr TreeKind kTemplates = {kTemplateKind,        kTemplateKind,   kTemplateKind,
                                 kTemplateRights,      kTemplateScreen, "Naujas šablonas",
                                 "Nauja šablonų grupė"};

}  // namespace

UI0201600::UI0201600(std::shared_ptr<const FormRegistry> forms)
    : TreeKindUI(kTemplates, forms), forms_(std::move(forms)) {}

MenuAction UI0201600::ClickMenu(std::string id, std::string kind, std::string caption,
                                std::string extra) {
  const MenuAction action = TreeKindUI::ClickMenu(id, std::move(kind), caption, extra);
  if (caption != kDelete || action.Action != MenuAction::Removed) return action;
  const std::string parameters = templateSetParameters(extra, id);
  if (parameters.empty()) return action;
  HostResult left;
  BO()->CallBO("DeleteTemplateSet", parameters, nullptr, left);
  if (left.Code != kDone) warn(hostContext(), left.Text);
  return action;
}

std::shared_ptr<VXObjectUIO> UI0201600::makeObject() {
  return std::make_shared<UIO0201600>(forms_);
}

const IconsTable& UI0201600::GetIconsTable() const {
  static const IconsTable kIcons = {
      {kTemplateKind, "C0201600"}, {"Group", "stdClose"}, {"OGroup", "stdOpen"}};
  return kIcons;
}

}  // namespace tolvex
