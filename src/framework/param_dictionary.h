// ParamDictionary: named values in the order in which they were added.
//
// Passes named parameters to screens and reports, and serves as a set of codes, keys and tags.
// Keys are compared as exact bytes. Reading never inserts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/variant.h"

namespace tolvex {

class ParamDictionary : public Object {
 public:
  void Add(std::string key, Variant value);  // existing key: RowSetError (DuplicateKey)
  bool Exists(std::string_view key) const;
  const Variant* Find(std::string_view key) const;    // null when absent; valid until a change
  const Variant& Item(std::string_view key) const;    // absent key: RowSetError (UnknownKey)
  void SetItem(std::string_view key, Variant value);  // absent key: added at the end
  void Remove(std::string_view key);                  // absent key: RowSetError (UnknownKey)
  void RemoveAll();
  std::size_t Count() const { return count_; }
  std::vector<std::string> Keys() const;
  std::vector<Variant> Items() const;

 private:
  struct Entry {
    std::string key;
    Variant value;
    bool live = true;
  };
  std::size_t find(std::string_view key) const;  // index into entries_ or npos
  void rehash(std::size_t buckets);

  std::vector<Entry> entries_;        // in order of insertion; removed ones stay as dead places
  std::vector<std::uint32_t> slots_;  // open addressing: index + 1, 0 free
  std::size_t count_ = 0;
};

// Sets an item for each row: the text of column `value` by that of column `key`.
void setItems(ParamDictionary& items, RowSet& rows, std::string_view key, std::string_view value);

}  // namespace tolvex
