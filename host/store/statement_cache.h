// StatementCache: prepared statements of one connection by their text.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/store/database.h"

namespace tolvex::store {

class StatementCache {
 public:
  // A free statement of this text, or the one that `make` prepares. A text that is in use already
  // (a loop that runs inside a loop) gets a second statement.
  template <class Make>
  StatementLease lease(std::string_view sql, Make make) {
    auto found = byText_.find(sql);
    if (found != byText_.end()) {
      for (const auto& place : found->second) {
        if (!place->inUse) return take(*place);
      }
    } else {
      if (byText_.size() >= kMostTexts) dropUnused();
      found = byText_.try_emplace(std::string(sql)).first;
    }
    auto place = std::make_unique<Place>();
    place->statement = make(found->first);
    found->second.push_back(std::move(place));
    return take(*found->second.back());
  }
  void dropUnused() {
    for (auto text = byText_.begin(); text != byText_.end();) {
      std::erase_if(text->second, [](const auto& place) { return !place->inUse; });
      text = text->second.empty() ? byText_.erase(text) : std::next(text);
    }
  }

 private:
  static constexpr std::size_t kMostTexts = 1000;  // far above the number of texts in the program
  struct Place {
    std::unique_ptr<Statement> statement;
    bool inUse = false;
  };
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };
  static StatementLease take(Place& place) {
    place.inUse = true;
    return StatementLease(place.statement.get(), &place.inUse);
  }
  std::unordered_map<std::string, std::vector<std::unique_ptr<Place>>, Hash, std::equal_to<>>
      byText_;
};

}  // namespace tolvex::store
