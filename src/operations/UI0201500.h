// UI0201500: the kind of financial operations in lists and menus.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/object_contract.h"
#include "operations/UIO0201500.h"

namespace tolvex {

class UI0201500 final : public ForwardingUI {
 public:
  explicit UI0201500(OperationTablesPtr tables);

  using ForwardingUI::OID;
  // Nothing unless a row was clicked. Rights are those of the row's group, `parent`.
  std::vector<MenuEntry> GetMenu(std::string id, std::string kind, std::string parent) override;
  // `id` is the clicked operation, or the group in which a new one is made.
  MenuAction ClickMenu(std::string id, std::string kind, std::string caption,
                       std::string extra) override;
  bool DragOK(std::string, std::string, std::string) override { return true; }
  bool DropOK(std::string) override { return false; }
  // The two filters are ignored in this kind; a filter travels inside the first argument.
  RowSetPtr GetVXObjectList(std::string parent, std::string filter1, std::string filter2) override;
  bool AddToDeskTopVXObject(std::string id) override;
  std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) override;
  const IconsTable& GetIconsTable() const override;
  std::int16_t DeleteVXObject(std::string id) override;

 private:
  RightFlags rightsOf(std::string_view id, std::string_view parent) const;

  OperationTablesPtr tables_;
};

}  // namespace tolvex
