#include "framework/table.h"

#include <algorithm>
#include <cstring>

namespace tolvex {

namespace {

constexpr std::uint32_t kFirstCapacity = 4;
// Below this size a scan costs no more than a look-up; above it, chains cost about this many scans.
constexpr std::uint32_t kSmallestIndexed = 512;
constexpr std::uint8_t kScansBeforeIndex = 16;

Cell absentCell(const Column& column, bool null) {
  if (column.kind == CellKind::Number) return bitsOf(null ? kNullNumber : kEmptyNumber);
  return null ? kNullText : kEmptyText;
}

}  // namespace

std::uint32_t Table::firstLive() const {
  noneBefore_ = liveFrom(noneBefore_);
  return noneBefore_;
}

std::uint32_t Table::lastLive() const {
  if (live_ == 0) return kNoRow;
  const std::uint32_t last = liveUpTo(noneFrom_ - 1);
  noneFrom_ = last + 1;
  return last;
}

void Table::grow() {
  const std::uint32_t wider = capacity_ == 0 ? kFirstCapacity : capacity_ * 2;
  auto slab = std::make_unique_for_overwrite<std::byte[]>((schema_->rowBytes() + 1) * wider);
  if (size_ > 0) {
    for (std::size_t i = 0; i < schema_->size(); ++i) {
      const Column& column = (*schema_)[i];
      if (column.kind == CellKind::Nested) continue;
      const std::size_t width = column.kind == CellKind::Number ? sizeof(double) : sizeof(Symbol);
      std::memcpy(slab.get() + column.offset * wider, slab_.get() + column.offset * capacity_,
                  width * size_);
    }
    std::memcpy(slab.get() + schema_->rowBytes() * wider, states_, size_);
  }
  slab_ = std::move(slab);
  states_ = reinterpret_cast<std::uint8_t*>(slab_.get() + schema_->rowBytes() * wider);
  capacity_ = wider;
}

std::uint32_t Table::append(RowState state) {
  if (size_ == capacity_) grow();
  const std::uint32_t row = size_++;
  const bool stored = state == RowState::Unchanged;
  for (std::size_t i = 0; i < schema_->size(); ++i) {
    const Column& column = (*schema_)[i];
    if (column.kind != CellKind::Nested) write(column, row, absentCell(column, stored));
  }
  states_[row] = static_cast<std::uint8_t>(state);
  ++live_;
  noneFrom_ = size_;
  if (!stored) ++pending_;
  if (keys_) {
    for (std::size_t i = 0; i < keys_->index.size(); ++i) {
      if (keys_->index[i]) keys_->index[i]->add(row, symbols((*schema_)[i])[row]);
    }
  }
  if (log_) log_->add(row, ChangeLog::kWholeRow);
  return row;
}

void Table::write(const Column& column, std::uint32_t row, Cell cell) {
  std::byte* const cells = slab_.get() + column.offset * capacity_;
  if (column.kind == CellKind::Number) {
    reinterpret_cast<double*>(cells)[row] = std::bit_cast<double>(cell);
  } else {
    reinterpret_cast<Symbol*>(cells)[row] = static_cast<Symbol>(cell);
  }
}

void Table::set(int column, std::uint32_t row, Cell cell, bool loading) {
  const Column& c = (*schema_)[std::size_t(column)];
  const Cell before = this->cell(c, row);
  if (!loading && state(row) == RowState::Unchanged) {
    states_[row] = static_cast<std::uint8_t>(RowState::Changed);
    ++pending_;
  }
  if (before == cell) return;
  if (loading) {
    Cell* kept = originals_ ? originals_->find(column, row) : nullptr;
    if (kept != nullptr) *kept = cell;
  } else if (state(row) != RowState::Added) {
    if (!originals_) originals_ = std::make_unique<Originals>(schema_->size());
    originals_->keep(column, row, size_, [&](std::uint32_t at) { return this->cell(c, at); });
  }
  write(c, row, cell);
  if (keys_ && keys_->index[std::size_t(column)]) {
    keys_->index[std::size_t(column)]->move(row, static_cast<Symbol>(before),
                                            static_cast<Symbol>(cell));
  }
  if (log_) log_->add(row, column);
}

void Table::remove(std::uint32_t row) {
  switch (state(row)) {
    case RowState::Added:
    case RowState::Deleted:
      states_[row] = kGone;
      --pending_;
      break;
    case RowState::Unchanged:
      ++pending_;
      [[fallthrough]];
    case RowState::Changed:
      states_[row] = static_cast<std::uint8_t>(RowState::Deleted);
      if (alive(row)) return;
      break;
  }
  --live_;
  if (log_) log_->add(row, ChangeLog::kWholeRow);
}

Cell Table::original(int column, std::uint32_t row) const {
  const Column& c = (*schema_)[std::size_t(column)];
  if (state(row) == RowState::Added) return absentCell(c, false);
  const Cell* kept = originals_ ? originals_->find(column, row) : nullptr;
  return kept != nullptr ? *kept : cell(c, row);
}

std::shared_ptr<RowSet>& Table::nested(std::uint32_t row, const Column& column) {
  const std::size_t slot = row * schema_->nestedCount() + column.offset;
  if (slot >= nested_.size()) nested_.resize((std::size_t{row} + 1) * schema_->nestedCount());
  return nested_[slot];
}

std::uint32_t Table::rowOf(std::uint32_t id) const {
  if (ids_.empty()) return id < size_ ? id : kNoRow;
  const auto found = std::lower_bound(ids_.begin(), ids_.end(), id);
  return found != ids_.end() && *found == id ? static_cast<std::uint32_t>(found - ids_.begin())
                                             : kNoRow;
}

ChangeLog& Table::watch() {
  if (!log_) log_ = std::make_unique<ChangeLog>();
  ++log_->views;
  return *log_;
}

void Table::unwatch() {
  if (--log_->views == 0) log_.reset();
}

const KeyIndex* Table::indexFor(int column) {
  if (size_ < kSmallestIndexed) return nullptr;
  if (!keys_) {
    keys_ = std::make_unique<Keys>();
    keys_->index.resize(schema_->size());
    keys_->scans.resize(schema_->size());
  }
  auto& index = keys_->index[std::size_t(column)];
  if (!index && ++keys_->scans[std::size_t(column)] > kScansBeforeIndex) {
    index =
        std::make_unique<KeyIndex>(symbols((*schema_)[std::size_t(column)]), size_, pool_->end());
  }
  return index.get();
}

void Table::changedBeyondLog() {
  noneBefore_ = 0;
  noneFrom_ = size_;
  keys_.reset();
  if (log_) log_->addUnknown();
}

std::size_t Table::bytes() const {
  std::size_t total = sizeof *this + (schema_->rowBytes() + 1) * capacity_ +
                      nested_.capacity() * sizeof nested_[0] + ids_.capacity() * sizeof ids_[0];
  if (keys_) {
    for (const auto& index : keys_->index) total += index ? index->bytes() : 0;
  }
  return total;
}

}  // namespace tolvex
