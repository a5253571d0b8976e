#include "host/desktop/row_model.h"

#include <algorithm>

#include "framework/text.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

bool sameColumns(const std::vector<ui::Column>& a, const std::vector<ui::Column>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const ui::Column& x, const ui::Column& y) {
                      return x.caption == y.caption && x.chars == y.chars && x.align == y.align &&
                             x.grow == y.grow && x.key == y.key;
                    });
}

}  // namespace

RowModel::RowModel(const ui::ListView& list, QObject* parent)
    : QAbstractTableModel(parent), list_(list) {
  refresh();
}

int RowModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : count_; }

int RowModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

int RowModel::listRow(int shown) const {
  if (shown < 0 || shown >= count_) return -1;
  return words_.empty() ? shown : fitting_[static_cast<std::size_t>(shown)];
}

int RowModel::shownRow(int listRow) const {
  if (words_.empty()) return listRow < count_ ? listRow : -1;
  const auto at = std::lower_bound(fitting_.begin(), fitting_.end(), listRow);
  return at != fitting_.end() && *at == listRow ? static_cast<int>(at - fitting_.begin()) : -1;
}

const ui::Row* RowModel::row(int shown) const {
  const int at = listRow(shown);
  return at >= 0 && at < static_cast<int>(list_.rows().size())
             ? &list_.rows()[static_cast<std::size_t>(at)]
             : nullptr;
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
  const ui::Row* shown = index.isValid() ? row(index.row()) : nullptr;
  if (!shown) return {};
  if (role == Qt::DisplayRole) {
    const auto column = static_cast<std::size_t>(index.column());
    return column < shown->cells.size() ? text(shown->cells[column].text) : QString();
  }
  if (role == Qt::ToolTipRole && !shown->hint.empty()) return text(shown->hint);
  return {};
}

QVariant RowModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ui::Column& column = columns_[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return text(column.caption);
  if (role == Qt::TextAlignmentRole) {
    return static_cast<int>(Qt::AlignVCenter |
                            (column.align == ui::Align::Right    ? Qt::AlignRight
                             : column.align == ui::Align::Center ? Qt::AlignHCenter
                                                                 : Qt::AlignLeft));
  }
  return {};
}

bool RowModel::fits(const ui::Row& row) const {
  return std::all_of(words_.begin(), words_.end(), [&](const std::string& word) {
    return std::any_of(row.cells.begin(), row.cells.end(),
                       [&](const ui::Cell& cell) { return containsNoCase(cell.text, word); });
  });
}

void RowModel::count() {
  const auto& rows = list_.rows();
  fitting_.clear();
  marks_ = icons_ = false;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    marks_ = marks_ || rows[i].mark != ui::Mark::None;
    icons_ = icons_ || !rows[i].icon.empty();
    if (!words_.empty() && fits(rows[i])) fitting_.push_back(static_cast<int>(i));
  }
  count_ = static_cast<int>(words_.empty() ? rows.size() : fitting_.size());
}

bool RowModel::refresh() {
  const bool columnsChanged = !sameColumns(columns_, list_.columns);
  if (known_ && version_ == list_.version() && !columnsChanged) return false;
  version_ = list_.version();
  const bool sameCount = known_ && words_.empty() && !columnsChanged &&
                         count_ == static_cast<int>(list_.rows().size());
  known_ = true;
  if (sameCount) {
    count();
    if (count_ > 0) emit dataChanged(index(0, 0), index(count_ - 1, columnCount() - 1));
    return false;
  }
  beginResetModel();
  columns_ = list_.columns;
  count();
  endResetModel();
  return true;
}

void RowModel::setFilter(std::string words) {
  beginResetModel();
  words_ = split(trim(words), ' ');
  std::erase(words_, std::string());
  count();
  endResetModel();
}

}  // namespace tolvex::desktop
