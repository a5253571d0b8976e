// MethodTable: the keyed actions of an object class as rows of one table.
//
// A row says which numbers of arguments it takes; the call with another number is refused in one
// wording. Subjects that stand above the class add their rows when the module is loaded.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "framework/object_contract.h"
#include "framework/results.h"

namespace tolvex {

using Arguments = std::span<const Variant>;

// Arguments by position; a missing one reads as empty.
inline const Variant& argument(Arguments par, std::size_t index) {
  static const Variant kMissing;
  return index < par.size() ? par[index] : kMissing;
}

template <class Target>
class MethodTable {
 public:
  using Handler = std::function<MethodResult(Target&, Arguments)>;
  struct Row {
    std::string key;
    std::vector<int> bounds;  // allowed upper bounds of the arguments, -1 for none; empty: any
    std::string prefix;       // of the refusal of any other number
    Handler handler;
  };

  // A key that is there already is replaced.
  void add(Row row) {
    std::string key = row.key;
    rows_[std::move(key)] = std::move(row);
  }

  // Keys compare as exact text. An unknown key does nothing and succeeds. A run-time error inside
  // becomes a result.
  MethodResult call(Target& target, std::string_view key, Arguments par) const {
    const auto found = rows_.find(key);
    if (found == rows_.end()) return done();
    const Row& row = found->second;
    const int bound = static_cast<int>(par.size()) - 1;
    if (!row.bounds.empty() && std::ranges::find(row.bounds, bound) == row.bounds.end()) {
      return refused(row.prefix + std::string(kLineBreak) + "Klaidingi parametrai !");
    }
    return guarded([&] { return row.handler(target, par); });
  }

  std::vector<std::string> keys() const {
    std::vector<std::string> keys;
    for (const auto& [key, row] : rows_) keys.push_back(key);
    return keys;
  }

 private:
  std::map<std::string, Row, std::less<>> rows_;
};

}  // namespace tolvex
