// RowModel: the rows of a ListView for the toolkit, read where they are, all or those that fit a
// typed filter.
#pragma once

#include <QAbstractTableModel>
#include <string>
#include <vector>

#include "platform/controls.h"

namespace tolvex::desktop {

class RowModel final : public QAbstractTableModel {
 public:
  RowModel(const ui::ListView& list, QObject* parent);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  // Takes over what changed in the list. True when the rows were counted anew, so that selection
  // and scroll position have to be set again.
  bool refresh();
  void setFilter(std::string words);  // every word has to stand in some cell, no case

  const ui::Row* row(int shown) const;  // null outside
  int listRow(int shown) const;         // -1 outside
  int shownRow(int listRow) const;      // -1 when filtered away
  bool hasMarks() const { return marks_; }
  bool hasIcons() const { return icons_; }
  const std::vector<ui::Column>& columns() const { return columns_; }

 private:
  bool fits(const ui::Row& row) const;
  void count();

  const ui::ListView& list_;
  std::vector<ui::Column> columns_;  // as the header was told
  std::vector<int> fitting_;         // with a filter: the list's rows shown
  std::vector<std::string> words_;
  int count_ = 0;
  unsigned version_ = 0;
  bool known_ = false;
  bool marks_ = false, icons_ = false;
};

}  // namespace tolvex::desktop
