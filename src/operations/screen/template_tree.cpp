#include "operations/screen/template_tree.h"

#include <set>

namespace tolvex {
namespace {

constexpr const char* kRoot = "K";
constexpr const char* kGroupIcon = "stdClose";
constexpr const char* kTemplateIcon = "C0201600";

ui::TreeNode rootNode(const std::string& caption) {
  ui::TreeNode root;
  root.key = kRoot;
  root.text = caption;
  root.icon = kGroupIcon;
  root.expanded = true;
  return root;
}

ui::TreeNode nodeOf(RowSet& row) {
  const bool group = row["GroupFlag"].Number() != 0;
  ui::TreeNode node;
  node.key = row["OwnCode"].Text();
  node.parent = row["ParentCode"].Text();
  node.text = row["Preview"].Text();
  node.tag = row["OIDR"].Text();
  node.icon = group ? kGroupIcon : kTemplateIcon;
  node.expanded = group;
  const std::string accounts(row["AccPreview"].Text());
  if (!group && !accounts.empty()) node.text += "   (" + accounts + ")";
  return node;
}

}  // namespace

void TemplateTree::show(RowSet& rows) {
  std::vector<ui::TreeNode> nodes{rootNode(rootCaption_)};
  std::set<std::string> listed{kRoot};
  templates_.clear();
  ForEachRow(rows, [&](RowSet& row) {
    ui::TreeNode node = nodeOf(row);
    if (!listed.insert(node.key).second) return;
    if (!listed.contains(node.parent)) node.parent = kRoot;
    if (row["GroupFlag"].Number() == 0) {
      templates_[node.key] = {node.tag, std::string(row["Preview"].Text())};
    }
    nodes.push_back(std::move(node));
  });
  const bool kept = listed.contains(tree_.current());
  tree_.nodes = std::move(nodes);
  if (!kept) tree_.current = std::string();
}

void TemplateTree::clear() {
  templates_.clear();
  tree_.nodes = std::vector<ui::TreeNode>{rootNode(rootCaption_)};
  tree_.current = std::string();
}

std::optional<TemplateTree::Choice> TemplateTree::current() const {
  const auto found = templates_.find(tree_.current());
  return found == templates_.end() ? std::nullopt : std::optional(found->second);
}

void TemplateTree::emphasize(std::string_view reference) {
  std::vector<ui::TreeNode> nodes = tree_.nodes();
  for (ui::TreeNode& node : nodes) node.bold = !reference.empty() && node.tag == reference;
  tree_.nodes = std::move(nodes);
}

}  // namespace tolvex
