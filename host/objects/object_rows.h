// Rows of objects as lists, trees and pickers show them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/objects/kinds.h"
#include "platform/host.h"

namespace tolvex {

struct ObjectRow {
  ui::Row row;         // key: the reference; tag: its exact kind; hint: its preview
  std::string parent;  // reference of the row above, "" at the top
  bool group = false;
  int depth = 0;
};

// From the answer of GetVXObjectList. `icons` maps an exact kind to a picture.
std::vector<ObjectRow> objectRows(RowSet& set, const std::vector<ListColumn>& columns,
                                  const NumberFormat& format, const IconsTable& icons);

// Parents before their children, depths set; a row whose parent is not among them stands at the
// top. Brothers keep their order.
std::vector<ObjectRow> asTree(std::vector<ObjectRow> rows);

// The rows that have `text` in a cell: first those where a cell begins with it, then the others.
std::vector<ui::Row> narrowed(const std::vector<ui::Row>& rows, std::string_view text);

// Lists by name (Grouping::Nested) in Lithuanian order of what they show of an object.
std::vector<ObjectRow> inViewOrder(std::vector<ObjectRow> rows, const KindView& view);

// Objects of a kind that meet a filter, "" for all; none after a message.
std::vector<ObjectRow> listedRows(HostContext& host, const std::string& kind,
                                  const std::string& filter,
                                  const std::vector<ListColumn>& columns);
// All groups of a kind, parents first; of operation groups too, which are read branch by branch.
// Nothing after the user was told that they could not be read.
std::optional<std::vector<ObjectRow>> groupRows(HostContext& host, const std::string& kind);
// Everything of a kind for a picker: groups and items, as a tree.
std::vector<ObjectRow> pickerRows(HostContext& host, const std::string& kind);

}  // namespace tolvex
