// Sets of addressees: every posting names one, so that a sum by one or two addressees is a join
// over a few thousand sets and not over entries. Set 0 is the empty one. A set, once made, stays.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/store/oper_rows.h"

namespace tolvex::store {

// The addressees on one side of an entry in order, each once, joined by a bar; "" for none.
std::string dimsetKey(const EntryRow& entry, int sign);
inline constexpr std::size_t kLongestDimset = 600;  // of a key that can be stored
std::vector<std::string> dimsetRefs(std::string_view key);

// Ids of sets that were seen stored; kept for the life of a session.
using DimsetIds = std::unordered_map<std::string, int>;

// The sets met in one transaction. Ids that it makes itself are not remembered beyond it: it may
// still be rolled back.
class Dimsets {
 public:
  Dimsets(Database& db, DimsetIds& seen) : db_(db), seen_(seen) {}
  int idOf(const std::string& key);  // made when it is new

 private:
  Database& db_;
  DimsetIds& seen_;
  DimsetIds made_;
};

// References of a stored set, read once each.
class DimsetRefs {
 public:
  explicit DimsetRefs(Database& db) : db_(db) {}
  const std::vector<std::string>& of(int dimsetId);
  void readAll(const std::vector<int>& dimsetIds);  // those that are going to be asked for
  bool shareAddressee(int a, int b);                // a firm, person or employee stands in both

 private:
  Database& db_;
  std::map<int, std::vector<std::string>> sets_;
};

}  // namespace tolvex::store
