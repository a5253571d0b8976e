// A disk in memory that can lose its power: while an object of this class lives, SQLite's files are
// kept in it, and it knows which of their bytes were made durable.
//
// One at a time, for one connection at a time, used by one thread.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tolvex::store {

class MemoryDisk {
 public:
  using Files = std::map<std::string, std::vector<char>>;  // by their full names

  MemoryDisk();
  ~MemoryDisk();
  MemoryDisk(const MemoryDisk&) = delete;

  // Starts with these files, all of them durable, and with the power on. No file may be open.
  void insert(const Files& files);
  Files files() const;

  // Writes, flushes, truncations, deletions and openings of named files so far.
  int calls() const;
  // The n-th of these calls from now is under way when the power goes. It and every call after it
  // fail, those that read as well.
  void cutAt(int call);

  // What becomes of the bytes that were written and not flushed, and of files that were made or
  // deleted and not flushed either.
  enum class Unflushed { Kept, Dropped, Torn };
  // The files as they are found when the power comes back. Torn: of each sector of 512 bytes a coin
  // decides, and the coins follow from the seed.
  Files found(Unflushed unflushed, unsigned seed) const;
};

}  // namespace tolvex::store
