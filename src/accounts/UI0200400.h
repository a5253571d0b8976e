// UI0200400: a chart of accounts as a tree: its menu, its two views, new and deleted nodes.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "accounts/UIO0200400.h"
#include "framework/form_registry.h"
#include "framework/object_contract.h"

namespace tolvex {

class UI0200400 final : public ForwardingUI {
 public:
  explicit UI0200400(std::shared_ptr<const FormRegistry> forms);

  using ForwardingUI::OID;
  // Entries have numbers for ids. That of a missing screen is there, disabled.
  std::vector<MenuEntry> GetMenu(std::string id, std::string kind, std::string parent) override;
  MenuAction ClickMenu(std::string id, std::string kind, std::string entry,
                       std::string extra) override;
  // `parent` is the wanted filter; without one the mode decides: "FULL" shows both plans.
  RowSetPtr GetVXObjectList(std::string parent, std::string filter1, std::string filter2) override;
  bool AddToDeskTopVXObject(std::string id) override;
  std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) override;
  const IconsTable& GetIconsTable() const override;

 private:
  void addRootEntries(std::vector<MenuEntry>& menu) const;
  void addNodeEntries(std::string_view kind, std::vector<MenuEntry>& menu) const;
  MenuAction newNode(const std::string& above);
  MenuAction filtered();
  MenuAction deleted(const std::string& id);
  void moveDown(const std::string& id);
  MenuAction screen(const char* name, std::shared_ptr<VXObjectUIO> node) const;
  std::shared_ptr<VXObjectUI> otherPlan(std::string_view id) const;
  PlanNode readNode(const std::string& id);
  std::shared_ptr<VXObjectUIO> standing(const std::string& id);

  std::shared_ptr<const FormRegistry> forms_;
  std::string mode_;  // "FULL" or ""
};

}  // namespace tolvex
