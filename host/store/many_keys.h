// Rows of many keys, asked for together: a server then answers a few questions instead of one for
// each key, and the texts of the statements stay few.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "framework/text.h"
#include "host/store/database.h"

namespace tolvex::store {

// Calls `body` with the statement at each row; `sql` has "… IN (@KEYS@)" and no other parameters.
// Keys that name nothing give no row; rows come in no order.
template <class Key, class Body>
void forEachOf(Database& db, std::string_view sql, std::vector<Key> keys, Body body) {
  constexpr std::size_t kSizes[] = {4, 32, 256};
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  for (std::size_t at = 0; at < keys.size();) {
    const std::size_t left = keys.size() - at;
    const auto fits = std::find_if(std::begin(kSizes), std::end(kSizes),
                                   [&](std::size_t size) { return size >= left; });
    const std::size_t marks = fits == std::end(kSizes) ? std::end(kSizes)[-1] : *fits;
    std::string list = "$1";
    for (std::size_t i = 2; i <= marks; ++i) list += ",$" + std::to_string(i);
    auto select = db.prepare(replaceAll(std::string(sql), "@KEYS@", list));
    for (std::size_t i = 0; i < marks; ++i)  // the last key fills what is over
      select->bind(static_cast<int>(i + 1), keys[std::min(at + i, keys.size() - 1)]);
    while (select->step()) body(*select);
    at += marks;
  }
}

}  // namespace tolvex::store
