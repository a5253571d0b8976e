#include "host/store/unfinished_file.h"

#include <filesystem>

namespace tolvex::store {

namespace {

namespace fs = std::filesystem;

void removeWithCompanions(const std::string& file) {
  std::error_code ignored;
  for (const char* suffix : {"", "-wal", "-shm", "-journal"}) fs::remove(file + suffix, ignored);
}

}  // namespace

UnfinishedFile::UnfinishedFile(std::string file) : file_(std::move(file)) {
  removeWithCompanions(file_);
}

UnfinishedFile::~UnfinishedFile() { removeWithCompanions(file_); }

void UnfinishedFile::rename(const std::string& to) { fs::rename(file_, to); }

}  // namespace tolvex::store
