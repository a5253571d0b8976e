// View: the rows that a filter lets through, in the order of a sort, kept live.
//
// A place is a row number or, under a sort, a rank. The view follows the change log of its table:
// when it is a few changes behind it tests those rows alone, further behind it is built anew.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "framework/bits.h"
#include "framework/predicate.h"
#include "framework/sorting.h"

namespace tolvex {

class View {
 public:
  explicit View(Table& table) : table_(table), log_(table.watch()) {}
  ~View() { table_.unwatch(); }
  View(const View&) = delete;
  View& operator=(const View&) = delete;

  void setFilter(std::string_view text, Predicate predicate);
  void setSort(std::string_view text, const std::vector<SortKey>& keys);
  const std::string& filter() const { return filter_; }
  const std::string& sort() const { return sort_; }
  bool isPlain() const { return predicate_.empty() && sort_.empty(); }

  std::size_t count() { return sync(), bits_.count(); }
  // Table::kNoRow at the end.
  std::uint32_t first() { return sync(), rowAt(bits_.next(0)); }
  std::uint32_t last() { return sync(), rowAt(bits_.previous(bits_.size())); }
  std::uint32_t next(std::uint32_t row) { return sync(), rowAt(bits_.next(placeOf(row) + 1)); }
  std::uint32_t previous(std::uint32_t row) {
    sync();
    const std::size_t place = placeOf(row);
    return place == 0 ? Table::kNoRow : rowAt(bits_.previous(place - 1));
  }

 private:
  void sync() {
    if (seen_ != log_.count()) follow();
  }
  void follow();
  void build();
  void scan();
  std::uint64_t liveOf(std::uint32_t first, std::uint64_t rows) const;
  void growToTable();
  bool visible(std::uint32_t row) {
    return table_.alive(row) && (predicate_.empty() || predicate_.test(table_, row));
  }
  std::size_t placeOf(std::uint32_t row) const { return rank_.empty() ? row : rank_[row]; }
  std::uint32_t rowAt(std::size_t place) const {
    if (place == Bits::kNone) return Table::kNoRow;
    return order_.empty() ? static_cast<std::uint32_t>(place) : order_[place];
  }

  Table& table_;
  ChangeLog& log_;
  std::string filter_;
  std::string sort_;
  Predicate predicate_;
  Bits bits_;
  std::vector<std::uint32_t> order_;  // row by rank; empty without a sort
  std::vector<std::uint32_t> rank_;   // rank by row
  std::uint64_t seen_ = 0;            // changes that the bits know of
  Symbol boundTo_ = 0;                // the pool's end when the predicate was bound
};

}  // namespace tolvex
