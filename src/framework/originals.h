// Originals: stored cells as they were before their first edit.
//
// Before the first edit of a stored cell its block of 256 rows of that column is copied, so sets
// that nobody edits pay nothing and edits need no map.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tolvex {

class Originals {
 public:
  static constexpr std::uint32_t kBlock = 256;

  explicit Originals(std::size_t columns) : columns_(columns) {}

  // Copies the block of the cell unless that is done. `read(row)` gives the cells of the column.
  template <class Read>
  void keep(int column, std::uint32_t row, std::uint32_t rows, Read read) {
    std::vector<std::uint64_t>& block = blockOf(column, row);
    const std::uint32_t first = row / kBlock * kBlock;
    if (row - first < block.size()) return;
    const std::uint32_t end = rows - first < kBlock ? rows : first + kBlock;
    for (auto at = first + static_cast<std::uint32_t>(block.size()); at < end; ++at) {
      block.push_back(read(at));
    }
  }

  // Null when the cell was never copied, so it is as it was.
  std::uint64_t* find(int column, std::uint32_t row) {
    auto& blocks = columns_[std::size_t(column)];
    const std::size_t number = row / kBlock;
    if (number >= blocks.size() || row % kBlock >= blocks[number].size()) return nullptr;
    return &blocks[number][row % kBlock];
  }

 private:
  std::vector<std::uint64_t>& blockOf(int column, std::uint32_t row) {
    auto& blocks = columns_[std::size_t(column)];
    if (row / kBlock >= blocks.size()) blocks.resize(row / kBlock + 1);
    return blocks[row / kBlock];
  }

  std::vector<std::vector<std::vector<std::uint64_t>>> columns_;  // column, block, row in it
};

}  // namespace tolvex
