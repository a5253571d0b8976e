// UI0201700: the payment templates in their groups.
#pragma once

#include <memory>

#include "framework/tree_kind.h"

namespace tolvex {

class UI0201700 final : public TreeKindUI {
 public:
  explicit UI0201700(std::shared_ptr<const FormRegistry> forms);

  const IconsTable& GetIconsTable() const override;

 protected:
  std::shared_ptr<VXObjectUIO> makeObject() override;
};

}  // namespace tolvex
