// TemplateTree: templates of operations in a tree, groups above their templates.
//
// A group shows its name, a template its name and the accounts of its lines. Every node but the
// root carries the reference of its template.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "framework/recordset.h"
#include "platform/controls.h"

namespace tolvex {

class TemplateTree {
 public:
  struct Choice {
    std::string reference, name;
  };

  TemplateTree(ui::TreeView& tree, std::string rootCaption)
      : tree_(tree), rootCaption_(std::move(rootCaption)) {}

  // Rows of "TemplateList": ParentCode, OwnCode, Preview, GroupFlag, AccPreview, OIDR, parents
  // before their children. What hangs below nothing that is listed hangs below the root.
  void show(RowSet& rows);
  void clear();  // the root alone
  // The template at the current node; nothing on the root and on a group.
  std::optional<Choice> current() const;
  // Draws one template bold, as the one that is used by itself; "" for none.
  void emphasize(std::string_view reference);

 private:
  ui::TreeView& tree_;
  std::string rootCaption_;
  std::map<std::string, Choice> templates_;  // by node
};

}  // namespace tolvex
