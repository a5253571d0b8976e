#include "tests/support/memory_disk.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace tolvex::store {
namespace {

constexpr std::size_t kSector = 512;

using Bytes = std::vector<char>;

// A write or a truncation that was not flushed: what stood in its place, what it brought.
struct Change {
  std::size_t offset, sizeBefore, sizeAfter;
  Bytes before, after;
};

struct Node {
  Bytes bytes;
  std::vector<Change> unflushed;
  bool durableName = false;  // a new file may vanish until it is flushed

  void apply(Change change) {
    bytes.resize(change.sizeAfter);
    std::copy(change.after.begin(), change.after.end(), at(bytes, change.offset));
    unflushed.push_back(std::move(change));
  }
  static Bytes::iterator at(Bytes& bytes, std::size_t offset) {
    return bytes.begin() + static_cast<std::ptrdiff_t>(offset);
  }
  Bytes durable() const {
    Bytes content = bytes;
    for (auto change = unflushed.rbegin(); change != unflushed.rend(); ++change) {
      content.resize(change->sizeBefore);
      std::copy(change->before.begin(), change->before.end(), at(content, change->offset));
    }
    return content;
  }
  template <class Coin>
  Bytes torn(Coin coin) const {
    Bytes content = durable();
    for (const Change& change : unflushed) {
      if (change.after.empty()) {
        if (coin()) content.resize(change.sizeAfter);
        continue;
      }
      const std::size_t end = change.offset + change.after.size();
      for (std::size_t from = change.offset; from < end;) {
        const std::size_t to = std::min(end, (from / kSector + 1) * kSector);
        if (coin()) {
          if (content.size() < to) content.resize(to);
          std::copy_n(change.after.begin() + static_cast<std::ptrdiff_t>(from - change.offset),
                      to - from, at(content, from));
        }
        from = to;
      }
    }
    return content;
  }
};

struct Disk {
  std::map<std::string, std::shared_ptr<Node>> files;
  std::map<std::string, std::shared_ptr<Node>> deleted;                // and may come back
  std::map<std::string, std::vector<std::unique_ptr<char[]>>> shared;  // pages of the log's index
  int calls = 0, cutAt = 0;
  bool off = false;
};

Disk disk;
sqlite3_vfs* lower = nullptr;
sqlite3_vfs layer{};

// Whether the call can be carried out; the one that is under way when the power goes begins.
enum class Power { On, Going, Off };
Power begin() {
  if (disk.off) return Power::Off;
  ++disk.calls;
  if (disk.calls != disk.cutAt) return Power::On;
  disk.off = true;
  return Power::Going;
}

struct OpenFile {
  sqlite3_file base;
  std::shared_ptr<Node>* node;
  std::string* name;  // null: a file without a name, which nobody finds after a loss of power
};
OpenFile& opened(sqlite3_file* file) { return *reinterpret_cast<OpenFile*>(file); }
Node& nodeOf(sqlite3_file* file) { return **opened(file).node; }
Power begin(sqlite3_file* file) {
  if (opened(file).name) return begin();
  return disk.off ? Power::Off : Power::On;
}

int closeFile(sqlite3_file* file) {
  delete opened(file).node;
  delete opened(file).name;
  return SQLITE_OK;
}

int readFile(sqlite3_file* file, void* to, int size, sqlite3_int64 offset) {
  if (disk.off) return SQLITE_IOERR_READ;
  const Bytes& bytes = nodeOf(file).bytes;
  const auto from = std::min(static_cast<std::size_t>(offset), bytes.size());
  const std::size_t there = std::min(static_cast<std::size_t>(size), bytes.size() - from);
  if (there > 0) std::memcpy(to, bytes.data() + from, there);
  if (there == static_cast<std::size_t>(size)) return SQLITE_OK;
  std::memset(static_cast<char*>(to) + there, 0, static_cast<std::size_t>(size) - there);
  return SQLITE_IOERR_SHORT_READ;
}

int writeFile(sqlite3_file* file, const void* from, int size, sqlite3_int64 offset) {
  const Power power = begin(file);
  if (power == Power::Off) return SQLITE_IOERR_WRITE;
  Node& node = nodeOf(file);
  const auto* bytes = static_cast<const char*>(from);
  Change change{static_cast<std::size_t>(offset), node.bytes.size(), 0, {}, {bytes, bytes + size}};
  const std::size_t end = change.offset + change.after.size();
  change.sizeAfter = std::max(change.sizeBefore, end);
  if (change.offset < change.sizeBefore) {
    change.before.assign(Node::at(node.bytes, change.offset),
                         Node::at(node.bytes, std::min(end, change.sizeBefore)));
  }
  node.apply(std::move(change));
  return power == Power::On ? SQLITE_OK : SQLITE_IOERR_WRITE;
}

int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
  const Power power = begin(file);
  if (power == Power::Off) return SQLITE_IOERR_TRUNCATE;
  Node& node = nodeOf(file);
  const auto end = static_cast<std::size_t>(size);
  if (end < node.bytes.size()) {
    node.apply(
        {end, node.bytes.size(), end, Bytes(Node::at(node.bytes, end), node.bytes.end()), {}});
  }
  return power == Power::On ? SQLITE_OK : SQLITE_IOERR_TRUNCATE;
}

int flushFile(sqlite3_file* file, int) {
  if (begin(file) != Power::On) return SQLITE_IOERR_FSYNC;
  nodeOf(file).unflushed.clear();
  nodeOf(file).durableName = true;
  return SQLITE_OK;
}

