// The templates of a group on its card: the template group that it offers, shown as a tree, and the
// template from which a new document starts.
#pragma once

#include <functional>
#include <string>

#include "operations/screen/template_tree.h"
#include "platform/form.h"
#include "platform/group_box.h"
#include "platform/objects.h"

namespace tolvex {

class GroupTemplates {
 public:
  explicit GroupTemplates(ui::Form* form);

  ui::TextBox txtTemplate;
  ui::Button cmdTemplate, cmdClearTemplate;
  ui::TreeView trwTemplates;
  ui::TextBox txtMainTemplate;
  ui::Button cmdMainTemplate, cmdClearMainTemplate;
  ui::MenuItem mnuSetAsMain;

  ui::Handler onChange;  // after the user changed anything here

  void show(std::shared_ptr<VXObjectUIO> group);
  void write(RowSet& group) const;
  void enable(bool enabled);
  bool chosen() const { return box_.id() != 0; }  // whether the group has a template group
  // The documents of this kind take a single template as well as a group of them.
  void takeSingle(bool single) { box_.groupsOnly = !single; }

 private:
  void fill();
  void pickMain();
  void setMain(const std::string& reference, const std::string& name);
  void showMain(const std::string& reference, const std::string& name);

  ui::Form& form_;
  std::shared_ptr<VXObjectUIO> group_;
  GroupBox box_;
  TemplateTree tree_;
  ui::Menu menu_;
  std::string main_;  // reference of the template that documents start from, or ""
  bool enabled_ = true;
};

}  // namespace tolvex
