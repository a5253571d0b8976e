// A file that is being written under another name until it is whole, with the files that an engine
// keeps beside its own.
#pragma once

#include <string>

namespace tolvex::store {

class UnfinishedFile {
 public:
  // What an earlier try left under that name is removed.
  explicit UnfinishedFile(std::string file);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  const std::string& path() const { return file_; }
  void rename(const std::string& to);  // throws std::filesystem::filesystem_error

 private:
  std::string file_;
};

}  // namespace tolvex::store
