// A disk that runs full: while an object of this class lives, SQLite's files that are opened can
// take only so many bytes more.
#pragma once

#include <cstdint>

namespace tolvex::store {

class FullDisk {
 public:
  explicit FullDisk(std::int64_t bytesLeft);
  ~FullDisk();
  FullDisk(const FullDisk&) = delete;
  void bytesLeft(std::int64_t bytes);
};

}  // namespace tolvex::store
