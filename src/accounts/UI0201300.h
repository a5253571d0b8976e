// UI0201300: the locks of all accounts as a list, and the one screen that changes them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/form_registry.h"
#include "framework/object_contract.h"

namespace tolvex {

class UI0201300 final : public ForwardingUI {
 public:
  explicit UI0201300(std::shared_ptr<const FormRegistry> forms);

  using ForwardingUI::OID;
  std::vector<MenuEntry> GetMenu(std::string id, std::string kind, std::string parent) override;
  MenuAction ClickMenu(std::string id, std::string kind, std::string caption,
                       std::string extra) override;
  RowSetPtr GetVXObjectList(std::string parent, std::string filter1, std::string filter2) override;
  // The screen of locks, on the account of `id`; false without the right to look at them.
  bool AddToDeskTopVXObject(std::string id) override;
  // A lock is not made new: for "" the opening balances' stands in.
  std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) override;
  const IconsTable& GetIconsTable() const override;

 private:
  std::shared_ptr<const FormRegistry> forms_;
};

}  // namespace tolvex
