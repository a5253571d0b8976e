#include "framework/param_dictionary.h"

#include <functional>

#include "framework/recordset.h"

namespace tolvex {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);
constexpr std::size_t kFirstBuckets = 8;

std::size_t hashOf(std::string_view key) { return std::hash<std::string_view>{}(key); }

[[noreturn]] void unknown(std::string_view key) {
  throw RowSetError(RowSetError::UnknownKey, "Nėra parametro \"" + std::string(key) + "\"");
}

}  // namespace

std::size_t ParamDictionary::find(std::string_view key) const {
  if (slots_.empty()) return kNone;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hashOf(key) & mask; slots_[at] != 0; at = (at + 1) & mask) {
    const std::size_t index = slots_[at] - 1;
    if (entries_[index].live && entries_[index].key == key) return index;
  }
  return kNone;
}

// Also leaves the dead places behind, so that a dictionary used as a queue does not grow.
void ParamDictionary::rehash(std::size_t buckets) {
  std::erase_if(entries_, [](const Entry& entry) { return !entry.live; });
  slots_.assign(buckets, 0);
  const std::size_t mask = buckets - 1;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    std::size_t at = hashOf(entries_[i].key) & mask;
    while (slots_[at] != 0) at = (at + 1) & mask;
    slots_[at] = static_cast<std::uint32_t>(i + 1);
  }
}

void ParamDictionary::Add(std::string key, Variant value) {
  if (find(key) != kNone) {
    throw RowSetError(RowSetError::DuplicateKey, "Parametras \"" + key + "\" jau yra");
  }
  if ((entries_.size() + 1) * 2 > slots_.size()) {
    std::size_t buckets = kFirstBuckets;
    while (buckets < (count_ + 1) * 4) buckets *= 2;
    rehash(buckets);
  }
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hashOf(key) & mask;
  while (slots_[at] != 0) at = (at + 1) & mask;
  entries_.push_back({std::move(key), std::move(value)});
  slots_[at] = static_cast<std::uint32_t>(entries_.size());
  ++count_;
}

bool ParamDictionary::Exists(std::string_view key) const { return find(key) != kNone; }

const Variant* ParamDictionary::Find(std::string_view key) const {
  const std::size_t index = find(key);
  return index == kNone ? nullptr : &entries_[index].value;
}

const Variant& ParamDictionary::Item(std::string_view key) const {
  const Variant* value = Find(key);
  if (value == nullptr) unknown(key);
  return *value;
}

void ParamDictionary::SetItem(std::string_view key, Variant value) {
  const std::size_t index = find(key);
  if (index == kNone) {
    Add(std::string(key), std::move(value));
  } else {
    entries_[index].value = std::move(value);
  }
}

void ParamDictionary::Remove(std::string_view key) {
  const std::size_t index = find(key);
  if (index == kNone) unknown(key);
  entries_[index] = {{}, {}, false};
  --count_;
}

void ParamDictionary::RemoveAll() {
  entries_.clear();
  slots_.clear();
  count_ = 0;
}

std::vector<std::string> ParamDictionary::Keys() const {
  std::vector<std::string> keys;
  keys.reserve(count_);
  for (const Entry& entry : entries_) {
    if (entry.live) keys.push_back(entry.key);
  }
  return keys;
}

std::vector<Variant> ParamDictionary::Items() const {
  std::vector<Variant> items;
  items.reserve(count_);
  for (const Entry& entry : entries_) {
    if (entry.live) items.push_back(entry.value);
  }
  return items;
}

void setItems(ParamDictionary& items, RowSet& rows, std::string_view key, std::string_view value) {
  Field keys = rows[key], values = rows[value];
  ForEachRow(rows, [&](RowSet&) { items.SetItem(keys.Text(), values.Text()); });
}

}  // namespace tolvex
