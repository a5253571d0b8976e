#include "host/objects/frm_tree.h"

#include <algorithm>

#include "framework/references.h"
#include "platform/host.h"

namespace tolvex {
namespace {

constexpr std::string_view kGroups = "O0201400";
constexpr const char* kUnread = "…";  // stands below a node whose groups are not read yet

std::string unreadKey(const std::string& key) { return key + kUnread; }

}  // namespace

frmTree::frmTree(HostContext& host, const Objects& objects, Navigator& navigator,
                 const std::vector<LayoutNode>& layout)
    : Form(host, "frmTree"), objects_(objects), navigator_(navigator), layout_(layout) {
  setTitle("Objektai");
  tvwLayout.onChange = [this] { chosen(); };
  tvwLayout.onActivate = [this] { chosen(); };
  tvwLayout.onExpand = [this](const std::string& key, bool open) {
    nodes_ = tvwLayout.nodes();
    if (!open) return;
    expand(key);
    tvwLayout.nodes = nodes_;
  };
  tvwLayout.onRightClick = [this] { popupMenu(); };
  tvwLayout.carries = [this](const std::string& key) { return carried(key); };
}

const char* frmTree::picture() const { return "tvwLayout>\n"; }

void frmTree::read() {
  std::vector<std::string> open;
  for (const ui::TreeNode& node : nodes_)
    if (node.expanded) open.push_back(node.key);
  const std::string current = tvwLayout.current();
  const bool first = nodes_.empty();
  nodes_.clear();
  sources_.clear();
  for (const LayoutNode& node : layout_) addLayout(node, "");
  tvwLayout.nodes = nodes_;
  if (first) {
    for (const ui::TreeNode& node : nodes_)
      if (node.parent.empty()) open.push_back(node.key);
    // The first kind of the module stands open: the day begins with its documents.
    if (!open.empty())
      for (const ui::TreeNode& node : nodes_)
        if (node.parent == open.front()) {
          open.push_back(node.key);
          break;
        }
  }
  for (const std::string& key : open) {
    const auto node = std::find_if(nodes_.begin(), nodes_.end(),
                                   [&](const ui::TreeNode& n) { return n.key == key; });
    if (node == nodes_.end()) continue;
    node->expanded = true;
    expand(key);
  }
  tvwLayout.nodes = nodes_;
  if (!tvwLayout.find(current)) tvwLayout.current = std::string();
}

void frmTree::addLayout(const LayoutNode& node, const std::string& parent) {
  if (!node.right.empty() && host().rights().of(node.right).view == 0) return;
  const bool root = parent.empty();
  if (!root && !objects_.serves(node.code)) return;
  // A kind that two branches name stands in the first of them.
  if (!root && sources_.contains(node.code)) return;
  ui::TreeNode shown;
  shown.key = node.code;
  shown.parent = parent;
  shown.text = node.caption;
  shown.icon = root ? node.code : "C" + node.code.substr(1);
  if (root) {
    nodes_.push_back(std::move(shown));
  } else {
    ListSource source;
    source.kind = node.code;
    source.caption = node.caption;
    add(std::move(shown), std::move(source), hasGroups(node.code));
  }
  const std::size_t before = nodes_.size();
  for (const LayoutNode& child : node.children) addLayout(child, node.code);
  // A branch of which the user may see nothing is not there.
  if (root && nodes_.size() == before) nodes_.pop_back();
}

void frmTree::add(ui::TreeNode node, ListSource source, bool mayHaveGroups) {
  const std::string key = node.key;
  nodes_.push_back(std::move(node));
  sources_[key] = std::move(source);
  if (!mayHaveGroups) return;
  addUnread(key);
}

void frmTree::addUnread(const std::string& key) {
  ui::TreeNode unread;
  unread.key = unreadKey(key);
  unread.parent = key;
  unread.text = kUnread;
  nodes_.push_back(std::move(unread));
}

void frmTree::drop(const std::string& key) {
  std::vector<std::string> below;
  for (const ui::TreeNode& node : nodes_)
    if (node.parent == key) below.push_back(node.key);
  for (const std::string& child : below) drop(child);
  std::erase_if(nodes_, [&](const ui::TreeNode& node) { return node.key == key; });
  sources_.erase(key);
}

void frmTree::expand(const std::string& key) {
  const std::string unread = unreadKey(key);
  const bool waiting = std::any_of(nodes_.begin(), nodes_.end(),
                                   [&](const ui::TreeNode& node) { return node.key == unread; });
  if (!waiting) return;
  drop(unread);
  if (readBranch(key)) return;
  // Closed again and unread, so that it can be opened once more.
  for (ui::TreeNode& node : nodes_)
    if (node.key == key) node.expanded = false;
  addUnread(key);
}

bool frmTree::readBranch(const std::string& key) {
  ListSource& source = sources_[key];
  using Rows = std::optional<std::vector<ObjectRow>>;
  const auto readLevel = [&](const std::string& parent) -> Rows {
    const auto ui = host().objects().kind(source.kind);
    const RowSetPtr set = ui->GetVXObjectList(parent, "", "");
    if (!set) return std::nullopt;
    auto rows = objectRows(*set, columnsOf(source.kind), host().numbers(), ui->GetIconsTable());
    std::erase_if(rows, [](const ObjectRow& row) { return familyCode(row.row.key) != kGroups; });
    return asTree(std::move(rows));
  };
  const bool byLevel = source.kind == kGroups;
  Rows read = byLevel ? readLevel(source.parent) : groupRows(host(), source.kind);
  if (!read) return false;
  std::vector<ObjectRow> groups = std::move(*read);
  // A lone group that bears the node's own name is the node itself.
  const auto tops = std::count_if(groups.begin(), groups.end(),
                                  [](const ObjectRow& row) { return row.depth == 0; });
  std::string top = source.parent;
  if (source.parent.empty() && tops == 1 && !groups[0].row.cells.empty() &&
      groups[0].row.cells[0].text == source.caption) {
    source.parent = top = groups[0].row.key;
    source.otype = groups[0].row.tag;
    source.common = groups[0].group;
    if (byLevel && groups.size() == 1) {
      read = readLevel(top);
      if (!read) return false;
      groups = std::move(*read);
    }
    std::erase_if(groups, [&](const ObjectRow& row) { return row.row.key == top; });
  }
  const ListSource copy = source;  // adding nodes may move it
  addGroups(key, copy, groups, top);
  return true;
}

void frmTree::addGroups(const std::string& key, const ListSource& source,
                        const std::vector<ObjectRow>& groups, const std::string& top) {
  const bool byLevel = source.kind == kGroups;
  for (const ObjectRow& row : groups) {
    ui::TreeNode node;
    node.key = row.row.key;
    const bool below = row.parent != top && sources_.contains(row.parent);
    node.parent = below ? row.parent : key;
    // The plan shows number and name, other kinds their name.
    for (const ui::Cell& cell : row.row.cells) {
      if (cell.text.empty() || (&cell - row.row.cells.data()) > 1) continue;
      node.text += (node.text.empty() ? "" : " ") + cell.text;
    }
    node.tag = row.row.tag;
    node.icon = row.row.icon;
    ListSource own{source.kind, row.row.key, row.row.tag, row.parent, row.group, node.text};
    add(std::move(node), std::move(own), byLevel && row.group);
  }
}

void frmTree::chosen() {
  const std::string key = tvwLayout.current();
  const auto found = sources_.find(key);
  if (found == sources_.end()) return;  // the root, or a node that waits for its groups
  if (found->second.parent.empty()) {
    // The list of a kind needs its root group, if there is one.
    nodes_ = tvwLayout.nodes();
    expand(key);
    tvwLayout.nodes = nodes_;
  }
  navigator_.showList(sources_[key]);
}

void frmTree::choose(const std::string& key) {
  if (!tvwLayout.find(key)) return;
  nodes_ = tvwLayout.nodes();
  // The way to the node stands open.
  for (const ui::TreeNode* node = tvwLayout.find(key); node;) {
    const std::string parent = node->parent;
    for (ui::TreeNode& above : nodes_)
      if (above.key == parent) above.expanded = true;
    node = tvwLayout.find(parent);
  }
  tvwLayout.nodes = nodes_;
  tvwLayout.current = key;
  chosen();
}

std::string frmTree::carried(const std::string& key) {
  const auto found = sources_.find(key);
  if (found == sources_.end() || found->second.parent.empty()) return {};
  const std::string& reference = found->second.parent;
  const auto kind = host().objects().kind(found->second.kind);
  return kind->DragOK(reference, found->second.otype, "") ? reference : std::string();
}

void frmTree::popupMenu() {
  const auto found = sources_.find(tvwLayout.current());
  if (found == sources_.end()) return;
  const ListSource source = found->second;
  const std::string otype = source.otype.empty() ? source.kind : source.otype;
  const auto entries =
      host().objects().kind(source.kind)->GetMenu(source.id(), otype, source.above);
  menu_.show(tvwLayout, entries, [this, source, otype](const MenuEntry& entry) {
    navigator_.runEntry(source.kind, source.id(), otype, entry);
  });
}

}  // namespace tolvex
