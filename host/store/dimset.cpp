#include "host/store/dimset.h"

#include <algorithm>

#include "framework/references.h"
#include "framework/text.h"
#include "host/store/many_keys.h"

namespace tolvex::store {

std::string dimsetKey(const EntryRow& entry, int sign) {
  std::vector<std::string_view> refs;
  for (const RefRow& ref : entry.refs) {
    if (ref.role == kAddressee && ref.sign == sign) refs.push_back(ref.foidr);
  }
  if (refs.size() > 1) {
    std::sort(refs.begin(), refs.end());
    refs.erase(std::unique(refs.begin(), refs.end()), refs.end());
  }
  std::string key;
  for (const std::string_view ref : refs) {
    if (!key.empty()) key += '|';
    key += ref;
  }
  return key;
}

std::vector<std::string> dimsetRefs(std::string_view key) {
  if (key.empty()) return {};
  return split(key, '|');
}

int Dimsets::idOf(const std::string& key) {
  if (key.empty()) return 0;
  if (const auto seen = seen_.find(key); seen != seen_.end()) return seen->second;
  if (const auto made = made_.find(key); made != made_.end()) return made->second;
  const auto stored = [&] {
    auto select = db_.prepare("SELECT id FROM dimset WHERE ref_key = $1");
    select->bind(1, key);
    return select->step() ? select->whole(0) : 0;
  };
  if (const int id = stored()) return seen_[key] = id;

  // Another user may be making the same set at this moment; then his row is taken.
  int id = 0;
  {
    auto insert = db_.prepare(
        "INSERT INTO dimset (ref_key) VALUES ($1) ON CONFLICT (ref_key) DO NOTHING RETURNING id");
    insert->bind(1, key);
    if (insert->step()) id = insert->whole(0);
  }
  if (id == 0) return stored();
  for (const std::string& ref : dimsetRefs(key)) {
    auto insert = db_.prepare("INSERT INTO dimset_ref (dimset_id, foidr, kind) VALUES ($1,$2,$3)");
    insert->bind(1, id).bind(2, ref).bind(3, kindOf(ref));
    insert->run();
  }
  return made_[key] = id;
}

const std::vector<std::string>& DimsetRefs::of(int dimsetId) {
  const auto [place, fresh] = sets_.try_emplace(dimsetId);
  if (fresh && dimsetId != 0) {
    auto select = db_.prepare("SELECT ref_key FROM dimset WHERE id = $1");
    select->bind(1, dimsetId);
    if (select->step()) place->second = dimsetRefs(select->text(0));
  }
  return place->second;
}

void DimsetRefs::readAll(const std::vector<int>& dimsetIds) {
  std::vector<int> unknown;
  for (const int id : dimsetIds)
    if (sets_.try_emplace(id).second && id != 0) unknown.push_back(id);
  forEachOf(db_, "SELECT id, ref_key FROM dimset WHERE id IN (@KEYS@)", std::move(unknown),
            [&](const Statement& row) { sets_[row.whole(0)] = dimsetRefs(row.text(1)); });
}

bool DimsetRefs::shareAddressee(int a, int b) {
  const std::vector<std::string>& other = of(b);
  for (const std::string& ref : of(a)) {
    if (isParty(ref) && std::find(other.begin(), other.end(), ref) != other.end()) return true;
  }
  return false;
}

}  // namespace tolvex::store
