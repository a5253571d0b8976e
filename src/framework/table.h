// Table: the rows behind one or more cursors of a record set.
//
// Column after column in one slab with a common capacity: one allocation for a small child set,
// full speed for a long scan. A row keeps its number for the life of the set; a deleted one stays
// as a dead place, so bookmarks need no map.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "framework/key_index.h"
#include "framework/originals.h"
#include "framework/schema.h"
#include "framework/text_pool.h"

namespace tolvex {

// A cell in its raw form: the bits of a number, the symbol of a text.
using Cell = std::uint64_t;

// The last changes of a table, for views that follow it; kept only while there are views.
class ChangeLog {
 public:
  static constexpr std::size_t kKept = 256;
  static constexpr std::int32_t kWholeRow = -1;
  struct Change {
    std::uint32_t row;
    std::int32_t column;
  };

  void add(std::uint32_t row, std::int32_t column) { ring_[count_++ % kKept] = {row, column}; }
  void addUnknown() { count_ += kKept + 1; }  // more than can be followed
  std::uint64_t count() const { return count_; }
  const Change& operator[](std::uint64_t number) const { return ring_[number % kKept]; }

  int views = 0;

 private:
  std::uint64_t count_ = 0;
  std::array<Change, kKept> ring_;
};

class Table {
 public:
  // Without a pool the table has its columns but is not open.
  Table(std::shared_ptr<Schema> schema, std::shared_ptr<TextPool> pool)
      : schema_(std::move(schema)), pool_(std::move(pool)) {}

  bool isOpen() const { return pool_ != nullptr; }
  Schema& schema() const { return *schema_; }
  const std::shared_ptr<Schema>& sharedSchema() const { return schema_; }
  TextPool& pool() const { return *pool_; }
  const std::shared_ptr<TextPool>& sharedPool() const { return pool_; }

  std::uint32_t size() const { return size_; }  // places, dead ones included
  std::uint32_t live() const { return live_; }
  RowState state(std::uint32_t row) const { return static_cast<RowState>(states_[row]); }
  bool alive(std::uint32_t row) const { return states_[row] < deadFrom_; }
  // The live row at or after, at or before a place; size() or kNoRow when there is none.
  std::uint32_t firstLive() const;
  std::uint32_t lastLive() const;
  std::uint32_t liveFrom(std::uint32_t row) const {
    while (row < size_ && !alive(row)) ++row;
    return row;
  }
  std::uint32_t liveUpTo(std::uint32_t row) const {
    while (row != kNoRow && !alive(row)) --row;
    return row;
  }

  const double* numbers(const Column& column) const {
    return reinterpret_cast<const double*>(slab_.get() + column.offset * capacity_);
  }
  const Symbol* symbols(const Column& column) const {
    return reinterpret_cast<const Symbol*>(slab_.get() + column.offset * capacity_);
  }
  Cell cell(const Column& column, std::uint32_t row) const {
    return column.kind == CellKind::Number ? bitsOf(numbers(column)[row]) : symbols(column)[row];
  }
  // The cell as last read or accepted; of an added row empty.
  Cell original(int column, std::uint32_t row) const;

  // Added: all cells empty. Unchanged: a row from the store, all cells null.
  std::uint32_t append(RowState state);
  // While a row is loading its cells are no edits.
  void set(int column, std::uint32_t row, Cell cell, bool loading);
  void remove(std::uint32_t row);

  std::shared_ptr<RowSet>& nested(std::uint32_t row, const Column& column);

  bool pending() const { return pending_ > 0; }  // nested sets not counted
  bool nestedPending(std::uint32_t row) const;
  bool anyNestedPending() const;
  void cancel();  // nested sets included
  void accept();  // nested sets included
  // The rows with changes as a table of its own, see RowSet::Changes.
  std::shared_ptr<Table> changes() const;

  // What stands for a row in a bookmark, and back; kNoRow when there is no such row.
  std::uint32_t idOf(std::uint32_t row) const { return row < ids_.size() ? ids_[row] : row; }
  std::uint32_t rowOf(std::uint32_t id) const;

  ChangeLog& watch();
  void unwatch();
  ChangeLog& log() const { return *log_; }

  // The index of a text column, or null. Counts as one more scan that an index would spare; the
  // index is built when the scans have cost more than it does.
  const KeyIndex* indexFor(int column);

  std::size_t bytes() const;  // the pool not counted

  static constexpr std::uint32_t kNoRow = 0xFFFFFFFF;

 private:
  static constexpr std::uint8_t kGone = 4;  // never stored, or accepted as deleted

  struct Keys {
    std::vector<std::unique_ptr<KeyIndex>> index;
    std::vector<std::uint8_t> scans;
  };

  void write(const Column& column, std::uint32_t row, Cell cell);
  void grow();
  void changedBeyondLog();
  void copyRow(const Table& from, std::uint32_t row);

  std::shared_ptr<Schema> schema_;
  std::shared_ptr<TextPool> pool_;
  std::unique_ptr<std::byte[]> slab_;
  std::uint8_t* states_ = nullptr;  // the last column of the slab
  std::uint32_t size_ = 0;
  std::uint32_t capacity_ = 0;
  std::uint32_t live_ = 0;
  std::uint32_t pending_ = 0;
  mutable std::uint32_t noneBefore_ = 0;  // no live row before this place
  mutable std::uint32_t noneFrom_ = 0;    // no live row from this place on
  std::uint8_t deadFrom_ = static_cast<std::uint8_t>(RowState::Deleted);
  std::vector<std::shared_ptr<RowSet>> nested_;
  std::vector<std::uint32_t> ids_;  // of a set of changes: the rows they come from
  std::unique_ptr<ChangeLog> log_;
  std::unique_ptr<Originals> originals_;
  std::unique_ptr<Keys> keys_;
};

}  // namespace tolvex
