// ListSource: what the list shows: a kind, or what lies below one of its groups.
#pragma once

#include <functional>
#include <string>

#include "platform/objects.h"

namespace tolvex {

struct ListSource {
  std::string kind;     // "O0201400"
  std::string parent;   // reference of the group; "" for the kind as a whole
  std::string otype;    // exact kind of that group
  std::string above;    // reference of the group above it
  bool common = true;   // the group holds groups, not documents
  std::string caption;  // for the head of the list
  bool operator==(const ListSource&) const = default;

  // The group as an object for menus: its reference, or the kind's own code for the root.
  const std::string& id() const { return parent.empty() ? kind : parent; }
};

// What tree and list ask of the workspace around them.
class Navigator {
 public:
  virtual ~Navigator() = default;
  virtual void showList(const ListSource& source) = 0;        // the tree's node was chosen
  virtual void chooseNode(const std::string& reference) = 0;  // a group was opened in the list
  virtual void openObject(const std::string& reference) = 0;
  // Runs a menu entry of the kind on an object, and what it asks for.
  virtual void runEntry(const std::string& kind, const std::string& id, const std::string& otype,
                        const MenuEntry& entry) = 0;
};

}  // namespace tolvex
