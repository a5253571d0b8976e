#include "operations/group_templates.h"

#include "framework/references.h"
#include "framework/told.h"

namespace tolvex {
namespace {

constexpr const char* kTemplateKind = "O0201600";

}  // namespace

GroupTemplates::GroupTemplates(ui::Form* form)
    : txtTemplate(form, "txtTemplate", "Šablonų grupė"),
      cmdTemplate(form, "cmdTemplate", "…", ui::Role::Small),
      cmdClearTemplate(form, "cmdClearTemplate", "×", ui::Role::Small),
      trwTemplates(form, "trwTemplates"),
      txtMainTemplate(form, "txtMainTemplate", "Pagrindinis šablonas"),
      cmdMainTemplate(form, "cmdMainTemplate", "…", ui::Role::Small),
      cmdClearMainTemplate(form, "cmdClearMainTemplate", "×", ui::Role::Small),
      mnuSetAsMain(form, "mnuSetAsMain", "Nustatyti pagrindiniu"),
      form_(*form),
      box_(txtTemplate, cmdTemplate, &cmdClearTemplate, kTemplateKind, true),
      tree_(trwTemplates, "Operacijų šablonai :") {
  txtMainTemplate.readOnly = true;
  cmdMainTemplate.tip = "Pasirinkite šabloną...";
  cmdClearMainTemplate.tip = "Išvalyti";
  menu_.items = {&mnuSetAsMain};
  menu_.onPopup = [this] { mnuSetAsMain.enabled = enabled_ && tree_.current(); };
  trwTemplates.menu = &menu_;
  box_.onChange = [this] {
    fill();
    if (onChange) onChange();
  };
  trwTemplates.onActivate = mnuSetAsMain.onClick = [this] {
    const auto chosen = tree_.current();
    if (enabled_ && chosen) setMain(chosen->reference, chosen->name);
  };
  cmdMainTemplate.onClick = [this] { pickMain(); };
  cmdClearMainTemplate.onClick = [this] { setMain("", ""); };
}

void GroupTemplates::show(std::shared_ptr<VXObjectUIO> group) {
  group_ = std::move(group);
  box_.show(static_cast<int>(group_->Fields()["BRTemplateID"].Number()));
  fill();
  const int main = static_cast<int>(group_->Fields()["DefaultTemplateID"].Number());
  const std::string reference = main == 0 ? std::string() : refOf(kTemplateKind, main);
  const auto known = reference.empty() ? std::nullopt : form_.host().pickers().lookup(reference);
  showMain(reference, known ? known->text : std::string());
}

void GroupTemplates::write(RowSet& group) const {
  group["BRTemplateID"] = box_.id();
  group["DefaultTemplateID"] = idOf(main_);
}

void GroupTemplates::enable(bool enabled) {
  enabled_ = enabled;
  box_.enable(enabled);
  cmdMainTemplate.enabled = enabled;
  cmdClearMainTemplate.enabled = enabled;
}

void GroupTemplates::fill() {
  if (!chosen()) return tree_.clear();
  if (const RowSetPtr rows = toldRows(group_->Methods("FillTemplatesTrw", {box_.id()}))) {
    tree_.show(*rows);
  } else {
    tree_.clear();
  }
  tree_.emphasize(main_);
}

void GroupTemplates::pickMain() {
  PickRequest request;
  request.kinds = {kTemplateKind};
  request.prompt = cmdMainTemplate.tip;
  request.classes = "C";
  request.current = main_;
  const auto picked = form_.host().pickers().pick(request);
  if (picked && !picked->group) setMain(picked->reference, picked->text);
}

void GroupTemplates::setMain(const std::string& reference, const std::string& name) {
  if (reference == main_) return;
  showMain(reference, name);
  if (onChange) onChange();
}

void GroupTemplates::showMain(const std::string& reference, const std::string& name) {
  main_ = reference;
  txtMainTemplate.text = name;
  tree_.emphasize(main_);
}

}  // namespace tolvex
