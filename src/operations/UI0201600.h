// UI0201600: the templates of operations in their groups.
#pragma once

#include <memory>
#include <string>

#include "framework/tree_kind.h"

namespace tolvex {

class UI0201600 final : public TreeKindUI {
 public:
  explicit UI0201600(std::shared_ptr<const FormRegistry> forms);

  // With "group|mode" in `extra` a deleted template also leaves the set of that group.
  MenuAction ClickMenu(std::string id, std::string kind, std::string caption,
                       std::string extra) override;
  const IconsTable& GetIconsTable() const override;

 protected:
  std::shared_ptr<VXObjectUIO> makeObject() override;

 private:
  std::shared_ptr<const FormRegistry> forms_;
};

}  // namespace tolvex
