// frmTree: the tree of objects, from the module's layout, as far as rights allow, with the groups
// of each kind below its node. Groups are read when their node is opened for the first time.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/objects/list_source.h"
#include "host/objects/object_factory.h"
#include "host/objects/object_menu.h"
#include "host/objects/object_rows.h"
#include "platform/form.h"

namespace tolvex {

class frmTree final : public ui::Form {
 public:
  frmTree(HostContext& host, const Objects& objects, Navigator& navigator,
          const std::vector<LayoutNode>& layout);
  const char* picture() const override;

  // Builds the tree anew; open nodes and the chosen one stay so where they still exist.
  void read();
  void choose(const std::string& key);  // by the program: shows its list

  ui::TreeView tvwLayout{this, "tvwLayout"};

 private:
  void addLayout(const LayoutNode& node, const std::string& parent);
  void expand(const std::string& key);
  bool readBranch(const std::string& key);
  void addUnread(const std::string& key);
  void addGroups(const std::string& key, const ListSource& source,
                 const std::vector<ObjectRow>& groups, const std::string& top);
  void add(ui::TreeNode node, ListSource source, bool mayHaveGroups);
  void drop(const std::string& key);  // a node and everything below
  void chosen();
  void popupMenu();
  std::string carried(const std::string& key);

  const Objects& objects_;
  Navigator& navigator_;
  const std::vector<LayoutNode>& layout_;
  std::vector<ui::TreeNode> nodes_;  // the next state of tvwLayout.nodes
  std::map<std::string, ListSource> sources_;
  ObjectMenu menu_{*this};
};

}  // namespace tolvex
