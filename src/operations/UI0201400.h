// UI0201400: the tree of operation groups, and the documents that are made in them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "framework/object_contract.h"
#include "operations/UIO0201400.h"
#include "operations/UIO0201500.h"

namespace tolvex {

class UI0201400 final : public ForwardingUI {
 public:
  explicit UI0201400(OperationTablesPtr tables);

  using ForwardingUI::OID;
  // The commands of the tree always, those of a group on a group. A command whose screen is
  // missing is there, disabled.
  std::vector<MenuEntry> GetMenu(std::string id, std::string kind, std::string parent) override;
  MenuAction ClickMenu(std::string id, std::string kind, std::string caption,
                       std::string extra) override;
  // Groups and operations below `parent`, operations of the viewing period only; `filter1` narrows.
  RowSetPtr GetVXObjectList(std::string parent, std::string filter1, std::string filter2) override;
  bool AddToDeskTopVXObject(std::string id) override;
  std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) override;
  const IconsTable& GetIconsTable() const override;

 private:
  void addTreeEntries(std::vector<MenuEntry>& menu) const;
  void addGroupEntries(VXObjectUIO& group, std::vector<MenuEntry>& menu) const;
  MenuAction clickTree(const std::string& id, const std::string& caption);
  MenuAction clickGroup(const std::string& id, const std::string& caption,
                        const std::string& extra);
  std::shared_ptr<VXObjectUIO> toldGroup(const std::string& id);
  MenuAction openGroup(const std::string& id);
  MenuAction openCovers(const std::string& id);
  MenuAction openImport();
  std::optional<int> placeOfNew(const std::string& id);
  MenuAction newGroup(const std::string& id, bool common);

  OperationTablesPtr tables_;
};

}  // namespace tolvex
