#include "tests/support/full_disk.h"

#include <sqlite3.h>

#include <map>

namespace tolvex::store {
namespace {

std::int64_t left = 0;
sqlite3_vfs* lower = nullptr;
sqlite3_vfs layer{};
std::map<const sqlite3_io_methods*, sqlite3_io_methods> tables;  // of databases, of journals
int (*lowerWrite)(sqlite3_file*, const void*, int, sqlite3_int64) = nullptr;

int limitedWrite(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
  sqlite3_int64 length = 0;
  if (file->pMethods->xFileSize(file, &length) == SQLITE_OK && offset + size > length) {
    const std::int64_t grows = offset + size - length;
    if (grows > left) return SQLITE_FULL;
    left -= grows;
  }
  return lowerWrite(file, bytes, size, offset);
}

int openLimited(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  const int rc = lower->xOpen(lower, name, file, flags, outFlags);
  if (rc != SQLITE_OK || !file->pMethods) return rc;
  lowerWrite = file->pMethods->xWrite;  // the same for all of them
  sqlite3_io_methods& limited = tables[file->pMethods];
  limited = *file->pMethods;
  limited.xWrite = limitedWrite;
  file->pMethods = &limited;
  return rc;
}

}  // namespace

FullDisk::FullDisk(std::int64_t bytes) {
  left = bytes;
  lower = sqlite3_vfs_find(nullptr);
  layer = *lower;
  layer.zName = "full-disk";
  layer.pNext = nullptr;
  layer.xOpen = openLimited;
  sqlite3_vfs_register(&layer, 1);
}

FullDisk::~FullDisk() {
  sqlite3_vfs_unregister(&layer);
  sqlite3_vfs_register(lower, 1);
}

void FullDisk::bytesLeft(std::int64_t bytes) { left = bytes; }

}  // namespace tolvex::store
