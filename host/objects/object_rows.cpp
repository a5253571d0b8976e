#include "host/objects/object_rows.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "framework/collation.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"

namespace tolvex {
namespace {

constexpr std::string_view kGroups = "O0201400";
constexpr std::size_t kDeepest = 40;  // a ring of parents must not hang the tree

std::string iconOf(const std::string& otype, const std::string& reference,
                   const IconsTable& icons) {
  for (const auto& [kind, image] : icons)
    if (kind == otype) return image;
  const std::string code = otype.size() == kKindLength ? otype : std::string(kindOf(reference));
  return code.empty() ? std::string() : "C" + code.substr(1);
}

std::optional<Field> fieldOf(RowSet& set, const char* name) {
  if (!set.Fields().contains(name)) return std::nullopt;
  return set[name];
}

}  // namespace

std::vector<ObjectRow> objectRows(RowSet& set, const std::vector<ListColumn>& columns,
                                  const NumberFormat& format, const IconsTable& icons) {
  std::vector<ObjectRow> result;
  result.reserve(set.RecordCount());
  const auto reference = fieldOf(set, "OIDR"), parent = fieldOf(set, "ParentOIDR"),
             otype = fieldOf(set, "OType"), group = fieldOf(set, "GroupFlag"),
             preview = fieldOf(set, "Preview");
  ForEachRow(set, [&](RowSet& at) {
    ObjectRow& next = result.emplace_back();
    if (reference) next.row.key = reference->Text();
    if (otype) next.row.tag = otype->Text();
    if (parent) next.parent = parent->Text();
    if (preview) next.row.hint = preview->Text();
    next.group = group && group->Number() != 0;
    next.row.bold = next.group;
    next.row.icon = iconOf(next.row.tag, next.row.key, icons);
    next.row.cells.reserve(columns.size());
    for (const ListColumn& column : columns)
      next.row.cells.emplace_back(cellText(at, column, format));
  });
  return result;
}

std::vector<ObjectRow> asTree(std::vector<ObjectRow> rows) {
  std::map<std::string, std::size_t> place;
  for (std::size_t i = 0; i < rows.size(); ++i) place.emplace(rows[i].row.key, i);
  std::map<std::string, std::vector<std::size_t>> below;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const bool known = rows[i].parent != rows[i].row.key && place.contains(rows[i].parent);
    below[known ? rows[i].parent : std::string()].push_back(i);
  }
  std::vector<ObjectRow> result;
  result.reserve(rows.size());
  struct Step {
    std::size_t row;
    int depth;
  };
  std::vector<Step> open;
  const auto push = [&](const std::string& parent, int depth) {
    const auto found = below.find(parent);
    if (found == below.end() || depth > static_cast<int>(kDeepest)) return;
    for (auto i = found->second.rbegin(); i != found->second.rend(); ++i)
      open.push_back({*i, depth});
  };
  push("", 0);
  while (!open.empty()) {
    const Step step = open.back();
    open.pop_back();
    ObjectRow& row = rows[step.row];
    row.depth = step.depth;
    const std::string key = row.row.key;
    result.push_back(std::move(row));
    if (!key.empty()) push(key, step.depth + 1);
  }
  return result;
}

std::vector<ui::Row> narrowed(const std::vector<ui::Row>& rows, std::string_view text) {
  std::vector<ui::Row> first, other;
  for (const ui::Row& row : rows) {
    bool begins = false, holds = false;
    for (const ui::Cell& cell : row.cells) {
      std::string_view shown = cell.text;
      shown.remove_prefix(std::min(shown.find_first_not_of(' '), shown.size()));
      begins = begins || startsWithNoCase(shown, text);
      holds = holds || begins || containsNoCase(shown, text);
    }
    if (begins)
      first.push_back(row);
    else if (holds)
      other.push_back(row);
  }
  first.insert(first.end(), std::make_move_iterator(other.begin()),
               std::make_move_iterator(other.end()));
  return first;
}

std::vector<ObjectRow> inViewOrder(std::vector<ObjectRow> rows, const KindView& view) {
  if (view.grouping != Grouping::Nested) return rows;
  std::vector<std::pair<std::string, std::size_t>> keys;
  keys.reserve(rows.size());
  for (const ObjectRow& row : rows) keys.emplace_back(collationKey(row.row.hint), keys.size());
  std::sort(keys.begin(), keys.end());
  std::vector<ObjectRow> sorted;
  sorted.reserve(rows.size());
  for (const auto& [key, row] : keys) sorted.push_back(std::move(rows[row]));
  return sorted;
}

std::vector<ObjectRow> listedRows(HostContext& host, const std::string& kind,
                                  const std::string& filter,
                                  const std::vector<ListColumn>& columns) {
  const auto ui = host.objects().kind(kind);
  const RowSetPtr set =
      ui->GetVXObjectList(filter.empty() ? std::string() : quoted(filter), "", "");
  if (!set) return {};
  auto rows = objectRows(*set, columns, host.numbers(), ui->GetIconsTable());
  const KindView* view = kindView(kind);
  return view ? inViewOrder(std::move(rows), *view) : rows;
}

std::optional<std::vector<ObjectRow>> groupRows(HostContext& host, const std::string& kind) {
  const KindView* view = kindView(kind);
  if (!view) return std::vector<ObjectRow>();
  const auto ui = host.objects().kind(kind);
  bool failed = false;
  const auto read = [&](const std::string& parent) {
    std::vector<ObjectRow> groups;
    const RowSetPtr set = ui->GetVXObjectList(parent, "", "");
    failed = failed || !set;
    if (!set) return groups;
    groups = objectRows(*set, view->columns, host.numbers(), ui->GetIconsTable());
    std::erase_if(groups, [&](const ObjectRow& row) {
      return kind == kGroups ? familyCode(row.row.key) != kGroups : !row.group;
    });
    return groups;
  };
  std::vector<ObjectRow> all = read("");
  if (failed) return std::nullopt;
  if (kind != kGroups) return asTree(std::move(all));
  // Operation groups are many in a large company: a branch is read when its parent is known.
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (!all[i].group) continue;
    for (ObjectRow& child : read(all[i].row.key)) {
      const bool known = std::any_of(all.begin(), all.end(), [&](const ObjectRow& row) {
        return row.row.key == child.row.key;
      });
      if (!known) all.push_back(std::move(child));
    }
    if (failed) return std::nullopt;
  }
  return asTree(std::move(all));
}

std::vector<ObjectRow> pickerRows(HostContext& host, const std::string& kind) {
  if (kind == kGroups) return groupRows(host, kind).value_or(std::vector<ObjectRow>());
  return asTree(listedRows(host, kind, "", columnsOf(kind)));
}

}  // namespace tolvex
