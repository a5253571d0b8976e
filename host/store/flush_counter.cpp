#include "host/store/flush_counter.h"

#include <sqlite3.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace tolvex::store {
namespace {

thread_local std::int64_t flushes = 0;

// A file keeps the methods of the layer below, except that its table of methods is a copy in which
// the flush is ours. The pointer to the original stands right behind the copy, where ours finds it.
struct CountingMethods {
  sqlite3_io_methods methods;
  const sqlite3_io_methods* below;
};

std::mutex tablesMutex;

int countedFlush(sqlite3_file* file, int flags) {
  ++flushes;
  const auto* table = reinterpret_cast<const CountingMethods*>(file->pMethods);
  return table->below->xSync(file, flags);
}

const sqlite3_io_methods* counting(const sqlite3_io_methods* below) {
  static std::map<const sqlite3_io_methods*, std::unique_ptr<CountingMethods>> tables;
  const std::lock_guard<std::mutex> lock(tablesMutex);
  auto& table = tables[below];
  if (!table) {
    table = std::make_unique<CountingMethods>(CountingMethods{*below, below});
    table->methods.xSync = countedFlush;
  }
  return &table->methods;
}

struct CountingLayer {
  sqlite3_vfs vfs;
  sqlite3_vfs* below;
  std::string name;
};

int openCounted(sqlite3_vfs* vfs, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  sqlite3_vfs* below = static_cast<CountingLayer*>(vfs->pAppData)->below;
  const int rc = below->xOpen(below, name, file, flags, outFlags);
  if (file->pMethods) file->pMethods = counting(file->pMethods);
  return rc;
}

sqlite3_vfs* below(sqlite3_vfs* vfs) { return static_cast<CountingLayer*>(vfs->pAppData)->below; }

}  // namespace

const char* flushCountingFiles() {
  static std::map<sqlite3_vfs*, std::unique_ptr<CountingLayer>> layers;
  const std::lock_guard<std::mutex> lock(tablesMutex);
  sqlite3_vfs* const lower = sqlite3_vfs_find(nullptr);
  auto& layer = layers[lower];
  if (!layer) {
    layer = std::make_unique<CountingLayer>(
        CountingLayer{*lower, lower, std::string("tolvex-") + lower->zName});
    sqlite3_vfs& vfs = layer->vfs;
    vfs.zName = layer->name.c_str();
    vfs.pAppData = layer.get();
    vfs.pNext = nullptr;
    vfs.xOpen = openCounted;
    vfs.xDelete = [](sqlite3_vfs* v, const char* name, int sync) {
      return below(v)->xDelete(below(v), name, sync);
    };
    vfs.xAccess = [](sqlite3_vfs* v, const char* name, int flags, int* out) {
      return below(v)->xAccess(below(v), name, flags, out);
    };
    vfs.xFullPathname = [](sqlite3_vfs* v, const char* name, int size, char* out) {
      return below(v)->xFullPathname(below(v), name, size, out);
    };
    sqlite3_vfs_register(&vfs, 0);
  }
  return layer->name.c_str();
}

std::int64_t flushesOfThisThread() { return flushes; }

}  // namespace tolvex::store
