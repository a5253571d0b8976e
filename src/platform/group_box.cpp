#include "platform/group_box.h"

#include "framework/references.h"

namespace tolvex {

GroupBox::GroupBox(ui::TextBox& box, ui::Button& pick, ui::Button* clear, std::string_view kind,
                   bool groups)
    : groupsOnly(groups), box_(box), pick_(pick), clear_(clear), kind_(kind) {
  box_.readOnly = true;
  pick_.onClick = [this] { choose(); };
  if (clear_) {
    clear_->tip = "Išvalyti";
    clear_->onClick = [this] {
      if (reference_.empty()) return;
      set("", "");
      if (onChange) onChange();
    };
  }
}

int GroupBox::id() const { return idOf(reference_); }

void GroupBox::show(int id) {
  if (id == 0) return set("", "");
  const std::string reference = refOf(kind_, id);
  const auto known = box_.form.host().pickers().lookup(reference);
  set(reference, known ? known->text : std::string());
}

void GroupBox::enable(bool enabled) {
  pick_.enabled = enabled;
  if (clear_) clear_->enabled = enabled;
}

void GroupBox::choose() {
  PickRequest request;
  request.kinds = {kind_};
  request.prompt = "Pažymėkite norimą grupę";
  request.classes = groupsOnly ? "groups" : "";
  request.current = reference_;
  const auto picked = box_.form.host().pickers().pick(request);
  if (!picked || picked->reference == reference_) return;
  if (picked->reference.empty() && !clear_) return;
  set(picked->reference, picked->text);
  if (onChange) onChange();
}

void GroupBox::set(std::string reference, std::string text) {
  reference_ = std::move(reference);
  box_.text = std::move(text);
}

}  // namespace tolvex