int sizeOfFile(sqlite3_file* file, sqlite3_int64* size) {
  *size = static_cast<sqlite3_int64>(nodeOf(file).bytes.size());
  return SQLITE_OK;
}

int mapShared(sqlite3_file* file, int region, int size, int extend, void volatile** out) {
  auto& regions = disk.shared[*opened(file).name];
  const auto wanted = static_cast<std::size_t>(region);
  *out = nullptr;
  if (regions.size() <= wanted && extend == 0) return SQLITE_OK;
  while (regions.size() <= wanted) {
    regions.push_back(std::make_unique<char[]>(static_cast<std::size_t>(size)));
  }
  *out = regions[wanted].get();
  return SQLITE_OK;
}

int unmapShared(sqlite3_file* file, int forGood) {
  if (forGood != 0) disk.shared.erase(*opened(file).name);
  return SQLITE_OK;
}

const sqlite3_io_methods kMethods = {
    .iVersion = 2,
    .xClose = closeFile,
    .xRead = readFile,
    .xWrite = writeFile,
    .xTruncate = truncateFile,
    .xSync = flushFile,
    .xFileSize = sizeOfFile,
    .xLock = [](sqlite3_file*, int) { return SQLITE_OK; },
    .xUnlock = [](sqlite3_file*, int) { return SQLITE_OK; },
    .xCheckReservedLock =
        [](sqlite3_file*, int* out) {
          *out = 0;
          return SQLITE_OK;
        },
    .xFileControl = [](sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; },
    .xSectorSize = [](sqlite3_file*) { return 4096; },
    .xDeviceCharacteristics = [](sqlite3_file*) { return SQLITE_IOCAP_POWERSAFE_OVERWRITE; },
    .xShmMap = mapShared,
    .xShmLock = [](sqlite3_file*, int, int, int) { return SQLITE_OK; },
    .xShmBarrier = [](sqlite3_file*) {},
    .xShmUnmap = unmapShared,
    .xFetch = nullptr,
    .xUnfetch = nullptr,
};

int openFile(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  file->pMethods = nullptr;
  std::shared_ptr<Node> node;
  if (!name) {
    node = std::make_shared<Node>();
  } else {
    if (begin() != Power::On) return SQLITE_CANTOPEN;
    const auto found = disk.files.find(name);
    if (found == disk.files.end() && (flags & SQLITE_OPEN_CREATE) == 0) return SQLITE_CANTOPEN;
    node = found != disk.files.end() ? found->second : std::make_shared<Node>();
    disk.files[name] = node;
    disk.deleted.erase(name);
  }
  opened(file).node = new std::shared_ptr<Node>(node);
  opened(file).name = name ? new std::string(name) : nullptr;
  file->pMethods = &kMethods;
  if (outFlags) *outFlags = flags;
  return SQLITE_OK;
}

int deleteFile(sqlite3_vfs*, const char* name, int flushFolder) {
  if (begin() != Power::On) return SQLITE_IOERR_DELETE;
  const auto found = disk.files.find(name);
  if (found == disk.files.end()) return SQLITE_IOERR_DELETE_NOENT;
  if (flushFolder == 0 && found->second->durableName) disk.deleted[name] = found->second;
  disk.files.erase(found);
  return SQLITE_OK;
}

int accessFile(sqlite3_vfs*, const char* name, int, int* out) {
  *out = disk.files.contains(name) ? 1 : 0;
  return disk.off ? SQLITE_IOERR_ACCESS : SQLITE_OK;
}

}  // namespace

MemoryDisk::MemoryDisk() {
  lower = sqlite3_vfs_find(nullptr);
  layer = *lower;
  layer.szOsFile = sizeof(OpenFile);
  layer.zName = "memory-disk";
  layer.pNext = nullptr;
  layer.xOpen = openFile;
  layer.xDelete = deleteFile;
  layer.xAccess = accessFile;
  insert({});
  sqlite3_vfs_register(&layer, 1);
}

MemoryDisk::~MemoryDisk() {
  sqlite3_vfs_unregister(&layer);
  sqlite3_vfs_register(lower, 1);
  disk = {};
}

void MemoryDisk::insert(const Files& files) {
  disk = {};
  for (const auto& [name, bytes] : files) {
    disk.files[name] = std::make_shared<Node>(Node{bytes, {}, true});
  }
}

MemoryDisk::Files MemoryDisk::files() const { return found(Unflushed::Kept, 0); }

int MemoryDisk::calls() const { return disk.calls; }

void MemoryDisk::cutAt(int call) { disk.cutAt = disk.calls + call; }

MemoryDisk::Files MemoryDisk::found(Unflushed unflushed, unsigned seed) const {
  std::minstd_rand random(seed + 1);
  const auto coin = [&] { return random() % 2 == 0; };
  const auto kept = [&] {
    return unflushed == Unflushed::Kept || (unflushed == Unflushed::Torn && coin());
  };
  Files files;
  for (const auto& [name, node] : disk.files) {
    if (!node->durableName && !kept()) continue;
    files[name] = unflushed == Unflushed::Kept      ? node->bytes
                  : unflushed == Unflushed::Dropped ? node->durable()
                                                    : node->torn(coin);
  }
  for (const auto& [name, node] : disk.deleted) {
    if (!kept()) files[name] = node->durable();
  }
  return files;
}

}  // namespace tolvex::store
