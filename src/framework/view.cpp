#include "framework/view.h"

#include <algorithm>

namespace tolvex {

void View::setFilter(std::string_view text, Predicate predicate) {
  filter_ = text;
  predicate_ = std::move(predicate);
  build();
}

void View::setSort(std::string_view text, const std::vector<SortKey>& keys) {
  sort_ = keys.empty() ? std::string_view() : text;
  order_.clear();
  rank_.clear();
  if (!keys.empty()) {
    order_ = sortedPlaces(table_, keys);
    rank_.resize(order_.size());
    for (std::uint32_t i = 0; i < order_.size(); ++i) rank_[order_[i]] = i;
  }
  build();
}

// New rows stand last until the sort is written again.
void View::growToTable() {
  const std::uint32_t size = table_.size();
  if (!sort_.empty()) {
    for (auto row = static_cast<std::uint32_t>(order_.size()); row < size; ++row) {
      order_.push_back(row);
      rank_.push_back(row);
    }
  }
  if (bits_.size() < size) bits_.grow(size);
}

void View::build() {
  growToTable();
  bits_.clear();
  predicate_.bind(table_);
  boundTo_ = table_.pool().end();
  seen_ = log_.count();
  std::vector<std::uint32_t> rows;
  if (!predicate_.empty() && predicate_.candidates(table_, rows)) {
    for (const std::uint32_t row : rows) {
      if (visible(row)) bits_.set(placeOf(row), true);
    }
  } else {
    scan();
  }
}

void View::scan() {
  const bool anyDead = table_.live() != table_.size();
  // All rows together fill the same places in any order.
  const bool isInRowOrder = rank_.empty() || (predicate_.empty() && !anyDead);
  constexpr std::uint32_t kBlock = Predicate::kBlockWords * 64;
  std::uint64_t found[Predicate::kBlockWords];
  for (std::uint32_t first = 0; first < table_.size(); first += kBlock) {
    const std::uint32_t rows = std::min(kBlock, table_.size() - first);
    const std::size_t words = (rows + 63) / 64;
    if (predicate_.empty()) {
      std::fill_n(found, words, ~std::uint64_t{0});
      if (rows % 64 != 0) found[words - 1] >>= 64 - rows % 64;
    } else {
      predicate_.scan(table_, first, words, found);
    }
    for (std::size_t w = 0; w < words; ++w) {
      const auto base = static_cast<std::uint32_t>(first + w * 64);
      if (anyDead) found[w] &= liveOf(base, found[w]);
      if (found[w] == 0) continue;
      if (isInRowOrder) {
        bits_.setWord(base / 64, found[w]);
        continue;
      }
      for (std::uint64_t rest = found[w]; rest != 0; rest &= rest - 1) {
        bits_.set(rank_[base + static_cast<std::uint32_t>(std::countr_zero(rest))], true);
      }
    }
  }
}

// Of the rows `rows` of one word those that are not deleted.
std::uint64_t View::liveOf(std::uint32_t first, std::uint64_t rows) const {
  std::uint64_t live = 0;
  for (; rows != 0; rows &= rows - 1) {
    const int i = std::countr_zero(rows);
    live |= std::uint64_t{table_.alive(first + static_cast<std::uint32_t>(i))} << i;
  }
  return live;
}

void View::follow() {
  if (log_.count() - seen_ > ChangeLog::kKept) {
    build();
    return;
  }
  growToTable();
  if (boundTo_ != table_.pool().end()) {
    predicate_.bind(table_);
    boundTo_ = table_.pool().end();
  }
  for (; seen_ != log_.count(); ++seen_) {
    const auto [row, column] = log_[seen_];
    if (column == ChangeLog::kWholeRow || predicate_.reads(column)) {
      bits_.set(placeOf(row), visible(row));
    }
  }
}

}  // namespace tolvex
