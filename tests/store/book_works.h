// Works on the books of the demo company that tests interrupt, and those books on a disk in memory.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "host/store/books.h"
#include "tests/support/books_fixture.h"
#include "tests/support/memory_disk.h"

namespace tolvex::store {

// A call of the store, ready to be made; made again after a refusal it must succeed.
using Act = std::function<int()>;  // its code
struct Work {
  const char* name;
  std::function<Act(Session&)> prepare;  // reads, and writes nothing
};
const std::vector<Work>& bookWorks();
inline std::ostream& operator<<(std::ostream& out, const Work& work) { return out << work.name; }
inline std::string workName(const testing::TestParamInfo<Work>& info) { return info.param.name; }

// The demo company with a second plan of accounts. The books live on the disk; the folder holds an
// empty file of their name, since the store asks the system whether a file is there.
class DemoOnDisk {
 public:
  DemoOnDisk();
  void insert() { disk_.insert(files_); }  // the books as they were made
  void insert(const MemoryDisk::Files& files) { disk_.insert(files); }
  MemoryDisk& disk() { return disk_; }
  std::unique_ptr<Session> open();

 private:
  TestFolder folder_;
  std::string path_;
  MemoryDisk disk_;
  MemoryDisk::Files files_;
};

// What the books say, row by row, but for the random keys of rows.
std::string statement(Database& db);
// The first line in which two statements differ, of either; "" when they do not.
std::string difference(const std::string& one, const std::string& other);

}  // namespace tolvex::store
