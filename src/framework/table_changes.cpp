// What is pending in a table: undone, accepted, or copied out for a save.
#include "framework/table.h"

namespace tolvex {

bool Table::nestedPending(std::uint32_t row) const {
  const std::size_t first = row * schema_->nestedCount();
  for (std::size_t i = first; i < first + schema_->nestedCount() && i < nested_.size(); ++i) {
    if (nested_[i] && nested_[i]->HasChanges()) return true;
  }
  return false;
}

bool Table::anyNestedPending() const {
  if (nested_.empty()) return false;
  for (std::uint32_t row = 0; row < size_; ++row) {
    if (alive(row) && nestedPending(row)) return true;
  }
  return false;
}

void Table::cancel() {
  for (std::uint32_t row = 0; row < size_; ++row) {
    if (states_[row] == kGone || state(row) == RowState::Unchanged) continue;
    const bool wasAlive = alive(row);
    if (state(row) == RowState::Added) {
      states_[row] = kGone;
      --live_;
      continue;
    }
    for (std::size_t i = 0; originals_ && i < schema_->size(); ++i) {
      const Cell* kept = originals_->find(static_cast<int>(i), row);
      if (kept != nullptr) write((*schema_)[i], row, *kept);
    }
    states_[row] = static_cast<std::uint8_t>(RowState::Unchanged);
    if (!wasAlive) ++live_;
  }
  pending_ = 0;
  originals_.reset();
  changedBeyondLog();
  for (const auto& child : nested_) {
    if (child) child->CancelBatch();
  }
}

void Table::accept() {
  for (std::uint32_t row = 0; row < size_; ++row) {
    if (states_[row] == kGone) continue;
    if (state(row) == RowState::Deleted) {
      if (alive(row)) --live_;
      states_[row] = kGone;
    } else {
      states_[row] = static_cast<std::uint8_t>(RowState::Unchanged);
    }
  }
  pending_ = 0;
  originals_.reset();
  if (log_) log_->addUnknown();
  for (const auto& child : nested_) {
    if (child) child->AcceptChanges();
  }
}

std::shared_ptr<Table> Table::changes() const {
  auto copy = std::make_shared<Table>(schema_, pool_);
  copy->deadFrom_ = kGone;
  for (std::uint32_t row = 0; row < size_; ++row) {
    if (states_[row] == kGone) continue;
    if (state(row) != RowState::Unchanged || nestedPending(row)) copy->copyRow(*this, row);
  }
  return copy;
}

void Table::copyRow(const Table& from, std::uint32_t row) {
  const RowState state = from.state(row);
  const std::uint32_t added =
      append(state == RowState::Added ? RowState::Added : RowState::Unchanged);
  ids_.push_back(from.idOf(row));
  for (std::size_t i = 0; i < schema_->size(); ++i) {
    const Column& column = (*schema_)[i];
    if (column.kind == CellKind::Nested) continue;
    const int number = static_cast<int>(i);
    const Cell cell = from.cell(column, row);
    const Cell original = from.original(number, row);
    if (state != RowState::Added) set(number, added, original, true);
    if (cell != original) set(number, added, cell, false);
  }
  if (state == RowState::Changed && this->state(added) == RowState::Unchanged) {
    states_[added] = static_cast<std::uint8_t>(state);  // every cell is as it was again
    ++pending_;
  }
  if (state == RowState::Deleted) {
    remove(added);
    return;
  }
  const std::size_t first = row * schema_->nestedCount();
  for (std::size_t k = 0; k < schema_->nestedCount() && first + k < from.nested_.size(); ++k) {
    const auto& child = from.nested_[first + k];
    if (!child || !child->HasChanges()) continue;
    nested_.resize((std::size_t{added} + 1) * schema_->nestedCount());
    nested_[added * schema_->nestedCount() + k] = child->Changes();
  }
}

}  // namespace tolvex
